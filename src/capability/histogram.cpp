#include "capability/histogram.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kStartingLine = "Histogram generation is starting";
constexpr const char* kCompletedLine = "Histogram generation is completed";
// Written after the failure message when a result cannot be shown.
constexpr const char* kCancelLine = "Cancel Histogram generation";

// The class width for p places: Round(Round(range, range_places) / (k - 1), p).
double ClassWidth(double range, int range_places, long k, int p) {
  return Round(Round(range, range_places) / static_cast<double>(k - 1), p);
}

}  // namespace

double HistogramClasses::upperLimit(long i) const {
  return i + 1 < classCount() ? lowerLimits[i + 1] : lastUpperLimit;
}

long HistogramClassCount(long n) {
  return static_cast<long>(Round(std::pow(16.0 * static_cast<double>(n), 1.0 / 3.0) + 0.5, 0));
}

int HistogramDecimals(double minimum) {
  const std::string shown = (minimum >= 0 ? " " : "") + FormatNumber(minimum);
  const std::string truncated = FormatNumber(std::trunc(minimum));
  const long difference = static_cast<long>(shown.size()) - static_cast<long>(truncated.size());
  return difference >= 2 ? static_cast<int>(difference - 1) : 1;
}

HistogramClasses MakeHistogramClasses(std::span<const double> values, double minimum, double maximum) {
  HistogramClasses classes;
  classes.n = static_cast<long>(values.size());
  const long k = HistogramClassCount(classes.n);
  const double range = maximum - minimum;
  int p = HistogramDecimals(minimum);

  double h = 0.0;
  for (int attempt = 1; attempt <= 100; ++attempt) {
    h = ClassWidth(range, p, k, p);
    if (h != 0.0) break;
    ++p;
  }
  if ((minimum - h / 2) + static_cast<double>(k) * h < maximum) {
    ++p;
    h = ClassWidth(range, p - 1, k, p);
  }
  classes.decimals = p;
  classes.width = h;

  // Every limit is a decimal of at most `snap` places; forming them by
  // repeated addition of h leaves binary noise that would put a value equal
  // to a shown limit into the wrong class, so each is snapped back to its
  // decimal value.
  const int snap = std::max(p, stats::DecimalPlaces(minimum));
  const double first = minimum - Round((static_cast<double>(k) * h - range) / 2, p);
  classes.lowerLimits.resize(k);
  for (long i = 0; i < k; ++i) classes.lowerLimits[i] = Round(first + static_cast<double>(i) * h, snap);
  classes.frequencies.assign(k, 0);

  // Each value goes to the first class with lower <= x < upper. The class is
  // found by division and then checked against the limits themselves, so the
  // count takes one step per value.
  classes.lastUpperLimit = Round(first + static_cast<double>(k) * h, snap);
  for (const double x : values) {
    if (x < classes.lowerLimits[0] || x > classes.lastUpperLimit) continue;
    long i = std::clamp(static_cast<long>(std::floor((x - first) / h)), 0L, k - 1);
    while (i > 0 && x < classes.lowerLimits[i]) --i;
    while (i + 1 < k && x >= classes.lowerLimits[i + 1]) ++i;
    ++classes.frequencies[i];
  }
  return classes;
}

shell::PlotSeries HistogramBars(const HistogramClasses& classes) {
  shell::PlotSeries bars;
  bars.name = "Frequency";
  bars.type = shell::SeriesType::Bar;
  for (long i = 0; i < classes.classCount(); ++i) {
    bars.x.push_back(Round((classes.lowerLimits[i] + classes.upperLimit(i)) / 2, 6));
    bars.y.push_back(static_cast<double>(classes.frequencies[i]));
  }
  return bars;
}

shell::ResultTable FrequencyTable(const HistogramClasses& classes) {
  shell::ResultTable table;
  table.columns = {"No.",       "Lower class limit",  "Upper class limit",    "Center",
                   "Frequency", "Relative frequency", "Cumulative frequency", "Cumulative relative frequency"};
  const double n = static_cast<double>(classes.n);
  long cumulative = 0;
  for (long i = 0; i < classes.classCount(); ++i) {
    const double lower = classes.lowerLimits[i];
    const double upper = classes.upperLimit(i);
    const long frequency = classes.frequencies[i];
    cumulative += frequency;
    table.AddRow({std::to_string(i + 1), FormatNumber(Round(lower, 6)), FormatNumber(Round(upper, 6)),
                  FormatNumber(Round((lower + upper) / 2, 6)), std::to_string(frequency),
                  FormatNumber(Round(static_cast<double>(frequency) / n, 6)), std::to_string(cumulative),
                  FormatNumber(Round(static_cast<double>(cumulative) / n, 6))});
  }
  return table;
}

void HistogramView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  const auto figures = shell::CollectNumericCells(host);
  if (!figures) return;
  if (auto refusal = worksheet::CommonDataChecks(*figures)) {
    host.Refuse(*refusal);
    return;
  }
  host.Log().AppendSessionLine(kStartingLine);
  const HistogramClasses classes =
      MakeHistogramClasses(host.CurrentSelection().values, figures->minimum, figures->maximum);

  // The table goes to the result window only: the session log records what
  // was done, never the numbers of a result.
  shell::ResultWindow window = shell::MakeDataChart("Histogram");
  window.table = FrequencyTable(classes);
  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Histogram";
  chart.xTitle = "Class";
  chart.yTitle = "Frequency";
  chart.series.push_back(HistogramBars(classes));
  shell::ShowResultOrFail(host, std::move(window), worksheet::messages::kInputValidData, kCancelLine);
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::capability
