#include "cli/json_writer.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

// Every golden case checks the writer's commas, nesting and streamed grid
// cells byte for byte; these are the texts the cases may not reach.
namespace orvik::cli {
namespace {

TEST(JsonWriterTest, EscapesControlCharactersQuotesAndBackslashes) {
  EXPECT_EQ(JsonEscape("a\"b\\c\r\n\t\x01"), "a\\\"b\\\\c\\r\\n\\t\\u0001");
  EXPECT_EQ(JsonEscape("μ ± σ"), "μ ± σ");  // UTF-8 passes through
  EXPECT_EQ(JsonEscape("\xF0\x9F\x98\x80 \xEF\xBF\xBF"), "\xF0\x9F\x98\x80 \xEF\xBF\xBF");
  // Bytes that are not well-formed UTF-8 (a stray Latin-1 byte, a cut or
  // overlong sequence, an encoded surrogate) become U+FFFD, one per byte.
  EXPECT_EQ(JsonEscape("Caf\xE9"), "Caf\\ufffd");
  EXPECT_EQ(JsonEscape("\xE2\x82"), "\\ufffd\\ufffd");
  EXPECT_EQ(JsonEscape("\xC0\xAF\"x"), "\\ufffd\\ufffd\\\"x");
  EXPECT_EQ(JsonEscape("\xED\xA0\x80"), "\\ufffd\\ufffd\\ufffd");
}

TEST(JsonWriterTest, NumbersCarryTheirFullValue) {
  const double values[] = {0.1, 1.0 / 3, 1e-300, 123456789.123456789, -2.5e17, 5e-324};
  for (const double value : values) EXPECT_EQ(std::strtod(ExactNumberText(value).c_str(), nullptr), value);
  EXPECT_EQ(ExactNumberText(200), "200");
  JsonWriter json;
  json.NumberArray(std::vector<double>{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1});
  EXPECT_EQ(json.Text(), "[null,null,1]");
}

TEST(JsonWriterTest, NumbersOfFewPlacesWriteAsToCharsDoes) {
  // Numbers of a few decimal places take a quicker path; the text must stay
  // std::to_chars' own, which turns trailing zeros into an exponent
  // ("1e+06") and writes whichever notation is shorter.
  std::vector<double> values = {1, -3, 17, 10, 1000000, 123456789012345, -999999999999999, 1e15, 4503599627370497,
                                -0.0, 7.5, 0.001, 0.0001, 0.00012, 1e14 + 0.5, 999.9999999999999, 0.1 + 0.2};
  std::mt19937_64 random(42);
  std::uniform_int_distribution<long long> units(-99999999999LL, 99999999999LL);
  std::uniform_int_distribution<int> places(0, 12);
  std::uniform_real_distribution<double> any(-1e6, 1e6);
  for (int i = 0; i < 300000; ++i) {
    values.push_back(static_cast<double>(units(random)) / std::pow(10.0, places(random)));
    values.push_back(any(random));
  }
  for (const double value : values) {
    char buffer[32];
    const std::string expected(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    ASSERT_EQ(ExactNumberText(value), expected) << value;
  }
}

}  // namespace
}  // namespace orvik::cli
