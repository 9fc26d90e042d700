#include "cli/json_writer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <sstream>

// Every golden case checks the writer's commas, nesting and streamed grid
// cells byte for byte; these are the texts the cases may not reach.
namespace orvik::cli {
namespace {

TEST(JsonWriterTest, EscapesControlCharactersQuotesAndBackslashes) {
  EXPECT_EQ(JsonEscape("a\"b\\c\r\n\t\x01"), "a\\\"b\\\\c\\r\\n\\t\\u0001");
  EXPECT_EQ(JsonEscape("μ ± σ"), "μ ± σ");  // UTF-8 passes through
}

TEST(JsonWriterTest, NumbersCarryTheirFullValue) {
  const double values[] = {0.1, 1.0 / 3, 1e-300, 123456789.123456789, -2.5e17, 5e-324};
  for (const double value : values) EXPECT_EQ(std::strtod(ExactNumberText(value).c_str(), nullptr), value);
  EXPECT_EQ(ExactNumberText(200), "200");
  JsonWriter json;
  json.NumberArray(std::vector<double>{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1});
  EXPECT_EQ(json.Text(), "[null,null,1]");
}

TEST(JsonWriterTest, WholeNumbersReadAsTheShortestTextOfTheDouble) {
  // Whole numbers take a quicker path; the text must stay the double's own
  // shortest text, which turns trailing zeros into an exponent ("1e+06").
  const double values[] = {1, -3, 17, 10, 1000000, 123456789012345, -999999999999999, 1e15, 4503599627370497, -0.0, 7.5};
  for (const double value : values) {
    JsonWriter json;
    json.Number(value);
    EXPECT_EQ(json.Text(), ExactNumberText(value)) << value;
  }
}

}  // namespace
}  // namespace orvik::cli
