#include "charts/chart_commands.h"

#include "charts/chart_input.h"
#include "charts/control_charts.h"
#include "charts/given_limits_dialog.h"

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
      Chart("mnuP", "p Chart", nullptr, 1, kLower),
      Chart("mnuPn", "np Chart", PnView, 1, kBoth, {"PnSubForm"}),
      Chart("mnuC", "c Chart", CView, 1, kLower),
      Chart("mnuU", "u Chart", nullptr, 1, kLower),
      Chart("mnuCUSUM", "CUSUM Chart", nullptr, 1, kUpper),
      Chart("mnuEWMA", "EWMA Chart", nullptr, 1, kLower),
      Chart("mnuMA", "MA Chart", nullptr, 1, kLower),
      Chart("mnuCV", "CV Chart", CVView, 1, kUpper, {"CVForm"}),
  };
}

std::vector<shell::DialogDeclaration> ChartDialogs() {
  return {
      {"ControlLimit", MakeControlLimit, true},
      {"ControlTwoLimit", MakeControlTwoLimit, true},
      {"Selection", MakeSubgroupSelection},
      {"PnSubForm", MakePnSubForm},
      {"CVForm", MakeCVForm},
  };
}

}  // namespace orvik::charts
