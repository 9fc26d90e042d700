#include "worksheet/cell_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvik::worksheet {
namespace {

struct NumericCase {
  const char* text;
  double value;
};

TEST(CellNumberTest, AcceptsSignsDecimalPointsExponentsAndSurroundingBlanks) {
  const NumericCase cases[] = {
      {"12", 12},          {"-3.5", -3.5},       {"+.5", 0.5},      {"7.", 7},
      {"7.5e1", 75},       {"1E-3", 0.001},      {"-2.5E+2", -250}, {"  42  ", 42},
      {"\t0.1", 0.1},      {"12.345678", 12.345678}, {"000123", 123}, {"-0", 0},
      {"1e-400", 0},  // underflow reads as zero
  };
  for (const auto& c : cases) {
    const auto number = ParseCellNumber(c.text);
    ASSERT_TRUE(number.has_value()) << c.text;
    EXPECT_EQ(*number, c.value) << c.text;
  }
}

TEST(CellNumberTest, ReadsTheNearestDoubleOfTheDecimalText) {
  EXPECT_EQ(*ParseCellNumber("0.1"), 0.1);
  EXPECT_EQ(*ParseCellNumber("2.675"), 2.675);
  EXPECT_EQ(*ParseCellNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_GT(*ParseCellNumber("4.9e-324"), 0.0);  // the smallest subnormal survives
}

TEST(CellNumberTest, RefusesTextThatIsNotOneWholeNumber) {
  const char* refused[] = {"",     " ",     "abc",  "12 mm", "x1",  "1,234", "12,5",  "1.2.3", "--1",
                           "+-1",  ".",     "-",    "e5",    "1e",  "1e+",   "inf",   "nan",   "NaN",
                           "0x10", "1e400", "-1e999", "1 2",  "１２"};
  for (const char* text : refused) EXPECT_FALSE(ParseCellNumber(text).has_value()) << '"' << text << '"';
}

}  // namespace
}  // namespace orvik::worksheet
