#include "stats/range_distribution.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "support/case_table.h"

namespace orvik::stats {
namespace {

// The published three-decimal tables: d2 and d3 agree to their rounding,
// D1 to the 0.002 of its being formed from rounded d2 and d3.
TEST(RangeDistributionTest, PublishedFactorsToThreeDecimals) {
  for (const auto& row : testing_support::ReadCases("stats/data/range_factors.tsv")) {
    const RangeMoments range = NormalRangeMoments(std::stoi(row[0]));
    EXPECT_NEAR(range.mean, row.Number(1), 0.0005 + 1e-12) << row.Where();
    EXPECT_NEAR(range.sd, row.Number(2), 0.0005 + 1e-12) << row.Where();
    EXPECT_NEAR(std::max(0.0, range.mean - 3.0 * range.sd), row.Number(3), 0.002) << row.Where();
  }
}

// Closed forms: for n = 2, W = |X1 - X2| with X1 - X2 normal of variance 2;
// for n = 3, E[W] = 3 / sqrt(pi) and E[W^2] = 2 + 3 sqrt(3) / pi.
TEST(RangeDistributionTest, ClosedFormsForTwoAndThree) {
  const double pi = std::numbers::pi;
  const RangeMoments two = NormalRangeMoments(2);
  EXPECT_NEAR(two.mean, 2.0 / std::sqrt(pi), 1e-10);
  EXPECT_NEAR(two.sd, std::sqrt(2.0 - 4.0 / pi), 1e-10);
  const RangeMoments three = NormalRangeMoments(3);
  EXPECT_NEAR(three.mean, 3.0 / std::sqrt(pi), 1e-10);
  EXPECT_NEAR(three.sd, std::sqrt(2.0 + 3.0 * std::sqrt(3.0) / pi - 9.0 / pi), 1e-10);
}

TEST(RangeDistributionTest, SizesOutsideTheSpanGiveNaN) {
  for (const int n : {-1, 0, 1, 101}) {
    EXPECT_TRUE(std::isnan(NormalRangeMoments(n).mean)) << n;
    EXPECT_TRUE(std::isnan(NormalRangeMoments(n).sd)) << n;
  }
  EXPECT_FALSE(std::isnan(NormalRangeMoments(100).sd));
}

}  // namespace
}  // namespace orvik::stats
