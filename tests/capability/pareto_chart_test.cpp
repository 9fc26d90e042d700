#include "capability/pareto_chart.h"

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

std::vector<std::string> Items(const std::vector<ParetoRow>& rows) {
  std::vector<std::string> items;
  for (const auto& row : rows) items.push_back(row.item);
  return items;
}

TEST(ParetoRowsTest, OtherIsPooledAndLastEvenWhenLargest) {
  const auto rows = ParetoRows({{"Other", 30}, {"Scratch", 10}, {"Dent", 20}, {"Other", 25}});
  EXPECT_EQ(Items(rows), (std::vector<std::string>{"Dent", "Scratch", "Other"}));
  EXPECT_EQ(rows.back().quantity, 55);
  EXPECT_EQ(rows.back().cumulativePercent, 100);
}

TEST(ParetoRowsTest, NoOtherRowWithoutOtherItemsOrWithAZeroTotal) {
  EXPECT_EQ(Items(ParetoRows({{"A", 1}, {"B", 2}})), (std::vector<std::string>{"B", "A"}));
  EXPECT_EQ(Items(ParetoRows({{"A", 1}, {"Other", 0}, {"B", 2}})), (std::vector<std::string>{"B", "A"}));
  // Only the exact item text (after trimming) pools.
  EXPECT_EQ(Items(ParetoRows({{"other", 3}, {"Others", 1}})), (std::vector<std::string>{"other", "Others"}));
}

TEST(ParetoRowsTest, EqualQuantitiesKeepTheirWorksheetOrder) {
  const auto rows = ParetoRows({{"c", 5}, {"a", 9}, {"b", 5}, {"d", 9}, {"e", 5}});
  EXPECT_EQ(Items(rows), (std::vector<std::string>{"a", "d", "c", "b", "e"}));
}

TEST(ParetoRowsTest, PercentagesAreRoundedToFourPlacesAndCumulate) {
  const auto rows = ParetoRows({{"A", 1}, {"B", 1}, {"C", 1}});
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].percent, 33.3333);
  EXPECT_EQ(rows[1].cumulativeQuantity, 2);
  EXPECT_EQ(rows[1].cumulativePercent, 66.6667);
  EXPECT_EQ(rows[2].cumulativePercent, 100);
  // A tie at the fifth place goes to the even digit: 1/16 = 6.25%, 1/32 = 3.125%.
  const auto ties = ParetoRows({{"A", 1}, {"B", 31}});
  EXPECT_EQ(ties[1].percent, 3.125);
  const auto tie5 = ParetoRows({{"A", 1}, {"B", 159999}});
  EXPECT_EQ(tie5[1].percent, 0.0006);  // 0.000625 -> 0.0006
}

TEST(ParetoSelectionTest, ShowsTheSixColumnTableAndBothSeries) {
  auto host = HostOver({{"Scratch", "48"}, {" Other ", "5"}, {"Dent", "17"}, {"Run", "22"}}, Block(1, 1, 2, 4));
  ParetoSelection(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.table->columns, (std::vector<std::string>{"No.", "Item", "Quantity", "Percent(%)",
                                                             "Cumulative quantity", "Cumulative percent(%)"}));
  EXPECT_EQ(window.table->TextRows(), (std::vector<std::vector<std::string>>{
                                    {"1", "Scratch", "48", "52.1739", "48", "52.1739"},
                                    {"2", "Run", "22", "23.913", "70", "76.087"},
                                    {"3", "Dent", "17", "18.4783", "87", "94.5652"},
                                    {"4", "Other", "5", "5.4348", "92", "100"},
                                }));
  const auto& chart = window.charts.at(0);
  ASSERT_EQ(chart.series.size(), 2u);
  EXPECT_EQ(chart.series[0].type, shell::SeriesType::Bar);
  EXPECT_EQ(chart.series[0].y, (std::vector<double>{48, 22, 17, 5}));
  EXPECT_TRUE(chart.series[1].onSecondAxis);
  EXPECT_EQ(chart.series[1].y.back(), 100);
  EXPECT_EQ(chart.categories, (std::vector<std::string>{"Scratch", "Run", "Dent", "Other"}));
  EXPECT_EQ(LogLines(host), (std::vector<std::string>{"Pareto chart generation is starting",
                                                      "Pareto chart generation is completed"}));
}

TEST(ParetoSelectionTest, ReadsTopToBottomAndLeftToRightWhateverTheDrag) {
  auto host = HostOver({{"A", "5"}, {"B", "5"}}, Block(2, 2, 1, 1));
  ParetoSelection(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  EXPECT_EQ(host.Windows()[0].charts[0].categories, (std::vector<std::string>{"A", "B"}));
}

TEST(ParetoSelectionTest, RefusalsAndTheFailurePath) {
  struct Case {
    const char* name;
    std::vector<std::vector<std::string>> rows;
    worksheet::GridSelection selection;
    std::vector<std::string> messages;
    std::vector<std::string> log;
  } cases[] = {
      {"empty sheet", {}, Block(1, 1, 2, 3), {"Select data from worksheet"}, {}},
      {"no block", {{"A", "1"}}, {}, {"Select data from worksheet"}, {}},
      {"three columns", {{"A", "1", "2"}}, Block(1, 1, 3, 1), {"Please, select two columns"}, {}},
      {"one column", {{"A", "1"}}, Block(2, 1, 2, 1), {"Please, select two columns"}, {}},
      {"nothing in the block", {{"A", "1"}, {"", ""}, {"", ""}}, Block(1, 2, 2, 3), {"Please, select data"}, {}},
      {"no quantities", {{"A", ""}, {"B", ""}}, Block(1, 1, 2, 2), {"Select valid data"}, {}},
      {"text quantity", {{"A", "1"}, {"B", "12 pcs"}}, Block(1, 1, 2, 2), {"Confirm selected columns data"},
       {"Pareto chart generation is starting", "Cancel pareto chart generation"}},
      {"negative quantity", {{"A", "1"}, {"B", "-3"}}, Block(1, 1, 2, 2), {"Confirm selected columns data"},
       {"Pareto chart generation is starting", "Cancel pareto chart generation"}},
      {"zero total", {{"A", "0"}, {"B", "0"}}, Block(1, 1, 2, 2), {"Confirm selected columns data"},
       {"Pareto chart generation is starting", "Cancel pareto chart generation"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    auto host = HostOver(c.rows, c.selection);
    ParetoSelection(host);
    EXPECT_TRUE(host.Windows().empty());
    EXPECT_EQ(MessageTexts(host), c.messages);
    EXPECT_EQ(LogLines(host), c.log);
  }
}

TEST(ParetoSelectionTest, TheWholeSheetOfATwoColumnTableIsTwoColumns) {
  auto host = HostOver({{"A", "3"}, {"B", "4"}}, {true, -1, -1, -1, -1});
  ParetoSelection(host);
  EXPECT_EQ(host.Windows().size(), 1u);
  EXPECT_TRUE(host.Messages().empty());
}

}  // namespace
}  // namespace orvik::capability
