#include "analyses/test_statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "analyses/p_values.h"
#include "analyses/report_text.h"
#include "analyses/test_report.h"
#include "inference_reference.h"

namespace orvik::analyses {
namespace {

using namespace reference;

constexpr Alternative kTwo = Alternative::TwoSided;
constexpr Alternative kGreater = Alternative::Greater;
constexpr Alternative kLess = Alternative::Less;

// p-values are shown to six decimals; the tolerance is far below that.
constexpr double kTolerance = 1e-12;

TEST(PValueTest, OneSidedTakesTheTailOfH1TwoSidedTwiceTheSmaller) {
  const Tails tails{0.2, 0.8};
  EXPECT_EQ(PValue(tails, kLess), 0.2);
  EXPECT_EQ(PValue(tails, kGreater), 0.8);
  EXPECT_EQ(PValue(tails, kTwo), 0.4);
  EXPECT_EQ(PValue(Tails{0.5, 0.5}, kTwo), 1.0);
}

TEST(DecisionTest, RejectOnlyWhenThePValueIsBelowAlpha) {
  EXPECT_EQ(std::string(Decision(0.05, 5.0 / 100.0)), "Fail to reject H0");
  EXPECT_EQ(std::string(Decision(std::nextafter(0.05, 0.0), 0.05)), "Reject H0");
  EXPECT_EQ(std::string(Decision(0.0500001, 0.05)), "Fail to reject H0");
  EXPECT_EQ(std::string(Decision(0.0, 0.01)), "Reject H0");
}

TEST(OneSampleMeanTestTest, TOnOneToFiveAgainstBoost) {
  const SampleSummary s = SummariseForInference(OneToN(5));
  // t = (3 - 1) / (sqrt(2.5) / sqrt(5)) = 2 sqrt(2).
  const TestStatistic greater = OneSampleMeanTest(s, 1.0, std::nullopt, kGreater);
  EXPECT_NEAR(greater.value, 2.0 * std::sqrt(2.0), 1e-11);
  EXPECT_NEAR(greater.pValue, TUpperTail(2.0 * std::sqrt(2.0), 4), kTolerance);
  // A statistic on the other side of a one-sided H1 gives p > 0.5.
  const TestStatistic less = OneSampleMeanTest(s, 1.0, std::nullopt, kLess);
  EXPECT_NEAR(less.pValue, TLowerTail(2.0 * std::sqrt(2.0), 4), kTolerance);
  EXPECT_GT(less.pValue, 0.5);
  const TestStatistic two = OneSampleMeanTest(s, 1.0, std::nullopt, kTwo);
  EXPECT_NEAR(two.pValue, 2 * TUpperTail(2.0 * std::sqrt(2.0), 4), kTolerance);
  // A negative t under "less" is the lower tail.
  const TestStatistic below = OneSampleMeanTest(s, 4.5, std::nullopt, kLess);
  EXPECT_NEAR(below.pValue, TLowerTail(below.value, 4), kTolerance);
  EXPECT_LT(below.pValue, 0.5);
  // t = 0 (the command test shows its two-sided 1.000000): one tail is half.
  EXPECT_EQ(SixDecimals(OneSampleMeanTest(s, 3.0, std::nullopt, kGreater).pValue), "0.500000");
}

TEST(OneSampleMeanTestTest, GivenSigmaIsAZTest) {
  const SampleSummary s = SummariseForInference(OneToN(5));
  const double z = 2.0 / (1.5 / std::sqrt(5.0));
  const TestStatistic two = OneSampleMeanTest(s, 1.0, 1.5, kTwo);
  EXPECT_NEAR(two.value, z, 1e-12);
  EXPECT_NEAR(two.pValue, 2 * NormalUpperTail(z), kTolerance);
  EXPECT_NEAR(OneSampleMeanTest(s, 1.0, 1.5, kLess).pValue, NormalLowerTail(z), kTolerance);
}

TEST(OneSampleMeanTestTest, FarTailKeepsItsDigitsAndShowsTheZeroText) {
  // z = 10: the upper tail is 7.6e-24, not 0 as 1 - CDF would give.
  const SampleSummary s = Summary(100, 10.0, 4.0);
  const TestStatistic z = OneSampleMeanTest(s, 8.0, 2.0, kGreater);
  EXPECT_NEAR(z.value, 10.0, 1e-12);
  EXPECT_GT(z.pValue, 0.0);
  EXPECT_NEAR(z.pValue / NormalUpperTail(10.0), 1.0, 1e-9);
  EXPECT_EQ(SixDecimals(z.pValue), "0.000000");
  EXPECT_EQ(std::string(Decision(z.pValue, 0.05)), "Reject H0");
}

TEST(OneSampleVarianceTestTest, ChiSquareBothDirections) {
  const SampleSummary s = SummariseForInference(OneToN(5));
  const TestStatistic two = OneSampleVarianceTest(s, 1.0, kTwo);
  EXPECT_DOUBLE_EQ(two.value, 10.0);  // 4 * 2.5 / 1
  EXPECT_NEAR(two.pValue, 2 * ChiSquareUpperTail(10.0, 4), kTolerance);
  EXPECT_NEAR(OneSampleVarianceTest(s, 1.0, kGreater).pValue, ChiSquareUpperTail(10.0, 4), kTolerance);
  EXPECT_NEAR(OneSampleVarianceTest(s, 1.0, kLess).pValue, ChiSquareLowerTail(10.0, 4), kTolerance);
  // A small statistic: two-sided takes the lower tail.
  const TestStatistic small = OneSampleVarianceTest(s, 20.0, kTwo);
  EXPECT_NEAR(small.pValue, 2 * ChiSquareLowerTail(0.5, 4), kTolerance);
}

TEST(OneProportionTestTest, ZOfTheCountsRoundedToTwelvePlaces) {
  // z = (8 - 5) / sqrt(100 * 0.05 * 0.95) = 3 / sqrt(4.75) = 1.37649440...
  const TestStatistic z = OneProportionTest({8, 100}, 0.05, kGreater);
  EXPECT_EQ(z.value, std::round(3.0 / std::sqrt(4.75) * 1e12) / 1e12);
  EXPECT_NEAR(z.pValue, NormalUpperTail(3.0 / std::sqrt(4.75)), 1e-11);
  EXPECT_NEAR(OneProportionTest({8, 100}, 0.05, kLess).pValue, NormalLowerTail(3.0 / std::sqrt(4.75)), 1e-11);
}

TEST(TwoProportionTestTest, PooledProportionInTheStandardError) {
  // p1 = 0.05, p2 = 0.1, pooled 17 / 220.
  const double pooled = 17.0 / 220.0;
  const double z = (0.05 - 0.1) / std::sqrt(pooled * (1 - pooled) * (1.0 / 100 + 1.0 / 120));
  const TestStatistic less = TwoProportionTest({5, 100}, {12, 120}, kLess);
  EXPECT_NEAR(less.value, z, 1e-12);
  EXPECT_NEAR(less.pValue, NormalLowerTail(z), kTolerance);
  EXPECT_NEAR(TwoProportionTest({5, 100}, {12, 120}, kTwo).pValue, 2 * NormalLowerTail(z), kTolerance);
  // Both proportions 0: no standard error, so no statistic.
  EXPECT_FALSE(std::isfinite(TwoProportionTest({0, 10}, {0, 20}, kTwo).value));
}

TEST(TwoVarianceTestTest, FOfTheVarianceRatio) {
  const SampleSummary a = Summary(8, 0, 0.06), b = Summary(7, 0, 0.08);
  const TestStatistic two = TwoVarianceTest(a, b, kTwo);
  EXPECT_DOUBLE_EQ(two.value, 0.75);
  EXPECT_NEAR(two.pValue, 2 * FLowerTail(0.75, 7, 6), kTolerance);
  EXPECT_NEAR(TwoVarianceTest(a, b, kGreater).pValue, FUpperTail(0.75, 7, 6), kTolerance);
  EXPECT_GT(TwoVarianceTest(a, b, kGreater).pValue, 0.5);
  EXPECT_NEAR(TwoVarianceTest(b, a, kGreater).pValue, FUpperTail(0.08 / 0.06, 6, 7), kTolerance);
}

TEST(TwoMeanTestTest, PooledAndWelchForms) {
  const SampleSummary a = Summary(10, 5.0, 1.0), b = Summary(5, 4.0, 4.0);
  // Pooled: sp^2 = (9 + 16) / 13; t = 1 / sqrt(sp^2 (1/10 + 1/5)).
  const double pooled_t = 1.0 / std::sqrt(25.0 / 13.0 * 0.3);
  const TestStatistic pooled = TwoMeanTest(a, b, true, kGreater);
  EXPECT_NEAR(pooled.value, pooled_t, 1e-11);
  EXPECT_NEAR(pooled.pValue, TUpperTail(pooled_t, 13), 1e-11);
  // Welch: t = 1 / sqrt(0.1 + 0.8) = 1 / 0.9487; df = 0.81 / (0.01 / 9 + 0.64 / 4) = 5.0276...
  const double welch_df = 0.81 / (0.01 / 9 + 0.64 / 4);
  EXPECT_NEAR(WelchDegreesOfFreedom(a, b), welch_df, 1e-12);
  const TestStatistic welch = TwoMeanTest(a, b, false, kTwo);
  EXPECT_NEAR(welch.value, 1.0 / std::sqrt(0.9), 1e-12);
  EXPECT_NEAR(welch.pValue, 2 * TUpperTail(1.0 / std::sqrt(0.9), welch_df), 1e-11);
}

TEST(PairedTestTest, TOfTheDifferences) {
  // Differences such as -1, 0, 1, 2, 3: mean 1, variance 2.5.
  const SampleSummary d = Summary(5, 1.0, 2.5);
  const double t = 1.0 / (std::sqrt(2.5) / std::sqrt(5.0));
  const TestStatistic less = PairedTest(d, kLess);
  EXPECT_NEAR(less.value, t, 1e-12);
  EXPECT_NEAR(less.pValue, TLowerTail(t, 4), kTolerance);
}

// The golden cases show every wording but these two.
TEST(HypothesesTest, JoinedGreaterAndPairedLess) {
  EXPECT_EQ(MakeHypotheses("mu1", kJoinedOperators, "mu2", kGreater).h1, "mu1> mu2");
  const Hypotheses paired = MakeHypotheses("Difference of means(μD)", kPairedOperators, "0", kLess);
  EXPECT_EQ(paired.h0, "Difference of means(μD) = 0");
  EXPECT_EQ(paired.h1, "Difference of means(μD) < 0");
}

}  // namespace
}  // namespace orvik::analyses
