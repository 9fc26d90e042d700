#include "shell/result_table.h"

#include <algorithm>
#include <stdexcept>

namespace orvik::shell {

void ResultTable::AddRow(std::vector<std::string> cells, RowStyle style) {
  if (blocks_.empty() || !blocks_.back().columns.empty()) blocks_.push_back(Block{row_count_, 0, {}, {}});
  Block& block = blocks_.back();
  block.textRows.push_back(std::move(cells));
  ++block.rowCount;
  if (!style.IsPlain()) styles_.emplace_back(row_count_, style);
  ++row_count_;
}

void ResultTable::AddColumns(std::vector<GridColumn> block) {
  std::size_t rows = 0;
  for (const GridColumn& column : block) rows = std::max(rows, column.RowCount());
  if (rows == 0) return;
  blocks_.push_back(Block{row_count_, rows, {}, std::move(block)});
  row_count_ += rows;
}

void ResultTable::SetRowStyle(std::size_t row, RowStyle style) {
  const auto at = std::lower_bound(styles_.begin(), styles_.end(), row,
                                   [](const auto& styled, std::size_t r) { return styled.first < r; });
  if (at != styles_.end() && at->first == row) at->second = style;
  else styles_.insert(at, {row, style});
}

const ResultTable::Block& ResultTable::BlockOf(std::size_t row) const {
  if (row >= row_count_) throw std::out_of_range("result grid has no row " + std::to_string(row));
  const auto after = std::upper_bound(blocks_.begin(), blocks_.end(), row,
                                      [](std::size_t r, const Block& block) { return r < block.firstRow; });
  return *(after - 1);
}

std::size_t ResultTable::RowWidth(std::size_t row) const {
  const Block& block = BlockOf(row);
  return block.columns.empty() ? block.textRows[row - block.firstRow].size() : block.columns.size();
}

std::size_t ResultTable::Width() const {
  std::size_t width = columns.size();
  for (const Block& block : blocks_) {
    width = std::max(width, block.columns.size());
    for (const auto& row : block.textRows) width = std::max(width, row.size());
  }
  return width;
}

void ResultTable::AppendCell(std::size_t row, std::size_t column, std::string& out) const {
  const Block& block = BlockOf(row);
  if (!block.columns.empty()) {
    if (column < block.columns.size()) block.columns[column].AppendCell(row - block.firstRow, out);
    return;
  }
  const auto& cells = block.textRows[row - block.firstRow];
  if (column < cells.size()) out += cells[column];
}

std::string ResultTable::Cell(std::size_t row, std::size_t column) const {
  std::string text;
  AppendCell(row, column, text);
  return text;
}

std::vector<std::string> ResultTable::Row(std::size_t row) const {
  std::vector<std::string> cells(RowWidth(row));
  for (std::size_t c = 0; c < cells.size(); ++c) AppendCell(row, c, cells[c]);
  return cells;
}

std::vector<std::vector<std::string>> ResultTable::TextRows() const {
  std::vector<std::vector<std::string>> rows(row_count_);
  for (std::size_t r = 0; r < row_count_; ++r) rows[r] = Row(r);
  return rows;
}

const RowStyle& ResultTable::StyleOfRow(std::size_t row) const {
  static const RowStyle kPlain;
  const auto at = std::lower_bound(styles_.begin(), styles_.end(), row,
                                   [](const auto& styled, std::size_t r) { return styled.first < r; });
  return at != styles_.end() && at->first == row ? at->second : kPlain;
}

bool ResultTable::ShowsNonFiniteNumber() const {
  for (const Block& block : blocks_) {
    for (const auto& cells : block.textRows)
      if (std::any_of(cells.begin(), cells.end(), [](const std::string& text) { return ShowsNonFiniteText(text); }))
        return true;
    for (const GridColumn& column : block.columns)
      if (column.ShowsNonFiniteNumber()) return true;
  }
  return false;
}

bool ResultTable::HasHeading() const {
  return std::any_of(columns.begin(), columns.end(), [](const std::string& caption) { return !caption.empty(); });
}

}  // namespace orvik::shell
