#include "analyses/residual_plots.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "analyses/anova_report.h"
#include "analyses/centred_data.h"
#include "stats/normal_distribution.h"
#include "stats/normal_scores.h"

namespace orvik::analyses {

shell::ChartSeries NormalProbabilityChart(const std::string& name, std::span<const double> values,
                                          const std::string& title, const std::string& x_title) {
  shell::ChartSeries chart;
  chart.name = name;
  chart.title = title;
  chart.xTitle = x_title;
  chart.yTitle = "Normal score";
  std::vector<double> sorted(values.begin(), values.end());
  std::sort(sorted.begin(), sorted.end());
  const double n = static_cast<double>(sorted.size());
  std::vector<double> scores;
  // Exact scores cost about 20 microseconds each; beyond 5,000 values
  // Blom's approximation Phi^-1((i - 3/8) / (n + 1/4)), within 1e-3 of
  // them there, draws the same picture.
  const bool exact = sorted.size() <= 5000;
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const double rank = static_cast<double>(i + 1);
    scores.push_back(exact ? stats::NormalScore(rank, n) : stats::GetInvNormal((rank - 0.375) / (n + 0.25)));
  }
  const double mean = Mean(sorted);
  const double sd = std::sqrt(SquaredDeviations(sorted, mean) / (n - 1.0));
  shell::PlotSeries points = NamedSeries("Data", shell::SeriesType::Points);
  points.x = shell::NumberSeries(sorted);
  points.y = shell::NumberSeries(scores);
  shell::PlotSeries line = NamedSeries("Normal line", shell::SeriesType::Line);
  line.x = shell::NumberSeries({sorted.front(), sorted.back()});
  line.y = shell::NumberSeries({(sorted.front() - mean) / sd, (sorted.back() - mean) / sd});
  chart.series.push_back(std::move(points));
  // Values without spread have no normal line to show.
  if (sd > 0.0) chart.series.push_back(std::move(line));
  return chart;
}

namespace {

// The residuals against the fits or their order, with the zero line.
shell::ChartSeries ResidualsAgainst(std::string name, std::string title, std::string x_title, std::vector<double> x,
                                    std::span<const double> residuals, shell::SeriesType type) {
  shell::ChartSeries chart;
  chart.name = std::move(name);
  chart.title = std::move(title);
  chart.xTitle = std::move(x_title);
  chart.yTitle = "Residual";
  shell::PlotSeries points = NamedSeries("Residual", type);
  points.x = shell::NumberSeries(std::move(x));
  points.y = shell::NumberSeries(std::vector<double>(residuals.begin(), residuals.end()));
  chart.series.push_back(std::move(points));
  chart.lines.push_back({shell::LineOrientation::Horizontal, 0.0, "0", {}, false});
  return chart;
}

}  // namespace

void AddResidualPlots(shell::ResultWindow& window, std::span<const double> residuals, std::span<const double> fitted) {
  window.charts.push_back(NormalProbabilityChart("ResidualNormal", residuals, "Normal probability plot of residuals",
                                                 "Residual"));

  std::vector<double> order(residuals.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<double>(i + 1);
  window.charts.push_back(ResidualsAgainst("ResidualFits", "Residuals versus fits", "Fitted value",
                                           std::vector<double>(fitted.begin(), fitted.end()), residuals,
                                           shell::SeriesType::Points));
  window.charts.push_back(ResidualsAgainst("ResidualOrder", "Residuals versus order", "Observation order",
                                           std::move(order), residuals, shell::SeriesType::Line));

  shell::ChartSeries histogram;
  histogram.name = "ResidualHistogram";
  histogram.title = "Histogram of residuals";
  histogram.xTitle = "Residual";
  histogram.yTitle = "Frequency";
  const auto [low, high] = std::minmax_element(residuals.begin(), residuals.end());
  const int classes = std::clamp(static_cast<int>(std::ceil(std::sqrt(static_cast<double>(residuals.size())))), 1, 20);
  const double width = (*high - *low) / classes;
  std::vector<double> mids;
  std::vector<double> counts(static_cast<std::size_t>(classes), 0.0);
  for (int c = 0; c < classes; ++c) mids.push_back(*low + (c + 0.5) * width);
  for (const double r : residuals) {
    int c = width > 0.0 ? static_cast<int>((r - *low) / width) : 0;
    counts[static_cast<std::size_t>(std::clamp(c, 0, classes - 1))] += 1.0;
  }
  shell::PlotSeries bars = NamedSeries("Frequency", shell::SeriesType::Bar);
  bars.x = shell::NumberSeries(mids);
  bars.y = shell::NumberSeries(counts);
  histogram.series.push_back(std::move(bars));
  window.charts.push_back(std::move(histogram));
}

}  // namespace orvik::analyses
