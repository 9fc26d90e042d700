#include "charts/time_weighted_chart.h"

#include <algorithm>
#include <cmath>

#include "charts/chart_input.h"
#include "charts/chart_limits.h"
#include "charts/control_form.h"
#include "shell/host.h"
#include "shell/analysis_input.h"
#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "stats/range_distribution.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

using stats::FormatNumber;
using stats::Round;

bool ReadTimeWeightedData(shell::Host& host, const std::string& improper_text, TimeWeightedData& out) {
  if (!shell::ResolveDataBlock(host)) return false;
  auto groups = ReadSubgroups(*host.ActiveWorksheet(), host.CurrentSelection());
  if (!groups) {
    host.Refuse(improper_text);
    return false;
  }
  if (groups->Count() < 2) {
    host.Refuse(worksheet::messages::kNotEnoughData);
    return false;
  }
  out = {};
  out.n = groups->size;
  if (out.n == 1) {
    out.points = std::move(groups->values);
    out.mean = stats::CompensatedTotal(out.points) / static_cast<double>(out.points.size());
    out.estimatedSigma = EstimateSigma(out.points);
    return true;
  }
  SubgroupStatistics stats = ComputeSubgroupStatistics(*groups);
  out.points = std::move(stats.means);
  out.ranges = std::move(stats.ranges);
  out.mean = stats.grandMean;
  out.estimatedSigma = EstimateSigma(stats.sBar, out.n);
  return true;
}

double EstimateSigma(const std::vector<double>& individual_values) {
  return MeanMovingRange(MovingRanges(individual_values)) / 1.128;
}

double EstimateSigma(double s_bar, long n) {
  return s_bar / (n <= 25 ? Factor(C4Table(), n) : C4Approximation(n));
}

ProcessLevel ResolveProcess(const ProcessParameters& given, const TimeWeightedData& data) {
  return {given.target.value_or(Round(data.mean, 8)), given.sigma.value_or(data.estimatedSigma)};
}

TimeWeightedForm::TimeWeightedForm(std::string name, std::string caption, std::string chart)
    : shell::DialogModel(std::move(name), std::move(caption)), chart_(std::move(chart)) {
  AddTextBox("Targettxt").caption = "Target (empty: the mean of the data)";
  AddTextBox("Sigmatxt").caption = "Sigma (empty: estimated from the data)";
}

// Every control chart writes its cancel line when its dialog is cancelled,
// these three as the others ("Cancel EWMA control chart generation").
void TimeWeightedForm::OnCancel(shell::Host& host) { host.Log().AppendSessionLine(CancelLine(chart_)); }

void TimeWeightedForm::AddButtons() {
  AddCommandButton("CmdOk", "OK");
  AddCommandButton("CmdCancel", "Cancel");
}

std::optional<double> TimeWeightedForm::TextNumber(const std::string& text) {
  return worksheet::ParseCellNumber(text);
}

bool TimeWeightedForm::ReadProcess(shell::Host& host, ProcessParameters& out) const {
  out = {};
  const auto blank = [this](const char* control) {
    return Control(control).text.find_first_not_of(" \t") == std::string::npos;
  };
  if (!blank("Targettxt")) {
    out.target = ReadNumber(host, "Targettxt", [](double) { return true; });
    if (!out.target) return false;
  }
  if (!blank("Sigmatxt")) {
    out.sigma = ReadNumber(host, "Sigmatxt", [](double sigma) { return sigma > 0; });
    if (!out.sigma) return false;
  }
  return true;
}

void MarkBeyondLimits(PointLimitChart& chart) {
  const std::size_t count = chart.values.size();
  chart.codes.assign(count, 0);
  for (std::size_t i = 0; i < count; ++i)
    if (chart.values[i] > chart.ucl[i] || chart.values[i] < chart.lcl[i]) chart.codes[i] = kOutOfLimits;
}

ControlLimits RangeLimitsFromSigma(double sigma, long n) {
  if (n < 2 || n > 25) throw ChartComputationError("no range chart for subgroups of " + std::to_string(n));
  const stats::RangeMoments range = stats::NormalRangeMoments(static_cast<int>(n));
  ControlLimits limits;
  limits.UCL = Round(Factor(D2Table(), n) * sigma, 8);
  limits.CL = Round(range.mean * sigma, 8);
  limits.LCL = Round(std::max(0.0, (range.mean - 3.0 * range.sd) * sigma), 8);
  // The chart draws no sigma lines and applies no zone rules; they stay at
  // the centre line.
  limits.UpperTwoSigma = limits.CL;
  limits.LowerTwoSigma = limits.CL;
  return limits;
}

std::optional<ControlChart> RangeChart(const TimeWeightedData& data, double sigma) {
  if (data.n < 2 || data.n > 25) return std::nullopt;
  ControlChart chart = MakeControlChart("R", data.ranges, RangeLimitsFromSigma(sigma, data.n));
  chart.sigmaLines = false;
  MarkOutOfLimits(chart.values.Values(), chart.limits, chart.codes);
  return chart;
}

shell::PlotSeries SteppedLine(std::string name, const std::vector<double>& limit) {
  shell::PlotSeries line;
  line.name = std::move(name);
  line.type = shell::SeriesType::Line;
  line.color = shell::kRed;
  std::vector<double> x, y;
  for (std::size_t i = 0; i < limit.size();) {
    std::size_t end = i + 1;  // one past the run of values equal to limit[i]
    while (end < limit.size() && limit[end] == limit[i]) ++end;
    // Point i + 1 stands at x = i + 1; its step spans half a sample each side.
    x.insert(x.end(), {static_cast<double>(i) + 0.5, static_cast<double>(end) + 0.5});
    y.insert(y.end(), {limit[i], limit[i]});
    i = end;
  }
  line.x = std::move(x);
  line.y = std::move(y);
  return line;
}

namespace {

void DrawPointLimitChart(const PointLimitChart& chart, shell::ChartSeries& series) {
  series.title = chart.statistic;
  series.xTitle = "Sample";
  series.yTitle = chart.statistic;
  const std::size_t count = chart.values.size();
  shell::PlotSeries points;
  points.name = chart.statistic;
  points.type = shell::SeriesType::Line;
  std::vector<double> x(count);
  for (std::size_t i = 0; i < count; ++i) x[i] = static_cast<double>(i + 1);
  points.x = std::move(x);
  points.y = chart.values;
  points.marked = MarkedPoints(chart.codes);
  series.series.push_back(std::move(points));
  series.series.push_back(SteppedLine("UCL", chart.ucl.Values()));
  series.series.push_back(SteppedLine("LCL", chart.lcl.Values()));
  shell::ChartLine centre;
  centre.value = chart.cl;
  centre.label = LimitLabel("CL= ", chart.cl, 8);
  centre.color = shell::kBlue;
  series.lines.push_back(std::move(centre));
  if (count == 0) return;
  const auto last = static_cast<double>(count);
  series.labels.push_back({LimitLabel("UCL= ", chart.ucl.back(), 8), last, chart.ucl.back()});
  series.labels.push_back({LimitLabel("LCL= ", chart.lcl.back(), 8), last, chart.lcl.back()});
}

}  // namespace

shell::ResultWindow PointLimitWindow(const std::string& title, const std::string& key, const PointLimitChart& chart,
                                     const std::optional<ControlChart>& ranges) {
  shell::ResultWindow window = shell::MakeControlForm(title, ranges.has_value());
  window.commandKey = key;
  DrawPointLimitChart(chart, window.Chart("ChartOne"));

  shell::ResultTable table;
  table.columns = {chart.pointHeading, chart.statistic, "UCL", "CL", "LCL", "Out-of-control Code"};
  const std::size_t count = chart.values.size();
  std::vector<shell::GridColumn> block;
  block.push_back(shell::GridColumn::Numbers(chart.points, shell::NumberDisplay::Shortest()));
  block.push_back(shell::GridColumn::Numbers(chart.values, shell::NumberDisplay::RoundedTo(8)));
  block.push_back(shell::GridColumn::Numbers(chart.ucl, shell::NumberDisplay::Shortest()));
  block.push_back(shell::GridColumn::Repeated(FormatNumber(chart.cl), count));
  block.push_back(shell::GridColumn::Numbers(chart.lcl, shell::NumberDisplay::Shortest()));
  block.push_back(CodeColumn(chart.codes, count));
  if (ranges) {
    for (const char* suffix : {"", " UCL", " CL", " LCL", " Code"}) table.columns.push_back(ranges->statistic + suffix);
    AppendChartColumns(*ranges, 0, block);
    DrawChart(*ranges, window.Chart("ChartTwo"));
  }
  table.AddColumns(std::move(block));
  AppendLegend(table, kOneChartLegendHeading, table.columns.size());
  window.table = std::move(table);
  return window;
}

}  // namespace orvik::charts
