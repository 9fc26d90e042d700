#include "worksheet/cell_number.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace orvik::worksheet {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::optional<double> ParseCellNumber(std::string_view text) {
  std::size_t begin = 0;
  std::size_t end = text.size();
  while (begin < end && IsBlank(text[begin])) ++begin;
  while (end > begin && IsBlank(text[end - 1])) --end;
  if (begin == end) return std::nullopt;

  // Validate the grammar by hand: std::from_chars alone would also accept
  // "inf", "nan" and hexadecimal forms, and rejects a leading '+'.
  bool negative = false;
  if (text[begin] == '+' || text[begin] == '-') {
    negative = text[begin] == '-';
    ++begin;
  }
  std::size_t pos = begin;
  std::size_t digits = 0;
  while (pos < end && IsDigit(text[pos])) ++pos, ++digits;
  if (pos < end && text[pos] == '.') {
    ++pos;
    while (pos < end && IsDigit(text[pos])) ++pos, ++digits;
  }
  if (digits == 0) return std::nullopt;
  if (pos < end && (text[pos] == 'e' || text[pos] == 'E')) {
    ++pos;
    if (pos < end && (text[pos] == '+' || text[pos] == '-')) ++pos;
    std::size_t exponent_digits = 0;
    while (pos < end && IsDigit(text[pos])) ++pos, ++exponent_digits;
    if (exponent_digits == 0) return std::nullopt;
  }
  if (pos != end) return std::nullopt;

  double value = 0.0;
  // from_chars reads "+" nowhere, and "-" only when it is ours to apply; it
  // returns result_out_of_range for overflow and underflow alike.
  const auto [ptr, error] = std::from_chars(text.data() + begin, text.data() + end, value);
  if (ptr != text.data() + end) return std::nullopt;
  if (error == std::errc::result_out_of_range) {
    // from_chars leaves the value untouched on overflow and on underflow;
    // strtod tells them apart: underflow reads as zero or a subnormal value,
    // overflow is refused.
    const std::string copy(text.substr(begin, end - begin));
    value = std::strtod(copy.c_str(), nullptr);
    if (std::isinf(value)) return std::nullopt;
  } else if (error != std::errc{}) {
    return std::nullopt;
  }
  return negative ? -value : value;
}

std::string TrimBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(" \t");
  return std::string(text.substr(first, last - first + 1));
}

}  // namespace orvik::worksheet
