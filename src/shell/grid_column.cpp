#include "shell/grid_column.h"

#include <algorithm>
#include <cmath>

#include "stats/decimal_numbers.h"

namespace orvik::shell {

void NumberDisplay::Append(double value, std::string& out) const {
  if (rounded) stats::AppendRoundedNumber(value, decimals, out);
  else stats::AppendNumber(value, out);
}

GridColumn GridColumn::Texts(std::vector<std::string> texts) {
  GridColumn column;
  column.length_ = texts.size();
  column.cells_ = TextCells{std::move(texts)};
  return column;
}

GridColumn GridColumn::Numbers(NumberSeries values, NumberDisplay display) {
  GridColumn column;
  column.length_ = values.size();
  column.cells_ = NumberCells{std::move(values), display};
  return column;
}

GridColumn GridColumn::Repeated(std::string text, std::size_t count) {
  GridColumn column;
  column.length_ = count;
  column.cells_ = RepeatedCell{std::move(text)};
  return column;
}

GridColumn GridColumn::Coded(std::vector<std::uint32_t> indices, std::vector<std::string> texts) {
  GridColumn column;
  column.length_ = indices.size();
  column.cells_ = CodeCells{std::move(indices), std::move(texts)};
  return column;
}

std::string_view GridColumn::CellView(std::size_t row, std::string& scratch) const {
  if (row < first_ || row >= first_ + length_) return {};
  const std::size_t i = row - first_;
  switch (cells_.index()) {
    case 0: return std::get<TextCells>(cells_).texts[i];
    case 2: return std::get<RepeatedCell>(cells_).text;
    case 3: {
      const auto& codes = std::get<CodeCells>(cells_);
      return codes.distinct[codes.indices[i]];
    }
    default:
      scratch.clear();
      AppendCell(row, scratch);
      return scratch;
  }
}

GridColumn& GridColumn::StartingAt(std::size_t row) {
  first_ = row;
  return *this;
}

void GridColumn::AppendCell(std::size_t row, std::string& out) const {
  if (const auto* numbers = std::get_if<NumberCells>(&cells_)) {
    if (row >= first_ && row < first_ + length_) numbers->display.Append(numbers->values[row - first_], out);
    return;
  }
  std::string unused;
  out += CellView(row, unused);
}

bool ShowsNonFiniteText(std::string_view text) {
  const auto is_letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  for (const std::string_view word : {std::string_view("Infinity"), std::string_view("NaN")}) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
      const std::size_t end = at + word.size();
      if ((at == 0 || !is_letter(text[at - 1])) && (end == text.size() || !is_letter(text[end]))) return true;
    }
  }
  return false;
}

bool GridColumn::ShowsNonFiniteNumber() const {
  switch (cells_.index()) {
    case 0:
      return std::any_of(std::get<TextCells>(cells_).texts.begin(), std::get<TextCells>(cells_).texts.end(),
                         [](const std::string& text) { return ShowsNonFiniteText(text); });
    case 1: {
      const auto& values = std::get<NumberCells>(cells_).values.Values();
      return !std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
    }
    case 2: return ShowsNonFiniteText(std::get<RepeatedCell>(cells_).text);
    default: {
      const auto& codes = std::get<CodeCells>(cells_);
      return std::any_of(codes.distinct.begin(), codes.distinct.end(),
                         [](const std::string& text) { return ShowsNonFiniteText(text); });
    }
  }
}

}  // namespace orvik::shell
