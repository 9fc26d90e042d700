#include "shell/chart_presentation.h"

#include <gtest/gtest.h>

#include "support/case_table.h"

namespace orvik::shell {
namespace {

TEST(ChartPresentationTest, LimitLabelsTakeTheDecimalsAsked) {
  for (const auto& row : testing_support::ReadCases("shell/data/relabel_limits.tsv"))
    EXPECT_EQ(RelabelLimit(row[0], row.Number(1), static_cast<int>(row.Number(2))), row[3]) << row.Where();
}

}  // namespace
}  // namespace orvik::shell
