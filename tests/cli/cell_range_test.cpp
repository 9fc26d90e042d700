#include "cli/cell_range.h"

#include <gtest/gtest.h>

#include "support/case_table.h"

namespace orvik::cli {
namespace {

// Each notation maps to the fields of a user's drag; anything else is
// refused (data/cell_ranges.tsv).
TEST(CellRangeTest, MapsOrRefusesEachNotationOfTheTable) {
  for (const auto& row : testing_support::ReadCases("cli/data/cell_ranges.tsv")) {
    const auto sel = ParseCellRange(row[1]);
    if (row[0] == "refuse") {
      EXPECT_FALSE(sel.has_value()) << row.Where();
      continue;
    }
    ASSERT_TRUE(sel.has_value()) << row.Where();
    EXPECT_TRUE(sel->IsBlockSelected);
    EXPECT_EQ(sel->SelBlockCol, row.Number(2)) << row.Where();
    EXPECT_EQ(sel->SelBlockRow, row.Number(3)) << row.Where();
    EXPECT_EQ(sel->SelBlockCol2, row.Number(4)) << row.Where();
    EXPECT_EQ(sel->SelBlockRow2, row.Number(5)) << row.Where();
  }
}

}  // namespace
}  // namespace orvik::cli
