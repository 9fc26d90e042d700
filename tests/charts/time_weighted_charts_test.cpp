#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>

#include "charts/control_charts.h"
#include "charts/cusum_chart.h"
#include "charts/ewma_chart.h"
#include "charts/moving_average_chart.h"
#include "support/case_table.h"
#include "support/sheet_host.h"

// The whole commands (Montgomery's CUSUM and EWMA examples, the MA chart of
// subgroups with its range chart) are held by the golden cases under
// tests/golden/mnuCUSUM, mnuEWMA and mnuMA; these tests cover the formulas
// at their edges and what a single run cannot show.
namespace orvik::charts {
namespace {

using testing_support::LogLines;
using testing_support::MessageTexts;
using testing_support::SheetHost;
using testing_support::SheetRows;
using Lines = std::vector<std::string>;
using Numbers = std::vector<double>;

Numbers List(const std::string& text) {
  Numbers numbers;
  std::istringstream in(text);
  for (std::string item; std::getline(in, item, ',');) numbers.push_back(std::stod(item));
  return numbers;
}

// The grid cells of column `column` in the data rows (the legend's
// thirteen rows left out).
Lines GridColumn(const shell::ResultWindow& window, std::size_t column) {
  Lines cells;
  const auto rows = window.table->TextRows();
  for (std::size_t r = 0; r + 13 < rows.size(); ++r) cells.push_back(rows[r].at(column));
  return cells;
}

const SheetRows kFive = testing_support::Column({"10.2", "9.6", "10.1", "10.9", "9.7"});

TEST(CusumTest, SumsResetToZeroAndCountTheirRuns) {
  for (const auto& row : testing_support::ReadCases("charts/data/cusum_sums.tsv")) {
    const CusumSums sums = TabularCusum(List(row[3]), row.Number(0), row.Number(1), row.Number(2));
    EXPECT_EQ(sums.upper, List(row[4])) << row.Where();
    EXPECT_EQ(sums.lower, List(row[5])) << row.Where();
    EXPECT_EQ(sums.upperRun, List(row[6])) << row.Where();
    EXPECT_EQ(sums.lowerRun, List(row[7])) << row.Where();
  }
}

// lambda = 0.2, L = 3, a point sigma of 1 around 0: the first limit is
// 3 sqrt(0.2 / 1.8 (1 - 0.64)) = 0.6, the second 3 sqrt(0.2 / 1.8 (1 -
// 0.8^4)), and they settle at 3 sqrt(0.2 / 1.8) = 1. A tiny lambda keeps
// its first limit L lambda sigma; lambda = 1 gives the Shewhart limits
// from the first point on and plots the points themselves.
TEST(EwmaTest, LimitsFromTheFirstPointToTheSteadyState) {
  const struct {
    double lambda, width;
    std::size_t point;
    double ucl;
  } cases[] = {
      {0.2, 3, 1, 0.6}, {0.2, 3, 2, 0.76837491}, {0.2, 3, 200, 1.0}, {1e-4, 3, 1, 0.0003}, {1, 3, 1, 3}, {1, 2.5, 7, 2.5},
  };
  for (const auto& c : cases) {
    Numbers ucl, lcl;
    EwmaLimits(0.0, 1.0, c.lambda, c.width, c.point, ucl, lcl);
    EXPECT_DOUBLE_EQ(ucl.back(), c.ucl) << c.lambda << " " << c.point;
    EXPECT_DOUBLE_EQ(lcl.back(), -c.ucl) << c.lambda << " " << c.point;
  }
  EXPECT_EQ(EwmaStatistics({3.5, -1, 7.25}, 100.0, 1.0), (Numbers{3.5, -1, 7.25}));
  EXPECT_EQ(EwmaStatistics({12, 8}, 10.0, 0.5), (Numbers{11, 9.5}));
}

// With lambda = 1, L = 3 and mu0 and sigma from the data, the EWMA chart of
// subgroups of 30 draws the xbar chart's limits: both take sigma = s-bar /
// c4(30) and 3 sigma / sqrt(30) around the grand mean.
TEST(EwmaTest, LambdaOneDrawsTheXbarChartLimits) {
  SheetRows rows(3);
  for (int c = 0; c < 30; ++c)
    for (int r = 0; r < 3; ++r) rows[r].push_back(std::to_string(10 + (c * 7 + r * 3) % 11 * 0.1));
  auto xbar = SheetHost(rows, "A1:AD3");
  XbarView(xbar);
  auto ewma = SheetHost(rows, "A1:AD3", {{"EWMAForm", "Lambdatxt", "1"}});
  EWMAView(ewma);
  ASSERT_EQ(ewma.Windows().size(), 1u);
  const auto& xbar_window = xbar.Windows().at(0);
  const auto& ewma_window = ewma.Windows().at(0);
  EXPECT_EQ(ewma_window.charts.size(), 1u);  // no range chart beyond 25
  // xbar, UCL, CL, LCL of the xbar chart against EWMA, UCL, CL, LCL, equal
  // to their eighth place (the EWMA chart rounds its centre first).
  for (std::size_t column : {0u, 1u, 2u, 3u}) {
    const Lines ewma_cells = GridColumn(ewma_window, column + 1), xbar_cells = GridColumn(xbar_window, column);
    ASSERT_EQ(ewma_cells.size(), 3u);
    for (std::size_t r = 0; r < 3; ++r) EXPECT_NEAR(std::stod(ewma_cells[r]), std::stod(xbar_cells[r]), 1.1e-8);
  }
  EXPECT_NE(GridColumn(ewma_window, 2).front(), GridColumn(ewma_window, 3).front());
}

TEST(MovingAverageTest, StartUpAveragesFewerPointsWithWiderLimits) {
  EXPECT_EQ(MovingAverages({1, 2, 3, 4, 5}, 3), (Numbers{1, 1.5, 2, 3, 4}));
  EXPECT_EQ(MovingAverages({1, 2, 4}, 2), (Numbers{1, 1.5, 3}));
  Numbers ucl, lcl;
  MovingAverageLimits(10.0, 0.5, 3, 5, ucl, lcl);
  EXPECT_EQ(ucl, (Numbers{11.5, 11.06066017, 10.8660254, 10.8660254, 10.8660254}));
  EXPECT_EQ(lcl, (Numbers{8.5, 8.93933983, 9.1339746, 9.1339746, 9.1339746}));
}

// H = h sigma / sqrt(n) shows the sigma in force. Individual values 1, 3,
// 2, 6: MR-bar = 7/3, sigma = 7/3 / 1.128. Subgroups (1, 3), (2, 2), (4, 6):
// s-bar = 2 sqrt(2) / 3 over C4 = 0.7979. A given sigma replaces both.
TEST(TimeWeightedInputTest, SigmaEstimatedOrGiven) {
  const SheetRows individuals = testing_support::Column({"1", "3", "2", "6"});
  const SheetRows pairs = {{"1", "3"}, {"2", "2"}, {"4", "6"}};
  const struct {
    const SheetRows& rows;
    const char* range;
    const char* sigma;
    const char* h;
    const char* first_point;
  } cases[] = {
      {individuals, "A1:A4", "", "10.3427896", "1"},
      {individuals, "A1:A4", "2", "10", "1"},
      {pairs, "A1:B3", "", "4.17763295", "2"},
      {pairs, "A1:B3", "0.5", "1.76776695", "2"},  // 5 x 0.5 / sqrt(2)
  };
  for (const auto& c : cases) {
    auto host = SheetHost(c.rows, c.range, {{"CUSUMForm", "Sigmatxt", c.sigma}});
    CUSUMView(host);
    ASSERT_EQ(host.Windows().size(), 1u) << c.range << " " << c.sigma;
    EXPECT_EQ(GridColumn(host.Windows()[0], 3).front(), c.h) << c.range << " " << c.sigma;
    EXPECT_EQ(GridColumn(host.Windows()[0], 0).front(), c.first_point);
  }
}

// D2 holds 0.922 at n = 20: the range chart's upper limit falls below its
// centre line d2(20) sigma = 3.73495 sigma and its lower limit
// (d2 - 3 d3) sigma = 1.54889 sigma, so every ordinary range is beyond it.
TEST(RangeChartTest, SubgroupsOfTwentyKeepTheD2EntryBelowTheCentreLine) {
  const ControlLimits limits = RangeLimitsFromSigma(1.0, 20);
  EXPECT_EQ(limits.UCL, 0.922);
  EXPECT_NEAR(limits.CL, 3.73495, 1e-5);
  EXPECT_NEAR(limits.LCL, 1.54889, 1e-5);
  EXPECT_EQ(RangeLimitsFromSigma(2.0, 5).LCL, 0.0);  // d2 - 3 d3 < 0 up to n = 6
  EXPECT_THROW(RangeLimitsFromSigma(1.0, 26), ChartComputationError);

  SheetRows rows(3);
  for (int c = 0; c < 20; ++c)
    for (int r = 0; r < 3; ++r) rows[r].push_back(std::to_string((c * 5 + r * 2) % 9));
  auto host = SheetHost(rows, "A1:T3", {{"MAForm", "Spantxt", "2"}, {"MAForm", "Sigmatxt", "2"}});
  MAView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  ASSERT_EQ(window.charts.size(), 2u);
  EXPECT_EQ(window.table->columns.at(7), "R UCL");
  EXPECT_EQ(GridColumn(window, 7), Lines(3, "1.844"));          // 0.922 x 2
  EXPECT_EQ(GridColumn(window, 10), Lines(3, "* "));            // ranges of 8 above it
  EXPECT_EQ(window.charts[1].series[0].marked, (std::vector<long>{1, 2, 3}));
}

TEST(TimeWeightedDialogTest, ValidNumbersOnly) {
  const std::map<std::string, void (*)(shell::Host&)> views = {
      {"CUSUMForm", CUSUMView}, {"EWMAForm", EWMAView}, {"MAForm", MAView}};
  const std::map<std::string, std::string> names = {{"CUSUMForm", "CUSUM"}, {"EWMAForm", "EWMA"}, {"MAForm", "MA"}};
  for (const auto& row : testing_support::ReadCases("charts/data/time_weighted_dialogs.tsv")) {
    SCOPED_TRACE(row.Where());
    const bool accepted = row[3] == "accept";
    auto host = SheetHost(kFive, "A1:A5", {{row[0], row[1], row[2]}});
    views.at(row[0])(host);
    EXPECT_EQ(MessageTexts(host), accepted ? Lines{} : Lines{"Please, input valid numerical data"});
    EXPECT_EQ(host.Windows().size(), accepted ? 1u : 0u);
    // Giving up after a refusal cancels the dialog, which writes the cancel line.
    const std::string name = names.at(row[0]);
    Lines log = {name + " control chart generation is starting"};
    log.push_back(accepted ? name + " control chart generation is completed" : "Cancel " + name + " control chart generation");
    EXPECT_EQ(LogLines(host), log);
  }
}

TEST(TimeWeightedInputTest, RefusalsBeforeTheStartingLine) {
  const struct {
    void (*view)(shell::Host&);
    SheetRows rows;
    const char* range;
    const char* text;
  } cases[] = {
      {CUSUMView, testing_support::Column({"1", "x", "3"}), "A1:A3", "Improper data for CUSUM control chart"},
      {EWMAView, testing_support::Column({"1", "", "3"}), "A1:A3", "Improper data for EWMA control chart"},
      {MAView, {{"1", "2"}, {"3", "four"}}, "A1:B2", "Improper data for MA control chart"},
      {EWMAView, testing_support::Column({"1"}), "A1:A1", "All data are not enough to analysis"},
      {MAView, {{"1", "2", "3"}}, "A1:C1", "All data are not enough to analysis"},  // one subgroup
  };
  for (const auto& c : cases) {
    auto host = SheetHost(c.rows, c.range);
    c.view(host);
    EXPECT_EQ(MessageTexts(host), Lines{c.text});
    EXPECT_TRUE(LogLines(host).empty()) << c.text;
    EXPECT_TRUE(host.Windows().empty());
  }
  auto cancelled = SheetHost(kFive, "A1:A5", {}, {"CUSUMForm"});
  CUSUMView(cancelled);
  EXPECT_EQ(LogLines(cancelled),
            (Lines{"CUSUM control chart generation is starting", "Cancel CUSUM control chart generation"}));
  EXPECT_TRUE(cancelled.Windows().empty());
}

TEST(PointInformationTest, TheCusumChartAnswersWithBothSums) {
  auto host = SheetHost(kFive, "A1:A5", {{"CUSUMForm", "Targettxt", "10"}, {"CUSUMForm", "Sigmatxt", "0.4"}});
  CUSUMView(host);
  const shell::ResultWindow& window = host.Windows().at(0);
  // K = 0.2: C+ 0, 0, 0, 0.7, 0.2 and C- 0, 0.2, 0, 0, 0.1.
  EXPECT_EQ(PointInformation(window, "ChartOne", 2, {true, false}), "Number: 2 | C+: 0 | C-: 0.2");
  EXPECT_EQ(PointInformation(window, "ChartOne", 4, {true, false}), "Number: 4 | C+: 0.7 | C-: 0");
  EXPECT_EQ(PointInformation(window, "ChartOne", 6, {true, false}), std::nullopt);
}

}  // namespace
}  // namespace orvik::charts
