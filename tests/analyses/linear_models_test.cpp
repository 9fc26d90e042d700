// Edge behaviour of the fits behind regression, correlation and the
// analyses of variance; whole reports are golden cases under tests/golden.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "analyses/correlation.h"
#include "analyses/one_way_fit.h"
#include "analyses/regression_fit.h"
#include "analyses/two_way_fit.h"

namespace orvik::analyses {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Pearson and Spearman on rows where both cells hold numbers; hand values:
// ranks with ties take their average rank.
TEST(Correlations, PairwiseCompleteRowsTiesAndDegenerateColumns) {
  const struct {
    std::vector<double> x, y;
    double pearson, spearman;
    long n;
  } cases[] = {
      {{1, 2, 3, 4}, {2, 4, 6, 8}, 1.0, 1.0, 4},                    // perfect
      {{1, 2, 3, 4}, {8, 6, 4, 2}, -1.0, -1.0, 4},                  // perfect, falling
      {{1, 2, kNaN, 4, 5}, {1, 3, 7, 2, 5}, 0.748331477354788, 0.8, 4},  // row 3 left out
      {{1, 2, 2, 10}, {1, 2, 3, 4}, 0.831261246939557, 0.948683298050514, 4},  // tied ranks 2.5
      {{1, 2, 3}, {5, 5, 5}, kNaN, kNaN, 3},                         // no spread in y
      {{1, 2}, {3, 4}, kNaN, kNaN, 2},                               // too few rows
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "x[0] " << c.x[0] << ", n " << c.n);
    const PairCorrelation p = Pearson(c.x, c.y);
    const PairCorrelation s = Spearman(c.x, c.y);
    EXPECT_EQ(p.n, c.n);
    if (std::isnan(c.pearson)) {
      EXPECT_TRUE(std::isnan(p.r) && std::isnan(p.p) && std::isnan(s.r));
      continue;
    }
    EXPECT_NEAR(p.r, c.pearson, 1e-14);
    EXPECT_NEAR(s.r, c.spearman, 1e-14);
    if (std::fabs(c.pearson) == 1.0) {
      EXPECT_EQ(p.p, 0.0);
    }
  }
}

// A perfect line: no residual error, so R² is 1, S is 0 and t and F are
// infinite (shown as "*"), their p-values 0.
TEST(RegressionFit, PerfectLineAndTheLineThroughTheOrigin) {
  const std::vector<double> x{1, 2, 3, 4}, y{3, 5, 7, 9};
  const RegressionFit perfect = FitLine(x, y, true);
  EXPECT_EQ(perfect.slope, 2.0);
  EXPECT_EQ(perfect.intercept, 1.0);
  EXPECT_EQ(perfect.residualSS, 0.0);
  EXPECT_EQ(perfect.rSquared, 1.0);
  EXPECT_TRUE(std::isinf(perfect.f));
  EXPECT_EQ(perfect.fP, 0.0);
  // Through the origin: b = sum xy / sum x², the total about zero, n - 1
  // residual degrees of freedom (hand values: sum xy = 70, sum x² = 30).
  const RegressionFit origin = FitLine(x, y, false);
  EXPECT_NEAR(origin.slope, 70.0 / 30.0, 1e-15);
  EXPECT_EQ(origin.intercept, 0.0);
  EXPECT_EQ(origin.residualDf, 3);
  EXPECT_EQ(origin.totalDf, 4);
  EXPECT_NEAR(origin.totalSS, 9 + 25 + 49 + 81, 1e-12);
  EXPECT_NEAR(origin.residualSS, 164.0 - 70.0 * 70.0 / 30.0, 1e-12);
}

// Levels of one observation have no standard deviation but still count;
// two levels make Tukey's one comparison the F test (q² / 2 = F).
TEST(OneWayFit, SingleObservationLevelsAndTwoLevelTukey) {
  const OneWayFit fit = FitOneWay({{"a", {1, 2, 3}}, {"b", {7}}, {"c", {4, 6}}});
  EXPECT_EQ(fit.errorDf, 3);
  EXPECT_TRUE(std::isnan(fit.levels[1].sd));
  EXPECT_EQ(fit.levels[1].mean, 7.0);
  const OneWayFit two = FitOneWay({{"a", {1, 2, 3}}, {"b", {4, 6, 5}}});
  const auto comparisons = TukeyComparisons(two, 0.95);
  ASSERT_EQ(comparisons.size(), 1u);
  EXPECT_NEAR(comparisons[0].q * comparisons[0].q / 2.0, two.f, 1e-12);
  EXPECT_NEAR(comparisons[0].adjustedP, two.p, 1e-11);
}

TEST(TwoWayFit, BalanceOfTheLayout) {
  EXPECT_TRUE(IsBalanced({{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}}));
  EXPECT_TRUE(IsBalanced({{{1}, {3}}, {{5}, {7}}}));
  EXPECT_FALSE(IsBalanced({{{1, 2}, {3}}, {{5, 6}, {7, 8}}}));  // one cell short
  EXPECT_FALSE(IsBalanced({{{1}, {}}, {{5}, {7}}}));            // an empty combination
  EXPECT_FALSE(IsBalanced({}));
  // Without replication the interaction's variation is the error.
  const TwoWayFit additive = FitTwoWay({{{1}, {2}}, {{3}, {5}}});
  EXPECT_FALSE(additive.interaction);
  EXPECT_EQ(additive.errorDf, 1);
  EXPECT_NEAR(additive.errorSS, 0.25, 1e-15);  // r (11 - 1.5 - 2 + 2.75)² summed: 4 x 0.0625
}

}  // namespace
}  // namespace orvik::analyses
