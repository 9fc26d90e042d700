#include "analyses/factorial_plots.h"

#include <algorithm>
#include <cmath>

#include "analyses/anova_report.h"
#include "analyses/factorial_design.h"
#include "stats/normal_scores.h"
#include "stats/t_distribution.h"

namespace orvik::analyses {

namespace {

// Whether an effect is shown as significant: by its t test with replicates,
// by Lenth's margin without.
bool Significant(const FactorialFit& fit, const FactorialEffect& e) {
  if (fit.layout.replicates == 1) return e.lenthActive;
  return e.p && *e.p < fit.alpha;
}

// The standardized effect of the Pareto chart: |t| with replicates,
// |effect| / PSE without; the plain |effect| when neither exists.
double Standardized(const FactorialFit& fit, const FactorialEffect& e) {
  if (fit.layout.replicates > 1 && e.t) return std::fabs(*e.t);
  if (fit.layout.replicates == 1 && fit.pse) return std::fabs(e.effect) / *fit.pse;
  return std::fabs(e.effect);
}

// The mean response of the factorial runs with factor j at `high`, and,
// when `other` names a second factor, with that one at `other_high`.
double CornerMean(const std::vector<CodedRun>& runs, int j, bool high, int other = -1, bool other_high = false) {
  double sum = 0.0;
  long n = 0;
  for (const CodedRun& run : runs) {
    if (run.centre || (((run.highFactors >> j) & 1U) != 0) != high) continue;
    if (other >= 0 && (((run.highFactors >> other) & 1U) != 0) != other_high) continue;
    sum += run.response;
    ++n;
  }
  return n > 0 ? sum / static_cast<double>(n) : std::nan("");
}

// A panel of two positions for factor j, low ("A-") and high ("A+"), with
// a gap before it; `prefix` names the panel of an interaction ("AB ").
// Short captions keep ten panels readable; the grid gives the settings.
void AddPanelCategories(shell::ChartSeries& chart, int j, const std::string& prefix = {}) {
  if (!chart.categories.empty()) chart.categories.emplace_back();
  chart.categories.push_back(prefix + FactorLetter(j) + "-");
  chart.categories.push_back(prefix + FactorLetter(j) + "+");
}

}  // namespace

shell::ChartSeries EffectsNormalPlot(const FactorialFit& fit) {
  shell::ChartSeries chart;
  chart.name = "DataChartView";
  chart.title = "Normal probability plot of the effects";
  chart.xTitle = "Effect";
  chart.yTitle = "Normal score";
  std::vector<const FactorialEffect*> model;
  for (const FactorialEffect& e : fit.effects)
    if (e.inModel) model.push_back(&e);
  std::sort(model.begin(), model.end(),
            [](const FactorialEffect* a, const FactorialEffect* b) { return a->effect < b->effect; });
  // The significant effects form a series of their own, each labelled a
  // little right of its point.
  shell::PlotSeries points = NamedSeries("Effects", shell::SeriesType::Points);
  shell::PlotSeries significant = NamedSeries("Significant effects", shell::SeriesType::Points);
  significant.color = shell::kRed;
  const double m = static_cast<double>(model.size());
  const double offset = model.empty() ? 0.0 : 0.02 * (model.back()->effect - model.front()->effect);
  for (std::size_t i = 0; i < model.size(); ++i) {
    const double score = stats::NormalScore(static_cast<double>(i + 1), m);
    shell::PlotSeries& series = Significant(fit, *model[i]) ? significant : points;
    series.x.push_back(model[i]->effect);
    series.y.push_back(score);
    if (&series == &significant) chart.labels.push_back({EffectName(model[i]->term), model[i]->effect + offset, score});
  }
  // The line an effect of zero mean and the effects' standard error would
  // follow: Lenth's PSE without replicates, twice the coefficient's
  // standard error with them.
  std::optional<double> sigma;
  if (fit.layout.replicates == 1 && fit.pse) sigma = *fit.pse;
  else if (fit.errorDf > 0) sigma = 2.0 * std::sqrt(fit.ErrorMS() / static_cast<double>(fit.layout.factorialRuns));
  if (sigma && *sigma > 0.0 && !model.empty()) {
    // Drawn across the range of the normal scores.
    shell::PlotSeries line = NamedSeries("Reference", shell::SeriesType::Line);
    for (const double score : {stats::NormalScore(1.0, m), stats::NormalScore(m, m)}) {
      line.x.push_back(score * *sigma);
      line.y.push_back(score);
    }
    chart.series.push_back(std::move(points));
    chart.series.push_back(std::move(significant));
    chart.series.push_back(std::move(line));
  } else {
    chart.series.push_back(std::move(points));
    chart.series.push_back(std::move(significant));
  }
  return chart;
}

shell::ChartSeries EffectsPareto(const FactorialFit& fit) {
  shell::ChartSeries chart;
  chart.name = "ParetoEffects";
  chart.title = "Pareto chart of the standardized effects";
  chart.xTitle = "Term";
  std::vector<std::pair<double, std::string>> bars;
  for (const FactorialEffect& e : fit.effects)
    if (e.inModel) bars.emplace_back(Standardized(fit, e), EffectName(e.term));
  std::stable_sort(bars.begin(), bars.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
  shell::PlotSeries series = NamedSeries("Standardized effect", shell::SeriesType::Bar);
  for (std::size_t i = 0; i < bars.size(); ++i) {
    series.x.push_back(static_cast<double>(i + 1));
    series.y.push_back(bars[i].first);
    chart.categories.push_back(bars[i].second);
  }
  chart.series.push_back(std::move(series));
  if (fit.layout.replicates > 1 && fit.errorDf > 0) {
    chart.yTitle = "|t|";
    const double critical = stats::GetInvT(1.0 - fit.alpha / 2.0, static_cast<double>(fit.errorDf));
    chart.lines.push_back({shell::LineOrientation::Horizontal, critical, "t= " + ShownStatistic(critical), shell::kRed, true});
  } else if (fit.layout.replicates == 1 && fit.pse) {
    chart.yTitle = "|Effect| / PSE";
    const double critical = fit.margin / *fit.pse;
    chart.lines.push_back({shell::LineOrientation::Horizontal, critical, "ME/PSE= " + ShownStatistic(critical),
                           shell::kRed, true});
  } else {
    chart.yTitle = "|Effect|";
  }
  return chart;
}

shell::ChartSeries MainEffectsPlot(const FactorialFit& fit, const std::vector<CodedRun>& runs,
                                   const std::vector<FactorSettings>& factors) {
  shell::ChartSeries chart;
  chart.name = "MainEffects";
  chart.title = "Main effects plot";
  chart.xTitle = "Factor level";
  chart.yTitle = "Mean";
  for (int j = 0; j < fit.layout.factors; ++j) {
    AddPanelCategories(chart, j);
    shell::PlotSeries series = NamedSeries(factors[static_cast<std::size_t>(j)].name, shell::SeriesType::Line);
    for (const bool high : {false, true}) {
      series.x.push_back(3.0 * j + (high ? 2.0 : 1.0));
      series.y.push_back(CornerMean(runs, j, high));
    }
    chart.series.push_back(std::move(series));
  }
  chart.lines.push_back({shell::LineOrientation::Horizontal, fit.factorialMean, "Mean", {}, false});
  return chart;
}

shell::ChartSeries InteractionPlot(const FactorialFit& fit, const std::vector<CodedRun>& runs,
                                   const std::vector<FactorSettings>& factors) {
  shell::ChartSeries chart;
  chart.name = "InteractionPlot";
  chart.title = "Interaction plot";
  chart.xTitle = "Factor level";
  chart.yTitle = "Mean";
  int panel = 0;
  for (int i = 0; i < fit.layout.factors; ++i) {
    for (int j = i + 1; j < fit.layout.factors; ++j, ++panel) {
      const std::string pair = EffectName((1U << i) | (1U << j));
      AddPanelCategories(chart, i, pair + " ");
      const auto jj = static_cast<std::size_t>(j);
      for (const bool other_high : {false, true}) {
        shell::PlotSeries series = NamedSeries(
            pair + ": " + factors[jj].name + " = " + ShownStatistic(other_high ? factors[jj].high : factors[jj].low),
            shell::SeriesType::Line);
        for (const bool high : {false, true}) {
          series.x.push_back(3.0 * panel + (high ? 2.0 : 1.0));
          series.y.push_back(CornerMean(runs, i, high, j, other_high));
        }
        chart.series.push_back(std::move(series));
      }
    }
  }
  return chart;
}

}  // namespace orvik::analyses
