#include "worksheet/sheet_edits.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "worksheet/cell_number.h"

namespace orvik::worksheet {

std::optional<CellBlock> SelectedCells(const Worksheet& sheet) {
  const GridSelection& s = sheet.Selection;
  if (!s.IsBlockSelected) return std::nullopt;
  CellBlock block;
  if (s.SelBlockCol == -1 && s.SelBlockCol2 == -1) {
    block.left = 1;
    block.right = sheet.MaxCols();
  } else {
    block.left = std::min(s.SelBlockCol, s.SelBlockCol2);
    block.right = std::max(s.SelBlockCol, s.SelBlockCol2);
  }
  if (s.SelBlockRow == -1 && s.SelBlockRow2 == -1) {
    block.top = 1;
    block.bottom = sheet.MaxRows();
  } else {
    block.top = std::min(s.SelBlockRow, s.SelBlockRow2);
    block.bottom = std::max(s.SelBlockRow, s.SelBlockRow2);
  }
  if (block.left < 1 || block.top < 1) return std::nullopt;
  return block;
}

std::vector<CellEdit> PlanWriteBlock(const Worksheet& sheet, long row, long col,
                                     const std::vector<std::vector<std::string>>& cells) {
  std::vector<CellEdit> edits;
  for (std::size_t r = 0; r < cells.size(); ++r) {
    for (std::size_t c = 0; c < cells[r].size(); ++c) {
      const long at_row = row + static_cast<long>(r);
      const long at_col = col + static_cast<long>(c);
      const std::string_view old_text = sheet.Text(at_row, at_col);
      if (old_text != cells[r][c]) edits.push_back({at_row, at_col, std::string(old_text), cells[r][c]});
    }
  }
  return edits;
}

std::vector<CellEdit> PlanClear(const Worksheet& sheet, const CellBlock& block) {
  std::vector<CellEdit> edits;
  const long right = std::min(block.right, sheet.DataColCnt());
  const long bottom = std::min(block.bottom, sheet.DataRowCnt());
  for (long col = block.left; col <= right; ++col)
    for (long row = block.top; row <= bottom; ++row) {
      const std::string_view text = sheet.Text(row, col);
      if (!text.empty()) edits.push_back({row, col, std::string(text), {}});
    }
  return edits;
}

std::vector<std::vector<std::string>> ReadBlock(const Worksheet& sheet, const CellBlock& block) {
  std::vector<std::vector<std::string>> cells;
  const long bottom = std::min(block.bottom, sheet.DataRowCnt());
  const long right = std::min(block.right, sheet.DataColCnt());
  for (long row = block.top; row <= bottom; ++row) {
    auto& line = cells.emplace_back();
    for (long col = block.left; col <= right; ++col) line.emplace_back(sheet.Text(row, col));
  }
  return cells;
}

namespace {

// A sort key cell: numbers first, then texts, empty cells last.
struct SortCell {
  int rank;  // 0 number, 1 text, 2 empty
  double number;
  std::string_view text;
};

SortCell ReadSortCell(std::string_view text) {
  if (text.empty()) return {2, 0.0, text};
  if (const auto number = ParseCellNumber(text)) return {0, *number, text};
  return {1, 0.0, text};
}

// -1, 0 or 1 as x sorts before, with or after y in the key's order; empty
// cells stay last in either order.
int CompareSortCells(const SortCell& x, const SortCell& y, bool ascending) {
  if (x.rank != y.rank) return x.rank < y.rank ? -1 : 1;
  int order = 0;
  if (x.rank == 0) order = x.number < y.number ? -1 : y.number < x.number ? 1 : 0;
  else if (x.rank == 1) order = x.text < y.text ? -1 : y.text < x.text ? 1 : 0;
  return ascending ? order : -order;
}

bool ColumnHoldsData(const Worksheet& sheet, long col, long top, long bottom) {
  for (long row = top; row <= bottom; ++row)
    if (!sheet.Text(row, col).empty()) return true;
  return false;
}

}  // namespace

std::vector<CellEdit> PlanSort(const Worksheet& sheet, const CellBlock& block, const std::vector<SortKey>& keys) {
  const long bottom = std::min(block.bottom, sheet.DataRowCnt());
  const long right = std::min(block.right, sheet.DataColCnt());
  if (bottom <= block.top || right < block.left || keys.empty()) return {};
  const long count = bottom - block.top + 1;
  // The key cells, key by key, read once.
  std::vector<std::vector<SortCell>> cells(keys.size(), std::vector<SortCell>(static_cast<std::size_t>(count)));
  for (std::size_t k = 0; k < keys.size(); ++k)
    for (long i = 0; i < count; ++i) cells[k][i] = ReadSortCell(sheet.Text(block.top + i, keys[k].col));
  std::vector<long> order(count);
  std::iota(order.begin(), order.end(), 0L);
  std::stable_sort(order.begin(), order.end(), [&](long a, long b) {
    for (std::size_t k = 0; k < keys.size(); ++k)
      if (const int c = CompareSortCells(cells[k][a], cells[k][b], keys[k].ascending); c != 0) return c < 0;
    return false;
  });
  std::vector<CellEdit> edits;
  for (long i = 0; i < count; ++i) {
    if (order[i] == i) continue;
    for (long col = block.left; col <= right; ++col) {
      const std::string_view before = sheet.Text(block.top + i, col);
      const std::string_view after = sheet.Text(block.top + order[i], col);
      if (before != after) edits.push_back({block.top + i, col, std::string(before), std::string(after)});
    }
  }
  return edits;
}

CellBlock SortRegion(const Worksheet& sheet, const CellBlock& block) {
  CellBlock region = block;
  const long bottom = std::min(block.bottom, sheet.DataRowCnt());
  if (bottom < block.top) return region;
  while (region.left > 1 && ColumnHoldsData(sheet, region.left - 1, block.top, bottom)) --region.left;
  while (region.right < sheet.DataColCnt() && ColumnHoldsData(sheet, region.right + 1, block.top, bottom))
    ++region.right;
  return region;
}

namespace {

bool SameChar(char a, char b, bool match_case) {
  if (match_case) return a == b;
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// The position of `what` in `text` from `from` on, or npos.
std::size_t FindIn(std::string_view text, std::string_view what, std::size_t from, bool match_case) {
  if (what.empty() || what.size() > text.size()) return std::string_view::npos;
  for (std::size_t i = from; i + what.size() <= text.size(); ++i) {
    std::size_t k = 0;
    while (k < what.size() && SameChar(text[i + k], what[k], match_case)) ++k;
    if (k == what.size()) return i;
  }
  return std::string_view::npos;
}

}  // namespace

bool CellMatches(std::string_view text, std::string_view what, const FindOptions& options) {
  if (what.empty()) return false;
  if (options.wholeCell)
    return text.size() == what.size() && FindIn(text, what, 0, options.matchCase) == 0;
  return FindIn(text, what, 0, options.matchCase) != std::string_view::npos;
}

std::optional<std::pair<long, long>> FindCell(const Worksheet& sheet, std::string_view what, long row, long col,
                                              const FindOptions& options) {
  const long rows = sheet.DataRowCnt();
  const long cols = sheet.DataColCnt();
  if (rows == 0 || what.empty()) return std::nullopt;
  // Reading order numbers the cells 0 .. rows*cols-1; start just after (row, col).
  const long total = rows * cols;
  long start = (std::clamp(row, 1L, rows) - 1) * cols + (std::clamp(col, 1L, cols) - 1);
  for (long step = 1; step <= total; ++step) {
    const long index = (start + step) % total;
    const long r = index / cols + 1;
    const long c = index % cols + 1;
    if (CellMatches(sheet.Text(r, c), what, options)) return std::make_pair(r, c);
  }
  return std::nullopt;
}

std::string ReplaceInCell(std::string_view text, std::string_view what, std::string_view with,
                          const FindOptions& options) {
  if (options.wholeCell) return CellMatches(text, what, options) ? std::string(with) : std::string(text);
  std::string result;
  std::size_t from = 0;
  for (;;) {
    const std::size_t at = FindIn(text, what, from, options.matchCase);
    if (at == std::string_view::npos) break;
    result.append(text.substr(from, at - from));
    result.append(with);
    from = at + what.size();
  }
  result.append(text.substr(from));
  return result;
}

std::vector<CellEdit> PlanReplaceAll(const Worksheet& sheet, std::string_view what, std::string_view with,
                                     const FindOptions& options) {
  std::vector<CellEdit> edits;
  for (long col = 1; col <= sheet.DataColCnt(); ++col)
    for (long row = 1; row <= sheet.DataRowCnt(); ++row) {
      const std::string_view text = sheet.Text(row, col);
      if (text.empty() || !CellMatches(text, what, options)) continue;
      std::string after = ReplaceInCell(text, what, with, options);
      if (after != text) edits.push_back({row, col, std::string(text), std::move(after)});
    }
  return edits;
}

CellFormat SheetFormats::At(long row, long col) const {
  CellFormat format;
  for (const Run& run : runs_) {
    if (!run.block.Contains(row, col)) continue;
    const FormatChange& c = run.change;
    if (c.bold) format.bold = *c.bold;
    if (c.italic) format.italic = *c.italic;
    if (c.underline) format.underline = *c.underline;
    if (c.alignment) format.alignment = *c.alignment;
    if (c.foreground) format.foreground = *c.foreground;
    if (c.background) format.background = *c.background;
  }
  return format;
}

void SheetFormats::Apply(const CellBlock& block, const FormatChange& change) { runs_.push_back({block, change}); }

namespace {

// Moves the span [first, last] for an insertion of `count` before `at`.
void ShiftForInsert(long& first, long& last, long at, long count) {
  if (first >= at) first += count;
  if (last >= at) last += count;
}

// Cuts the span [first, last] for a removal of [at, at + count - 1]; false
// when nothing of it is left.
bool ShiftForDelete(long& first, long& last, long at, long count) {
  const long end = at + count - 1;
  if (last < at) return true;
  if (first > end) {
    first -= count;
    last -= count;
    return true;
  }
  if (first >= at && last <= end) return false;
  first = std::min(first, at);
  last = last > end ? last - count : at - 1;
  return true;
}

}  // namespace

void SheetFormats::InsertRows(long at, long count) {
  for (Run& run : runs_) ShiftForInsert(run.block.top, run.block.bottom, at, count);
}

void SheetFormats::DeleteRows(long at, long count) {
  std::erase_if(runs_, [&](Run& run) { return !ShiftForDelete(run.block.top, run.block.bottom, at, count); });
}

void SheetFormats::InsertColumns(long at, long count) {
  for (Run& run : runs_) ShiftForInsert(run.block.left, run.block.right, at, count);
}

void SheetFormats::DeleteColumns(long at, long count) {
  std::erase_if(runs_, [&](Run& run) { return !ShiftForDelete(run.block.left, run.block.right, at, count); });
}

void SheetEditor::Notify(SheetChange::Kind kind, SheetChange::Phase phase, const CellBlock& block) {
  if (listener_) listener_(SheetChange{kind, phase, block});
}

void SheetEditor::Apply(const std::vector<CellEdit>& edits, bool undo) {
  if (edits.empty()) return;
  CellBlock box{edits.front().row, edits.front().col, edits.front().row, edits.front().col};
  for (const CellEdit& edit : edits) {
    sheet_.SetText(edit.row, edit.col, undo ? edit.before : edit.after);
    box = {std::min(box.top, edit.row), std::min(box.left, edit.col), std::max(box.bottom, edit.row),
           std::max(box.right, edit.col)};
  }
  Notify(SheetChange::Kind::Cells, SheetChange::Phase::After, box);
}

void SheetEditor::SetCell(long row, long col, std::string_view text) {
  sheet_.SetText(row, col, text);
  Notify(SheetChange::Kind::Cells, SheetChange::Phase::After, {row, col, row, col});
}

void SheetEditor::InsertRows(long at, long count) {
  const CellBlock rows{at, 1, at + count - 1, 1};
  Notify(SheetChange::Kind::RowsInserted, SheetChange::Phase::Before, rows);
  sheet_.InsertRows(at, count);
  formats_.InsertRows(at, count);
  Notify(SheetChange::Kind::RowsInserted, SheetChange::Phase::After, rows);
}

std::vector<CellEdit> SheetEditor::DeleteRows(long at, long count) {
  count = std::min(count, sheet_.MaxRows() - at + 1);
  if (count <= 0) return {};
  std::vector<CellEdit> removed = PlanClear(sheet_, {at, 1, at + count - 1, sheet_.DataColCnt()});
  const CellBlock rows{at, 1, at + count - 1, 1};
  Notify(SheetChange::Kind::RowsRemoved, SheetChange::Phase::Before, rows);
  sheet_.DeleteRows(at, count);
  formats_.DeleteRows(at, count);
  Notify(SheetChange::Kind::RowsRemoved, SheetChange::Phase::After, rows);
  return removed;
}

void SheetEditor::InsertColumns(long at, long count) {
  const CellBlock cols{1, at, 1, at + count - 1};
  Notify(SheetChange::Kind::ColumnsInserted, SheetChange::Phase::Before, cols);
  sheet_.InsertColumns(at, count);
  formats_.InsertColumns(at, count);
  Notify(SheetChange::Kind::ColumnsInserted, SheetChange::Phase::After, cols);
}

std::vector<CellEdit> SheetEditor::DeleteColumns(long at, long count) {
  count = std::min(count, sheet_.MaxCols() - at + 1);
  if (count <= 0) return {};
  std::vector<CellEdit> removed = PlanClear(sheet_, {1, at, sheet_.DataRowCnt(), at + count - 1});
  const CellBlock cols{1, at, 1, at + count - 1};
  Notify(SheetChange::Kind::ColumnsRemoved, SheetChange::Phase::Before, cols);
  sheet_.DeleteColumns(at, count);
  formats_.DeleteColumns(at, count);
  Notify(SheetChange::Kind::ColumnsRemoved, SheetChange::Phase::After, cols);
  return removed;
}

void SheetEditor::SetColumnHeader(long col, std::string name) {
  sheet_.SetColumnHeader(col, std::move(name));
  Notify(SheetChange::Kind::Headers, SheetChange::Phase::After, {1, col, 1, col});
}

void SheetEditor::ApplyFormat(const CellBlock& block, const FormatChange& change) {
  formats_.Apply(block, change);
  Notify(SheetChange::Kind::Formats, SheetChange::Phase::After, block);
}

void SheetEditor::SetFormatRuns(std::vector<SheetFormats::Run> runs) {
  formats_.SetRuns(std::move(runs));
  Notify(SheetChange::Kind::Formats, SheetChange::Phase::After, {1, 1, sheet_.MaxRows(), sheet_.MaxCols()});
}

}  // namespace orvik::worksheet
