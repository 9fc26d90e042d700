#include "commands/result_window_actions.h"

#include <gtest/gtest.h>

#include "charts/control_charts.h"
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
