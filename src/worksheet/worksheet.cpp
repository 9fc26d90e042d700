#include "worksheet/worksheet.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>

namespace orvik::worksheet {

namespace {
const std::string kNoHeaderName;
}

Worksheet::Worksheet(std::string name, long max_rows, long max_cols)
    : name_(std::move(name)), max_rows_(std::max(1L, max_rows)), max_cols_(std::max(1L, max_cols)) {
  Touch();
}

void Worksheet::SetMaxRows(long rows) {
  Touch();
  rows = std::max(1L, rows);
  if (rows < data_row_cnt_) {
    for (auto& column : columns_) column.RemoveRows(rows + 1, data_row_cnt_ - rows);
    RecomputeExtent();
  }
  max_rows_ = rows;
}

void Worksheet::SetMaxCols(long cols) {
  Touch();
  cols = std::max(1L, cols);
  if (cols < DataColCnt()) {
    columns_.resize(cols);
    RecomputeExtent();
  }
  max_cols_ = cols;
}

std::string_view Worksheet::Text(long row, long col) const {
  if (col < 1 || col > DataColCnt()) return {};
  return columns_[col - 1].Text(row);
}

void Worksheet::SetText(long row, long col, std::string_view text) {
  Touch();
  if (row < 1 || col < 1) throw std::out_of_range("worksheet cells are counted from 1");
  if (col > DataColCnt()) {
    if (text.empty()) return;
    columns_.resize(col);
  }
  CellColumn& column = columns_[col - 1];
  const bool was_last_row = column.LastFilledRow() == data_row_cnt_;
  column.SetText(row, text);
  max_rows_ = std::max(max_rows_, row);
  max_cols_ = std::max(max_cols_, col);
  if (!text.empty()) {
    data_row_cnt_ = std::max(data_row_cnt_, row);
  } else if (was_last_row || column.IsEmpty()) {
    RecomputeExtent();
  }
}

std::string Worksheet::ColumnHeader(long col) const {
  const std::string& own = ColumnHeaderName(col);
  return own.empty() ? ColumnLetters(col) : own;
}

const std::string& Worksheet::ColumnHeaderName(long col) const {
  if (col < 1 || col > static_cast<long>(header_names_.size())) return kNoHeaderName;
  return header_names_[col - 1];
}

void Worksheet::SetColumnHeader(long col, std::string name) {
  Touch();
  if (col < 1) throw std::out_of_range("worksheet columns are counted from 1");
  if (col > static_cast<long>(header_names_.size())) {
    if (name.empty()) return;
    header_names_.resize(col);
  }
  header_names_[col - 1] = std::move(name);
}

void Worksheet::InsertRows(long at, long count) {
  Touch();
  if (at < 1 || count <= 0) return;
  for (auto& column : columns_) column.InsertRows(at, count);
  max_rows_ += count;
  RecomputeExtent();
}

void Worksheet::DeleteRows(long at, long count) {
  Touch();
  if (at < 1 || count <= 0) return;
  for (auto& column : columns_) column.RemoveRows(at, count);
  max_rows_ = std::max(1L, max_rows_ - std::min(count, std::max(0L, max_rows_ - at + 1)));
  RecomputeExtent();
}

void Worksheet::InsertColumns(long at, long count) {
  Touch();
  if (at < 1 || count <= 0) return;
  if (at <= DataColCnt()) columns_.insert(columns_.begin() + (at - 1), count, CellColumn{});
  if (at <= static_cast<long>(header_names_.size()))
    header_names_.insert(header_names_.begin() + (at - 1), count, std::string{});
  max_cols_ += count;
  RecomputeExtent();
}

void Worksheet::DeleteColumns(long at, long count) {
  Touch();
  if (at < 1 || count <= 0) return;
  auto erase_from = [at, count](auto& items) {
    const long size = static_cast<long>(items.size());
    if (at > size) return;
    items.erase(items.begin() + (at - 1), items.begin() + std::min(size, at - 1 + count));
  };
  erase_from(columns_);
  erase_from(header_names_);
  max_cols_ = std::max(1L, max_cols_ - std::min(count, std::max(0L, max_cols_ - at + 1)));
  RecomputeExtent();
}

void Worksheet::ShrinkToFit() {
  for (auto& column : columns_) column.ShrinkToFit();
}

void Worksheet::Touch() {
  // One counter for all sheets, so that no two sheets share a revision.
  static std::atomic<std::uint64_t> last{0};
  revision_ = ++last;
}

void Worksheet::RecomputeExtent() {
  while (!columns_.empty() && columns_.back().IsEmpty()) columns_.pop_back();
  data_row_cnt_ = 0;
  for (const auto& column : columns_) data_row_cnt_ = std::max(data_row_cnt_, column.LastFilledRow());
}

bool WithinGrid(const GridSelection& selection) {
  const auto fits = [](long index, long limit) { return index == -1 || (index >= 1 && index <= limit); };
  return fits(selection.SelBlockCol, kGridMaxCols) && fits(selection.SelBlockCol2, kGridMaxCols) &&
         fits(selection.SelBlockRow, kGridMaxRows) && fits(selection.SelBlockRow2, kGridMaxRows);
}

std::string ColumnLetters(long col) {
  std::string letters;
  for (; col > 0; col = (col - 1) / 26) letters.insert(letters.begin(), static_cast<char>('A' + (col - 1) % 26));
  return letters;
}

}  // namespace orvik::worksheet
