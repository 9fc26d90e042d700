#pragma once

#include <vector>

#include "charts/control_limits.h"

namespace orvik::charts {

// The samples of a p or u chart in row order: each sample's size n_i (units
// for p, inspection units for u) and its count x_i (nonconforming units for
// p, nonconformities for u).
struct AttributeSamples {
  std::vector<double> sizes;
  std::vector<double> counts;
};

// How the p chart draws its limits (dialog PSubForm).
struct ProportionOptions {
  // Limits from the average sample size n-bar = (sum of n) / k, unrounded,
  // in place of each sample's own n.
  bool averageSize = false;
  // Laney's p' chart: each sample's sigma widened by sigma_z.
  bool laney = false;
};

// A p or u chart's numbers: the plotted ratios, the centre line and, per
// sample, its limits, sigma lines and standardized value.
struct AttributeChartLimits {
  std::vector<double> ratios;  // x_i / n_i rounded to 8 places, as plotted
  double centre = 0.0;         // Round(sum of x / sum of n, 8)
  double sigmaZ = 1.0;         // Laney's sigma_z; 1 for the plain charts
  std::vector<double> UCL, LCL, UpperTwoSigma, LowerTwoSigma;  // one per sample, rounded to 8
  // (ratio - centre) / sigma of the sample's limits (its own or n-bar's,
  // times sigma_z for p'): the distance in sigmas that rules G to I judge,
  // whatever the floor at 0 and the cap at 1 did to the drawn lines. 0 where
  // that sigma is 0.
  std::vector<double> standardized;

  // Whether the limits differ between samples (they step with the sizes).
  bool Stepped() const;
  // The limits of sample i as one record, CL = centre.
  ControlLimits At(std::size_t i) const;
};

// Laney's sigma_z (Laney 2002): the mean moving range of the standardized
// values z_i divided by d2 = 1.128, the sigma of the z_i left over beyond
// the binomial or Poisson sigma. About 1 when the counts vary as the model
// says, above 1 when they are overdispersed. Throws ChartComputationError
// for fewer than two values.
double LaneySigmaZ(const std::vector<double>& z);

// The p chart: p_i = x_i / n_i, p-bar = Round(sum x / sum n, 8); UCL and LCL
// from stats::PChart and PChart2 at each sample's n (or n-bar), the sigma
// lines at p-bar +- 2 sigma rounded to 8, all held within [0, 1]. With
// Laney the limits are p-bar +- 3 sigma_i sigma_z, where sigma_z comes from
// z_i = (p_i - p-bar) / sigma_i at each sample's own n. Throws
// ChartComputationError when there is no sample or no unit.
// With `phase_one` (the limits of an earlier phase) its centre line and
// sigma_z replace the samples' own.
AttributeChartLimits PChartLimits(const AttributeSamples& samples, const ProportionOptions& options,
                                  const AttributeChartLimits* phase_one = nullptr);

// The u chart: u_i = c_i / n_i, u-bar = Round(sum c / sum n, 8),
// UCL_i = Round(u-bar + 3 sqrt(u-bar / n_i), 8), LCL_i likewise floored at
// 0, sigma lines at 2 sigma (the lower one floored at 0 too). Throws
// ChartComputationError when there is no sample or no inspection unit.
// With `phase_one` its u-bar replaces the samples' own.
AttributeChartLimits UChartLimits(const AttributeSamples& samples, const AttributeChartLimits* phase_one = nullptr);

}  // namespace orvik::charts
