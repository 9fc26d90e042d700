#include "charts/control_form.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "charts/run_rules.h"
#include "stats/decimal_numbers.h"

namespace orvik::charts {

using stats::FormatNumber;
using stats::Round;

const char* const kLegendLines[11] = {
    " * : outside the control limits",
    " Run: successive points appear on the one side of the centerline",
    " A : 7 successive points are on the same side of the centerline",
    " B : 7 or more successive points tend to increase or decrease",
    " C : ten out of 11 successive points fall on the same side of the centerline",
    " D : twelve out of 14 successive points fall on the same side of the centerline",
    " E : fourteen out of 17 successive points fall on the same side of the centerline",
    " F : sixteen out of 20 successive points fall on the same side of the centerline",
    " G : at least two out of 3 successive points fall in between 2sigma and 3sigma ",
    " H : at least three out of 7 successive points fall in between 2sigma and 3sigma ",
    " I : at least four out of 10 successive points fall in between 2sigma and 3sigma ",
};

ControlChart MakeControlChart(std::string statistic, std::vector<double> values, const ControlLimits& limits,
                              double first_sample) {
  ControlChart chart;
  chart.seriesName = statistic;
  chart.statistic = std::move(statistic);
  chart.values = std::move(values);
  chart.limits = limits;
  chart.x.resize(chart.values.size());
  for (std::size_t i = 0; i < chart.x.size(); ++i) chart.x[i] = first_sample + static_cast<double>(i);
  return chart;
}

void FinishChart(ControlChart& chart) { chart.codes = OutOfControlCodes(chart.values, chart.limits); }

std::string LimitLabel(const std::string& prefix, double limit, int decimals) {
  return prefix + FormatNumber(Round(limit, decimals));
}

void DrawChart(const ControlChart& chart, shell::ChartSeries& series) {
  series.title = chart.statistic;
  series.xTitle = "Sample";
  series.yTitle = chart.statistic;
  shell::PlotSeries points;
  points.name = chart.seriesName;
  points.type = shell::SeriesType::Line;
  points.x = chart.x;
  points.y = chart.values;
  points.marked = MarkedPoints(chart.codes);
  series.series.push_back(std::move(points));
  const auto line = [&series](double value, std::string label, std::optional<shell::Rgb> color, bool dashed) {
    shell::ChartLine limit;
    limit.value = value;
    limit.label = std::move(label);
    limit.color = color;
    limit.dashed = dashed;
    series.lines.push_back(std::move(limit));
  };
  const ControlLimits& l = chart.limits;
  line(l.UCL, LimitLabel("UCL= ", l.UCL, chart.labelDecimals), shell::kRed, false);
  line(l.CL, LimitLabel("CL= ", l.CL, chart.labelDecimals), shell::kBlue, false);
  line(l.LCL, LimitLabel("LCL= ", l.LCL, chart.labelDecimals), shell::kRed, false);
  if (chart.sigmaLines) {
    line(l.UpperTwoSigma, "", std::nullopt, true);
    line(l.LowerTwoSigma, "", std::nullopt, true);
  }
}

namespace {

// The cell texts of one chart's five columns; the limit texts are made once
// because they are the same in every row.
class ChartColumns {
 public:
  explicit ChartColumns(const ControlChart& chart)
      : chart_(chart),
        ucl_(FormatNumber(chart.limits.UCL)),
        cl_(FormatNumber(chart.limits.CL)),
        lcl_(FormatNumber(chart.limits.LCL)) {}

  void Append(std::size_t point, std::vector<std::string>& row) const {
    row.push_back(FormatNumber(Round(chart_.values[point], chart_.valueDecimals)));
    row.push_back(ucl_);
    row.push_back(cl_);
    row.push_back(lcl_);
    row.push_back(point < chart_.codes.size() ? chart_.codes[point] : std::string());
  }
  static void AppendEmpty(std::vector<std::string>& row) { row.insert(row.end(), 5, std::string()); }

 private:
  const ControlChart& chart_;
  std::string ucl_, cl_, lcl_;
};

void AppendLegend(shell::ResultTable& table, const std::string& heading, std::size_t width) {
  const auto legend_row = [width](std::string text) {
    std::vector<std::string> row(width);
    row[0] = std::move(text);
    return row;
  };
  table.AddRow(legend_row(""));
  shell::RowStyle blue;
  blue.foreground = shell::kBlue;
  table.AddRow(legend_row(heading), blue);
  for (const char* line : kLegendLines) table.AddRow(legend_row(line));
}

}  // namespace

shell::ResultTable OneChartTable(const ControlChart& chart) {
  shell::ResultTable table;
  table.columns = {chart.statistic, "UCL", "CL", "LCL", "Out-of-control Code"};
  table.rows.reserve(chart.values.size() + 13);
  const ChartColumns columns(chart);
  for (std::size_t i = 0; i < chart.values.size(); ++i) {
    std::vector<std::string> row;
    row.reserve(5);
    columns.Append(i, row);
    table.rows.push_back(std::move(row));
  }
  AppendLegend(table, kOneChartLegendHeading, table.columns.size());
  return table;
}

shell::ResultTable TwoChartTable(const ControlChart& upper, const ControlChart& lower, const std::string& heading) {
  shell::ResultTable table;
  for (const ControlChart* chart : {&upper, &lower})
    for (const char* suffix : {"", " UCL", " CL", " LCL", " Code"}) table.columns.push_back(chart->statistic + suffix);
  // Rows follow the sample numbers of both charts, so the moving range of
  // samples 1 and 2 stands beside sample 2.
  const double first = std::min(upper.x.empty() ? 1.0 : upper.x.front(), lower.x.empty() ? 1.0 : lower.x.front());
  const double last = std::max(upper.x.empty() ? 0.0 : upper.x.back(), lower.x.empty() ? 0.0 : lower.x.back());
  const ChartColumns upper_columns(upper), lower_columns(lower);
  std::size_t u = 0, w = 0;
  for (double sample = first; sample <= last; sample += 1.0) {
    std::vector<std::string> row;
    row.reserve(10);
    if (u < upper.x.size() && upper.x[u] == sample) upper_columns.Append(u++, row);
    else ChartColumns::AppendEmpty(row);
    if (w < lower.x.size() && lower.x[w] == sample) lower_columns.Append(w++, row);
    else ChartColumns::AppendEmpty(row);
    table.rows.push_back(std::move(row));
  }
  AppendLegend(table, heading, table.columns.size());
  return table;
}

shell::ResultWindow OneChartWindow(const std::string& title, const std::string& key, const ControlChart& chart) {
  shell::ResultWindow window = shell::MakeControlForm(title, false);
  window.commandKey = key;
  DrawChart(chart, window.Chart("ChartOne"));
  window.table = OneChartTable(chart);
  return window;
}

shell::ResultWindow TwoChartWindow(const std::string& title, const std::string& key, const ControlChart& upper,
                                   const ControlChart& lower, const std::string& heading) {
  shell::ResultWindow window = shell::MakeControlForm(title, true);
  window.commandKey = key;
  DrawChart(upper, window.Chart("ChartOne"));
  DrawChart(lower, window.Chart("ChartTwo"));
  window.table = TwoChartTable(upper, lower, heading);
  return window;
}

std::optional<std::string> PointInformation(const shell::ResultWindow& window, const std::string& chart_name,
                                            long point_number, const shell::PointAnswers& answers) {
  // A one-chart window has its only chart in ChartOne, which answers when
  // either chart is named.
  const bool two_charts = window.charts.size() > 1;
  bool shows = false;
  if (chart_name == "ChartOne") shows = answers.upperChart || (!two_charts && answers.lowerChart);
  else if (chart_name == "ChartTwo") shows = two_charts && answers.lowerChart;
  if (!shows) return std::nullopt;
  for (const auto& chart : window.charts) {
    if (chart.name != chart_name || chart.series.empty()) continue;
    const shell::PlotSeries& points = chart.series.front();
    if (point_number < 1 || point_number > static_cast<long>(points.y.size())) return std::nullopt;
    const auto i = static_cast<std::size_t>(point_number - 1);
    // A series without its own x values is numbered 1, 2, 3, ... as drawn.
    const double number = i < points.x.size() ? points.x[i] : static_cast<double>(point_number);
    return "Number: " + FormatNumber(number) + " | Value: " + FormatNumber(points.y[i]);
  }
  return std::nullopt;
}

std::string StartingLine(const std::string& name) { return name + " control chart generation is starting"; }
std::string CompletedLine(const std::string& name) { return name + " control chart generation is completed"; }
std::string CancelLine(const std::string& name) { return "Cancel " + name + " control chart generation"; }
std::string FailureText(const std::string& name) { return "Fail " + name + " control chart generation"; }

void RunChartComputation(shell::Host& host, const std::string& name, const std::function<void()>& body) {
  try {
    body();
  } catch (const std::exception& error) {
    // The failure box carries the exclamation style; it shares the title of
    // the charts' other message boxes.
    host.ShowMessage(shell::RefusalBox(FailureText(name)));
    host.Log().AppendSessionLine(CancelLine(name));
    throw ChartFailed(error.what());
  }
}

}  // namespace orvik::charts
