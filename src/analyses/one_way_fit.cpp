#include "analyses/one_way_fit.h"

#include <cmath>
#include <limits>

#include "analyses/centred_data.h"
#include "stats/compensated_sum.h"
#include "stats/f_distribution.h"
#include "stats/studentized_range.h"
#include "stats/t_distribution.h"

namespace orvik::analyses {

OneWayFit FitOneWay(const std::vector<FactorLevel>& levels) {
  OneWayFit fit;
  const double reference = levels.front().values.front();
  std::vector<CentredData> centred;
  long n = 0;
  stats::CompensatedSum grand;
  for (const auto& level : levels) {
    centred.push_back(Centre(level.values, reference));
    for (const double d : centred.back().deviations) grand.Add(d);
    n += static_cast<long>(level.values.size());
  }
  const long k = static_cast<long>(levels.size());
  const double grand_mean = grand.Value() / static_cast<double>(n);
  stats::CompensatedSum between, within, total;
  std::vector<double> means;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const auto& d = centred[i].deviations;
    const double mean = Mean(d);
    means.push_back(mean);
    const double ss = SquaredDeviations(d, mean);
    within.Add(ss);
    total.Add(SquaredDeviations(d, grand_mean));
    between.Add(static_cast<double>(d.size()) * (mean - grand_mean) * (mean - grand_mean));
    LevelSummary summary;
    summary.name = levels[i].name;
    summary.n = static_cast<long>(d.size());
    summary.mean = centred[i].Value(mean);
    summary.deviationMean = mean;
    summary.sd = d.size() > 1 ? std::sqrt(ss / static_cast<double>(d.size() - 1))
                              : std::numeric_limits<double>::quiet_NaN();
    fit.levels.push_back(summary);
  }
  fit.factorDf = k - 1;
  fit.errorDf = n - k;
  fit.totalDf = n - 1;
  fit.factorSS = between.Value();
  fit.errorSS = within.Value();
  fit.totalSS = total.Value();
  fit.factorMS = fit.factorSS / static_cast<double>(fit.factorDf);
  fit.errorMS = fit.errorSS / static_cast<double>(fit.errorDf);
  fit.f = fit.factorMS / fit.errorMS;
  fit.p = std::isnan(fit.f) ? fit.f
                            : stats::GetDFFUpper(fit.f, static_cast<double>(fit.factorDf),
                                                 static_cast<double>(fit.errorDf));
  fit.s = std::sqrt(fit.errorMS);
  // R^2 as SS(factor) / (SS(factor) + SS(error)): both sums are formed
  // directly, so neither is a difference of nearly equal numbers.
  fit.rSquared = fit.factorSS / (fit.factorSS + fit.errorSS);
  fit.adjustedRSquared = 1.0 - fit.errorMS / (fit.totalSS / static_cast<double>(fit.totalDf));
  const double t = stats::GetInvTUpper(0.025, static_cast<double>(fit.errorDf));
  for (auto& level : fit.levels) {
    const double half = t * fit.s / std::sqrt(static_cast<double>(level.n));
    level.lower = level.mean - half;
    level.upper = level.mean + half;
  }
  return fit;
}

std::vector<TukeyComparison> TukeyComparisons(const OneWayFit& fit, double level, double* critical) {
  const double k = static_cast<double>(fit.levels.size());
  const double df = static_cast<double>(fit.errorDf);
  const double q_critical = stats::GetInvTukeyUpper(1.0 - level, k, df);
  if (critical != nullptr) *critical = q_critical;
  std::vector<TukeyComparison> comparisons;
  for (std::size_t i = 0; i < fit.levels.size(); ++i) {
    for (std::size_t j = i + 1; j < fit.levels.size(); ++j) {
      TukeyComparison c;
      c.first = i;
      c.second = j;
      c.difference = fit.levels[i].deviationMean - fit.levels[j].deviationMean;
      const double unit = std::sqrt(1.0 / static_cast<double>(fit.levels[i].n) +
                                    1.0 / static_cast<double>(fit.levels[j].n));
      c.se = fit.s * unit;
      const double half = q_critical * c.se / std::sqrt(2.0);
      c.lower = c.difference - half;
      c.upper = c.difference + half;
      c.q = std::fabs(c.difference) / (c.se / std::sqrt(2.0));
      c.adjustedP = std::isnan(c.q) ? c.q : stats::GetDFTukeyUpper(c.q, k, df);
      comparisons.push_back(c);
    }
  }
  return comparisons;
}

}  // namespace orvik::analyses
