#include "capability/capability_commands.h"

#include "capability/box_plot.h"
#include "capability/cpk_form.h"
#include "capability/distribution_plot.h"
#include "capability/histogram.h"
#include "capability/pareto_chart.h"
#include "capability/pie_chart.h"
#include "capability/process_capability.h"
#include "capability/radar_chart.h"
#include "capability/scatterplot.h"
#include "capability/series_graphs.h"
#include "charts/run_chart.h"

namespace orvik::capability {

namespace {

constexpr auto kDataChart = shell::WindowKind::DataChart;

}  // namespace

std::vector<shell::CommandDeclaration> CapabilityCommands() {
  return {
      {.key = "mnuHistogram", .menu = "mnuGraph", .caption = "&Histogram", .run = HistogramView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuDotplot", .menu = "mnuGraph", .caption = "&Scatterplot", .run = DotplotView,
       .dialogs = {"DotplotForm"}, .window = kDataChart, .chartCount = 1},
      {.key = "mnuPareto", .menu = "mnuGraph", .caption = "&Pareto Chart", .run = ParetoSelection,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuBoxPlot", .menu = "mnuGraph", .caption = "&Box-plot", .run = BoxPlotView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuDotGraphPlot", .menu = "mnuGraph", .caption = "&Connected Line Graph", .run = ConnectedLineView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuBarGraph", .menu = "mnuGraph", .caption = "B&ar Chart", .run = BarChartView, .window = kDataChart,
       .chartCount = 1},
      {.key = "mnuPie", .menu = "mnuGraph", .caption = "P&ie Chart", .run = PieView, .dialogs = {"PieForm"},
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuRader", .menu = "mnuGraph", .caption = "&Radar Chart", .run = RadarView, .dialogs = {"RadarForm"},
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuDistribution", .menu = "mnuGraph", .caption = "&Distribution Plot", .run = DistributionView,
       .dialogs = {"DistributionForm"}, .window = kDataChart, .chartCount = 1},
      {.key = "mnuRun", .menu = "mnuAnalysis", .caption = "&Run Chart", .run = charts::RunChartView,
       .window = kDataChart, .chartCount = 1},
      {.key = "mnuPCR", .menu = "mnuAnalysis", .caption = "Process &Capability Analysis", .run = CpkSelection,
       .dialogs = {"CpkForm"}, .window = kDataChart, .chartCount = 1},
  };
}

std::vector<shell::DialogDeclaration> CapabilityDialogs() {
  return {{"CpkForm", MakeCpkForm},       {"DotplotForm", MakeDotplotForm}, {"PieForm", MakePieForm},
          {"RadarForm", MakeRadarForm},   {"DistributionForm", MakeDistributionForm}};
}

}  // namespace orvik::capability
