#include "stats/decimal_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace orvik::stats {

namespace {

// A finite non-zero double as sign, significant digits and decimal exponent:
// |x| = d1.d2d3... x 10^exponent, with no trailing zero digits.
struct DecimalDigits {
  bool negative = false;
  std::string digits;
  int exponent = 0;
};

// `precision` < 0 asks for the shortest digits that read back to x; otherwise
// x is rounded to precision + 1 significant digits.
DecimalDigits ToDecimalDigits(double x, int precision = -1) {
  char buffer[64];
  const auto result = precision < 0
                          ? std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::scientific)
                          : std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::scientific,
                                          precision);
  std::string_view text(buffer, result.ptr - buffer);
  DecimalDigits out;
  if (text.front() == '-') {
    out.negative = true;
    text.remove_prefix(1);
  }
  const auto e = text.find('e');
  for (char c : text.substr(0, e))
    if (c != '.') out.digits.push_back(c);
  while (out.digits.size() > 1 && out.digits.back() == '0') out.digits.pop_back();
  std::from_chars(text.data() + e + 1 + (text[e + 1] == '+'), text.data() + text.size(), out.exponent);
  return out;
}

double ParseDouble(const std::string& text) {
  double value = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace

double Round(double x, int decimals) {
  if (!std::isfinite(x) || x == 0.0) return x;
  const DecimalDigits d = ToDecimalDigits(x);
  // Digits that stay: those before the decimal point plus `decimals` after it.
  const long keep = static_cast<long>(d.exponent) + 1 + decimals;
  if (keep >= static_cast<long>(d.digits.size())) return x;
  if (keep < 0) return 0.0;

  std::string kept = d.digits.substr(0, keep);
  const char first_dropped = d.digits[keep];
  const bool more_dropped = d.digits.size() > static_cast<std::size_t>(keep) + 1;
  const bool last_kept_odd = !kept.empty() && (kept.back() - '0') % 2 == 1;
  const bool round_up = first_dropped > '5' || (first_dropped == '5' && (more_dropped || last_kept_odd));
  if (round_up) {
    int i = static_cast<int>(kept.size()) - 1;
    for (; i >= 0 && kept[i] == '9'; --i) kept[i] = '0';
    if (i >= 0) ++kept[i];
    else kept.insert(kept.begin(), '1');
  }
  if (kept.empty() || kept.find_first_not_of('0') == std::string::npos) return 0.0;
  // The kept digits are an integer count of units of 10^-decimals.
  const double magnitude = ParseDouble(kept + "e" + std::to_string(-decimals));
  return d.negative ? -magnitude : magnitude;
}

int DecimalPlaces(double x) {
  if (!std::isfinite(x) || x == 0.0) return 0;
  const DecimalDigits d = ToDecimalDigits(x);
  return std::max(0, static_cast<int>(d.digits.size()) - 1 - d.exponent);
}

std::string FormatNumber(double x) {
  if (std::isnan(x)) return "NaN";
  if (std::isinf(x)) return x > 0 ? "Infinity" : "-Infinity";
  if (x == 0.0) return "0";
  DecimalDigits d = ToDecimalDigits(x);
  if (d.digits.size() > 15) d = ToDecimalDigits(x, 14);

  std::string text = d.negative ? "-" : "";
  const int count = static_cast<int>(d.digits.size());
  if (d.exponent >= -7 && d.exponent < 15) {
    if (d.exponent < 0) {
      text += "0.";
      text.append(-d.exponent - 1, '0');
      text += d.digits;
    } else if (count <= d.exponent + 1) {
      text += d.digits;
      text.append(d.exponent + 1 - count, '0');
    } else {
      text += d.digits.substr(0, d.exponent + 1);
      text += '.';
      text += d.digits.substr(d.exponent + 1);
    }
    return text;
  }
  text += d.digits.front();
  if (count > 1) text += "." + d.digits.substr(1);
  text += d.exponent < 0 ? "E-" : "E+";
  const int magnitude = std::abs(d.exponent);
  if (magnitude < 10) text += '0';
  text += std::to_string(magnitude);
  return text;
}

}  // namespace orvik::stats
