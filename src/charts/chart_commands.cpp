#include "charts/chart_commands.h"

#include "charts/chart_input.h"
#include "charts/control_charts.h"
#include "charts/cusum_chart.h"
#include "charts/ewma_chart.h"
#include "charts/given_limits_dialog.h"
#include "charts/moving_average_chart.h"
#include "charts/proportion_charts.h"
#include "charts/rule_settings.h"

namespace orvik::charts {

namespace {

using shell::CommandDeclaration;
using shell::PointAnswers;

constexpr PointAnswers kUpper{true, false};
constexpr PointAnswers kLower{false, true};
constexpr PointAnswers kBoth{true, true};

// A control chart: a ControlForm window of `charts` charts whose limits the
// user may give, one set per chart.
CommandDeclaration Chart(std::string_view key, std::string_view caption, shell::CommandProcedure run, int charts,
                         PointAnswers answers, std::vector<std::string_view> dialogs = {}) {
  return {.key = key,
          .menu = "mnuAnalysis",
          .submenu = "Control Charts",
          .caption = caption,
          .run = run,
          .dialogs = std::move(dialogs),
          .window = shell::WindowKind::ControlForm,
          .chartCount = charts,
          .pointInformation = answers,
          .givenLimitSets = charts};
}

// A chart whose limits follow from the target and sigma of its own dialog
// and change from point to point (CUSUM, EWMA, MA): it offers no given
// limits, which are program-wide and set for Shewhart charts of another
// scale. EWMA and MA windows add the range chart for subgroups.
CommandDeclaration TimeWeightedChart(CommandDeclaration chart) {
  chart.givenLimitSets = 0;
  return chart;
}

}  // namespace

std::vector<CommandDeclaration> ChartCommands() {
  return {
      Chart("mnuBarX-R", "xbar-R Chart", XbarRView, 2, kBoth, {"Selection"}),
      Chart("mnuBarX", "xbar Chart", XbarView, 1, kUpper),
      Chart("mnuR", "R Chart", RView, 1, kLower),
      Chart("mnuBarXS", "xbar-s Chart", XbarSView, 2, kBoth, {"Selection"}),
      Chart("mnuS", "s Chart", SView, 1, kLower),
      Chart("mnuX-Rs", "x-MR Chart", XMRView, 2, kBoth, {"Selection"}),
      Chart("mnuMR", "MR Chart", MRView, 1, kLower),
      Chart("mnuP", "p Chart", PView, 1, kLower, {"PSubForm"}),
      Chart("mnuPn", "np Chart", PnView, 1, kBoth, {"PnSubForm"}),
      Chart("mnuC", "c Chart", CView, 1, kLower),
      Chart("mnuU", "u Chart", UView, 1, kLower),
      TimeWeightedChart(Chart("mnuCUSUM", "CUSUM Chart", CUSUMView, 1, kUpper, {"CUSUMForm"})),
      TimeWeightedChart(Chart("mnuEWMA", "EWMA Chart", EWMAView, 2, kLower, {"EWMAForm"})),
      TimeWeightedChart(Chart("mnuMA", "MA Chart", MAView, 2, kLower, {"MAForm"})),
      Chart("mnuCV", "CV Chart", CVView, 1, kUpper, {"CVForm"}),
  };
}

std::vector<shell::DialogDeclaration> ChartDialogs() {
  return {
      {"ControlLimit", MakeControlLimit, true},
      {"ControlTwoLimit", MakeControlTwoLimit, true},
      {"RuleSettings", MakeRuleSettings, true},
      {"Selection", MakeSubgroupSelection},
      {"PnSubForm", MakePnSubForm},
      {"CUSUMForm", MakeCUSUMForm},
      {"EWMAForm", MakeEWMAForm},
      {"MAForm", MakeMAForm},
      {"PSubForm", MakePSubForm},
      {"CVForm", MakeCVForm},
  };
}

}  // namespace orvik::charts
