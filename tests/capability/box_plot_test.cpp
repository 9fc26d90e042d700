#include "capability/box_plot.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/sheet_host.h"

namespace orvik::capability {
namespace {

using testing_support::Block;

TEST(BoxSummaryTest, QuartilesByTheNPlusOneRule) {
  const BoxSummary four = SummariseColumn("A", std::vector<double>{4, 1, 3, 2});
  EXPECT_EQ(four.q1, 1.25);
  EXPECT_EQ(four.median, 2.5);
  EXPECT_EQ(four.q3, 3.75);
  EXPECT_EQ(four.interquartileRange, 2.5);
  EXPECT_EQ(four.range, 3);
  const BoxSummary seven = SummariseColumn("B", std::vector<double>{7, 1, 6, 2, 5, 3, 4});
  EXPECT_EQ(seven.q1, 2);  // whole positions 2 and 6
  EXPECT_EQ(seven.q3, 6);
  EXPECT_EQ(seven.median, 4);
}

TEST(BoxSummaryTest, VerySmallColumnsKeepTheirQuartilesInsideTheirRange) {
  const BoxSummary one = SummariseColumn("A", std::vector<double>{5});
  EXPECT_EQ(one.q1, 5);
  EXPECT_EQ(one.q3, 5);
  EXPECT_EQ(one.interquartileRange, 0);
  const BoxSummary two = SummariseColumn("A", std::vector<double>{8, 2});
  EXPECT_EQ(two.q1, 2);
  EXPECT_EQ(two.median, 5);
  EXPECT_EQ(two.q3, 8);
}

TEST(BoxSummaryTest, RoundsQuartilesToTenPlacesAndTheIqrToEight) {
  const BoxSummary box = SummariseColumn("A", std::vector<double>{0, 1.0 / 3, 2.0 / 3, 1, 4.0 / 3});
  EXPECT_EQ(box.q1, 0.1666666667);
  EXPECT_EQ(box.q3, 1.1666666667);
  EXPECT_EQ(box.interquartileRange, 1.0);
}

// The grid and boxes of a run, its refusals and the limit of ten columns are
// golden cases (tests/golden/mnuBoxPlot); a --sheet file names no columns.
TEST(BoxPlotViewTest, HeadsColumnsWithTheirNamesInReadingOrder) {
  worksheet::Worksheet sheet = testing_support::MakeSheet({{"1", "5"}, {"2", "6"}});
  sheet.SetColumnHeader(2, "Diameter");
  sheet.Selection = Block(2, 1, 1, 2);  // dragged right to left
  cli::CliHost host(std::move(sheet), {}, {});
  BoxPlotView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  EXPECT_EQ(host.Windows()[0].table->columns, (std::vector<std::string>{"", "Diameter", "A"}));
}

}  // namespace
}  // namespace orvik::capability
