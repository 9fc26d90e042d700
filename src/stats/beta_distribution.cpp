// The beta distribution.
//
// Method: the regularized incomplete beta function and its complement
// (incomplete_beta.h) for the two tails. Quantile: Newton's method in ln x
// (quantile_solver.h) on the tail that holds the target, so that the target
// is at most 1/2; the slope d ln F / d ln x is the power term x^a y^b / B(a, b)
// over y F, which the incomplete beta function returns anyway. A quantile
// above 1/2 is solved again as 1 - y, with y the quantile of the other tail
// of Beta(b, a) (I_x(a, b) = 1 - I_y(b, a)), so that a quantile next to 1
// keeps the digits of its distance from 1. The start is the inverted leading
// term of the series, (p a B(a, b))^(1/a), or the mean when that is no
// nearer.

#include "stats/beta_distribution.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "stats/incomplete_beta.h"
#include "stats/quantile_solver.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool InvalidShape(double v) { return std::isnan(v) || !(v > 0.0 && v < HUGE_VAL); }
bool Invalid(double v, double a, double b) { return std::isnan(v) || InvalidShape(a) || InvalidShape(b); }

detail::BetaTails Tails(double x, double a, double b) {
  if (x <= 0.0) return {0.0, 1.0, 0.0};
  if (x >= 1.0) return {1.0, 0.0, 0.0};
  return detail::IncompleteBeta(a, b, detail::DD{x, 0.0}, detail::TwoSum(1.0, -x));
}

// x with the lower (or upper) tail of Beta(a, b) equal to t <= 1/2.
double Solve(double t, bool upper, double a, double b) {
  const auto tail = [&](double x) {
    const detail::BetaTails tails = Tails(x, a, b);
    const double probability = upper ? tails.upper : tails.lower;
    if (x >= 1.0 || probability == 0.0) return detail::TailSlope{probability, 0.0};
    const double slope = tails.power / ((1.0 - x) * probability);
    return detail::TailSlope{probability, upper ? -slope : slope};
  };
  const double mean = a / (a + b);
  double start = mean;
  if (!upper) {
    const double series = std::exp((std::log(t) + std::log(a) + std::lgamma(a) + std::lgamma(b) - std::lgamma(a + b)) / a);
    if (series > 0.0 && series < mean) start = series;
  }
  return detail::SolveLogQuantile(tail, t, start, !upper);
}

double Quantile(double t, bool upper, double a, double b) {
  const double x = Solve(t, upper, a, b);
  if (x <= 0.5) return x;
  return 1.0 - Solve(t, !upper, b, a);
}

}  // namespace

double GetDFBeta(double x, double a, double b) {
  if (Invalid(x, a, b)) return kNaN;
  return Tails(x, a, b).lower;
}

double GetDFBetaUpper(double x, double a, double b) {
  if (Invalid(x, a, b)) return kNaN;
  return Tails(x, a, b).upper;
}

double GetInvBeta(double p, double a, double b) {
  if (Invalid(p, a, b) || p < 0.0 || p > 1.0) return kNaN;
  if (p == 0.0) return 0.0;
  if (p == 1.0) return 1.0;
  return p <= 0.5 ? Quantile(p, false, a, b) : Quantile(1.0 - p, true, a, b);
}

double GetInvBetaUpper(double q, double a, double b) {
  if (Invalid(q, a, b) || q < 0.0 || q > 1.0) return kNaN;
  if (q == 0.0) return 1.0;
  if (q == 1.0) return 0.0;
  return q <= 0.5 ? Quantile(q, true, a, b) : Quantile(1.0 - q, false, a, b);
}

double BetaDensity(double x, double a, double b) {
  if (Invalid(x, a, b)) return kNaN;
  if (x < 0.0 || x > 1.0) return 0.0;
  if (x == 0.0) return a < 1.0 ? HUGE_VAL : a == 1.0 ? b : 0.0;
  if (x == 1.0) return b < 1.0 ? HUGE_VAL : b == 1.0 ? a : 0.0;
  return Tails(x, a, b).power / (x * (1.0 - x));
}

}  // namespace orvik::stats
