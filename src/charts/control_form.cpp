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
  std::vector<double> x(values.size());
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = first_sample + static_cast<double>(i);
  chart.x = std::move(x);
  chart.values = std::move(values);
  chart.limits = limits;
  return chart;
}

void FinishChart(ControlChart& chart) {
  const std::vector<double>& values = chart.values.Values();
  if (chart.stages.empty()) {
    chart.codes = OutOfControlMasks(values, chart.limits, chart.rules);
    return;
  }
  chart.codes.assign(values.size(), 0);
  for (std::size_t s = 0; s < chart.stages.size(); ++s) {
    const std::size_t first = chart.stages[s].first;
    const std::size_t end = s + 1 < chart.stages.size() ? chart.stages[s + 1].first : values.size();
    const ControlLimits& l = chart.stages[s].limits;
    for (std::size_t i = first; i < end; ++i)
      if (values[i] < l.LCL || values[i] > l.UCL) chart.codes[i] |= kOutOfLimits;
    CheckRunRules(std::span<const double>(values).subspan(first, end - first), l.CL, l.UCL, l.UpperTwoSigma, l.LCL,
                  l.LowerTwoSigma, std::span<CodeMask>(chart.codes).subspan(first, end - first), chart.rules);
  }
}

std::string LimitLabel(const std::string& prefix, double limit, int decimals) {
  return prefix + FormatNumber(Round(limit, decimals));
}

namespace {

// The limits of a chart whose limits step from point to point: each limit a
// stepped series over the points' x, CL a straight line, and the labels of
// the last point's UCL and LCL at their heights.
void DrawSteppedLimits(const ControlChart& chart, shell::ChartSeries& series) {
  const PointLimits& steps = *chart.pointLimits;
  const auto stepped = [&](std::string name, const shell::NumberSeries& y, bool dashed) {
    shell::PlotSeries limit;
    limit.name = std::move(name);
    limit.type = shell::SeriesType::Line;
    limit.x = chart.x;
    limit.y = y;
    limit.color = shell::kRed;
    limit.stepped = true;
    limit.dashed = dashed;
    series.series.push_back(std::move(limit));
  };
  stepped("UCL", steps.UCL, false);
  stepped("LCL", steps.LCL, false);
  if (chart.sigmaLines) {
    stepped("Upper 2 sigma", steps.UpperTwoSigma, true);
    stepped("Lower 2 sigma", steps.LowerTwoSigma, true);
  }
  const ControlLimits& l = chart.limits;
  if (steps.CL.empty()) {
    shell::ChartLine centre;
    centre.value = l.CL;
    centre.label = LimitLabel("CL= ", l.CL, chart.labelDecimals);
    centre.color = shell::kBlue;
    series.lines.push_back(std::move(centre));
  } else {
    stepped("CL", steps.CL, false);
    series.series.back().color = shell::kBlue;
    series.labels.push_back({LimitLabel("CL= ", l.CL, chart.labelDecimals), std::nullopt, l.CL});
  }
  series.labels.push_back({LimitLabel("UCL= ", l.UCL, chart.labelDecimals), std::nullopt, l.UCL});
  series.labels.push_back({LimitLabel("LCL= ", l.LCL, chart.labelDecimals), std::nullopt, l.LCL});
}

}  // namespace

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
  points.markCodes.reserve(points.marked.size());
  for (const long number : points.marked) points.markCodes.push_back(CodeText(chart.codes[number - 1]));
  series.series.push_back(std::move(points));
  const auto line = [&series](double value, std::string label, std::optional<shell::Rgb> color, bool dashed) {
    shell::ChartLine limit;
    limit.value = value;
    limit.label = std::move(label);
    limit.color = color;
    limit.dashed = dashed;
    series.lines.push_back(std::move(limit));
  };
  // Each stage begins at a grey dashed vertical line labelled with the
  // stage.
  for (const ChartStage& stage : chart.stages) {
    shell::ChartLine start;
    start.orientation = shell::LineOrientation::Vertical;
    start.value = stage.first < chart.x.size() ? chart.x[stage.first] - 0.5 : 0.5;
    start.label = stage.label;
    start.color = shell::Rgb{0x808080};
    start.dashed = true;
    series.lines.push_back(std::move(start));
  }
  const ControlLimits& l = chart.limits;
  if (chart.pointLimits) {
    DrawSteppedLimits(chart, series);
    return;
  }
  line(l.UCL, LimitLabel("UCL= ", l.UCL, chart.labelDecimals), shell::kRed, false);
  line(l.CL, LimitLabel("CL= ", l.CL, chart.labelDecimals), shell::kBlue, false);
  line(l.LCL, LimitLabel("LCL= ", l.LCL, chart.labelDecimals), shell::kRed, false);
  if (chart.sigmaLines) {
    line(l.UpperTwoSigma, "", std::nullopt, true);
    line(l.LowerTwoSigma, "", std::nullopt, true);
  }
}

shell::GridColumn CodeColumn(const std::vector<CodeMask>& codes, std::size_t count) {
  // Each code's text is made once; a point's cell holds its code's bits.
  CodeMask highest = 0;
  for (std::size_t i = 0; i < std::min(count, codes.size()); ++i) highest = std::max(highest, codes[i]);
  std::vector<std::string> texts(std::size_t{highest} + 1);
  std::vector<std::uint32_t> indices(count, 0);
  for (std::size_t i = 0; i < std::min(count, codes.size()); ++i) {
    const CodeMask mask = codes[i];
    if (mask != 0 && texts[mask].empty()) texts[mask] = CodeText(mask);
    indices[i] = mask;
  }
  return shell::GridColumn::Coded(std::move(indices), std::move(texts));
}

void AppendChartColumns(const ControlChart& chart, std::size_t first_row, std::vector<shell::GridColumn>& block) {
  const std::size_t count = chart.values.size();
  block.push_back(shell::GridColumn::Numbers(chart.values, shell::NumberDisplay::RoundedTo(chart.valueDecimals))
                      .StartingAt(first_row));
  if (chart.pointLimits) {
    const auto each = [](const shell::NumberSeries& limits) {
      return shell::GridColumn::Numbers(limits, shell::NumberDisplay::Shortest());
    };
    block.push_back(each(chart.pointLimits->UCL).StartingAt(first_row));
    if (chart.pointLimits->CL.empty())
      block.push_back(shell::GridColumn::Repeated(FormatNumber(chart.limits.CL), count).StartingAt(first_row));
    else
      block.push_back(each(chart.pointLimits->CL).StartingAt(first_row));
    block.push_back(each(chart.pointLimits->LCL).StartingAt(first_row));
  } else {
    for (const double limit : {chart.limits.UCL, chart.limits.CL, chart.limits.LCL})
      block.push_back(shell::GridColumn::Repeated(FormatNumber(limit), count).StartingAt(first_row));
  }
  block.push_back(CodeColumn(chart.codes, count).StartingAt(first_row));
}

void AppendLegend(shell::ResultTable& table, const std::string& heading, std::size_t width, const RuleSet& rules) {
  const auto legend_row = [width](std::string text) {
    std::vector<std::string> row(width);
    row[0] = std::move(text);
    return row;
  };
  table.AddRow(legend_row(""));
  shell::RowStyle blue;
  blue.foreground = shell::kBlue;
  table.AddRow(legend_row(heading), blue);
  table.AddRow(legend_row(kLegendLines[0]));
  table.AddRow(legend_row(kLegendLines[1]));
  for (char letter = kFirstRule; letter <= kLastRule; ++letter)
    if (rules[letter].on) table.AddRow(legend_row(LegendLine(letter, rules[letter])));
}

shell::ResultTable OneChartTable(const ControlChart& chart) {
  shell::ResultTable table;
  std::vector<shell::GridColumn> block;
  for (const LeadingColumn& column : chart.leadingColumns) {
    table.columns.push_back(column.heading);
    block.push_back(column.cells);
  }
  for (const char* heading : {chart.statistic.c_str(), "UCL", "CL", "LCL", "Out-of-control Code"})
    table.columns.push_back(heading);
  AppendChartColumns(chart, 0, block);
  table.AddColumns(std::move(block));
  AppendLegend(table, chart.legendHeading, table.columns.size(), chart.rules);
  return table;
}

shell::ResultTable TwoChartTable(const ControlChart& upper, const ControlChart& lower, const std::string& heading) {
  shell::ResultTable table;
  for (const ControlChart* chart : {&upper, &lower})
    for (const char* suffix : {"", " UCL", " CL", " LCL", " Code"}) table.columns.push_back(chart->statistic + suffix);
  // Rows follow the sample numbers of both charts, so the moving range of
  // samples 1 and 2 stands beside sample 2.
  const double first = std::min(upper.x.empty() ? 1.0 : upper.x.front(), lower.x.empty() ? 1.0 : lower.x.front());
  const auto first_row = [first](const ControlChart& chart) {
    return chart.x.empty() ? std::size_t{0} : static_cast<std::size_t>(chart.x.front() - first);
  };
  std::vector<shell::GridColumn> block;
  AppendChartColumns(upper, first_row(upper), block);
  AppendChartColumns(lower, first_row(lower), block);
  table.AddColumns(std::move(block));
  AppendLegend(table, heading, table.columns.size(), upper.rules);
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
    // The CUSUM chart draws C+ and -C- as its first two series and answers
    // with both sums.
    if (window.title == kCusumWindowTitle && chart.series.size() > 1 && i < chart.series[1].y.size())
      return "Number: " + FormatNumber(number) + " | C+: " + FormatNumber(points.y[i]) +
             " | C-: " + FormatNumber(0.0 - chart.series[1].y[i]);
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
