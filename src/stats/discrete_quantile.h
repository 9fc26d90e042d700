#pragma once

// The quantile search shared by the discrete distributions (binomial,
// Poisson, hypergeometric): the least whole k of the support with
// P(X <= k) >= p, or with P(X > k) <= q for the upper tail, found by stepping
// from a normal approximation to the answer. A target a few units of
// rounding away from a step of the distribution function counts as reached
// (the fuzz of R's qbinom), so that a probability copied from the
// distribution function gives back its own k.

#include <algorithm>
#include <cmath>

#include "stats/normal_distribution.h"

namespace orvik::stats::detail {

// `lower(k)` and `upper(k)` are P(X <= k) and P(X > k) for whole k in
// [first, last]; mean and sd place the start. With `upper_tail` the target
// is q = P(X > k), otherwise p = P(X <= k).
template <typename Lower, typename Upper>
double DiscreteQuantile(double target, bool upper_tail, double first, double last, double mean, double sd,
                        Lower&& lower, Upper&& upper) {
  constexpr double kFuzz = 64 * 2.220446049250313e-16;
  const auto reached = [&](double k) {
    return upper_tail ? upper(k) <= target * (1.0 + kFuzz) : lower(k) >= target * (1.0 - kFuzz);
  };
  const double z = upper_tail ? GetInvNormalUpper(target) : GetInvNormal(target);
  double k = std::floor(mean + sd * std::clamp(z, -40.0, 40.0) + 0.5);
  if (!std::isfinite(k)) k = mean;
  k = std::clamp(k, first, last);
  if (reached(k)) {
    // Step down, widening the step while it overshoots nothing.
    for (double step = 1.0; k > first;) {
      const double next = std::max(first, k - step);
      if (!reached(next)) {
        if (step == 1.0) break;
        step = 1.0;
        continue;
      }
      k = next;
      step *= 2.0;
    }
    return k;
  }
  for (double step = 1.0; k < last;) {
    const double next = std::min(last, k + step);
    if (reached(next)) {
      if (step == 1.0) return next;
      step = 1.0;
      continue;
    }
    k = next;
    step *= 2.0;
  }
  return last;
}

}  // namespace orvik::stats::detail
