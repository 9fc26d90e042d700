#include "charts/run_chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "support/case_table.h"
#include "support/sheet_host.h"

// The run chart's whole result (grid, chart, log) is held by the golden
// cases under tests/golden/mnuRun; these tests hold the counting rules on
// hand-made series and the refusals.
namespace orvik::charts {
namespace {

using testing_support::LogLines;
using testing_support::MessageTexts;
using testing_support::SheetHost;
using Lines = std::vector<std::string>;

std::vector<double> Series(const std::string& text) {
  std::vector<double> values;
  std::stringstream in(text);
  for (std::string item; std::getline(in, item, ',');) values.push_back(std::stod(item));
  return values;
}

void ExpectProbability(double ours, double expected) {
  if (std::isnan(expected))
    EXPECT_TRUE(std::isnan(ours));
  else
    EXPECT_NEAR(ours, expected, 1e-12);
}

TEST(AnalyseRunsTest, CountsExpectationsAndPValues) {
  for (const auto& row : testing_support::ReadCases("charts/data/run_patterns.tsv")) {
    SCOPED_TRACE(row.Where() + " " + row[0]);
    const RunPatterns runs = AnalyseRuns(Series(row[1]));
    EXPECT_EQ(runs.median, row.Number(2));
    EXPECT_EQ(runs.above, row.Number(3));
    EXPECT_EQ(runs.below, row.Number(4));
    EXPECT_EQ(runs.aboutMedian.runs, row.Number(5));
    EXPECT_NEAR(runs.aboutMedian.expected, row.Number(6), 1e-12);
    EXPECT_EQ(runs.longestAboutMedian, row.Number(7));
    ExpectProbability(runs.aboutMedian.fewer, row.Number(8));
    ExpectProbability(runs.aboutMedian.more, row.Number(9));
    EXPECT_EQ(runs.upDownPoints, row.Number(10));
    EXPECT_EQ(runs.upOrDown.runs, row.Number(11));
    EXPECT_NEAR(runs.upOrDown.expected, row.Number(12), 1e-12);
    EXPECT_EQ(runs.longestUpOrDown, row.Number(13));
    ExpectProbability(runs.upOrDown.fewer, row.Number(14));
    ExpectProbability(runs.upOrDown.more, row.Number(15));
  }
}

TEST(RunChartViewTest, AllEqualSeriesAndSubgroupMeansAreRefused) {
  struct Case {
    std::vector<std::vector<std::string>> rows;
    std::string range;
  };
  for (const Case& c : {Case{{{"4"}, {"4"}, {"4"}}, "A1:A3"},
                        // The means 2, 2, 2 of subgroups that differ.
                        Case{{{"1", "3"}, {"3", "1"}, {"2", "2"}}, "A1:B3"},
                        // A row without numbers is left out, so it does not
                        // make the means differ.
                        Case{{{"1", "3"}, {"x", ""}, {"2", "2"}}, "A1:B3"}}) {
    auto host = SheetHost(c.rows, c.range);
    RunChartView(host);
    EXPECT_EQ(MessageTexts(host), Lines{"All data are same"}) << c.range;
    EXPECT_TRUE(host.Windows().empty());
    EXPECT_TRUE(LogLines(host).empty());
  }
}

}  // namespace
}  // namespace orvik::charts
