#include "stats/decimal_numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace orvik::stats {
namespace {

struct RoundCase {
  double x;
  int decimals;
  double expected;
};

TEST(RoundTest, TiesGoToTheEvenDigitOfTheShortestDecimalForm) {
  const RoundCase cases[] = {
      {2.5, 0, 2},        {3.5, 0, 4},       {-1.5, 0, -2},      {-2.5, 0, -2},     {0.5, 0, 0},
      {1.5, 0, 2},        {0.125, 2, 0.12},  {0.375, 2, 0.38},   {2.675, 2, 2.68},  {1.005, 2, 1.0},
      {1.015, 2, 1.02},   {2.665, 2, 2.66},  {-0.125, 2, -0.12}, {1234.5, -1, 1230}, {1250, -2, 1200},
      {1350, -2, 1400},   {0.0005, 3, 0.0},  {0.0015, 3, 0.002}, {9.995, 2, 10.0},   {99.95, 1, 100.0},
  };
  for (const auto& c : cases) EXPECT_EQ(Round(c.x, c.decimals), c.expected) << c.x << " to " << c.decimals;
}

TEST(RoundTest, NonTiesRoundToTheNearestValue) {
  const RoundCase cases[] = {
      {1.666666666, 6, 1.666667}, {-1.666666666, 6, -1.666667}, {2.6751, 2, 2.68},  {2.6749, 2, 2.67},
      {0.0049, 2, 0.0},           {0.0051, 2, 0.01},            {0.4, 0, 0.0},      {0.6, 0, 1.0},
      {123456.789, 1, 123456.8},  {1e-20, 6, 0.0},              {3.14159, 10, 3.14159},
      {0.1 + 0.2, 15, 0.3},  // 0.30000000000000004 rounds back to the 0.3 the user meant
  };
  for (const auto& c : cases) EXPECT_EQ(Round(c.x, c.decimals), c.expected) << c.x << " to " << c.decimals;
}

TEST(RoundTest, LeavesValuesWithoutFurtherDigitsAndNonFiniteValuesAlone) {
  EXPECT_EQ(Round(0.1, 8), 0.1);
  EXPECT_EQ(Round(1e300, 2), 1e300);
  EXPECT_EQ(Round(0.0, 3), 0.0);
  EXPECT_TRUE(std::isnan(Round(std::numeric_limits<double>::quiet_NaN(), 2)));
  EXPECT_EQ(Round(-std::numeric_limits<double>::infinity(), 2), -std::numeric_limits<double>::infinity());
}

TEST(FormatNumberTest, ShowsTheShortestTextWithoutTrailingZeros) {
  const struct {
    double x;
    const char* text;
  } cases[] = {
      {2.5, "2.5"},          {10, "10"},           {1.666667, "1.666667"}, {-0.25, "-0.25"},
      {0, "0"},              {-0.0, "0"},          {0.1, "0.1"},           {100000, "100000"},
      {1.0 / 3, "0.333333333333333"},  // 15 significant digits at most
      {2.0 / 3, "0.666666666666667"},
      {0.1 + 0.2, "0.3"},    {123456789012345, "123456789012345"},
      {0.00001234, "0.00001234"}, {1e-6, "0.000001"}, {1.5e-7, "0.00000015"}, {1.5e-8, "1.5E-08"}, {2e20, "2E+20"}, {1e15, "1E+15"},
      {-1.25e-10, "-1.25E-10"}, {1e100, "1E+100"},
  };
  for (const auto& c : cases) EXPECT_EQ(FormatNumber(c.x), c.text) << c.x;
}

TEST(FormatNumberTest, NamesNonFiniteValues) {
  EXPECT_EQ(FormatNumber(std::numeric_limits<double>::quiet_NaN()), "NaN");
  EXPECT_EQ(FormatNumber(std::numeric_limits<double>::infinity()), "Infinity");
  EXPECT_EQ(FormatNumber(-std::numeric_limits<double>::infinity()), "-Infinity");
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
