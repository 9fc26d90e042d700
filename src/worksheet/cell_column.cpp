#include "worksheet/cell_column.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace orvik::worksheet {

std::string_view CellColumn::Text(long row) const {
  if (row < 1 || row > static_cast<long>(spans_.size())) return {};
  const Span& span = spans_[row - 1];
  return std::string_view(pool_).substr(span.offset, span.length);
}

void CellColumn::SetText(long row, std::string_view text) {
  if (row < 1) throw std::out_of_range("worksheet rows are counted from 1");
  if (row > static_cast<long>(spans_.size())) {
    if (text.empty()) return;
    spans_.resize(row);
  }
  Span& span = spans_[row - 1];
  const bool was_filled = span.length != 0;
  garbage_ += span.length;
  span = Span{};
  if (!text.empty()) {
    if (pool_.size() + text.size() > std::numeric_limits<std::uint32_t>::max()) {
      Compact();
      if (pool_.size() + text.size() > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("a worksheet column holds at most 4 GiB of text");
    }
    Span& target = spans_[row - 1];  // Compact() keeps the spans vector in place
    target.offset = static_cast<std::uint32_t>(pool_.size());
    target.length = static_cast<std::uint32_t>(text.size());
    pool_.append(text);
  }
  if (was_filled != !text.empty()) filled_cells_ += was_filled ? -1 : 1;
  if (!text.empty()) {
    if (row > last_filled_row_) last_filled_row_ = row;
  } else if (row == last_filled_row_) {
    while (last_filled_row_ > 0 && spans_[last_filled_row_ - 1].length == 0) --last_filled_row_;
    spans_.resize(last_filled_row_);
  }
  if (garbage_ > 4096 && garbage_ > pool_.size() / 2) Compact();
}

void CellColumn::InsertRows(long row, long count) {
  if (row < 1 || count <= 0 || row > static_cast<long>(spans_.size())) return;
  spans_.insert(spans_.begin() + (row - 1), count, Span{});
  last_filled_row_ += count;
}

void CellColumn::RemoveRows(long row, long count) {
  const long stored = static_cast<long>(spans_.size());
  if (row < 1 || count <= 0 || row > stored) return;
  const long end = std::min(stored, row - 1 + count);
  for (long i = row - 1; i < end; ++i) garbage_ += spans_[i].length;
  spans_.erase(spans_.begin() + (row - 1), spans_.begin() + end);
  RecountFilled();
  if (garbage_ > 4096 && garbage_ > pool_.size() / 2) Compact();
}

void CellColumn::ShrinkToFit() {
  if (garbage_ > 0) Compact();
  spans_.shrink_to_fit();
  pool_.shrink_to_fit();
}

void CellColumn::Compact() {
  std::string packed;
  packed.reserve(pool_.size() - garbage_);
  for (Span& span : spans_) {
    if (span.length == 0) continue;
    const auto offset = static_cast<std::uint32_t>(packed.size());
    packed.append(pool_, span.offset, span.length);
    span.offset = offset;
  }
  pool_ = std::move(packed);
  garbage_ = 0;
}

void CellColumn::RecountFilled() {
  filled_cells_ = 0;
  last_filled_row_ = 0;
  for (long i = 0; i < static_cast<long>(spans_.size()); ++i) {
    if (spans_[i].length == 0) continue;
    ++filled_cells_;
    last_filled_row_ = i + 1;
  }
  spans_.resize(last_filled_row_);
}

}  // namespace orvik::worksheet
