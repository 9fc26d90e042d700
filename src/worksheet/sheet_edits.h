#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "worksheet/worksheet.h"

namespace orvik::worksheet {

// A rectangle of cells with its corners in order (top <= bottom, left <= right).
struct CellBlock {
  long top = 1;
  long left = 1;
  long bottom = 1;
  long right = 1;

  bool Contains(long row, long col) const { return row >= top && row <= bottom && col >= left && col <= right; }
  friend bool operator==(const CellBlock&, const CellBlock&) = default;
};

// The cells a selection covers on `sheet`, the whole-row and whole-column
// forms (-1 fields) widened to the grid's size. Null when no block is selected.
std::optional<CellBlock> SelectedCells(const Worksheet& sheet);

// One cell changed by an edit, with its text before and after.
struct CellEdit {
  long row = 0;
  long col = 0;
  std::string before;
  std::string after;
};

// What an edit did to a sheet, for the views that show it. Structural
// changes are announced twice: before (so a view can prepare) and after.
struct SheetChange {
  enum class Kind { Cells, RowsInserted, RowsRemoved, ColumnsInserted, ColumnsRemoved, Headers, Formats };
  enum class Phase { Before, After };
  Kind kind = Kind::Cells;
  Phase phase = Phase::After;
  // Cells, Formats: the block touched. Rows*: top..bottom are the rows;
  // Columns* and Headers: left..right are the columns.
  CellBlock block;
};

// The edits that writing `cells` (rows of texts) with its top-left corner at
// (row, col) makes; cells whose text does not change are left out. Rows
// past the grid's end grow it, as typing there would.
std::vector<CellEdit> PlanWriteBlock(const Worksheet& sheet, long row, long col,
                                     const std::vector<std::vector<std::string>>& cells);
// The edits that clearing `block` makes; only cells holding text, so clearing
// whole columns of a large sheet costs the data, not the grid.
std::vector<CellEdit> PlanClear(const Worksheet& sheet, const CellBlock& block);
// The texts of `block` clipped to the data extent, row by row.
std::vector<std::vector<std::string>> ReadBlock(const Worksheet& sheet, const CellBlock& block);

// One sort key: a column and its order.
struct SortKey {
  long col = 1;
  bool ascending = true;
};

// Sorts the rows of `block` by the cells of the key columns, the first key
// first and each further key among rows the earlier ones find equal:
// numbers first in numeric order, then texts in character order, empty keys
// last; rows with equal keys keep their order. Cells outside the block do
// not move.
std::vector<CellEdit> PlanSort(const Worksheet& sheet, const CellBlock& block, const std::vector<SortKey>& keys);

// The block widened to the columns on either side that hold data in its
// rows, up to the first column without any: the rows of data a sort of the
// block would tear apart if it moved the block's cells alone.
CellBlock SortRegion(const Worksheet& sheet, const CellBlock& block);

// How find and replace compare a cell with the searched text.
struct FindOptions {
  bool matchCase = false;
  bool wholeCell = false;  // the whole text must match, not a part of it
};

// True when `text` holds `what` under `options`.
bool CellMatches(std::string_view text, std::string_view what, const FindOptions& options);
// The next cell after (row, col) in reading order (along the row, then the
// next row) holding `what`, wrapping from the end of the data to its start
// and ending with (row, col) itself. Null when no cell matches.
std::optional<std::pair<long, long>> FindCell(const Worksheet& sheet, std::string_view what, long row, long col,
                                              const FindOptions& options);
// Replaces `what` by `with` in every matching cell of the data (each match in
// a cell when only parts must match).
std::vector<CellEdit> PlanReplaceAll(const Worksheet& sheet, std::string_view what, std::string_view with,
                                     const FindOptions& options);
// The text of one cell after replacing every occurrence of `what`.
std::string ReplaceInCell(std::string_view text, std::string_view what, std::string_view with,
                          const FindOptions& options);

enum class Alignment { Default, Left, Center, Right };

// The look of one cell. Default everywhere: plain text, numbers to the right.
struct CellFormat {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  Alignment alignment = Alignment::Default;
  std::optional<std::uint32_t> foreground;  // 0xRRGGBB
  std::optional<std::uint32_t> background;
  friend bool operator==(const CellFormat&, const CellFormat&) = default;
};

// One formatting action on a block: the attributes it sets.
struct FormatChange {
  std::optional<bool> bold;
  std::optional<bool> italic;
  std::optional<bool> underline;
  std::optional<Alignment> alignment;
  std::optional<std::uint32_t> foreground;
  std::optional<std::uint32_t> background;
};

// The cell formats of one sheet, stored as the formatting actions themselves
// (a block and the attributes set on it) rather than per cell, so making a
// whole column of a million rows bold costs one record. A cell's format is
// the actions that cover it applied in order; lookups cost the number of
// actions, which users make by hand and so stay few.
class SheetFormats {
 public:
  struct Run {
    CellBlock block;
    FormatChange change;
  };

  CellFormat At(long row, long col) const;
  void Apply(const CellBlock& block, const FormatChange& change);

  // Shift and cut the runs as the grid's rows or columns move.
  void InsertRows(long at, long count);
  void DeleteRows(long at, long count);
  void InsertColumns(long at, long count);
  void DeleteColumns(long at, long count);

  const std::vector<Run>& Runs() const { return runs_; }
  void SetRuns(std::vector<Run> runs) { runs_ = std::move(runs); }

 private:
  std::vector<Run> runs_;
};

// Makes every edit of one worksheet and tells the views what changed: the one
// way the window application changes a sheet's cells, so that the grid, the
// undo history and the formats stay in step.
class SheetEditor {
 public:
  explicit SheetEditor(Worksheet& sheet) : sheet_(sheet) {}

  Worksheet& Sheet() { return sheet_; }
  const Worksheet& Sheet() const { return sheet_; }
  SheetFormats& Formats() { return formats_; }
  const SheetFormats& Formats() const { return formats_; }

  void SetListener(std::function<void(const SheetChange&)> listener) { listener_ = std::move(listener); }

  // Writes the `after` texts of `edits` (or their `before` texts, undoing).
  void Apply(const std::vector<CellEdit>& edits, bool undo = false);
  void SetCell(long row, long col, std::string_view text);

  // Row and column edits. Deleting returns the edits that emptied the
  // removed cells, so that an undo can put them back after re-inserting.
  void InsertRows(long at, long count);
  std::vector<CellEdit> DeleteRows(long at, long count);
  void InsertColumns(long at, long count);
  std::vector<CellEdit> DeleteColumns(long at, long count);

  void SetColumnHeader(long col, std::string name);
  void ApplyFormat(const CellBlock& block, const FormatChange& change);
  void SetFormatRuns(std::vector<SheetFormats::Run> runs);

 private:
  void Notify(SheetChange::Kind kind, SheetChange::Phase phase, const CellBlock& block);

  Worksheet& sheet_;
  SheetFormats formats_;
  std::function<void(const SheetChange&)> listener_;
};

}  // namespace orvik::worksheet
