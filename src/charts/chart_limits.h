#pragma once

#include <vector>

#include "charts/chart_input.h"
#include "charts/control_limits.h"

namespace orvik::charts {

// The statistics of subgroups in rows: per subgroup its mean, range and
// sample standard deviation, and their averages.
struct SubgroupStatistics {
  long n = 0;
  std::vector<double> means;   // Round(sum / n, 8)
  std::vector<double> ranges;  // maximum - minimum, rounded like the means
  std::vector<double> sds;     // sample standard deviation, rounded like the means
  double grandMean = 0.0;      // mean of the subgroup means
  double rBar = 0.0;           // mean of the ranges
  double sBar = 0.0;           // mean of the standard deviations
};
SubgroupStatistics ComputeSubgroupStatistics(const Subgroups& groups);

// c4(n) = 4(n - 1) / (4n - 3), which turns s-bar into the sigma estimate
// of the xbar chart for subgroups of more than 25.
double C4Approximation(long n);

// xbar chart from R-bar: CL +- A2 R-bar with sigma lines at 0.66666666666 A2
// for 1 < n <= 25; CL +- (3/sqrt(n)) sigma and (2/sqrt(n)) sigma with
// sigma = s-bar / c4(n) beyond. All rounded to 8 places.
ControlLimits XbarLimitsFromRange(double grand_mean, double r_bar, double s_bar, long n);
// R chart: R-bar D4 and R-bar D3, sigma lines at 0.6666666666 of each
// distance, rounded to 8 places; beyond n = 25 the factors of index 23.
ControlLimits RLimits(double r_bar, long n);
// xbar chart from s-bar: CL +- A3 s-bar for 1 < n <= 25, CL +- (3/sqrt(n))
// s-bar / c4(n) beyond; sigma lines at 0.6666666666 of each distance
// (at 2/sqrt(n) beyond 25), rounded to 8 places.
ControlLimits XbarLimitsFromS(double grand_mean, double s_bar, long n);
// s chart: s-bar B4 and s-bar B3 with sigma lines at 0.6666666666 of each
// distance, rounded to 8 places; beyond n = 25 the factors of index 23.
ControlLimits SLimits(double s_bar, long n);

// Moving ranges |x[i] - x[i-1]|, rounded to 12 places.
std::vector<double> MovingRanges(const std::vector<double>& values);
// The mean of the moving ranges, unrounded.
double MeanMovingRange(const std::vector<double>& moving_ranges);
// x chart of individual values: CL +- 2.66 MR-bar, sigma lines at
// 0.6666666666 of each distance, rounded to 8 places.
ControlLimits IndividualsLimits(double mean, double mr_bar);
// MR chart: CL = MR-bar unrounded, UCL = Round(3.267 MR-bar, 12), LCL = 0,
// sigma lines at 0.6666666666 of each distance rounded to 12 places.
ControlLimits MovingRangeLimits(double mr_bar);

// c chart from the counts: c-bar = Round(mean, 8), c-bar +- 3 sqrt(c-bar)
// rounded to 8 places with LCL floored at 0, sigma lines at 0.66666.
ControlLimits CLimits(const std::vector<double>& counts);
// np chart from the counts and the sample size n: np-bar = Round(mean, 12),
// limits at 3 sigma and sigma lines at 2 sigma, rounded to 12 places, LCL
// floored at 0 and the lower sigma line not.
ControlLimits NpLimits(const std::vector<double>& counts, double n);

// The sigma rules by which given limits get their 2-sigma lines.
inline constexpr SigmaRule kXbarRangeSigma{0.66666666666, 8};
inline constexpr SigmaRule kTenSixesSigma{0.6666666666, 8};
inline constexpr SigmaRule kTwoOfThreeSigma{2.0 / 3.0, 8};
inline constexpr SigmaRule kMovingRangeSigma{0.6666666666, 12};
inline constexpr SigmaRule kCSigma{0.66666, 8};
inline constexpr SigmaRule kNpSigma{2.0 / 3.0, 12};

}  // namespace orvik::charts
