#include "commands/result_window_actions.h"

#include <gtest/gtest.h>

#include "charts/control_charts.h"
#include "charts/rule_settings.h"
#include "commands/command_registry.h"
#include "support/sheet_host.h"

namespace orvik::commands {
namespace {

using testing_support::LogLines;
using testing_support::MessageTexts;
using testing_support::SheetHost;

// What given limits do to a chart's grid, codes and lines is the golden
// cases' (tests/golden/*/given_limits); here, which dialog a key opens.
TEST(OpenGivenLimitsTest, ATwoChartCommandGetsTheDialogOfTwoSets) {
  // Settings for the one-set dialog do not reach the x-MR chart's dialog,
  // which the runner then confirms with its defaults: limits from the data.
  auto one_set = SheetHost({{"1"}, {"3"}, {"2"}}, "A1:A3", {}, {"ControlLimit"});
  OpenGivenLimits(one_set, "mnuX-Rs");
  ASSERT_EQ(one_set.Windows().size(), 1u);
  EXPECT_FALSE(one_set.Settings().givenLimits.use);

  auto two_sets = SheetHost({{"1"}, {"3"}, {"2"}}, "A1:A3",
                            {{"ControlTwoLimit", "ControlOpt", "1"}, {"ControlTwoLimit", "UCL1txt", "9"},
                             {"ControlTwoLimit", "CL1txt", "2"}, {"ControlTwoLimit", "LCL1txt", "-5"},
                             {"ControlTwoLimit", "UCL2txt", "4"}, {"ControlTwoLimit", "CL2txt", "1"},
                             {"ControlTwoLimit", "LCL2txt", "0"}});
  OpenGivenLimits(two_sets, "mnuX-Rs");
  ASSERT_EQ(two_sets.Windows().size(), 1u);
  EXPECT_EQ(two_sets.Windows()[0].charts.at(1).lines.at(0).label, "UCL= 4");
}

TEST(OpenGivenLimitsTest, ACancelledDialogOrACommandWithoutLimitsRunsNothing) {
  for (const char* key : {"mnuC", "mnuHistogram", "mnuNoSuchKey"}) {
    auto host = SheetHost({{"2"}, {"4"}, {"6"}}, "A1:A3", {}, {"ControlLimit"});
    OpenGivenLimits(host, key);
    EXPECT_TRUE(host.Windows().empty()) << key;
    EXPECT_TRUE(LogLines(host).empty()) << key;
    EXPECT_TRUE(MessageTexts(host).empty()) << key;
  }
}

// A window drawn again for new given limits keeps the rules it was made
// with, though the program's rules have changed since.
TEST(OpenGivenLimitsTest, TheChartIsDrawnAgainWithTheRulesItWasMadeWith) {
  auto host = SheetHost(testing_support::Column({"1", "2", "1", "2", "1", "2", "1", "2", "1", "2", "1", "2", "1", "2"}),
                        "A1:A14", {{"RuleSettings", "ProfileNelson", "1"}});
  charts::RuleSettingsDialog nelson;
  ASSERT_EQ(host.RunDialog(nelson), shell::DialogOutcome::Accepted);
  host.BeginRun("mnuC");
  charts::CView(host);
  host.EndRun();
  host.KeepOptions(charts::RuleSettingStates({}));
  host.Settings().Last<charts::ChartRuleSettings>() = {};
  ASSERT_EQ(host.Windows().size(), 1u);
  OpenGivenLimits(host, host.Windows()[0]);
  ASSERT_EQ(host.Windows().size(), 2u);
  for (const shell::ResultWindow& window : host.Windows()) {
    // Fourteen points alternating: Nelson's rule L on every one.
    EXPECT_EQ(window.table->Row(0).at(4), "L ");
    EXPECT_EQ(window.table->Row(22).at(0), " L : 14 successive points alternate up and down");
  }
  EXPECT_EQ(charts::RulesOfRun(*host.Windows()[1].run).rules, charts::RuleSet::Nelson());
}

TEST(ResultWindowActionsTest, WindowsAnswerAsTheirCommandDeclares) {
  auto host = SheetHost({{"1", "3"}, {"2", "2"}, {"4", "6"}}, "A1:B3");
  charts::XbarRView(host);
  charts::XbarView(host);
  ASSERT_EQ(host.Windows().size(), 2u);
  const shell::ResultWindow& xbar_r = host.Windows()[0];
  const shell::ResultWindow& xbar = host.Windows()[1];
  // Which point a chart answers for is the charts' table; here, that the
  // answer follows the command's declaration.
  EXPECT_TRUE(OffersGivenLimits(xbar_r));
  EXPECT_EQ(PointInformation(xbar_r, "ChartTwo", 1), "Number: 1 | Value: 2");

  // The same window under a key that declares no point answers and no
  // given limits, or under no known key, offers neither.
  for (const char* key : {"mnuRun", "mnuHistogram", "", "mnuNoSuchKey"}) {
    shell::ResultWindow other = xbar;
    other.commandKey = key;
    EXPECT_FALSE(OffersGivenLimits(other)) << key;
    EXPECT_EQ(PointInformation(other, "ChartOne", 3), std::nullopt) << key;
  }
  // Given limits need a control chart window.
  shell::ResultWindow graph = shell::MakeDataChart("xbar control chart");
  graph.commandKey = "mnuBarX";
  EXPECT_FALSE(OffersGivenLimits(graph));
}

}  // namespace
}  // namespace orvik::commands
