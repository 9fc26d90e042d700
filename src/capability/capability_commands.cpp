#include "capability/capability_commands.h"

#include "capability/box_plot.h"
#include "capability/cpk_form.h"
#include "capability/histogram.h"
#include "capability/pareto_chart.h"
#include "capability/process_capability.h"
#include "charts/run_chart.h"

namespace orvik::capability {

namespace {

constexpr auto kDataChart = shell::WindowKind::DataChart;

}  // namespace

std::vector<shell::CommandDeclaration> CapabilityCommands() {
  return {
      {.key = "mnuHistogram", .menu = "mnuGraph", .caption = "&Histogram", .run = HistogramView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuDotplot", .menu = "mnuGraph", .caption = "&Scatterplot"},
      {.key = "mnuPareto", .menu = "mnuGraph", .caption = "&Pareto Chart", .run = ParetoSelection,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuBoxPlot", .menu = "mnuGraph", .caption = "&Box-plot", .run = BoxPlotView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuDotGraphPlot", .menu = "mnuGraph", .caption = "&Connected Line Graph"},
      {.key = "mnuBarGraph", .menu = "mnuGraph", .caption = "B&ar Chart"},
      {.key = "mnuPie", .menu = "mnuGraph", .caption = "P&ie Chart"},
      {.key = "mnuRader", .menu = "mnuGraph", .caption = "&Radar Chart"},
      {.key = "mnuDistribution", .menu = "mnuGraph", .caption = "&Distribution Plot"},
      {.key = "mnuRun", .menu = "mnuAnalysis", .caption = "&Run Chart", .run = charts::RunChartView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuPCR", .menu = "mnuAnalysis", .caption = "Process &Capability Analysis", .run = CpkSelection,
       .dialogs = {"CpkForm"}, .window = kDataChart, .chartCount = 1},
  };
}

std::vector<shell::DialogDeclaration> CapabilityDialogs() { return {{"CpkForm", MakeCpkForm}}; }

}  // namespace orvik::capability
