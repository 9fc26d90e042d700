#include "cli/cell_range.h"

#include <cctype>

namespace orvik::cli {

namespace {

constexpr long kLargestIndex = 1L << 40;

// One corner: column letters and/or row digits.
struct Corner {
  long column = 0;  // 0: no letters
  long row = 0;     // 0: no digits
};

std::optional<Corner> ParseCorner(std::string_view text) {
  Corner corner;
  std::size_t i = 0;
  for (; i < text.size() && std::isalpha(static_cast<unsigned char>(text[i])); ++i) {
    corner.column = corner.column * 26 + (std::toupper(static_cast<unsigned char>(text[i])) - 'A' + 1);
    if (corner.column > kLargestIndex) return std::nullopt;
  }
  for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i) {
    corner.row = corner.row * 10 + (text[i] - '0');
    if (corner.row > kLargestIndex) return std::nullopt;
  }
  if (i != text.size() || (corner.column == 0 && corner.row == 0)) return std::nullopt;
  if (i > 0 && corner.row == 0 && std::isdigit(static_cast<unsigned char>(text.back()))) return std::nullopt;  // row 0
  return corner;
}

}  // namespace

std::optional<worksheet::GridSelection> ParseCellRange(std::string_view text) {
  worksheet::GridSelection sel;
  sel.IsBlockSelected = true;
  if (text == "all" || text == "ALL") {
    sel.SelBlockCol = sel.SelBlockCol2 = sel.SelBlockRow = sel.SelBlockRow2 = -1;
    return sel;
  }
  const auto colon = text.find(':');
  const auto first = ParseCorner(text.substr(0, colon));
  const auto second = colon == std::string_view::npos ? first : ParseCorner(text.substr(colon + 1));
  if (!first || !second) return std::nullopt;

  const bool first_cell = first->column > 0 && first->row > 0;
  const bool second_cell = second->column > 0 && second->row > 0;
  if (first_cell && second_cell) {
    sel.SelBlockCol = first->column, sel.SelBlockRow = first->row;
    sel.SelBlockCol2 = second->column, sel.SelBlockRow2 = second->row;
  } else if (colon != std::string_view::npos && first->row == 0 && second->row == 0) {
    sel.SelBlockCol = first->column, sel.SelBlockCol2 = second->column;
    sel.SelBlockRow = sel.SelBlockRow2 = -1;
  } else if (colon != std::string_view::npos && first->column == 0 && second->column == 0) {
    sel.SelBlockRow = first->row, sel.SelBlockRow2 = second->row;
    sel.SelBlockCol = sel.SelBlockCol2 = -1;
  } else {
    return std::nullopt;
  }
  return sel;
}

}  // namespace orvik::cli
