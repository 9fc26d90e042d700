#include "worksheet/data_selection.h"

#include <algorithm>
#include <cstdlib>

#include "worksheet/cell_number.h"

namespace orvik::worksheet {

std::optional<std::string> ResolveBlock(const Worksheet* sheet, DataSelection& out,
                                        const std::string& no_block_text) {
  if (sheet == nullptr || (sheet->DataRowCnt() == 0 && sheet->DataColCnt() == 0))
    return messages::kSelectDataFromWorksheet;

  const GridSelection& sel = sheet->Selection;
  // The steps are set before the block test, whatever its outcome.
  out.columnStep = sel.SelBlockCol2 >= sel.SelBlockCol ? 1 : -1;
  out.rowStep = sel.SelBlockRow2 >= sel.SelBlockRow ? 1 : -1;
  out.values.clear();
  out.count = 0;
  if (!sel.IsBlockSelected) return no_block_text;

  const long rows = sheet->DataRowCnt();
  const long cols = sheet->DataColCnt();
  const bool whole_rows = sel.SelBlockCol == -1 && sel.SelBlockCol2 == -1;
  const bool whole_cols = sel.SelBlockRow == -1 && sel.SelBlockRow2 == -1;
  out.firstColumn = sel.SelBlockCol;
  out.lastColumn = sel.SelBlockCol2;
  out.firstRow = sel.SelBlockRow;
  out.lastRow = sel.SelBlockRow2;
  if (whole_rows && whole_cols) {
    out.firstColumn = 1, out.lastColumn = cols, out.firstRow = 1, out.lastRow = rows;
  } else if (whole_cols) {
    out.firstRow = 1, out.lastRow = rows;
  } else if (whole_rows) {
    out.firstColumn = 1, out.lastColumn = cols;
  } else {
    // Only the end of a block is clipped, and only to the data's extent.
    if (sel.SelBlockRow2 >= rows) out.lastRow = rows;
    if (sel.SelBlockCol2 >= cols) out.lastColumn = cols;
  }
  return std::nullopt;
}

namespace {

long WalkLength(long first, long last, int step) {
  const long span = (last - first) * step;
  return span < 0 ? 0L : span + 1;
}

}  // namespace

long ColumnsToWalk(const DataSelection& s) { return WalkLength(s.firstColumn, s.lastColumn, s.columnStep); }
long RowsToWalk(const DataSelection& s) { return WalkLength(s.firstRow, s.lastRow, s.rowStep); }

RunningFigures CollectNumericCells(const Worksheet& sheet, DataSelection& selection, CellPolicy policy) {
  RunningFigures figures;
  selection.values.clear();
  const long columns = ColumnsToWalk(selection);
  const long rows = RowsToWalk(selection);
  selection.values.reserve(static_cast<std::size_t>(std::min(columns * rows, 1L << 24)));

  for (long c = 0, col = selection.firstColumn; c < columns; ++c, col += selection.columnStep) {
    for (long r = 0, row = selection.firstRow; r < rows; ++r, row += selection.rowStep) {
      std::optional<double> number = ParseCellNumber(sheet.Text(row, col));
      if (!number) {
        ++figures.improperCells;
        if (policy != CellPolicy::CountAsZero) continue;
        number = 0.0;
      }
      const double x = *number;
      if (figures.count == 0) {
        figures.minimum = figures.maximum = x;
      } else {
        if (x == selection.values.front()) ++figures.equalToFirst;
        if (x < figures.minimum) figures.minimum = x;
        if (x > figures.maximum) figures.maximum = x;
      }
      figures.sum += x;
      ++figures.count;
      selection.values.push_back(x);
    }
  }
  selection.count = figures.count;
  return figures;
}

std::vector<double> NumericCellsRowByRow(const Worksheet& sheet, const DataSelection& selection) {
  std::vector<double> values;
  const long rows = RowsToWalk(selection);
  const long columns = ColumnsToWalk(selection);
  for (long r = 0, row = selection.firstRow; r < rows; ++r, row += selection.rowStep)
    for (long c = 0, col = selection.firstColumn; c < columns; ++c, col += selection.columnStep)
      if (const auto number = ParseCellNumber(sheet.Text(row, col))) values.push_back(*number);
  return values;
}

std::optional<std::string> CommonDataChecks(const RunningFigures& figures) {
  if (figures.equalToFirst == figures.count) return messages::kAllDataSame;
  if (figures.count < 3) return messages::kNotEnoughData;
  if (figures.sum == 0.0) return messages::kSelectValidData;
  return std::nullopt;
}

long SelectedColumnSpan(const GridSelection& selection) {
  return std::labs(selection.SelBlockCol2 - selection.SelBlockCol) + 1;
}

}  // namespace orvik::worksheet
