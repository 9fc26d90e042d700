#include "shell/analysis_input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/sheet_host.h"

namespace orvik::shell {
namespace {

using worksheet::CellPolicy;

using testing_support::MessageTexts;

cli::CliHost HostWithColumn(const std::vector<std::string>& texts, worksheet::GridSelection selection) {
  return testing_support::HostOver(testing_support::Column(texts), selection);
}

const worksheet::GridSelection kColumnA{true, 1, 1, -1, -1};

TEST(AnalysisInputTest, RefusalsAreConfirmationDataBoxesAndLeaveTheLogAlone) {
  auto host = HostWithColumn({"5", "5", "5"}, kColumnA);
  EXPECT_FALSE(ReadCheckedSelection(host).has_value());
  ASSERT_EQ(host.Messages().size(), 1u);
  EXPECT_EQ(host.Messages()[0], (MessageBox{"Confirmation Data", "All data are same", MessageIcon::Exclamation,
                                            MessageButtons::Ok}));
  EXPECT_EQ(host.Log().Text(), "Welcome to Orvik 2.0");

  auto no_block = HostWithColumn({"1", "2", "3"}, {});
  EXPECT_FALSE(ReadCheckedSelection(no_block).has_value());
  EXPECT_EQ(no_block.Messages().at(0).text, "Please, select valid data");
}

TEST(AnalysisInputTest, AcceptedSelectionBecomesTheCurrentOne) {
  auto host = HostWithColumn({"3", "x", "4", "8"}, kColumnA);
  const auto figures = ReadCheckedSelection(host);
  ASSERT_TRUE(figures.has_value());
  EXPECT_TRUE(host.Messages().empty());
  EXPECT_EQ(host.CurrentSelection().values, (std::vector<double>{3, 4, 8}));
  EXPECT_EQ(figures->sum, 15);
}

TEST(AnalysisInputTest, PoliciesShowTheirNoticeOnlyWhenTheBlockHoldsImproperCells) {
  struct PolicyCase {
    CellPolicy policy;
    std::vector<std::string> texts;
    std::vector<std::string> messages;
    bool goes_on;
    std::vector<double> values;
  } cases[] = {
      {CellPolicy::Skip, {"1", "", "2"}, {}, true, {1, 2}},
      {CellPolicy::CountAsZero, {"1", "", "2"}, {"If improper data or null cells then change to zero"}, true, {1, 0, 2}},
      {CellPolicy::CountAsZero, {"1", "2"}, {}, true, {1, 2}},
      {CellPolicy::DropWithNotice, {"1", "q", "2"}, {"Non-numeric data or empty cell's data are elimination"}, true, {1, 2}},
      {CellPolicy::DropWithNotice, {"1", "2"}, {}, true, {1, 2}},
      {CellPolicy::Refuse, {"1", "q", "2"}, {"Include improper data or null cells"}, false, {}},
      {CellPolicy::Refuse, {"1", "2"}, {}, true, {1, 2}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.policy));
    auto host = HostWithColumn(c.texts, {true, 1, 1, 1, 3});
    ASSERT_TRUE(ResolveDataBlock(host));
    const auto figures = CollectNumericCells(host, c.policy);
    EXPECT_EQ(figures.has_value(), c.goes_on);
    EXPECT_EQ(MessageTexts(host), c.messages);
    if (c.goes_on) {
      EXPECT_EQ(host.CurrentSelection().values, c.values);
    }
    if (!host.Messages().empty()) {
      EXPECT_EQ(host.Messages()[0].title, c.goes_on ? "Information" : "Confirmation Data");
    }
  }
}

TEST(AnalysisInputTest, ChartsRefuseWithTheirOwnMessage) {
  auto host = HostWithColumn({"1", "", "2"}, {true, 1, 1, 1, 3});
  ASSERT_TRUE(ResolveDataBlock(host));
  EXPECT_FALSE(CollectNumericCells(host, CellPolicy::Refuse, "Improper data for c control chart").has_value());
  EXPECT_EQ(host.Messages().at(0).text, "Improper data for c control chart");
}

TEST(AnalysisInputTest, ColumnShapeChecksMeasureTheDraggedSpan) {
  auto two = HostWithColumn({"1"}, {true, 3, 2, 1, 5});
  EXPECT_TRUE(RequireColumnSpan(two, 2, "Please, select two columns"));
  EXPECT_FALSE(RequireColumnSpan(two, 1, "Please select one column only"));
  EXPECT_TRUE(RequireAtMostColumns(two, 10));
  EXPECT_FALSE(RequireAtMostColumns(two, 1));
  EXPECT_EQ(MessageTexts(two),
            (std::vector<std::string>{"Please select one column only", "Exceed selected available columns"}));
}

}  // namespace
}  // namespace orvik::shell
