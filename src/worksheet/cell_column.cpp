#include "worksheet/cell_column.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace orvik::worksheet {

namespace {

// A column whose last filled row lies this far beyond its filled cells (and
// past kDenseSlack rows) keeps its cells as (row, span) pairs; it goes back
// to one span per row once that costs no more than twice the pairs.
constexpr long kSparseRatio = 32;
constexpr long kDenseSlack = 4096;

}  // namespace

const CellColumn::Span* CellColumn::Find(long row) const {
  if (!sparse_mode_) return row >= 1 && row <= static_cast<long>(spans_.size()) ? &spans_[row - 1] : nullptr;
  const auto at = std::lower_bound(sparse_.begin(), sparse_.end(), row,
                                   [](const Placed& placed, long r) { return placed.row < r; });
  return at != sparse_.end() && at->row == row ? &at->span : nullptr;
}

std::string_view CellColumn::Text(long row) const {
  const Span* span = Find(row);
  if (span == nullptr) return {};
  return std::string_view(pool_).substr(span->offset, span->length);
}

void CellColumn::ToSparse() {
  sparse_.clear();
  for (long i = 0; i < static_cast<long>(spans_.size()); ++i)
    if (spans_[i].length != 0) sparse_.push_back({i + 1, spans_[i]});
  std::vector<Span>().swap(spans_);
  sparse_mode_ = true;
}

void CellColumn::ToDense() {
  spans_.assign(static_cast<std::size_t>(last_filled_row_), Span{});
  for (const Placed& placed : sparse_) spans_[placed.row - 1] = placed.span;
  std::vector<Placed>().swap(sparse_);
  sparse_mode_ = false;
}

CellColumn::Span* CellColumn::Slot(long row, bool create) {
  if (!sparse_mode_) {
    if (row > static_cast<long>(spans_.size())) {
      if (!create) return nullptr;
      spans_.resize(row);
    }
    return &spans_[row - 1];
  }
  auto at = std::lower_bound(sparse_.begin(), sparse_.end(), row,
                             [](const Placed& placed, long r) { return placed.row < r; });
  if (at != sparse_.end() && at->row == row) return &at->span;
  if (!create) return nullptr;
  return &sparse_.insert(at, Placed{row, Span{}})->span;
}

void CellColumn::SetText(long row, std::string_view text) {
  if (row < 1) throw std::out_of_range("worksheet rows are counted from 1");
  // A text far below the filled cells would make every row between them
  // cost a span: such a column keeps pairs instead.
  if (!sparse_mode_ && !text.empty() && row > static_cast<long>(spans_.size()) && row > kDenseSlack &&
      row > kSparseRatio * (filled_cells_ + 1))
    ToSparse();
  Span* slot = Slot(row, !text.empty());
  if (slot == nullptr) return;
  const bool was_filled = slot->length != 0;
  garbage_ += slot->length;
  *slot = Span{};
  if (!text.empty()) {
    if (pool_.size() + text.size() > std::numeric_limits<std::uint32_t>::max()) {
      Compact();
      if (pool_.size() + text.size() > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("a worksheet column holds at most 4 GiB of text");
    }
    Span* target = Slot(row, true);  // Compact() keeps the slots in place
    target->offset = static_cast<std::uint32_t>(pool_.size());
    target->length = static_cast<std::uint32_t>(text.size());
    pool_.append(text);
  }
  if (was_filled != !text.empty()) filled_cells_ += was_filled ? -1 : 1;
  if (!text.empty()) {
    if (row > last_filled_row_) last_filled_row_ = row;
  } else if (sparse_mode_) {
    sparse_.erase(std::lower_bound(sparse_.begin(), sparse_.end(), row,
                                   [](const Placed& placed, long r) { return placed.row < r; }));
    last_filled_row_ = sparse_.empty() ? 0 : sparse_.back().row;
  } else if (row == last_filled_row_) {
    while (last_filled_row_ > 0 && spans_[last_filled_row_ - 1].length == 0) --last_filled_row_;
    spans_.resize(last_filled_row_);
  }
  if (sparse_mode_ && last_filled_row_ <= 4 * filled_cells_) ToDense();
  if (garbage_ > 4096 && garbage_ > pool_.size() / 2) Compact();
}

void CellColumn::InsertRows(long row, long count) {
  if (sparse_mode_) {
    if (row < 1 || count <= 0 || row > last_filled_row_) return;
    for (Placed& placed : sparse_)
      if (placed.row >= row) placed.row += count;
    last_filled_row_ += count;
    return;
  }
  if (row < 1 || count <= 0 || row > static_cast<long>(spans_.size())) return;
  spans_.insert(spans_.begin() + (row - 1), count, Span{});
  last_filled_row_ += count;
}

void CellColumn::RemoveRows(long row, long count) {
  if (sparse_mode_) {
    if (row < 1 || count <= 0 || row > last_filled_row_) return;
    const long end = row + std::min(count, last_filled_row_ - row + 1);  // first row kept
    std::vector<Placed> kept;
    kept.reserve(sparse_.size());
    for (const Placed& placed : sparse_) {
      if (placed.row >= row && placed.row < end) garbage_ += placed.span.length;
      else kept.push_back({placed.row < row ? placed.row : placed.row - (end - row), placed.span});
    }
    sparse_ = std::move(kept);
    RecountFilled();
    if (garbage_ > 4096 && garbage_ > pool_.size() / 2) Compact();
    return;
  }
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
  sparse_.shrink_to_fit();
  pool_.shrink_to_fit();
}

void CellColumn::Compact() {
  std::string packed;
  packed.reserve(pool_.size() - garbage_);
  const auto pack = [&](Span& span) {
    if (span.length == 0) return;
    const auto offset = static_cast<std::uint32_t>(packed.size());
    packed.append(pool_, span.offset, span.length);
    span.offset = offset;
  };
  for (Span& span : spans_) pack(span);
  for (Placed& placed : sparse_) pack(placed.span);
  pool_ = std::move(packed);
  garbage_ = 0;
}

void CellColumn::RecountFilled() {
  if (sparse_mode_) {
    filled_cells_ = static_cast<long>(sparse_.size());
    last_filled_row_ = sparse_.empty() ? 0 : sparse_.back().row;
    if (last_filled_row_ <= 4 * filled_cells_) ToDense();
    return;
  }
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
