// The continuous uniform distribution: closed forms. Each tail is measured
// from its own bound, so a probability near 0 in either tail keeps its
// digits; the quantiles are measured from the bound of the tail given.

#include "stats/uniform_distribution.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool InvalidBounds(double lower, double upper) {
  return !std::isfinite(lower) || !std::isfinite(upper) || !(lower < upper);
}

}  // namespace

double GetDFUniform(double x, double lower, double upper) {
  if (std::isnan(x) || InvalidBounds(lower, upper)) return kNaN;
  return std::clamp((x - lower) / (upper - lower), 0.0, 1.0);
}

double GetDFUniformUpper(double x, double lower, double upper) {
  if (std::isnan(x) || InvalidBounds(lower, upper)) return kNaN;
  return std::clamp((upper - x) / (upper - lower), 0.0, 1.0);
}

double GetInvUniform(double p, double lower, double upper) {
  if (std::isnan(p) || p < 0.0 || p > 1.0 || InvalidBounds(lower, upper)) return kNaN;
  return p <= 0.5 ? lower + p * (upper - lower) : upper - (1.0 - p) * (upper - lower);
}

double GetInvUniformUpper(double q, double lower, double upper) {
  if (std::isnan(q) || q < 0.0 || q > 1.0 || InvalidBounds(lower, upper)) return kNaN;
  return q <= 0.5 ? upper - q * (upper - lower) : lower + (1.0 - q) * (upper - lower);
}

double UniformDensity(double x, double lower, double upper) {
  if (std::isnan(x) || InvalidBounds(lower, upper)) return kNaN;
  return x < lower || x > upper ? 0.0 : 1.0 / (upper - lower);
}

}  // namespace orvik::stats
