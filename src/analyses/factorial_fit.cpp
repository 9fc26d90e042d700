// The analysis of two-level factorial designs: effects from the contrasts of
// Yates' method (Montgomery, Design and Analysis of Experiments, ch. 6), the
// curvature test of centre points and the split of the residual into lack of
// fit and pure error (ch. 6.8), and Lenth's pseudo standard error for
// unreplicated designs (Lenth, Technometrics 31, 1989).
#include "analyses/factorial_fit.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>

#include "analyses/p_values.h"
#include "stats/t_distribution.h"

namespace orvik::analyses {

namespace {

// The sign of effect `term` in a run whose high factors are `high`.
int Sign(unsigned term, unsigned high) { return (std::popcount(term & ~high) % 2 == 0) ? 1 : -1; }

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t n = values.size();
  return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2.0;
}

double Mean(const std::vector<double>& values) {
  double sum = 0.0;
  for (const double v : values) sum += v;
  return values.empty() ? 0.0 : sum / static_cast<double>(values.size());
}

// The sum of squared deviations of `values` about their mean.
double Deviations(const std::vector<double>& values) {
  const double mean = Mean(values);
  double ss = 0.0;
  for (const double v : values) ss += (v - mean) * (v - mean);
  return ss;
}

}  // namespace

std::optional<FactorialLayout> RecognizeLayout(int factors, const std::vector<CodedRun>& runs) {
  const unsigned points = 1U << factors;
  std::vector<long> count(points, 0);
  FactorialLayout layout;
  layout.factors = factors;
  for (const CodedRun& run : runs) {
    if (run.centre) ++layout.centreRuns;
    else ++count[run.highFactors];
  }
  layout.factorialRuns = static_cast<long>(runs.size()) - layout.centreRuns;
  std::vector<unsigned> present;
  for (unsigned h = 0; h < points; ++h)
    if (count[h] > 0) present.push_back(h);
  if (present.empty()) return std::nullopt;
  layout.replicates = count[present.front()];
  for (const unsigned h : present)
    if (count[h] != layout.replicates) return std::nullopt;
  if (present.size() == points) return layout;
  if (factors < 3 || present.size() != points / 2) return std::nullopt;
  layout.half = true;
  layout.relationSign = Sign(points - 1, present.front());
  for (const unsigned h : present)
    if (Sign(points - 1, h) != layout.relationSign) return std::nullopt;
  return layout;
}

double LenthPse(const std::vector<double>& effects) {
  std::vector<double> absolute;
  for (const double e : effects) absolute.push_back(std::fabs(e));
  const double s0 = 1.5 * Median(absolute);
  std::vector<double> small;
  for (const double a : absolute)
    if (a < 2.5 * s0) small.push_back(a);
  return small.empty() ? 0.0 : 1.5 * Median(small);
}

FactorialFit FitFactorial(const FactorialLayout& layout, const std::vector<CodedRun>& runs, int max_order, double alpha) {
  FactorialFit fit;
  fit.layout = layout;
  fit.maxOrder = max_order;
  fit.alpha = alpha;
  const int k = layout.factors;
  const unsigned all = (1U << k) - 1;

  std::vector<double> factorial, centre, every;
  std::map<unsigned, std::vector<double>> by_point;
  for (const CodedRun& run : runs) {
    every.push_back(run.response);
    if (run.centre) {
      centre.push_back(run.response);
    } else {
      factorial.push_back(run.response);
      by_point[run.highFactors].push_back(run.response);
    }
  }
  const double nf = static_cast<double>(factorial.size());
  fit.factorialMean = Mean(factorial);
  fit.grandMean = Mean(every);
  fit.totalDf = static_cast<long>(every.size()) - 1;
  fit.totalSS = Deviations(every);

  // The estimable effects: every word in a full factorial; in a half
  // fraction one of each aliased pair, the shorter (the first in Yates
  // order among equals).
  const unsigned words = layout.half ? (1U << (k - 1)) : (1U << k);
  for (unsigned w = 1; w < words; ++w) {
    FactorialEffect effect;
    effect.term = w;
    if (layout.half) {
      const unsigned other = all ^ w;
      const bool other_first = std::popcount(other) < std::popcount(w) ||
                               (std::popcount(other) == std::popcount(w) && other < w);
      effect.term = other_first ? other : w;
      effect.alias = other_first ? w : other;
      effect.aliasSign = layout.relationSign;
    }
    effect.order = std::popcount(effect.term);
    double contrast = 0.0;
    for (const CodedRun& run : runs)
      if (!run.centre) contrast += Sign(effect.term, run.highFactors) * run.response;
    effect.coef = contrast / nf;
    effect.effect = 2.0 * effect.coef;
    effect.ss = contrast * contrast / nf;
    effect.inModel = effect.order <= max_order;
    fit.effects.push_back(effect);
  }
  std::sort(fit.effects.begin(), fit.effects.end(),
            [](const FactorialEffect& a, const FactorialEffect& b) { return a.term < b.term; });

  fit.orderSS.assign(static_cast<std::size_t>(k) + 1, 0.0);
  fit.orderDf.assign(static_cast<std::size_t>(k) + 1, 0);
  long model_terms = 0;
  for (const FactorialEffect& e : fit.effects) {
    if (!e.inModel) continue;
    fit.orderSS[static_cast<std::size_t>(e.order)] += e.ss;
    ++fit.orderDf[static_cast<std::size_t>(e.order)];
    ++model_terms;
  }
  if (!centre.empty()) {
    fit.centreMean = Mean(centre);
    const double nc = static_cast<double>(centre.size());
    const double gap = fit.factorialMean - fit.centreMean;
    fit.curvatureSS = nf * nc * gap * gap / (nf + nc);
  }

  // The residual of the fitted model, summed run by run: factorial runs
  // about the constant plus the model's effects, centre points about their
  // mean (the curvature term fits it).
  double residual = Deviations(centre);
  for (const CodedRun& run : runs) {
    if (run.centre) continue;
    double fitted = fit.factorialMean;
    for (const FactorialEffect& e : fit.effects)
      if (e.inModel) fitted += e.coef * Sign(e.term, run.highFactors);
    residual += (run.response - fitted) * (run.response - fitted);
  }
  fit.errorDf = fit.totalDf - model_terms - (centre.empty() ? 0 : 1);
  fit.errorSS = fit.errorDf > 0 ? residual : 0.0;
  for (const auto& [point, values] : by_point) {
    fit.pureErrorSS += Deviations(values);
    fit.pureErrorDf += static_cast<long>(values.size()) - 1;
  }
  if (centre.size() > 1) {
    fit.pureErrorSS += Deviations(centre);
    fit.pureErrorDf += static_cast<long>(centre.size()) - 1;
  }
  fit.lackOfFitDf = fit.errorDf - fit.pureErrorDf;
  fit.lackOfFitSS = fit.lackOfFitDf > 0 ? std::max(0.0, fit.errorSS - fit.pureErrorSS) : 0.0;

  if (fit.errorDf > 0) {
    const double se = std::sqrt(fit.ErrorMS() / nf);
    for (FactorialEffect& e : fit.effects) {
      if (!e.inModel) continue;
      e.se = se;
      e.t = e.coef / se;
      e.p = PValue(TTails(*e.t, static_cast<double>(fit.errorDf)), Alternative::TwoSided);
    }
  }
  if (layout.replicates == 1) {
    std::vector<double> model;
    for (const FactorialEffect& e : fit.effects)
      if (e.inModel) model.push_back(e.effect);
    const double pse = LenthPse(model);
    if (pse > 0.0) {
      fit.pse = pse;
      fit.lenthDf = static_cast<double>(model.size()) / 3.0;
      fit.margin = stats::GetInvT(1.0 - alpha / 2.0, fit.lenthDf) * pse;
      for (FactorialEffect& e : fit.effects) e.lenthActive = e.inModel && std::fabs(e.effect) > fit.margin;
    }
  }
  return fit;
}

}  // namespace orvik::analyses
