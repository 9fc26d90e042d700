#pragma once

// Composite Simpson's three-eighths rule.

#include <concepts>
#include <stdexcept>

namespace orvik::stats {

// The integral of f over [lower, upper] with `intervals` equal steps
// h = (upper - lower) / intervals. Groups of three steps take the
// three-eighths rule (h 3/8 (f0 + 3 f1 + 3 f2 + f3)); when the count is not
// a multiple of three, the last two or four steps take Simpson's 1/3 rule
// instead, so every count keeps the error of order h^4 (one step alone takes
// the trapezoidal rule). Throws std::invalid_argument for fewer than one
// interval.
template <std::invocable<double> F>
double Simpson38(double lower, double upper, int intervals, F&& f) {
  if (intervals < 1) throw std::invalid_argument("the number of intervals must be at least 1");
  const double h = (upper - lower) / intervals;
  const auto at = [&](int k) { return f(k == intervals ? upper : lower + k * h); };
  if (intervals == 1) return 0.5 * h * (at(0) + at(1));
  // Steps [0, split) by the three-eighths rule, [split, intervals) by 1/3.
  const int split = intervals - (intervals % 3 == 1 ? 4 : intervals % 3 == 2 ? 2 : 0);
  double sum = 0.0;
  for (int k = 0; k <= intervals; ++k) {
    double weight = 0.0;
    if (k <= split && split > 0) weight += 0.375 * (k == 0 || k == split ? 1.0 : k % 3 == 0 ? 2.0 : 3.0);
    if (k >= split && split < intervals) {
      const int j = k - split;
      weight += (j == 0 || k == intervals ? 1.0 : j % 2 == 1 ? 4.0 : 2.0) / 3.0;
    }
    sum += weight * at(k);
  }
  return h * sum;
}

}  // namespace orvik::stats
