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

TEST(OpenGivenLimitsTest, GivenLimitsReplaceTheComputedOnesDownstream) {
  // Counts 2, 4, 6, 4 against given limits 5 / 4 / 3: the 2 and the 6 fall
  // outside.
  auto host = SheetHost({{"2"}, {"4"}, {"6"}, {"4"}}, "A1:A4",
                        {{"ControlLimit", "ControlOpt", "1"}, {"ControlLimit", "UCLtxt", "5"},
                         {"ControlLimit", "CLtxt", "4"}, {"ControlLimit", "LCLtxt", "3"}});
  OpenGivenLimits(host, "mnuC");
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.table->TextRows()[0], (std::vector<std::string>{"2", "5", "4", "3", "* "}));
  EXPECT_EQ(window.table->TextRows()[2][4], "* ");
  EXPECT_EQ(window.charts[0].lines[0].label, "UCL= 5");
  EXPECT_EQ(window.charts[0].series[0].marked, (std::vector<long>{1, 3}));
  EXPECT_EQ(LogLines(host).back(), "c control chart generation is completed");
}

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
  EXPECT_TRUE(OffersGivenLimits(xbar_r));
  EXPECT_EQ(PointInformation(xbar_r, "ChartOne", 1), "Number: 1 | Value: 2");
  EXPECT_EQ(PointInformation(xbar_r, "ChartTwo", 1), "Number: 1 | Value: 2");
  EXPECT_EQ(PointInformation(xbar, "ChartOne", 3), "Number: 3 | Value: 5");

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
