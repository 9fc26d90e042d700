#include "analyses/interval_estimation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "analyses/sample_summary.h"
#include "inference_reference.h"
#include "support/accuracy_sample.h"

namespace orvik::analyses {
namespace {

using namespace reference;

constexpr double kTolerance = 1e-9;
// The two-sided upper-tail areas of 90.0%, 95.0% and 99.0%.
constexpr double kTails[] = {0.05, 0.025, 0.005};

TEST(SampleSummaryTest, MeanVarianceAndStandardDeviationOfTheDescriptiveStatistics) {
  const SampleSummary s = SummariseForInference(std::vector<double>{1, 2, 3, 4, 5});
  EXPECT_EQ(s.n, 5);
  EXPECT_EQ(s.mean, 3.0);
  EXPECT_EQ(s.variance, 2.5);
  EXPECT_EQ(s.standardDeviation, std::round(std::sqrt(2.5) * 1e12) / 1e12);
}

TEST(MeanIntervalsTest, OneToFiveUsesTheRowOfFourDegreesOfFreedom) {
  const SampleSummary s = SummariseForInference(OneToN(5));
  const ReportedIntervals ci = MeanIntervals(s, std::nullopt);
  for (int i = 0; i < 3; ++i) {
    const double half = TUpperQuantile(kTails[i], 4) * std::sqrt(2.5) / std::sqrt(5.0);
    EXPECT_NEAR(ci[i].lower, 3.0 - half, kTolerance);
    EXPECT_NEAR(ci[i].upper, 3.0 + half, kTolerance);
  }
  // Hand check of the 95% interval: t(0.025, 4) = 2.7764451, s / sqrt(5) = 0.7071068.
  EXPECT_NEAR(ci[1].upper, 3.0 + 2.7764451 * 0.70710678, 1e-6);
}

// The band of a sample size is the row's representative degrees of
// freedom: up to 31 values their own, then 40, 50, ..., 1000, then normal;
// each band edge on both sides.
struct BandCase {
  long n;
  double df;  // 0: the normal limit
};

TEST(MeanIntervalsTest, TRowBandEdges) {
  const BandCase cases[] = {{31, 30}, {32, 40}, {41, 40}, {42, 50}, {51, 50}, {52, 60}, {61, 60},
                            {62, 80}, {81, 80}, {82, 100}, {101, 100}, {102, 120}, {121, 120}, {122, 1000}, {1001, 1000}, {1002, 0}};
  for (const auto& c : cases) {
    const SampleSummary s = Summary(c.n, 10.0, 4.0);
    const ReportedIntervals ci = MeanIntervals(s, std::nullopt);
    for (int i = 0; i < 3; ++i) {
      const double q = c.df == 0 ? NormalUpperQuantile(kTails[i]) : TUpperQuantile(kTails[i], c.df);
      EXPECT_NEAR(ci[i].upper - 10.0, q * 2.0 / std::sqrt(static_cast<double>(c.n)), kTolerance) << "n " << c.n;
    }
  }
}

TEST(MeanIntervalsTest, GivenSigmaUsesTheProgramsRoundedNormalValues) {
  const SampleSummary s = Summary(25, 50.0, 9.0);
  const ReportedIntervals ci = MeanIntervals(s, 2.0);
  const double z[] = {1.645, 1.96, 2.575};
  for (int i = 0; i < 3; ++i) {
    EXPECT_DOUBLE_EQ(ci[i].lower, 50.0 - z[i] * 2.0 / 5.0);
    EXPECT_DOUBLE_EQ(ci[i].upper, 50.0 + z[i] * 2.0 / 5.0);
  }
}

TEST(VarianceIntervalsTest, ChiSquareQuantilesOfNMinusOneDegreesOfFreedom) {
  const struct { long n; double variance; } cases[] = {{5, 2.5}, {2, 0.5}, {31, 7.0}, {801, 1.5}};
  for (const auto& c : cases) {
    const auto ci = VarianceIntervals(Summary(c.n, 0.0, c.variance));
    ASSERT_TRUE(ci.has_value()) << c.n;
    const double df = static_cast<double>(c.n - 1);
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR((*ci)[i].lower / (df * c.variance / ChiSquareUpperQuantile(kTails[i], df)), 1.0, 1e-12) << c.n;
      EXPECT_NEAR((*ci)[i].upper / (df * c.variance / ChiSquareLowerQuantile(kTails[i], df)), 1.0, 1e-12) << c.n;
    }
  }
}

TEST(VarianceIntervalsTest, AboveEightHundredOneValuesNoIntervalIsGiven) {
  EXPECT_TRUE(VarianceIntervals(Summary(801, 0.0, 1.0)).has_value());
  EXPECT_FALSE(VarianceIntervals(Summary(802, 0.0, 1.0)).has_value());
}

TEST(ProportionIntervalsTest, NormalApproximationNotClipped) {
  const ReportedIntervals low = ProportionIntervals(0.02, 10);
  const double se = std::sqrt(0.02 * 0.98 / 10);
  EXPECT_DOUBLE_EQ(low[0].lower, 0.02 - 1.645 * se);
  EXPECT_LT(low[0].lower, 0.0);
  const ReportedIntervals high = ProportionIntervals(0.98, 10);
  EXPECT_GT(high[2].upper, 1.0);  // not limited to 1
}

TEST(ProportionEstimationTableTest, LowerBoundBelowZeroShowsTheFixedZeroTextUpperBoundPassesOne) {
  // 0.02 + 1.645 * sqrt(0.02 * 0.98 / 50) = 0.05256934 (hand calculation).
  EXPECT_EQ(ProportionEstimationTable({1, 50}).TextRows()[2], (std::vector<std::string>{"90.0%", "(0.000000 , 0.05256934)"}));
  // 0.98 -+ 2.575 * sqrt(0.98 * 0.02 / 50) = 0.98 -+ 0.0509823989
  EXPECT_EQ(ProportionEstimationTable({49, 50}).TextRows()[4][1], "(0.9290176 , 1.0309824)");
}

TEST(DiffMeanIntervalsTest, PooledVarianceAndTheBandOfTheCombinedDegreesOfFreedom) {
  const SampleSummary a = Summary(16, 10.0, 0.04);
  const SampleSummary b = Summary(16, 9.5, 0.09);
  EXPECT_DOUBLE_EQ(PooledVariance(a, b), 0.065);  // (15 * 0.04 + 15 * 0.09) / 30
  const ReportedIntervals ci = DiffMeanIntervals(a, b, std::nullopt);
  for (int i = 0; i < 3; ++i) {
    const double half = TUpperQuantile(kTails[i], 30) * std::sqrt(0.065) * std::sqrt(2.0 / 16);
    EXPECT_NEAR(ci[i].lower, 0.5 - half, kTolerance);
    EXPECT_NEAR(ci[i].upper, 0.5 + half, kTolerance);
  }
  // 31 degrees of freedom fall into the band of 40.
  const SampleSummary c = Summary(17, 9.5, 0.09);
  const double pooled = (15 * 0.04 + 16 * 0.09) / 31.0;
  const ReportedIntervals banded = DiffMeanIntervals(a, c, std::nullopt);
  EXPECT_NEAR(banded[1].upper - 0.5, TUpperQuantile(0.025, 40) * std::sqrt(pooled) * std::sqrt(1.0 / 16 + 1.0 / 17),
              kTolerance);
}

TEST(DiffMeanIntervalsTest, GivenSigmasUseTheNormalValues) {
  const ReportedIntervals ci = DiffMeanIntervals(Summary(4, 5, 1), Summary(9, 3, 1), std::make_pair(2.0, 3.0));
  const double spread = std::sqrt(4.0 / 4 + 9.0 / 9);
  EXPECT_DOUBLE_EQ(ci[0].upper, 2.0 + 1.645 * spread);
  EXPECT_DOUBLE_EQ(ci[2].lower, 2.0 - 2.575 * spread);
}

TEST(RatioVarianceIntervalsTest, FQuantilesWithTheRowsSwappedForTheUpperBound) {
  const double areas[] = {0.10, 0.05, 0.025, 0.01};
  const struct { long n1, n2; double df1, df2; } cases[] = {
      {8, 7, 7, 6}, {31, 2, 30, 1}, {32, 41, 40, 40}, {42, 61, 60, 60}, {62, 121, 120, 120}};
  for (const auto& c : cases) {
    const SampleSummary a = Summary(c.n1, 0, 0.06), b = Summary(c.n2, 0, 0.08);
    const auto ci = RatioVarianceIntervals(a, b);
    for (int i = 0; i < 4; ++i) {
      EXPECT_NEAR(ci[i].lower / (0.75 / FUpperQuantile(areas[i], c.df1, c.df2)), 1.0, 1e-10) << c.n1;
      EXPECT_NEAR(ci[i].upper / (0.75 * FUpperQuantile(areas[i], c.df2, c.df1)), 1.0, 1e-10) << c.n1;
    }
  }
}

TEST(RatioVarianceIntervalsTest, LargeSamplesUseTheInfiniteRow) {
  // F(inf, inf) is the point mass at 1, so both bounds are the ratio.
  const auto ci = RatioVarianceIntervals(Summary(122, 0, 2.0), Summary(500, 0, 1.0));
  EXPECT_NEAR(ci[2].lower, 2.0, 1e-12);
  EXPECT_NEAR(ci[2].upper, 2.0, 1e-12);
}

TEST(TwoProportionTableTest, UnclippedIntervalOfTheDifference) {
  // se = sqrt(0.05 * 0.95 / 100 + 0.1 * 0.9 / 120) = sqrt(0.001225) = 0.035;
  // 1.645 * se = 0.057575: (-0.107575 , 0.007575).
  EXPECT_EQ(TwoProportionTable({5, 100}, {12, 120}).TextRows()[4],
            (std::vector<std::string>{"90.0%", "(-0.107575 , 0.007575)"}));
}

// The accuracy sample: values large against their spread keep their mean
// and standard deviation to the digits their binary forms hold (a plain
// running sum drifts by 1e-4), and the intervals are centred on the mean.
TEST(MeanIntervalsTest, AccuracySampleKeepsItsMeanAndCentresTheIntervals) {
  const SampleSummary s = SummariseForInference(testing_support::AccuracySampleValues());
  EXPECT_NEAR(s.mean, 10000000.2, 4e-9);
  EXPECT_NEAR(s.standardDeviation, 0.1, 1e-9);
  const ReportedIntervals ci = MeanIntervals(s, std::nullopt);
  for (int i = 0; i < 3; ++i) {
    const double half = TUpperQuantile(kTails[i], 1000) * 0.1 / std::sqrt(1001.0);
    EXPECT_NEAR(ci[i].lower, 10000000.2 - half, 6e-9);
    EXPECT_NEAR(ci[i].upper, 10000000.2 + half, 6e-9);
  }
}

}  // namespace
}  // namespace orvik::analyses
