#include "capability/box_plot.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/sheet_host.h"

namespace orvik::capability {
namespace {

using testing_support::Block;
using testing_support::HostOver;
using testing_support::LogLines;
using testing_support::MessageTexts;

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

TEST(BoxPlotViewTest, OneColumnOfTheGridAndOneBoxPerDataColumn) {
  auto host = HostOver({{"1", "10"}, {"2", "20"}, {"3", "x"}, {"4", "40"}}, Block(1, 1, 2, 4));
  BoxPlotView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.table->columns, (std::vector<std::string>{"", "A", "B"}));
  EXPECT_EQ(window.table->TextRows(), (std::vector<std::vector<std::string>>{
                                    {"N", "4", "3"},
                                    {"Minimum", "1", "10"},
                                    {"Q1", "1.25", "10"},
                                    {"Median", "2.5", "20"},
                                    {"Q3", "3.75", "40"},
                                    {"Maximum", "4", "40"},
                                    {"Range", "3", "30"},
                                    {"Interquartile range(IQR)", "2.5", "30"},
                                }));
  const auto& box = window.charts.at(0).series.at(0);
  EXPECT_EQ(box.type, shell::SeriesType::Box);
  EXPECT_EQ(box.y, (std::vector<double>{1, 1.25, 2.5, 3.75, 4, 10, 10, 20, 40, 40}));
  EXPECT_EQ(LogLines(host), (std::vector<std::string>{"Box-plot generation is starting",
                                                      "Box-plot generation is completed"}));
}

TEST(BoxPlotViewTest, HeadsColumnsWithTheirNamesInReadingOrder) {
  worksheet::Worksheet sheet = testing_support::MakeSheet({{"1", "5"}, {"2", "6"}});
  sheet.SetColumnHeader(2, "Diameter");
  sheet.Selection = Block(2, 1, 1, 2);  // dragged right to left
  cli::CliHost host(std::move(sheet), {}, {});
  BoxPlotView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  EXPECT_EQ(host.Windows()[0].table->columns, (std::vector<std::string>{"", "Diameter", "A"}));
}

TEST(BoxPlotViewTest, TenColumnsAreAcceptedElevenRefused) {
  std::vector<std::vector<std::string>> rows(3, std::vector<std::string>(11));
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 11; ++c) rows[r][c] = std::to_string(r + c);
  auto ten = HostOver(rows, Block(1, 1, 10, 3));
  BoxPlotView(ten);
  EXPECT_EQ(ten.Windows().size(), 1u);
  auto eleven = HostOver(rows, Block(11, 1, 1, 3));
  BoxPlotView(eleven);
  EXPECT_TRUE(eleven.Windows().empty());
  EXPECT_EQ(MessageTexts(eleven), (std::vector<std::string>{"Exceed selected available columns"}));
  EXPECT_TRUE(LogLines(eleven).empty());
}

TEST(BoxPlotViewTest, AColumnWithoutNumbersIsRefusedWithACancelLine) {
  auto host = HostOver({{"1", "a"}, {"2", ""}}, Block(1, 1, 2, 2));
  BoxPlotView(host);
  EXPECT_TRUE(host.Windows().empty());
  EXPECT_EQ(MessageTexts(host), (std::vector<std::string>{"Select valid data"}));
  EXPECT_EQ(LogLines(host), (std::vector<std::string>{"Cancel Box-plot generation"}));
}

}  // namespace
}  // namespace orvik::capability
