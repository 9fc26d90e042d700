#include "capability/pareto_chart.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>


namespace orvik::capability {
namespace {

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

}  // namespace
}  // namespace orvik::capability
