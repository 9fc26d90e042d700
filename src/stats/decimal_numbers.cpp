#include "stats/decimal_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace orvik::stats {

namespace {

// A finite non-zero double as sign, significant digits and decimal exponent:
// |x| = d1.d2d3... x 10^exponent, with no trailing zero digits. The digits
// live in a fixed buffer: grids format millions of numbers through here.
struct DecimalDigits {
  bool negative = false;
  char digits[24];
  int count = 0;
  int exponent = 0;

  std::string_view Digits() const { return {digits, static_cast<std::size_t>(count)}; }
};

// `precision` < 0 asks for the shortest digits that read back to x; otherwise
// x is rounded to precision + 1 significant digits.
DecimalDigits ToDecimalDigits(double x, int precision = -1) {
  char buffer[64];
  const auto result = precision < 0
                          ? std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::scientific)
                          : std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::scientific,
                                          precision);
  const char* p = buffer;
  DecimalDigits out;
  if (*p == '-') {
    out.negative = true;
    ++p;
  }
  for (; p < result.ptr && *p != 'e'; ++p)
    if (*p != '.') out.digits[out.count++] = *p;
  while (out.count > 1 && out.digits[out.count - 1] == '0') --out.count;
  ++p;  // the 'e'
  if (*p == '+') ++p;
  std::from_chars(p, result.ptr, out.exponent);
  return out;
}

// Rounds the digits of `d` to `decimals` places with ties to the even digit.
// Returns false when nothing but zeros remains (the value rounds to 0).
bool RoundDigits(DecimalDigits& d, int decimals) {
  // Digits that stay: those before the decimal point plus `decimals` after it.
  const long keep = static_cast<long>(d.exponent) + 1 + decimals;
  if (keep >= d.count) return true;
  if (keep < 0) return false;
  const char first_dropped = d.digits[keep];
  const bool more_dropped = d.count > keep + 1;
  const bool last_kept_odd = keep > 0 && (d.digits[keep - 1] - '0') % 2 == 1;
  const bool round_up = first_dropped > '5' || (first_dropped == '5' && (more_dropped || last_kept_odd));
  d.count = static_cast<int>(keep);
  if (round_up) {
    int i = d.count - 1;
    for (; i >= 0 && d.digits[i] == '9'; --i) d.digits[i] = '0';
    if (i >= 0) {
      ++d.digits[i];
    } else {
      // All nines carried over: one more digit in front, a higher exponent.
      std::copy_backward(d.digits, d.digits + d.count, d.digits + d.count + 1);
      d.digits[0] = '1';
      ++d.count;
      ++d.exponent;
    }
  }
  while (d.count > 0 && d.digits[d.count - 1] == '0') --d.count;
  return d.count > 0;
}

// The grid text of the digits of a finite non-zero number with at most 15 of
// them; see FormatNumber.
void AppendDigits(const DecimalDigits& d, std::string& text) {
  if (d.negative) text += '-';
  const int count = d.count;
  if (d.exponent >= -7 && d.exponent < 15) {
    if (d.exponent < 0) {
      text += "0.";
      text.append(-d.exponent - 1, '0');
      text.append(d.digits, count);
    } else if (count <= d.exponent + 1) {
      text.append(d.digits, count);
      text.append(d.exponent + 1 - count, '0');
    } else {
      text.append(d.digits, d.exponent + 1);
      text += '.';
      text.append(d.digits + d.exponent + 1, count - d.exponent - 1);
    }
    return;
  }
  text += d.digits[0];
  if (count > 1) {
    text += '.';
    text.append(d.digits + 1, count - 1);
  }
  text += d.exponent < 0 ? "E-" : "E+";
  const int magnitude = std::abs(d.exponent);
  if (magnitude < 10) text += '0';
  text += std::to_string(magnitude);
}

// Appends the text of a value that is not finite or is zero; false otherwise.
bool AppendSpecial(double x, std::string& text) {
  if (std::isnan(x)) text += "NaN";
  else if (std::isinf(x)) text += x > 0 ? "Infinity" : "-Infinity";
  else if (x == 0.0) text += '0';
  else return false;
  return true;
}

double DigitsValue(const DecimalDigits& d) {
  char text[64];
  std::copy(d.digits, d.digits + d.count, text);
  int length = d.count;
  // Digits dropped as trailing zeros stand for powers of ten.
  const int scale = d.exponent + 1 - d.count;
  text[length++] = 'e';
  length = static_cast<int>(std::to_chars(text + length, text + sizeof text, scale).ptr - text);
  double magnitude = 0.0;
  std::from_chars(text, text + length, magnitude);
  return d.negative ? -magnitude : magnitude;
}

}  // namespace

double Round(double x, int decimals) {
  if (!std::isfinite(x) || x == 0.0) return x;
  DecimalDigits d = ToDecimalDigits(x);
  if (static_cast<long>(d.exponent) + 1 + decimals >= d.count) return x;
  if (!RoundDigits(d, decimals)) return 0.0;
  return DigitsValue(d);
}

int DecimalPlaces(double x) {
  if (!std::isfinite(x) || x == 0.0) return 0;
  const DecimalDigits d = ToDecimalDigits(x);
  return std::max(0, d.count - 1 - d.exponent);
}

void AppendNumber(double x, std::string& text) {
  if (AppendSpecial(x, text)) return;
  DecimalDigits d = ToDecimalDigits(x);
  if (d.count > 15) d = ToDecimalDigits(x, 14);
  AppendDigits(d, text);
}

void AppendRoundedNumber(double x, int decimals, std::string& text) {
  if (AppendSpecial(x, text)) return;
  DecimalDigits d = ToDecimalDigits(x);
  if (!RoundDigits(d, decimals)) {
    text += '0';
    return;
  }
  // A rounded text of more than 15 digits is cut to 15 from the rounded
  // double, exactly as FormatNumber(Round(x, decimals)) does.
  if (d.count > 15) return AppendNumber(DigitsValue(d), text);
  AppendDigits(d, text);
}

std::string FormatNumber(double x) {
  std::string text;
  AppendNumber(x, text);
  return text;
}

}  // namespace orvik::stats
