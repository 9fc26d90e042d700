#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "worksheet/cell_column.h"
#include "worksheet/sheet_design.h"

namespace orvik::worksheet {

// The selected block of the grid, under the grid's own property names.
// SelBlockCol/SelBlockRow are the cell where the user's drag began, so a
// block dragged right to left or bottom to top has SelBlockCol2 < SelBlockCol
// or SelBlockRow2 < SelBlockRow. -1 in both row fields means whole columns
// were selected, -1 in both column fields whole rows, -1 in all four the
// whole sheet.
struct GridSelection {
  bool IsBlockSelected = false;
  long SelBlockCol = 0;
  long SelBlockCol2 = 0;
  long SelBlockRow = 0;
  long SelBlockRow2 = 0;
};

// The grid's limits. No cell, selection or file addresses a column beyond
// XFD or a row beyond 2^24; the project file and the range notation refuse
// anything larger, so the arithmetic over a block never leaves a long.
inline constexpr long kGridMaxCols = 16384;
inline constexpr long kGridMaxRows = 1L << 24;

// True when every field of `selection` is -1 (whole rows or columns) or a
// column or row within the grid's limits.
bool WithinGrid(const GridSelection& selection);

// One worksheet grid (`OrvikSheet` of a worksheet window): text cells
// addressed by row and column counted from 1. Cells beyond the stored data
// are empty, so the grid size (MaxRows x MaxCols) costs nothing until cells
// are filled.
class Worksheet {
 public:
  static constexpr long kDefaultMaxRows = 1000;
  static constexpr long kDefaultMaxCols = 52;

  explicit Worksheet(std::string name = {}, long max_rows = kDefaultMaxRows,
                     long max_cols = kDefaultMaxCols);

  // The window caption, for example "WorkSheet 1".
  const std::string& Name() const { return name_; }
  void SetName(std::string name) {
    name_ = std::move(name);
    Touch();
  }

  // A number that changes with every change of the sheet's name, size,
  // cells or header names, and differs between sheets: equal revisions of
  // the same sheet mean unchanged contents (a copy keeps its original's).
  std::uint64_t Revision() const { return revision_; }

  long MaxRows() const { return max_rows_; }
  long MaxCols() const { return max_cols_; }
  // Grows or shrinks the grid; cells outside the new size are cleared.
  void SetMaxRows(long rows);
  void SetMaxCols(long cols);

  // The last row and the last column that hold any data; 0 on an empty sheet.
  long DataRowCnt() const { return data_row_cnt_; }
  long DataColCnt() const { return static_cast<long>(columns_.size()); }
  // The last row of column `col` that holds data; 0 for an empty column or
  // one outside the data. Walks stop there: the cells below are empty.
  long LastFilledRow(long col) const {
    return col < 1 || col > DataColCnt() ? 0 : columns_[col - 1].LastFilledRow();
  }

  // The cell's text as shown. Empty outside the data.
  std::string_view Text(long row, long col) const;
  // The cell's content without display formatting. Cells carry no number
  // formats yet, so it is the shown text.
  std::string_view Value(long row, long col) const { return Text(row, col); }
  // Writes a cell; the grid grows to hold it. An empty text clears the cell.
  void SetText(long row, long col, std::string_view text);

  // The caption of a column header: the name the user gave it, or the
  // column's letters ("A", "B", ..., "Z", "AA", ...).
  std::string ColumnHeader(long col) const;
  void SetColumnHeader(long col, std::string name);
  // The user's own header name; empty when the column shows its letters.
  const std::string& ColumnHeaderName(long col) const;

  // Row and column edits at `at`; cells after it move.
  void InsertRows(long at, long count);
  void DeleteRows(long at, long count);
  void InsertColumns(long at, long count);
  void DeleteColumns(long at, long count);

  // The cell with the caret and the selected block.
  long ActiveRow = 1;
  long ActiveCol = 1;
  GridSelection Selection;

  // Gives back spare capacity after a bulk load.
  void ShrinkToFit();

  // The design the sheet was made with, when it is a design sheet
  // (`DOEDoc`); null for a plain worksheet.
  const std::optional<SheetDesign>& Design() const { return design_; }
  void SetDesign(std::optional<SheetDesign> design) {
    design_ = std::move(design);
    Touch();
  }

 private:
  void RecomputeExtent();
  void Touch();

  std::string name_;
  long max_rows_;
  long max_cols_;
  long data_row_cnt_ = 0;
  // columns_[c - 1] holds column c; trailing empty columns are not kept, so
  // columns_.size() is DataColCnt.
  std::vector<CellColumn> columns_;
  std::vector<std::string> header_names_;
  std::optional<SheetDesign> design_;
  std::uint64_t revision_ = 0;
};

// The letters of column `col` as a spreadsheet writes them: 1 -> "A", 27 -> "AA".
std::string ColumnLetters(long col);

}  // namespace orvik::worksheet
