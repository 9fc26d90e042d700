#include "stats/decimal_numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "support/case_table.h"

namespace orvik::stats {
namespace {

// Ties, non-ties, values without further digits and the texts of
// data/decimal_numbers.tsv.
TEST(RoundTest, RoundsAndFormatsEachValueOfTheTable) {
  for (const auto& row : testing_support::ReadCases("stats/data/decimal_numbers.tsv")) {
    if (row[0] == "round") {
      EXPECT_EQ(Round(row.Number(1), std::stoi(row[2])), row.Number(3)) << row.Where();
    } else if (row[0] == "difference") {
      EXPECT_EQ(DecimalDifference(row.Number(1), row.Number(2)), row.Number(3)) << row.Where();
    } else {
      EXPECT_EQ(FormatNumber(row.Number(1)), row[2]) << row.Where();
    }
  }
  EXPECT_TRUE(std::isnan(Round(std::numeric_limits<double>::quiet_NaN(), 2)));
}

TEST(FormatNumberTest, ReadsBackToTheRoundedValue) {
  // What the grid shows must read back to what was stored, for the values
  // the analyses store: numbers rounded to a fixed number of places.
  for (int i = 1; i < 20000; ++i) {
    const double value = Round(i * 0.0137 - 91.3, i % 9);
    EXPECT_EQ(std::stod(FormatNumber(value)), value) << value;
  }
}

// Decimal rounding done on the text, the slow way: the shortest digits of
// x rounded to `places` with ties to the even digit, read back.
double RoundOnText(double x, int places) {
  char buffer[64];
  const std::string text(buffer, std::to_chars(buffer, buffer + sizeof buffer, x, std::chars_format::scientific).ptr);
  const bool negative = text[0] == '-';
  std::string digits;
  const auto e = text.find('e');
  for (char c : text.substr(negative, e - negative))
    if (c != '.') digits += c;
  const int exponent = std::stoi(text.substr(e + 1));
  const long keep = exponent + 1L + places;
  if (keep >= static_cast<long>(digits.size())) return x;
  if (keep < 0) return 0.0;
  std::string kept = digits.substr(0, keep);
  const bool tie = digits[keep] == '5' && digits.find_first_not_of('0', keep + 1) == std::string::npos;
  const bool up = digits[keep] > '5' || (digits[keep] == '5' && (!tie || (!kept.empty() && (kept.back() - '0') % 2)));
  if (up) {
    int i = static_cast<int>(kept.size()) - 1;
    for (; i >= 0 && kept[i] == '9'; --i) kept[i] = '0';
    if (i >= 0) ++kept[i];
    else kept.insert(kept.begin(), '1');
  }
  if (kept.find_first_not_of('0') == std::string::npos) return 0.0;
  const double magnitude = std::stod(kept + "e" + std::to_string(-places));
  return negative ? -magnitude : magnitude;
}

TEST(RoundTest, AgreesWithRoundingTheShortestTextByHand) {
  // Round and the grids' one-conversion text take shortcuts by scaling;
  // both must give exactly what rounding the digits by hand gives, over
  // magnitudes, signs, ties (0.125, 2.675), carries (9.995), values that
  // vanish and values of more than 15 digits after rounding.
  std::mt19937_64 random(20261124);
  std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
  std::uniform_int_distribution<int> exponent(-12, 18), places(-3, 16);
  std::vector<double> values = {9.995, 0.125, 2.675, -1.5, 0.5, 99999.999999999, 12345678.123456789, 1e-300, 5e-9};
  for (int i = 0; i < 200000; ++i) {
    values.push_back(mantissa(random) * std::pow(10.0, exponent(random)));
    // Values with few decimals and their differences, as data and ranges are.
    values.push_back(std::round(mantissa(random) * 1e4) / 1e3 - std::round(mantissa(random) * 1e4) / 1e3);
  }
  for (const double x : values) {
    const int d = places(random);
    const double expected = RoundOnText(x, d);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(Round(x, d)), std::bit_cast<std::uint64_t>(expected)) << x << " to " << d;
    std::string text;
    AppendRoundedNumber(x, d, text);
    ASSERT_EQ(text, FormatNumber(expected)) << x << " to " << d;
  }
}

}  // namespace
}  // namespace orvik::stats
