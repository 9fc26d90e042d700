// Gauge repeatability and reproducibility by the two methods of the AIAG
// Measurement Systems Analysis reference manual (4th edition, 2010,
// chapter III, section B): the analysis of variance of the crossed
// random-effects model (Montgomery and Runger, "Gauge capability and
// designed experiments. Part I: basic methods", Quality Engineering 6,
// 1993) and the average-and-range method with its K constants, here taken
// exactly from the distribution of the normal range instead of from the
// manual's four-decimal table.

#include "analyses/gage_rr_fit.h"

#include <algorithm>
#include <cmath>

#include "stats/compensated_sum.h"
#include "stats/f_distribution.h"
#include "stats/range_distribution.h"

namespace orvik::analyses {

namespace {

// Mean square, F against `denominator` and its upper tail.
TwoWayTerm Tested(long df, double ss, double denominator_ms, long denominator_df) {
  TwoWayTerm term;
  term.df = df;
  term.ss = ss;
  term.ms = ss / static_cast<double>(df);
  term.f = term.ms / denominator_ms;
  term.p = std::isnan(term.f) ? term.f
                              : stats::GetDFFUpper(term.f, static_cast<double>(df), static_cast<double>(denominator_df));
  return term;
}

double NonNegative(double variance) { return std::max(0.0, variance); }

double MeanOf(const std::vector<double>& values) {
  stats::CompensatedSum sum;
  for (const double v : values) sum.Add(v);
  return sum.Value() / static_cast<double>(values.size());
}

}  // namespace

double RangeOf(const std::vector<double>& values) {
  if (values.empty()) return 0.0;
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  return *high - *low;
}

GageAnova FitGageAnova(const GageStudy& study) {
  GageAnova result;
  result.fit = FitTwoWay(study.cells);
  const TwoWayFit& fit = result.fit;
  const double parts = static_cast<double>(study.parts.size());
  const double appraisers = static_cast<double>(study.appraisers.size());
  const double trials = static_cast<double>(study.Trials());
  // Parts and appraisers are random: their expected mean squares hold the
  // interaction's, so they are tested against it.
  result.part = Tested(fit.rows.df, fit.rows.ss, fit.rowsByColumns.ms, fit.rowsByColumns.df);
  result.appraiser = Tested(fit.columns.df, fit.columns.ss, fit.rowsByColumns.ms, fit.rowsByColumns.df);
  result.interaction = Tested(fit.rowsByColumns.df, fit.rowsByColumns.ss, fit.errorMS, fit.errorDf);
  result.pooled = result.interaction.p > kInteractionPoolingLevel;
  GageVariances& v = result.variances;
  if (result.pooled) {
    result.pooledDf = fit.rowsByColumns.df + fit.errorDf;
    result.pooledSS = fit.rowsByColumns.ss + fit.errorSS;
    result.pooledMS = result.pooledSS / static_cast<double>(result.pooledDf);
    result.pooledPart = Tested(fit.rows.df, fit.rows.ss, result.pooledMS, result.pooledDf);
    result.pooledAppraiser = Tested(fit.columns.df, fit.columns.ss, result.pooledMS, result.pooledDf);
    v.repeatability = result.pooledMS;
    v.appraiser = NonNegative((fit.columns.ms - result.pooledMS) / (parts * trials));
    v.part = NonNegative((fit.rows.ms - result.pooledMS) / (appraisers * trials));
  } else {
    v.repeatability = fit.errorMS;
    v.interaction = NonNegative((fit.rowsByColumns.ms - fit.errorMS) / trials);
    v.appraiser = NonNegative((fit.columns.ms - fit.rowsByColumns.ms) / (parts * trials));
    v.part = NonNegative((fit.rows.ms - fit.rowsByColumns.ms) / (appraisers * trials));
  }
  return result;
}

double TrialsConstant(int trials) { return 1.0 / stats::NormalRangeMoments(trials).mean; }

double SingleRangeConstant(int size) { return 1.0 / stats::SingleRangeD2Star(size); }

GageXbarR FitGageXbarR(const GageStudy& study) {
  GageXbarR result;
  const std::size_t parts = study.parts.size();
  const std::size_t appraisers = study.appraisers.size();
  const long trials = study.Trials();
  result.cellRanges.assign(parts, std::vector<double>(appraisers));
  result.cellMeans.assign(parts, std::vector<double>(appraisers));
  std::vector<std::vector<double>> by_appraiser(appraisers), ranges_by_appraiser(appraisers);
  std::vector<std::vector<double>> by_part(parts);
  for (std::size_t i = 0; i < parts; ++i)
    for (std::size_t j = 0; j < appraisers; ++j) {
      const std::vector<double>& trial_values = study.cells[i][j];
      result.cellRanges[i][j] = RangeOf(trial_values);
      result.cellMeans[i][j] = MeanOf(trial_values);
      ranges_by_appraiser[j].push_back(result.cellRanges[i][j]);
      by_appraiser[j].insert(by_appraiser[j].end(), trial_values.begin(), trial_values.end());
      by_part[i].insert(by_part[i].end(), trial_values.begin(), trial_values.end());
    }
  for (std::size_t j = 0; j < appraisers; ++j) {
    result.appraiserAverages.push_back(MeanOf(by_appraiser[j]));
    result.appraiserRangeBars.push_back(MeanOf(ranges_by_appraiser[j]));
  }
  for (const auto& values : by_part) result.partAverages.push_back(MeanOf(values));
  result.rBar = MeanOf(result.appraiserRangeBars);
  result.xDiff = RangeOf(result.appraiserAverages);
  result.partRange = RangeOf(result.partAverages);
  result.K1 = TrialsConstant(static_cast<int>(trials));
  result.K2 = SingleRangeConstant(static_cast<int>(appraisers));
  result.K3 = SingleRangeConstant(static_cast<int>(parts));
  result.EV = result.rBar * result.K1;
  // The appraisers' averages also vary by repeatability, each being the
  // mean of parts * trials measurements; that share is taken out.
  const double spread = result.xDiff * result.K2;
  const double av_squared = spread * spread - result.EV * result.EV / static_cast<double>(parts * trials);
  result.AV = std::sqrt(NonNegative(av_squared));
  result.PV = result.partRange * result.K3;
  result.variances.repeatability = result.EV * result.EV;
  result.variances.appraiser = result.AV * result.AV;
  result.variances.part = result.PV * result.PV;
  return result;
}

std::optional<long> DistinctCategories(const GageVariances& variances) {
  if (!(variances.Gage() > 0.0)) return std::nullopt;
  const double categories = std::floor(1.41 * std::sqrt(variances.part) / std::sqrt(variances.Gage()));
  return std::max(1L, static_cast<long>(categories));
}

}  // namespace orvik::analyses
