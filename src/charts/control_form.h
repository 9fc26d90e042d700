#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "charts/control_limits.h"
#include "charts/run_rules.h"
#include "shell/command_declaration.h"
#include "shell/command_failed.h"
#include "shell/grid_column.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::charts {

// The legend under the data: its heading for a one-chart window and the
// eleven code lines, in their order.
inline constexpr const char* kOneChartLegendHeading = " [Out-of-control Code] ";
extern const char* const kLegendLines[11];

// Limits that follow each point's sample size or stage, one value per point
// in each series (p and u charts of samples of different sizes, charts in
// stages). CL is empty where the centre line is the chart's one CL.
struct PointLimits {
  shell::NumberSeries UCL, LCL, UpperTwoSigma, LowerTwoSigma;
  shell::NumberSeries CL;
};

// One stage of a chart: its first point (0-based), its label and the limits
// its points are judged by.
struct ChartStage {
  std::size_t first = 0;
  std::string label;
  ControlLimits limits;
};

// A grid column shown before the plotted values, with its heading.
struct LeadingColumn {
  std::string heading;
  shell::GridColumn cells;
};

// One chart of a control chart window with everything its grid columns and
// its drawing need.
struct ControlChart {
  std::string statistic;   // grid heading of the plotted values: "xbar", "R", "MR", "c"
  std::string seriesName;  // name of the plotted series ("Moving Range" for MR)
  shell::NumberSeries x;  // sample numbers of the points, consecutive
  shell::NumberSeries values;
  ControlLimits limits;
  std::vector<CodeMask> codes;  // filled by FinishChart
  int labelDecimals = 8;           // limit labels show the limit rounded to these places
  int valueDecimals = 8;           // the grid shows the plotted values rounded to these places
  bool sigmaLines = true;
  // Set when the limits step from point to point: the chart draws them as
  // steps and the grid lists each row's. `limits` then holds the last
  // point's limits, which label the lines, and `codes` are filled by the
  // chart itself.
  std::optional<PointLimits> pointLimits;
  // Columns of a one-chart grid before the plotted values ("Sample size").
  std::vector<LeadingColumn> leadingColumns;
  // The heading of a one-chart legend.
  std::string legendHeading = kOneChartLegendHeading;
  // The run rules the codes follow; the legend lists those in force.
  RuleSet rules = RuleSet::Default();
  // The stages, in point order, when the chart is split into stages: the
  // rules start afresh at each, and the chart marks where each begins.
  std::vector<ChartStage> stages;
};

// Plots the points 1..N (or `first_sample`..) of `values` as a chart.
ControlChart MakeControlChart(std::string statistic, std::vector<double> values, const ControlLimits& limits,
                              double first_sample = 1.0);

// Applies the out-of-limit test and the chart's rules to its values, stage
// by stage against each stage's limits when it has stages.
void FinishChart(ControlChart& chart);

// The label of a limit line: "UCL= " and so on followed by the shortest
// text of the limit rounded to `decimals` places.
std::string LimitLabel(const std::string& prefix, double limit, int decimals);

// Draws `chart` into `series` (points, limit lines, sigma lines, marked
// points, x axis "Sample"). Stepped limits become stepped series "UCL",
// "LCL" and the two sigma series beside a straight CL line, with the
// labels of the last point's UCL and LCL at its end.
void DrawChart(const ControlChart& chart, shell::ChartSeries& series);

// The grid column of out-of-control codes of `count` points.
shell::GridColumn CodeColumn(const std::vector<CodeMask>& codes, std::size_t count);
// The five grid columns of one chart from row `first_row` on: its values as
// the chart plots them, rounded for display, the three limits repeated down
// the grid and the out-of-control codes.
void AppendChartColumns(const ControlChart& chart, std::size_t first_row, std::vector<shell::GridColumn>& block);
// The rows under the data: an empty row, `heading` in blue, the lines of
// "* " and "Run", and the line of each rule in force, each in the first of
// `width` cells. The default rules give the thirteen classic rows.
void AppendLegend(shell::ResultTable& table, const std::string& heading, std::size_t width,
                  const RuleSet& rules = RuleSet::Default());

// The result grid of a one-chart window: the leading columns, statistic,
// "UCL", "CL", "LCL", "Out-of-control Code", one row per point, then the
// legend under the chart's legend heading.
shell::ResultTable OneChartTable(const ControlChart& chart);
// The result grid of a two-chart window: five columns per chart named after
// its statistic ("xbar", "xbar UCL", ... "R Code"), rows aligned by sample
// number (a chart without a point at a sample leaves its cells empty), then
// the legend under `heading` (" [xbar & R Code] ").
shell::ResultTable TwoChartTable(const ControlChart& upper, const ControlChart& lower, const std::string& heading);

// The window of a finished chart or pair of charts.
shell::ResultWindow OneChartWindow(const std::string& title, const std::string& key, const ControlChart& chart);
shell::ResultWindow TwoChartWindow(const std::string& title, const std::string& key, const ControlChart& upper,
                                   const ControlChart& lower, const std::string& heading);

// The text a chart of a control chart window shows when the user clicks a
// point: "Number: 3 | Value: 25.001". Windows show it only on the charts
// `answers` names (the declaration of the command that made the window);
// for other charts (and points out of range) the result is empty.
// The CUSUM window answers "Number: 3 | C+: 1.5 | C-: 0" instead.
inline constexpr const char* kCusumWindowTitle = "CUSUM control chart";
std::optional<std::string> PointInformation(const shell::ResultWindow& window, const std::string& chart_name,
                                            long point_number, const shell::PointAnswers& answers);

// The three session sentences and the failure text of chart `name`
// ("xbar-R", "np", ...).
std::string StartingLine(const std::string& name);
std::string CompletedLine(const std::string& name);
std::string CancelLine(const std::string& name);
std::string FailureText(const std::string& name);

// The failure of a chart procedure: its failure message is shown and its
// cancel line written, so the front-ends end the command quietly.
class ChartFailed : public shell::CommandFailed {
 public:
  using shell::CommandFailed::CommandFailed;
};

// Runs the computing part of chart `name`. A run-time failure inside it
// shows "Fail <name> control chart generation", writes the cancel line and
// throws ChartFailed.
void RunChartComputation(shell::Host& host, const std::string& name, const std::function<void()>& body);

}  // namespace orvik::charts
