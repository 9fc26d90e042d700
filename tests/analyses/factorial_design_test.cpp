#include "analyses/factorial_design.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "analyses/design_sheets.h"
#include "support/case_table.h"

namespace orvik::analyses {
namespace {

TEST(FactorialDesignTest, RunsFollowYatesOrderReplicatesAndCentrePoints) {
  for (const auto& row : testing_support::ReadCases("analyses/data/factorial_layouts.tsv")) {
    const auto runs = FactorialRuns(static_cast<int>(row.Number(0)), row[1] == "1", static_cast<int>(row.Number(2)),
                                    static_cast<int>(row.Number(3)));
    std::vector<std::string> labels;
    for (const auto& run : runs) labels.push_back(run.centre ? "0" : TreatmentLabel(run.highFactors));
    EXPECT_EQ(labels, std::vector<std::string>(row.fields.begin() + 4, row.fields.end())) << row.Where();
  }
}

TEST(FactorialDesignTest, HalfFractionsListTheirRelationAndAliases) {
  for (const auto& row : testing_support::ReadCases("analyses/data/half_fraction_aliases.tsv")) {
    const int k = static_cast<int>(row.Number(0));
    EXPECT_EQ(DefiningRelation(k), row[1]) << row.Where();
    EXPECT_EQ(AliasLines(k), std::vector<std::string>(row.fields.begin() + 2, row.fields.end())) << row.Where();
  }
}

TEST(FactorialDesignTest, RunOrderIsAPermutationThatASeedRepeats) {
  for (const long n : {1L, 2L, 7L, 100L}) {
    auto order = RunOrderPermutation(n, 12345);
    EXPECT_EQ(order, RunOrderPermutation(n, 12345)) << n;
    std::sort(order.begin(), order.end());
    for (long i = 0; i < n; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i + 1) << n;
  }
  // Different seeds give different orders, and a shuffle moves most runs.
  const auto a = RunOrderPermutation(100, 1), b = RunOrderPermutation(100, 2);
  EXPECT_NE(a, b);
  long fixed = 0;
  for (long i = 0; i < 100; ++i) fixed += a[static_cast<std::size_t>(i)] == i + 1;
  EXPECT_LT(fixed, 10);
}

// The sheet holds each standard-order run once, in run order, and keeps its
// design; without randomization RunOrder equals StdOrder.
TEST(FactorialDesignTest, SheetPlacesEveryRunOnceWithItsSettings) {
  FactorialSettings settings{3, 2, 1, false, {"T", "P", "C"}, {20, 1, -1}, {40, 2, 1}, 99u};
  const worksheet::Worksheet sheet = FactorialSheet("Design 1", settings);
  ASSERT_TRUE(sheet.Design());
  EXPECT_EQ(sheet.Design()->columns, (std::vector<std::string>{"StdOrder", "RunOrder", "Label", "T", "P", "C", "Response"}));
  std::set<std::string> standard;
  for (long row = 1; row <= 17; ++row) {
    EXPECT_EQ(sheet.Text(row, 2), std::to_string(row));
    standard.insert(std::string(sheet.Text(row, 1)));
    const bool centre = sheet.Text(row, 3) == "0";
    EXPECT_EQ(centre, sheet.Text(row, 1) == "17");
    if (centre) {
      EXPECT_EQ(sheet.Text(row, 4), "30");
    }
    if (sheet.Text(row, 3) == "ac") {
      EXPECT_EQ(std::string(sheet.Text(row, 4)) + std::string(sheet.Text(row, 5)), "401");
    }
    EXPECT_EQ(sheet.Text(row, 7), "");
  }
  EXPECT_EQ(standard.size(), 17u);
  settings.seed.reset();
  const worksheet::Worksheet plain = FactorialSheet("Design 2", settings);
  for (long row = 1; row <= 17; ++row) EXPECT_EQ(plain.Text(row, 1), plain.Text(row, 2));
}

}  // namespace
}  // namespace orvik::analyses
