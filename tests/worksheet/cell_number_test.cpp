#include "worksheet/cell_number.h"

#include <gtest/gtest.h>

#include "support/case_table.h"

namespace orvik::worksheet {
namespace {

// Signs, decimal points, exponents and surrounding blanks are accepted;
// anything but one whole number is refused (data/cell_numbers.tsv).
TEST(CellNumberTest, ReadsOrRefusesEachTextOfTheTable) {
  for (const auto& row : testing_support::ReadCases("worksheet/data/cell_numbers.tsv")) {
    const auto number = ParseCellNumber(row[1]);
    if (row[0] == "refuse") {
      EXPECT_FALSE(number.has_value()) << row.Where();
    } else {
      ASSERT_TRUE(number.has_value()) << row.Where();
      EXPECT_EQ(*number, row.Number(2)) << row.Where();
    }
  }
  EXPECT_GT(*ParseCellNumber("4.9e-324"), 0.0);  // the smallest subnormal survives
}

}  // namespace
}  // namespace orvik::worksheet
