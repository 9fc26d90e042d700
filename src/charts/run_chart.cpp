// The run chart: a series in time order against its median, with the tests
// for non-random patterns beside it. Runs about the median follow the
// normal approximation of Wald and Wolfowitz (1940) to the number of runs
// of two kinds; runs up or down that of Levene and Wolfowitz (1944) with
// mean (2m - 1) / 3 and variance (16m - 29) / 90.
#include "charts/run_chart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "shell/analysis_input.h"
#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "stats/normal_distribution.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kCompletedLine = "Run chart generation is completed";
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

RunsTest NormalApproximation(long runs, double expected, double variance) {
  RunsTest test{runs, expected, variance, kNaN, kNaN, kNaN};
  if (variance > 0.0) {
    test.z = (static_cast<double>(runs) - expected) / std::sqrt(variance);
    test.fewer = stats::GetDFNormal(test.z, 0.0, 1.0);
    test.more = stats::GetDFNormalUpper(test.z, 0.0, 1.0);
  }
  return test;
}

// The median in linear time: the middle value, or the mean of the two
// middle values of an even count.
double Median(std::span<const double> series) {
  std::vector<double> v(series.begin(), series.end());
  const std::size_t half = v.size() / 2;
  std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(half), v.end());
  const double upper = v[half];
  if (v.size() % 2 == 1) return upper;
  const double lower = *std::max_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(half));
  return (lower + upper) / 2.0;
}

// The means of the subgroups in the rows of the block, rounded to 8 places
// as the xbar chart rounds them: each row's numeric cells along the column
// step, rows along the row step; a row without any number is left out.
std::vector<double> RowMeans(const worksheet::Worksheet& sheet, const worksheet::DataSelection& block) {
  std::vector<double> means;
  const long rows = worksheet::RowsToWalk(block);
  const long columns = worksheet::ColumnsToWalk(block);
  for (long i = 0, row = block.firstRow; i < rows; ++i, row += block.rowStep) {
    stats::CompensatedSum sum;
    long count = 0;
    for (long j = 0, col = block.firstColumn; j < columns; ++j, col += block.columnStep) {
      if (const auto value = worksheet::ParseCellNumber(sheet.Text(row, col))) {
        sum.Add(*value);
        ++count;
      }
    }
    if (count > 0) means.push_back(Round(sum.Value() / static_cast<double>(count), 8));
  }
  return means;
}

std::string Shown(double value) { return std::isnan(value) ? std::string() : FormatNumber(Round(value, 6)); }

shell::ResultWindow RunChartWindow(const std::vector<double>& series, const RunPatterns& runs, bool subgroups) {
  shell::ResultWindow window = shell::MakeDataChart("Run chart");
  shell::ResultTable& table = *window.table;
  table.columns = {"Test", "Count", "Expected", "Approx. P-value"};
  const auto count_row = [&table](const char* test, long count, double expected) {
    table.AddRow({test, std::to_string(count), Shown(expected), ""});
  };
  const auto p_row = [&table](const char* test, double p) { table.AddRow({test, "", "", Shown(p)}); };
  count_row("Points above median", runs.above, kNaN);
  count_row("Points below median", runs.below, kNaN);
  count_row("Runs about median", runs.aboutMedian.runs, runs.aboutMedian.expected);
  p_row("  Clustering (too few runs)", runs.aboutMedian.fewer);
  p_row("  Mixtures (too many runs)", runs.aboutMedian.more);
  count_row("Longest run about median", runs.longestAboutMedian, kNaN);
  count_row("Runs up or down", runs.upOrDown.runs, runs.upOrDown.expected);
  p_row("  Trends (too few runs)", runs.upOrDown.fewer);
  p_row("  Oscillation (too many runs)", runs.upOrDown.more);
  count_row("Longest run up or down", runs.longestUpOrDown, kNaN);

  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Run chart";
  chart.xTitle = subgroups ? "Subgroup" : "Observation";
  chart.yTitle = subgroups ? "Subgroup mean" : "Value";
  shell::PlotSeries points;
  points.name = chart.yTitle;
  points.type = shell::SeriesType::Line;
  std::vector<double> x(series.size());
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i + 1);
  points.x = std::move(x);
  points.y = series;
  chart.series.push_back(std::move(points));
  shell::ChartLine centre;
  centre.value = runs.median;
  centre.label = "Median= " + FormatNumber(Round(runs.median, 8));
  centre.color = shell::kBlue;
  chart.lines.push_back(std::move(centre));
  return window;
}

}  // namespace

RunPatterns AnalyseRuns(std::span<const double> series) {
  RunPatterns result;
  if (series.empty()) return result;
  result.median = Median(series);

  long runs = 0, current = 0, longest = 0;
  int previous_side = 0;
  for (const double x : series) {
    const int side = x > result.median ? 1 : x < result.median ? -1 : 0;
    if (side == 0) continue;
    ++(side > 0 ? result.above : result.below);
    current = side == previous_side ? current + 1 : 1;
    if (side != previous_side) ++runs;
    previous_side = side;
    longest = std::max(longest, current);
  }
  const auto n1 = static_cast<double>(result.above);
  const auto n2 = static_cast<double>(result.below);
  const double total = n1 + n2;
  const double expected = total > 0.0 ? 1.0 + 2.0 * n1 * n2 / total : 0.0;
  const double variance =
      total > 1.0 ? 2.0 * n1 * n2 * (2.0 * n1 * n2 - n1 - n2) / (total * total * (total - 1.0)) : 0.0;
  result.aboutMedian = NormalApproximation(runs, expected, variance);
  result.longestAboutMedian = longest;

  // Runs up or down: a tie with the point before is dropped, so it neither
  // ends a run nor adds to it.
  long m = 0;
  double last = 0.0;
  int previous_direction = 0;
  runs = 0;
  current = 0;
  longest = 0;
  for (const double x : series) {
    if (m > 0 && x == last) continue;
    if (m > 0) {
      const int direction = x > last ? 1 : -1;
      current = direction == previous_direction ? current + 1 : 2;
      if (direction != previous_direction) ++runs;
      previous_direction = direction;
      longest = std::max(longest, current);
    }
    last = x;
    ++m;
  }
  const auto points = static_cast<double>(m);
  result.upDownPoints = m;
  result.upOrDown = NormalApproximation(runs, (2.0 * points - 1.0) / 3.0, (16.0 * points - 29.0) / 90.0);
  result.longestUpOrDown = longest;
  return result;
}

void RunChartView(shell::Host& host) {
  const auto figures = shell::ReadCheckedSelection(host);
  if (!figures) return;
  const worksheet::DataSelection& block = host.CurrentSelection();
  const bool subgroups = worksheet::ColumnsToWalk(block) > 1;
  const std::vector<double> series = subgroups ? RowMeans(*host.ActiveWorksheet(), block) : block.values;
  if (std::all_of(series.begin(), series.end(), [&](double x) { return x == series.front(); })) {
    host.Refuse(worksheet::messages::kAllDataSame);
    return;
  }
  host.ShowResultWindow(RunChartWindow(series, AnalyseRuns(series), subgroups));
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::charts
