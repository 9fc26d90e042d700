#pragma once

// Root finding for the quantile functions of the t, chi-square and F
// distributions.
//
// Method: Newton's method on g(x) = ln(F(x) / p) in the variable ln x,
// where F is whichever tail (or the centred probability) holds the target,
// safeguarded by bisection (in ln x) inside the bracket the iterates
// establish. In ln x the logarithm of a tail is close to linear for power-law
// tails and close to a parabola for exponential ones, so Newton converges
// quadratically from the rough starting values of the callers and resolves
// quantiles from 1e-300 to 1e300 with the same relative precision. The
// iterate itself is kept as x and updated by x e^step, because ln x near 700
// is too coarse a double to pin x down to 1e-16. The slope
// x F'(x) / F(x) comes from the power term that the distribution function
// computes anyway.

#include <cmath>

namespace orvik::stats::detail {

struct TailSlope {
  double tail = 0.0;   // F(x)
  double slope = 0.0;  // d ln F / d ln x
};

// ln(f / p), formed from the ratio so that a relative difference of 1e-16
// between f and p survives even when ln f is near -700.
inline double LogRatio(double f, double p) {
  const double ratio = f / p;
  if (ratio > 1e-300 && ratio < 1e300) return std::log(ratio);
  return std::log(f) - std::log(p);
}

// Solves F(x) = p for x > 0, where tail(x) returns F(x) with its slope and F
// increases in x (or, with increasing == false, decreases); x starts the
// search. It ends once a Newton step in ln x is at most `tolerance`; a tail
// known only to about 1e-13 (a numerical integral) ends earlier with a
// larger tolerance instead of chasing its rounding noise.
template <typename Tail>
double SolveLogQuantile(Tail&& tail, double p, double x, bool increasing, double tolerance = 2e-16) {
  double lo = 0.0;
  double hi = HUGE_VAL;
  double previous_step = HUGE_VAL;
  for (int iteration = 0; iteration < 300; ++iteration) {
    const TailSlope t = tail(x);
    const double value = LogRatio(t.tail, p);
    if (std::isnan(value) || value == 0.0) return x;
    const bool root_below = (value > 0.0) == increasing;
    if (root_below)
      hi = x;
    else
      lo = x;
    const double step = -value / t.slope;
    double next = x * std::exp(step);
    const bool newton_ok = std::isfinite(step) && next > lo && next < hi;
    if (!newton_ok) {
      if (lo > 0.0 && hi < HUGE_VAL)
        next = std::sqrt(lo) * std::sqrt(hi);
      else
        next = root_below ? x * 1e-8 : x * 1e8;
    }
    if (newton_ok && std::fabs(step) <= tolerance) return next;
    if (newton_ok && std::fabs(step) < 1e-9 && std::fabs(step) >= previous_step) return next;  // rounding noise
    previous_step = newton_ok ? std::fabs(step) : HUGE_VAL;
    if (next == x || next == 0.0 || std::isinf(next)) return next;
    x = next;
  }
  return x;
}

}  // namespace orvik::stats::detail
