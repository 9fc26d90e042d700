#include "stats/decimal_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
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

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Rounding by scaling, for the common case where it is safe: the scaled
// product is off from x's shortest text times 10^decimals by at most
// 2.3E-16 of itself (one rounding of the product, half a unit of x), so
// when its fraction is farther than that from one half, the rounded digits
// are those of the nearest integer. Gives the rounded value as an integer count of units of
// 10^-decimals, or nothing where the digit-by-digit rounding must decide.
std::optional<long long> ScaledUnits(double x, int decimals) {
  if (decimals < 0 || decimals > 15) return std::nullopt;
  const double scaled = x * kPowersOfTen[decimals];
  const double magnitude = std::fabs(scaled);
  if (!(magnitude < 1e15)) return std::nullopt;
  const double fraction = magnitude - std::trunc(magnitude);
  if (std::fabs(fraction - 0.5) <= magnitude * 1e-15 + 1e-9) return std::nullopt;
  return static_cast<long long>(std::nearbyint(scaled));
}

double UnitsValue(long long units, int decimals) {
  // Both are exact doubles, so the quotient is the double nearest to the
  // decimal value, as reading its text would give.
  return units == 0 ? 0.0 : static_cast<double>(units) / kPowersOfTen[decimals];
}

// The grid text of units x 10^-decimals in plain notation; false when the
// number needs the scientific form (below 1E-07).
bool AppendUnits(long long units, int decimals, std::string& text) {
  if (units == 0) {
    text += '0';
    return true;
  }
  char digits[24];
  const unsigned long long magnitude = units < 0 ? 0ULL - static_cast<unsigned long long>(units) : units;
  const int count = static_cast<int>(std::to_chars(digits, digits + sizeof digits, magnitude).ptr - digits);
  if (count - 1 - decimals < -7) return false;
  int last = count;  // trailing zeros after the decimal point are dropped
  while (last > count - decimals && last > 0 && digits[last - 1] == '0') --last;
  if (units < 0) text += '-';
  if (count > decimals) {
    text.append(digits, count - decimals);
    if (last > count - decimals) {
      text += '.';
      text.append(digits + count - decimals, last - (count - decimals));
    }
  } else {
    text += "0.";
    text.append(decimals - count, '0');
    text.append(digits, last);
  }
  return true;
}

}  // namespace

double Round(double x, int decimals) {
  if (!std::isfinite(x) || x == 0.0) return x;
  if (const auto units = ScaledUnits(x, decimals)) return UnitsValue(*units, decimals);
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
  if (const auto units = ScaledUnits(x, decimals); units && AppendUnits(*units, decimals, text)) return;
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

namespace {

// The shortest decimal of x as a whole-number mantissa and a power of ten.
struct DecimalValue {
  long long mantissa = 0;
  int exponent = 0;
};

DecimalValue Decompose(double x) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::scientific).ptr;
  const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
  const std::size_t e = text.find('e');
  DecimalValue value;
  int fraction_digits = 0;
  bool in_fraction = false;
  bool negative = false;
  for (std::size_t i = 0; i < e; ++i) {
    const char c = text[i];
    if (c == '-') negative = true;
    else if (c == '.') in_fraction = true;
    else {
      value.mantissa = value.mantissa * 10 + (c - '0');
      if (in_fraction) ++fraction_digits;
    }
  }
  int power = 0;
  std::from_chars(text.data() + e + 1 + (text[e + 1] == '+' ? 1 : 0), text.data() + text.size(), power);
  value.exponent = power - fraction_digits;
  if (negative) value.mantissa = -value.mantissa;
  return value;
}

}  // namespace

double DecimalDifference(double x, double reference) {
  if (!std::isfinite(x) || !std::isfinite(reference)) return x - reference;
  if (x == reference) return 0.0;
  const DecimalValue a = Decompose(x);
  const DecimalValue b = Decompose(reference);
  const int exponent = std::min(a.exponent, b.exponent);
  // Mantissas have at most 17 digits; a shift keeps them within the 38
  // digits of a 128-bit integer while it is at most 20 places.
  if (a.exponent - exponent > 20 || b.exponent - exponent > 20) return x - reference;
  __int128 scaled_a = a.mantissa;
  __int128 scaled_b = b.mantissa;
  for (int i = exponent; i < a.exponent; ++i) scaled_a *= 10;
  for (int i = exponent; i < b.exponent; ++i) scaled_b *= 10;
  __int128 difference = scaled_a - scaled_b;
  // The difference as decimal text, read back with correct rounding.
  const bool negative = difference < 0;
  if (negative) difference = -difference;
  char digits[64];
  int length = 0;
  do {
    digits[length++] = static_cast<char>('0' + static_cast<int>(difference % 10));
    difference /= 10;
  } while (difference != 0);
  std::string text = negative ? "-" : "";
  for (int i = length; i-- > 0;) text += digits[i];
  text += 'e' + std::to_string(exponent);
  double result = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), result);
  return result;
}

}  // namespace orvik::stats
