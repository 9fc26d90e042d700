// The Weibull and exponential distributions.
//
// Method: the closed forms P(X <= x) = -expm1(-t) and P(X > x) = exp(-t)
// with t = (x / lambda)^k, and their inverses lambda (-log1p(-p))^(1/k) and
// lambda (-ln q)^(1/k) (Johnson, Kotz and Balakrishnan, Continuous
// Univariate Distributions, vol. 1, 2nd ed., 1994, ch. 21). expm1 and log1p
// keep the lower tail's relative accuracy where p is tiny; each tail is
// formed from its own expression, so neither is 1 minus the other.

#include "stats/weibull_distribution.h"

#include <cmath>
#include <limits>

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool InvalidParameter(double v) { return std::isnan(v) || !(v > 0.0 && v < HUGE_VAL); }
bool Invalid(double x, double shape, double scale) {
  return std::isnan(x) || InvalidParameter(shape) || InvalidParameter(scale);
}
bool InvalidProbability(double p, double shape, double scale) {
  return std::isnan(p) || p < 0.0 || p > 1.0 || InvalidParameter(shape) || InvalidParameter(scale);
}

// (x / lambda)^k for x > 0.
double Power(double x, double shape, double scale) { return shape == 1.0 ? x / scale : std::pow(x / scale, shape); }

// lambda e^(ln(h) / k), the inverse of Power at h > 0.
double Root(double h, double shape, double scale) { return shape == 1.0 ? scale * h : scale * std::pow(h, 1.0 / shape); }

}  // namespace

double GetDFWeibull(double x, double shape, double scale) {
  if (Invalid(x, shape, scale)) return kNaN;
  if (x <= 0.0) return 0.0;
  return -std::expm1(-Power(x, shape, scale));
}

double GetDFWeibullUpper(double x, double shape, double scale) {
  if (Invalid(x, shape, scale)) return kNaN;
  if (x <= 0.0) return 1.0;
  return std::exp(-Power(x, shape, scale));
}

double GetInvWeibull(double p, double shape, double scale) {
  if (InvalidProbability(p, shape, scale)) return kNaN;
  return Root(-std::log1p(-p), shape, scale);
}

double GetInvWeibullUpper(double q, double shape, double scale) {
  if (InvalidProbability(q, shape, scale)) return kNaN;
  return Root(-std::log(q), shape, scale);
}

double WeibullDensity(double x, double shape, double scale) {
  if (Invalid(x, shape, scale)) return kNaN;
  if (x < 0.0) return 0.0;
  if (x == 0.0) return shape < 1.0 ? HUGE_VAL : shape == 1.0 ? 1.0 / scale : 0.0;
  const double t = Power(x, shape, scale);
  return shape / x * t * std::exp(-t);
}

double GetDFExponential(double x, double mean) { return GetDFWeibull(x, 1.0, mean); }
double GetDFExponentialUpper(double x, double mean) { return GetDFWeibullUpper(x, 1.0, mean); }
double GetInvExponential(double p, double mean) { return GetInvWeibull(p, 1.0, mean); }
double GetInvExponentialUpper(double q, double mean) { return GetInvWeibullUpper(q, 1.0, mean); }
double ExponentialDensity(double x, double mean) { return WeibullDensity(x, 1.0, mean); }

}  // namespace orvik::stats
