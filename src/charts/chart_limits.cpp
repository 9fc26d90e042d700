#include "charts/chart_limits.h"

#include <algorithm>
#include <cmath>

#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"

namespace orvik::charts {

using stats::CompensatedSum;
using stats::CompensatedTotal;
using stats::Round;

namespace {

// Beyond 25 the range and s charts read their tables at the fixed index 23.
long TableIndex(long n) { return n > 25 ? 23 : n - 2; }

ControlLimits AroundCentre(double centre, double upper_distance, double lower_distance, double sigma_factor,
                           int decimals) {
  ControlLimits limits;
  limits.CL = Round(centre, decimals);
  limits.UCL = Round(centre + upper_distance, decimals);
  limits.LCL = Round(centre - lower_distance, decimals);
  limits.UpperTwoSigma = Round(centre + sigma_factor * (limits.UCL - centre), decimals);
  limits.LowerTwoSigma = Round(centre - sigma_factor * (centre - limits.LCL), decimals);
  return limits;
}

// The limits of a range or s chart: the centre times its upper and lower
// factors, sigma lines at two thirds of each distance.
ControlLimits ScaledLimits(double centre, double upper_factor, double lower_factor) {
  ControlLimits limits;
  limits.CL = Round(centre, 8);
  limits.UCL = Round(centre * upper_factor, 8);
  limits.UpperTwoSigma = Round(centre + 0.6666666666 * (limits.UCL - centre), 8);
  limits.LCL = Round(centre * lower_factor, 8);
  limits.LowerTwoSigma = Round(centre - 0.6666666666 * (centre - limits.LCL), 8);
  return limits;
}

// Above 25 values a subgroup's xbar limits come from sigma = s-bar / c4(n)
// at 3 / sqrt(n), the sigma lines at 2 / sqrt(n).
ControlLimits LargeSubgroupXbarLimits(double grand_mean, double s_bar, long n) {
  const double sigma = s_bar / C4Approximation(n);
  const double root = std::sqrt(static_cast<double>(n));
  ControlLimits limits;
  limits.CL = Round(grand_mean, 8);
  limits.UCL = Round(grand_mean + (3.0 / root) * sigma, 8);
  limits.LCL = Round(grand_mean - (3.0 / root) * sigma, 8);
  limits.UpperTwoSigma = Round(grand_mean + (2.0 / root) * sigma, 8);
  limits.LowerTwoSigma = Round(grand_mean - (2.0 / root) * sigma, 8);
  return limits;
}

}  // namespace

SubgroupStatistics ComputeSubgroupStatistics(const Subgroups& groups) {
  SubgroupStatistics stats;
  stats.n = groups.size;
  const long count = groups.Count();
  if (count == 0) return stats;
  stats.means.reserve(static_cast<std::size_t>(count));
  stats.ranges.reserve(static_cast<std::size_t>(count));
  stats.sds.reserve(static_cast<std::size_t>(count));
  // Every sum is compensated: a grand mean of many subgroups of values large
  // against their spread would otherwise drift in its last shown places.
  // Means and deviations are taken scaled where their sums would overflow.
  const auto n = static_cast<std::size_t>(groups.size);
  for (long g = 0; g < count; ++g) {
    const double* row = groups.values.data() + static_cast<std::size_t>(g) * n;
    double maximum = row[0], minimum = row[0];
    for (std::size_t j = 0; j < n; ++j) {
      if (row[j] > maximum) maximum = row[j];
      if (row[j] < minimum) minimum = row[j];
    }
    const std::span<const double> group(row, n);
    const double exact_mean = orvik::stats::CompensatedMean(group);
    const double mean = Round(exact_mean, 8);
    // The range is rounded like the mean so that the binary noise of the
    // subtraction cannot put a range a hair above a limit it equals.
    const double range = Round(maximum - minimum, 8);
    const double sd = n > 1 ? Round(orvik::stats::CompensatedStandardDeviation(group, exact_mean), 8) : 0.0;
    stats.means.push_back(mean);
    stats.ranges.push_back(range);
    stats.sds.push_back(sd);
  }
  stats.grandMean = orvik::stats::CompensatedMean(stats.means);
  stats.rBar = orvik::stats::CompensatedMean(stats.ranges);
  stats.sBar = orvik::stats::CompensatedMean(stats.sds);
  return stats;
}

double C4Approximation(long n) {
  const auto x = static_cast<double>(n);
  return 4.0 * (x - 1.0) / (4.0 * x - 3.0);
}

ControlLimits XbarLimitsFromRange(double grand_mean, double r_bar, double s_bar, long n) {
  if (n <= 1) throw ChartComputationError("subgroup size below 2");
  ControlLimits limits;
  if (n <= 25) {
    const double a2 = Factor(A2Table(), n);
    limits.CL = Round(grand_mean, 8);
    limits.UCL = Round(grand_mean + a2 * r_bar, 8);
    limits.LCL = Round(grand_mean - a2 * r_bar, 8);
    limits.UpperTwoSigma = Round(grand_mean + r_bar * (0.66666666666 * a2), 8);
    limits.LowerTwoSigma = Round(grand_mean - r_bar * (0.66666666666 * a2), 8);
    return limits;
  }
  return LargeSubgroupXbarLimits(grand_mean, s_bar, n);
}

ControlLimits RLimits(double r_bar, long n) {
  if (n <= 1) throw ChartComputationError("subgroup size below 2");
  return ScaledLimits(r_bar, TableEntry(D4Table(), TableIndex(n)), TableEntry(D3Table(), TableIndex(n)));
}

ControlLimits XbarLimitsFromS(double grand_mean, double s_bar, long n) {
  if (n <= 1) throw ChartComputationError("subgroup size below 2");
  if (n <= 25) {
    const double distance = Factor(A3Table(), n) * s_bar;
    return AroundCentre(grand_mean, distance, distance, 0.6666666666, 8);
  }
  return LargeSubgroupXbarLimits(grand_mean, s_bar, n);
}

ControlLimits SLimits(double s_bar, long n) {
  if (n <= 1) throw ChartComputationError("subgroup size below 2");
  return ScaledLimits(s_bar, TableEntry(B4Table(), TableIndex(n)), TableEntry(B3Table(), TableIndex(n)));
}

std::vector<double> MovingRanges(const std::vector<double>& values) {
  std::vector<double> ranges;
  if (values.size() < 2) return ranges;
  ranges.reserve(values.size() - 1);
  for (std::size_t i = 1; i < values.size(); ++i) ranges.push_back(Round(std::fabs(values[i] - values[i - 1]), 12));
  return ranges;
}

double MeanMovingRange(const std::vector<double>& moving_ranges) {
  if (moving_ranges.empty()) throw ChartComputationError("no moving range");
  return CompensatedTotal(moving_ranges) / static_cast<double>(moving_ranges.size());
}

ControlLimits IndividualsLimits(double mean, double mr_bar) {
  return AroundCentre(mean, 2.66 * mr_bar, 2.66 * mr_bar, 0.6666666666, 8);
}

ControlLimits MovingRangeLimits(double mr_bar) {
  ControlLimits limits;
  limits.CL = mr_bar;
  limits.UCL = Round(3.267 * mr_bar, 12);
  limits.LCL = 0.0;
  limits.UpperTwoSigma = Round(mr_bar + 0.6666666666 * (limits.UCL - mr_bar), 12);
  limits.LowerTwoSigma = Round(mr_bar - 0.6666666666 * (mr_bar - limits.LCL), 12);
  return limits;
}

ControlLimits CLimits(const std::vector<double>& counts) {
  if (counts.empty()) throw ChartComputationError("no sample");
  const double c_bar = Round(CompensatedTotal(counts) / static_cast<double>(counts.size()), 8);
  if (c_bar < 0) throw ChartComputationError("negative mean count");
  ControlLimits limits;
  limits.CL = c_bar;
  limits.UCL = Round(c_bar + 3.0 * std::sqrt(c_bar), 8);
  limits.LCL = Round(c_bar - 3.0 * std::sqrt(c_bar), 8);
  if (limits.LCL < 0) limits.LCL = 0.0;
  // The sigma lines are rounded to 8 places like every other limit.
  limits.UpperTwoSigma = Round(c_bar + 0.66666 * (limits.UCL - c_bar), 8);
  limits.LowerTwoSigma = Round(c_bar - 0.66666 * (c_bar - limits.LCL), 8);
  return limits;
}

ControlLimits NpLimits(const std::vector<double>& counts, double n) {
  if (counts.empty() || !(n > 0)) throw ChartComputationError("no sample");
  const double total = CompensatedTotal(counts);
  const auto k = static_cast<double>(counts.size());
  const double np_bar = Round(total / k, 12);
  const double p_bar = total / (k * n);
  const double variance = np_bar * (1.0 - p_bar);
  if (variance < 0) throw ChartComputationError("negative variance");
  const double sigma = std::sqrt(variance);
  ControlLimits limits;
  limits.CL = np_bar;
  limits.UCL = Round(np_bar + 3.0 * sigma, 12);
  limits.UpperTwoSigma = Round(np_bar + 2.0 * sigma, 12);
  limits.LCL = Round(np_bar - 3.0 * sigma, 12);
  if (limits.LCL < 0) limits.LCL = 0.0;
  limits.LowerTwoSigma = Round(np_bar - 2.0 * sigma, 12);
  return limits;
}

}  // namespace orvik::charts
