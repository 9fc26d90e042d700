#include "worksheet/data_selection.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

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

WalkSpan WithinExtent(long first, long last, int step, long extent) {
  if (WalkLength(first, last, step) == 0) return {first, first, step, 0};
  const long low = std::max(std::min(first, last), 1L);
  const long high = std::min(std::max(first, last), extent);
  if (low > high) return {first, first, step, 0};
  return step > 0 ? WalkSpan{low, high, step, high - low + 1} : WalkSpan{high, low, step, high - low + 1};
}

// The rows of `rows` that column `col` can hold data in: the walk cut at the
// column's last filled row.
WalkSpan RowsOfColumn(const Worksheet& sheet, const WalkSpan& rows, long col) {
  if (rows.length == 0) return rows;
  return WithinExtent(rows.first, rows.last, rows.step, sheet.LastFilledRow(col));
}

}  // namespace

long ColumnsToWalk(const DataSelection& s) { return WalkLength(s.firstColumn, s.lastColumn, s.columnStep); }
long RowsToWalk(const DataSelection& s) { return WalkLength(s.firstRow, s.lastRow, s.rowStep); }

WalkSpan ColumnsWithData(const Worksheet& sheet, const DataSelection& s) {
  return WithinExtent(s.firstColumn, s.lastColumn, s.columnStep, sheet.DataColCnt());
}

WalkSpan RowsWithData(const Worksheet& sheet, const DataSelection& s) {
  return WithinExtent(s.firstRow, s.lastRow, s.rowStep, sheet.DataRowCnt());
}

long CellsToWalk(const DataSelection& selection) {
  long cells = 0;
  if (__builtin_mul_overflow(ColumnsToWalk(selection), RowsToWalk(selection), &cells))
    return std::numeric_limits<long>::max();
  return cells;
}

RunningFigures CollectNumericCells(const Worksheet& sheet, DataSelection& selection, CellPolicy policy) {
  RunningFigures figures;
  selection.values.clear();
  const WalkSpan columns = ColumnsWithData(sheet, selection);
  const WalkSpan rows = RowsWithData(sheet, selection);
  long walked = 0;
  for (long c = 0; c < columns.length; ++c) {
    const long col = columns.At(c);
    const WalkSpan filled = RowsOfColumn(sheet, rows, col);
    walked += filled.length;
    for (long r = 0; r < filled.length; ++r) {
      std::optional<double> number = ParseCellNumber(sheet.Text(filled.At(r), col));
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
  // The cells the walk passed over are empty, hence improper.
  figures.improperCells += CellsToWalk(selection) - walked;
  selection.count = figures.count;
  return figures;
}

std::vector<double> NumericCellsRowByRow(const Worksheet& sheet, const DataSelection& selection) {
  // Read column by column, which visits only the filled rows of each
  // column, then put the numbers in row order; the stable sort keeps the
  // column order within a row.
  struct Placed {
    long rowIndex;
    double value;
  };
  std::vector<Placed> placed;
  const WalkSpan columns = ColumnsWithData(sheet, selection);
  const WalkSpan rows = RowsWithData(sheet, selection);
  for (long c = 0; c < columns.length; ++c) {
    const long col = columns.At(c);
    const WalkSpan filled = RowsOfColumn(sheet, rows, col);
    const long offset = (filled.first - rows.first) * rows.step;
    for (long r = 0; r < filled.length; ++r)
      if (const auto number = ParseCellNumber(sheet.Text(filled.At(r), col))) placed.push_back({offset + r, *number});
  }
  std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) { return a.rowIndex < b.rowIndex; });
  std::vector<double> values;
  values.reserve(placed.size());
  for (const Placed& p : placed) values.push_back(p.value);
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
