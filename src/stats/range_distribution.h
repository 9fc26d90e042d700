#pragma once

// The range W = max - min of n independent standard normal observations:
// its mean d2(n) and standard deviation d3(n), the factors that turn a
// process sigma into the centre line and spread of a range chart.

namespace orvik::stats {

// d2(n) = E[W] and d3(n) = sqrt(Var W) for 2 <= n <= 100, both accurate to
// 1e-9; NaN for n outside that span. For example d2(2) = 2 / sqrt(pi) and
// d3(2) = sqrt(2 - 4 / pi).
struct RangeMoments {
  double mean;  // d2
  double sd;    // d3
};
RangeMoments NormalRangeMoments(int n);

// d2*(n) for a single range (g = 1 subgroup): sqrt(E[W^2]) = sqrt(d2^2 +
// d3^2), the divisor that turns one range of n values into a standard
// deviation in gauge studies (the range of the appraisers' or the parts'
// averages). For example d2*(2) = sqrt(2). NaN outside 2 <= n <= 100.
double SingleRangeD2Star(int n);

}  // namespace orvik::stats
