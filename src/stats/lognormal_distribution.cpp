// The lognormal distribution: P(X <= x) = Phi((ln x - mu) / sigma), each
// tail from the normal distribution's own tail (normal_distribution.h), the
// quantiles exp(mu + sigma z) from the normal quantile of the tail given.

#include "stats/lognormal_distribution.h"

#include <cmath>
#include <limits>

#include "stats/normal_distribution.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool Invalid(double v, double mu, double sigma) {
  return std::isnan(v) || !std::isfinite(mu) || !(sigma > 0.0 && sigma < HUGE_VAL);
}

}  // namespace

double GetDFLognormal(double x, double mu, double sigma) {
  if (Invalid(x, mu, sigma)) return kNaN;
  if (x <= 0.0) return 0.0;
  return GetDFNormal(std::log(x), mu, sigma);
}

double GetDFLognormalUpper(double x, double mu, double sigma) {
  if (Invalid(x, mu, sigma)) return kNaN;
  if (x <= 0.0) return 1.0;
  return GetDFNormalUpper(std::log(x), mu, sigma);
}

double GetInvLognormal(double p, double mu, double sigma) {
  if (Invalid(p, mu, sigma) || p < 0.0 || p > 1.0) return kNaN;
  return std::exp(mu + sigma * GetInvNormal(p));
}

double GetInvLognormalUpper(double q, double mu, double sigma) {
  if (Invalid(q, mu, sigma) || q < 0.0 || q > 1.0) return kNaN;
  return std::exp(mu + sigma * GetInvNormalUpper(q));
}

double LognormalDensity(double x, double mu, double sigma) {
  if (Invalid(x, mu, sigma)) return kNaN;
  if (x <= 0.0) return 0.0;
  return detail::NormalDensity((std::log(x) - mu) / sigma) / (sigma * x);
}

}  // namespace orvik::stats
