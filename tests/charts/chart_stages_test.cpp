#include "charts/chart_stages.h"

#include <gtest/gtest.h>

#include "charts/chart_limits.h"
#include "support/sheet_host.h"

namespace orvik::charts {
namespace {

// Limits with CL 0, sigma 1: the codes below follow from the pattern alone.
const StageLimits kUnitLimits = [](std::size_t, std::size_t) { return ControlLimits{3.0, 0.0, -3.0, 2.0, -2.0}; };

std::size_t CountCode(const ControlChart& chart, char letter) {
  std::size_t count = 0;
  for (const CodeMask mask : chart.codes) count += (mask & RuleBit(letter)) != 0;
  return count;
}

TEST(RuledChartTest, ARuleSwitchedOffLeavesNoCodeAndNoLegendRow) {
  ChartOptions options;
  const ControlChart on = RuledChart("x", std::vector<double>(7, 0.5), kUnitLimits, options);
  options.rules['A'].on = false;
  const ControlChart off = RuledChart("x", std::vector<double>(7, 0.5), kUnitLimits, options);
  EXPECT_EQ(CountCode(on, 'A'), 7u);
  EXPECT_EQ(CountCode(off, 'A'), 0u);
  const shell::ResultTable with = OneChartTable(on), without = OneChartTable(off);
  // 7 points, the empty row, the heading, "*", "Run" and one row per rule.
  ASSERT_EQ(with.RowCount(), 7u + 4u + 9u);
  ASSERT_EQ(without.RowCount(), 7u + 4u + 8u);
  for (std::size_t row = 7; row < without.RowCount(); ++row)
    EXPECT_FALSE(without.Row(row).at(0).starts_with(" A :")) << row;
  EXPECT_EQ(with.Row(11).at(0), kLegendLines[2]);
}

TEST(RuledChartTest, EveryStageStartsTheRunsAfreshAndIsMarkedWhereItBegins) {
  ChartOptions options;
  options.rules = RuleSet::WesternElectric();
  const std::vector<double> values(8, 0.5);  // eight above CL: rule A of the Western Electric set
  EXPECT_EQ(CountCode(RuledChart("x", values, kUnitLimits, options), 'A'), 8u);
  options.stageLabels = {"a", "a", "a", "a", "b", "b", "b", "b"};
  const ControlChart staged = RuledChart("x", values, kUnitLimits, options);
  EXPECT_EQ(CountCode(staged, 'A'), 0u);
  shell::ChartSeries drawn;
  DrawChart(staged, drawn);
  ASSERT_GE(drawn.lines.size(), 2u);
  EXPECT_EQ(drawn.lines[1].orientation, shell::LineOrientation::Vertical);
  EXPECT_EQ(drawn.lines[1].value, 4.5);
  EXPECT_EQ(drawn.lines[1].label, "b");
  EXPECT_FALSE(staged.pointLimits);  // the same limits in both stages: straight lines
}

TEST(RuledChartTest, HistoricalLimitsAreThePhaseOneChartsOwnAndOtherwiseEachStageHasItsOwn) {
  const std::vector<double> phase_one = {2, 3, 1, 4, 2, 3}, counts = {2, 3, 1, 4, 2, 3, 9, 8, 9};
  const StageLimits c_limits = [&counts](std::size_t first, std::size_t count) {
    return CLimits({counts.begin() + static_cast<long>(first), counts.begin() + static_cast<long>(first + count)});
  };
  const StageLimits phase_one_limits = [&phase_one](std::size_t, std::size_t) { return CLimits(phase_one); };
  const ControlLimits own = RuledChart("c", phase_one, phase_one_limits, {}).limits;
  ChartOptions options;
  options.stageLabels = {"I", "I", "I", "I", "I", "I", "II", "II", "II"};
  options.historical = true;
  const ControlChart historical = RuledChart("c", counts, c_limits, options);
  for (const ChartStage& stage : historical.stages) {
    EXPECT_EQ(stage.limits.UCL, own.UCL);
    EXPECT_EQ(stage.limits.CL, own.CL);
    EXPECT_EQ(stage.limits.LCL, own.LCL);
  }
  EXPECT_EQ(CountCode(historical, 'A'), 0u);
  EXPECT_EQ(historical.codes[6] & kOutOfLimits, kOutOfLimits);  // 9 beyond phase I's UCL of about 7.4
  options.historical = false;
  const ControlChart own_stages = RuledChart("c", counts, c_limits, options);
  ASSERT_TRUE(own_stages.pointLimits);
  EXPECT_EQ(own_stages.pointLimits->CL[8], CLimits({9, 8, 9}).CL);
  EXPECT_EQ(own_stages.codes[6] & kOutOfLimits, 0);
}

TEST(RuleSettingsDialogTest, ProfilesFillTheRulesAndAnEditMakesThemCustom) {
  auto host = testing_support::SheetHost({{"1"}}, "A1");
  RuleSettingsDialog dialog;
  dialog.Click("ProfileNelson");
  EXPECT_EQ(dialog.Read()->rules, RuleSet::Nelson());
  dialog.Type("RuleAKtxt", "9");  // Nelson's own count: still Nelson
  EXPECT_TRUE(dialog.Control("ProfileNelson").checked);
  dialog.Type("RuleAKtxt", "10");
  EXPECT_TRUE(dialog.Control("ProfileCustom").checked);
  dialog.Type("RuleJMtxt", "1");  // a window shorter than its count
  EXPECT_FALSE(dialog.PressOk(host));
  EXPECT_EQ(testing_support::MessageTexts(host), std::vector<std::string>{"Please, input valid numerical data"});
  dialog.Type("RuleJMtxt", "4");
  dialog.Click("Stages");
  dialog.Type("StageColtxt", "c");
  ASSERT_TRUE(dialog.PressOk(host));
  const ChartRuleSettings chosen = host.Settings().Last<ChartRuleSettings>();
  EXPECT_EQ(chosen.rules['A'].k, 10);
  EXPECT_EQ(chosen.rules['J'].m, 4);
  EXPECT_EQ(chosen.stages.column, 3);
  // Saved as control states and brought back, as a project does.
  auto other = testing_support::SheetHost({{"1"}}, "A1");
  RestoreRuleSettings(other, RuleSettingStates(chosen));
  EXPECT_EQ(other.Settings().Last<ChartRuleSettings>(), chosen);
}

}  // namespace
}  // namespace orvik::charts
