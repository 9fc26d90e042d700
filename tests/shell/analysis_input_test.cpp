#include "shell/analysis_input.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/sheet_host.h"

namespace orvik::shell {
namespace {

using worksheet::CellPolicy;
using testing_support::MessageTexts;

// The refusal boxes, the span checks and the Skip and Refuse policies are
// seen in every golden case; the other policies only here (improper cells
// counted as zero keep their positions).
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
    auto host = testing_support::HostOver(testing_support::Column(c.texts), {true, 1, 1, 1, 3});
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

}  // namespace
}  // namespace orvik::shell
