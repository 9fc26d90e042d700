#include "analyses/two_column_input.h"

#include "worksheet/cell_number.h"

namespace orvik::analyses {

namespace {

long NthColumn(const worksheet::DataSelection& selection, long index) {
  return selection.firstColumn + index * selection.columnStep;
}

}  // namespace

std::array<std::vector<double>, 2> ColumnSamples(const worksheet::Worksheet& sheet,
                                                 const worksheet::DataSelection& selection) {
  std::array<std::vector<double>, 2> samples;
  const long columns = worksheet::ColumnsToWalk(selection);
  for (long i = 0; i < 2 && i < columns; ++i) {
    worksheet::DataSelection column = selection;
    column.firstColumn = column.lastColumn = NthColumn(selection, i);
    worksheet::CollectNumericCells(sheet, column);
    samples[static_cast<std::size_t>(i)] = std::move(column.values);
  }
  return samples;
}

PairedColumns PairedRows(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection) {
  PairedColumns pairs;
  if (worksheet::ColumnsToWalk(selection) < 2) return pairs;
  const long left = NthColumn(selection, 0);
  const long right = NthColumn(selection, 1);
  const worksheet::WalkSpan rows = worksheet::RowsWithData(sheet, selection);
  for (long r = 0; r < rows.length; ++r) {
    const long row = rows.At(r);
    const auto x = worksheet::ParseCellNumber(sheet.Text(row, left));
    const auto y = worksheet::ParseCellNumber(sheet.Text(row, right));
    if (!x && !y) continue;
    if (!x || !y) {
      pairs.unmatched = true;
      continue;
    }
    pairs.first.push_back(*x);
    pairs.second.push_back(*y);
  }
  return pairs;
}

std::vector<double> Differences(const PairedColumns& pairs) {
  std::vector<double> differences(pairs.first.size());
  for (std::size_t i = 0; i < differences.size(); ++i) differences[i] = pairs.first[i] - pairs.second[i];
  return differences;
}

}  // namespace orvik::analyses
