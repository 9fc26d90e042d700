#pragma once

#include <array>
#include <optional>
#include <utility>

#include "analyses/analysis_settings.h"
#include "analyses/sample_summary.h"
#include "shell/result_table.h"

namespace orvik::analyses {

// One two-sided confidence interval, unrounded; the reports round its
// bounds to 8 places when they show them.
struct Interval {
  double lower = 0.0;
  double upper = 0.0;
};

// The three intervals at 90.0%, 95.0% and 99.0% (kReportedLevels).
using ReportedIntervals = std::array<Interval, 3>;

// The mean: mean +- z * sigma / sqrt(n) with a given sigma, otherwise
// mean +- Estt(row, level) * s / sqrt(n) with the t row of n - 1 degrees of
// freedom. The paired interval is this one over the row differences.
ReportedIntervals MeanIntervals(const SampleSummary& sample, std::optional<double> sigma);

// The variance: (n - 1)s^2 / EstChi and (n - 1)s^2 / EstinvChi at row n - 2.
// Empty above 801 values, where the chi-square table ends.
std::optional<ReportedIntervals> VarianceIntervals(const SampleSummary& sample);

// A proportion p of n items: p +- z * sqrt(p(1 - p) / n), not clipped.
ReportedIntervals ProportionIntervals(double proportion, long n);

// The pooled variance of two samples, rounded to 12 places.
double PooledVariance(const SampleSummary& first, const SampleSummary& second);

// The difference of two means: with given sigmas z * sqrt(s1^2/n1 + s2^2/n2),
// otherwise Estt at n1 + n2 - 2 degrees of freedom times the pooled standard
// deviation times sqrt(1/n1 + 1/n2).
ReportedIntervals DiffMeanIntervals(const SampleSummary& first, const SampleSummary& second,
                                    std::optional<std::pair<double, double>> sigmas);

// The ratio s1^2 / s2^2 at the four levels 80.0%, 90.0%, 95.0% and 98.0%:
// ratio / EstF(row1, row2, level) to ratio * EstF(row2, row1, level).
std::array<Interval, 4> RatioVarianceIntervals(const SampleSummary& first, const SampleSummary& second);

// The difference of two proportions, p1 - p2 +- z * sqrt(p1(1-p1)/n1 + p2(1-p2)/n2),
// not clipped.
ReportedIntervals TwoProportionIntervals(double p1, long n1, double p2, long n2);

// The result grids of the seven estimations.
shell::ResultTable MeanEstimationTable(const SampleSummary& sample, std::optional<double> sigma);
shell::ResultTable VarianceEstimationTable(const SampleSummary& sample);
shell::ResultTable ProportionEstimationTable(const ProportionCounts& counts);
shell::ResultTable DiffMeanTable(const SampleSummary& first, const SampleSummary& second,
                                 std::optional<std::pair<double, double>> sigmas);
shell::ResultTable PairedDiffMeanTable(const SampleSummary& differences, const SampleSummary& first,
                                       const SampleSummary& second);
shell::ResultTable RatioVarianceTable(const SampleSummary& first, const SampleSummary& second);
shell::ResultTable TwoProportionTable(const ProportionCounts& first, const ProportionCounts& second);

}  // namespace orvik::analyses
