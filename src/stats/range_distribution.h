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

}  // namespace orvik::stats
