#include "cli/cell_range.h"

#include <gtest/gtest.h>

namespace orvik::cli {
namespace {

struct RangeCase {
  const char* text;
  long col, row, col2, row2;
};

TEST(CellRangeTest, MapsEachNotationToTheFieldsOfAUsersDrag) {
  const RangeCase cases[] = {
      {"B2:D20", 2, 2, 4, 20},  {"D20:B2", 4, 20, 2, 2},  {"B:D", 2, -1, 4, -1},  {"D:B", 4, -1, 2, -1},
      {"3:7", -1, 3, -1, 7},    {"7:3", -1, 7, -1, 3},    {"all", -1, -1, -1, -1}, {"B2", 2, 2, 2, 2},
      {"b2:c3", 2, 2, 3, 3},    {"AA10:AB11", 27, 10, 28, 11}, {"A1:A1048576", 1, 1, 1, 1048576},
  };
  for (const auto& c : cases) {
    const auto sel = ParseCellRange(c.text);
    ASSERT_TRUE(sel.has_value()) << c.text;
    EXPECT_TRUE(sel->IsBlockSelected);
    EXPECT_EQ(sel->SelBlockCol, c.col) << c.text;
    EXPECT_EQ(sel->SelBlockRow, c.row) << c.text;
    EXPECT_EQ(sel->SelBlockCol2, c.col2) << c.text;
    EXPECT_EQ(sel->SelBlockRow2, c.row2) << c.text;
  }
}

TEST(CellRangeTest, RefusesAnythingElse) {
  const char* bad[] = {"", ":", "A1:??", "A0", "A1:B0", "1A", "B:3", "B2:D", "A1:B2:C3", "all:B2",
                       "A-1", " A1", "A1 ", "ZZZZZZZZZZZZZZZZ1", "A99999999999999"};
  for (const char* text : bad) EXPECT_FALSE(ParseCellRange(text).has_value()) << '"' << text << '"';
}

}  // namespace
}  // namespace orvik::cli
