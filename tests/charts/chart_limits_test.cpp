#include "charts/chart_limits.h"

#include <gtest/gtest.h>

#include <map>

#include "support/case_table.h"

namespace orvik::charts {
namespace {

constexpr double kTight = 1e-12;

// The edges of the tables' layouts (data/constant_factors.tsv); every limit
// test below reads them too.
TEST(ConstantTablesTest, LookupBySubgroupSize) {
  const std::map<std::string, ConstantTable> tables = {{"A2", A2Table()}, {"D3", D3Table()}, {"D4", D4Table()},
                                                       {"B4", B4Table()}, {"A3", A3Table()}, {"D2", D2Table()}};
  for (const auto& row : testing_support::ReadCases("charts/data/constant_factors.tsv"))
    EXPECT_EQ(Factor(tables.at(row[0]), std::stol(row[1])), row.Number(2)) << row.Where();
}

TEST(ConstantTablesTest, TheEmptyEntryAndSizesOutsideTheTableFail) {
  EXPECT_THROW(Factor(D4Table(), 11), ChartComputationError);
  EXPECT_THROW(Factor(B4Table(), 11), ChartComputationError);
  EXPECT_THROW(Factor(A2Table(), 26), ChartComputationError);
  EXPECT_THROW(Factor(A2Table(), 1), ChartComputationError);
}

TEST(SubgroupStatisticsTest, MeansRangesAndStandardDeviationsPerRow) {
  Subgroups groups{3, {1, 2, 6, 4, 4, 4, 3, 5, 1}};
  const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
  EXPECT_EQ(stats.means, (std::vector<double>{3, 4, 3}));
  EXPECT_EQ(stats.ranges, (std::vector<double>{5, 0, 4}));
  EXPECT_NEAR(stats.sds[0], 2.64575131, kTight);  // sqrt(7)
  EXPECT_EQ(stats.sds[1], 0.0);
  EXPECT_EQ(stats.sds[2], 2.0);
  EXPECT_NEAR(stats.grandMean, 10.0 / 3.0, kTight);
  EXPECT_EQ(stats.rBar, 3.0);
}

TEST(SubgroupStatisticsTest, MeansAndRangesAreRoundedToEightPlaces) {
  // 25.004 - 24.997 is 0.00700000000000145 in binary; the stored range is 0.007.
  Subgroups groups{3, {25.004, 24.997, 25.0, 1.0, 1.0, 2.0}};
  const SubgroupStatistics stats = ComputeSubgroupStatistics(groups);
  EXPECT_EQ(stats.ranges[0], 0.007);
  EXPECT_EQ(stats.means[1], 1.33333333);
}

TEST(RangeLimitsTest, XbarAndRChartsForSubgroupsOfFive) {
  const ControlLimits xbar = XbarLimitsFromRange(10.0, 2.0, 0.0, 5);
  EXPECT_DOUBLE_EQ(xbar.UCL, 11.154);  // 10 + 0.577 * 2
  EXPECT_DOUBLE_EQ(xbar.LCL, 8.846);
  EXPECT_EQ(xbar.CL, 10.0);
  EXPECT_DOUBLE_EQ(xbar.UpperTwoSigma, 10.76933333);  // 10 + 2 * 0.66666666666 * 0.577, to 8 places
  EXPECT_DOUBLE_EQ(xbar.LowerTwoSigma, 9.23066667);

  const ControlLimits r = RLimits(2.0, 5);
  EXPECT_DOUBLE_EQ(r.UCL, 4.23);  // 2 * 2.115
  EXPECT_EQ(r.LCL, 0.0);
  EXPECT_EQ(r.CL, 2.0);
  EXPECT_DOUBLE_EQ(r.UpperTwoSigma, 3.48666667);  // 2 + 0.6666666666 * 2.23
  EXPECT_DOUBLE_EQ(r.LowerTwoSigma, 0.66666667);
}

TEST(RangeLimitsTest, SubgroupSizeElevenFailsAndTwelveReadsTheShiftedD4) {
  EXPECT_THROW(RLimits(1.0, 11), ChartComputationError);
  EXPECT_DOUBLE_EQ(RLimits(1.0, 10).UCL, 1.777);
  EXPECT_DOUBLE_EQ(RLimits(1.0, 12).UCL, 1.744);
  EXPECT_DOUBLE_EQ(RLimits(1.0, 12).LCL, 0.284);
  // The xbar chart alone does not read D4 and works at n = 11.
  EXPECT_DOUBLE_EQ(XbarLimitsFromRange(0.0, 1.0, 0.0, 11).UCL, 0.285);
}

TEST(RangeLimitsTest, BeyondTwentyFiveTheRChartUsesIndex23AndTheXbarChartSigmaOverC4) {
  const ControlLimits r = RLimits(1.0, 30);
  EXPECT_DOUBLE_EQ(r.UCL, 1.548);
  EXPECT_DOUBLE_EQ(r.LCL, 0.459);
  // sigma = s-bar / c4(30) with c4(30) = 116/117; limits at 3/sqrt(30), lines at 2/sqrt(30).
  const ControlLimits xbar = XbarLimitsFromRange(10.0, 123.0, 1.0, 30);
  EXPECT_DOUBLE_EQ(xbar.UCL, 10.5524443);
  EXPECT_DOUBLE_EQ(xbar.LCL, 9.4475557);
  EXPECT_DOUBLE_EQ(xbar.UpperTwoSigma, 10.3682962);
  EXPECT_DOUBLE_EQ(C4Approximation(30), 116.0 / 117.0);
}

TEST(SLimitsTest, XbarFromSBarAndTheSChart) {
  const ControlLimits xbar = XbarLimitsFromS(10.0, 0.5, 4);  // A3 at n = 4 reads 1.427
  EXPECT_DOUBLE_EQ(xbar.UCL, 10.7135);
  EXPECT_DOUBLE_EQ(xbar.LCL, 9.2865);
  const ControlLimits s = SLimits(1.0, 6);
  EXPECT_DOUBLE_EQ(s.UCL, 1.97);
  EXPECT_DOUBLE_EQ(s.LCL, 0.03);
  EXPECT_DOUBLE_EQ(s.UpperTwoSigma, 1.64666667);  // 1 + 0.6666666666 * 0.97
  EXPECT_THROW(SLimits(1.0, 11), ChartComputationError);
  EXPECT_DOUBLE_EQ(SLimits(1.0, 40).UCL, 1.445);
  EXPECT_DOUBLE_EQ(SLimits(1.0, 40).LCL, 0.565);
}

TEST(IndividualsLimitsTest, XAndMovingRangeCharts) {
  const std::vector<double> x = {10, 12, 11, 15, 14};
  const auto ranges = MovingRanges(x);
  EXPECT_EQ(ranges, (std::vector<double>{2, 1, 4, 1}));
  const double mr_bar = MeanMovingRange(ranges);
  EXPECT_EQ(mr_bar, 2.0);
  const ControlLimits xl = IndividualsLimits(12.4, mr_bar);
  EXPECT_DOUBLE_EQ(xl.UCL, 17.72);
  EXPECT_DOUBLE_EQ(xl.LCL, 7.08);
  const ControlLimits mr = MovingRangeLimits(mr_bar);
  EXPECT_DOUBLE_EQ(mr.UCL, 6.534);
  EXPECT_EQ(mr.LCL, 0.0);
  // The centre line is the unrounded mean of the moving ranges.
  EXPECT_EQ(MovingRangeLimits(1.0 / 3.0).CL, 1.0 / 3.0);
  EXPECT_EQ(MovingRangeLimits(1.0 / 3.0).UCL, 1.089);  // 3.267 / 3 to 12 places
  EXPECT_THROW(MeanMovingRange({}), ChartComputationError);
}

TEST(AttributeLimitsTest, CChartWithMeanFourIsFlooredAtZero) {
  const ControlLimits c = CLimits({2, 4, 6, 4});
  EXPECT_EQ(c.CL, 4.0);
  EXPECT_EQ(c.UCL, 10.0);
  EXPECT_EQ(c.LCL, 0.0);
  EXPECT_DOUBLE_EQ(c.LowerTwoSigma, 1.33336);  // 4 - 0.66666 * 4
  EXPECT_DOUBLE_EQ(c.UpperTwoSigma, 7.99996);  // 4 + 0.66666 * 6
}

TEST(AttributeLimitsTest, CChartKeepsAPositiveLowerLimit) {
  const ControlLimits c = CLimits({16, 16});
  EXPECT_EQ(c.UCL, 28.0);
  EXPECT_EQ(c.LCL, 4.0);
}

TEST(AttributeLimitsTest, NpChartOfFiftyWithMeanFive) {
  std::vector<double> counts(20, 5.0);
  counts[0] = 3.0;
  counts[1] = 7.0;
  const ControlLimits np = NpLimits(counts, 50.0);
  EXPECT_EQ(np.CL, 5.0);
  EXPECT_NEAR(np.UCL, 11.363961030679, 1e-12);
  EXPECT_NEAR(np.UpperTwoSigma, 9.242640687119, 1e-12);
  EXPECT_EQ(np.LCL, 0.0);
  EXPECT_NEAR(np.LowerTwoSigma, 0.757359312881, 1e-12);  // not floored
}

TEST(GivenLimitsTest, ReplaceTheComputedLimitsAndRedrawTheSigmaLines) {
  shell::GivenLimits given;
  given.charts[0] = {"12", "10", "-2"};
  ControlLimits limits{1, 2, 3, 4, 5};
  EXPECT_FALSE(ApplyGivenLimits(given, 0, kCSigma, limits));
  EXPECT_EQ(limits.UCL, 1.0);
  given.use = true;
  EXPECT_TRUE(ApplyGivenLimits(given, 0, kTwoOfThreeSigma, limits));
  EXPECT_EQ(limits.UCL, 12.0);
  EXPECT_EQ(limits.CL, 10.0);
  EXPECT_EQ(limits.LCL, -2.0);
  EXPECT_DOUBLE_EQ(limits.UpperTwoSigma, 11.33333333);
  EXPECT_DOUBLE_EQ(limits.LowerTwoSigma, 2.0);
  // An empty set (the lower chart after the one-chart dialog) keeps the computed limits.
  ControlLimits lower{1, 2, 3, 4, 5};
  EXPECT_FALSE(ApplyGivenLimits(given, 1, kTenSixesSigma, lower));
  EXPECT_EQ(lower.CL, 2.0);
}

}  // namespace
}  // namespace orvik::charts
