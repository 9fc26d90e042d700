#include "cli/json_writer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

namespace orvik::cli {
namespace {

TEST(JsonWriterTest, PlacesCommasAndNestsContainers) {
  JsonWriter json;
  json.BeginObject().Field("a", "x").Key("b").BeginArray().Integer(1).Number(2.5).BeginObject().EndObject().EndArray();
  json.Key("c").Null().EndObject();
  EXPECT_EQ(json.Text(), R"({"a":"x","b":[1,2.5,{}],"c":null})");
}

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

}  // namespace
}  // namespace orvik::cli
