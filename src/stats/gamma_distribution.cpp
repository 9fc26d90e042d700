// The gamma distribution.
//
// Method: P(X <= x) = P(a, x / s) and P(X > x) = Q(a, x / s), the regularized
// incomplete gamma functions (incomplete_gamma.h), with x / s carried in
// double-double so that the quotient adds no rounding of its own. The
// quantiles are those of the chi-square distribution with 2a degrees of
// freedom, scaled by s / 2 (a chi-square variable with 2a degrees of freedom
// is twice a standard gamma variable of shape a), which solves for them in
// ln x on the tail that holds the target (chi_square_distribution.h).

#include "stats/gamma_distribution.h"

#include <cmath>
#include <limits>

#include "stats/chi_square_distribution.h"
#include "stats/density_terms.h"
#include "stats/incomplete_gamma.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool InvalidParameter(double v) { return std::isnan(v) || !(v > 0.0 && v < HUGE_VAL); }
bool Invalid(double v, double shape, double scale) {
  return std::isnan(v) || InvalidParameter(shape) || InvalidParameter(scale);
}

detail::GammaTails Tails(double x, double shape, double scale) {
  if (x <= 0.0) return {0.0, 1.0, 0.0};
  return detail::IncompleteGamma(shape, detail::Quotient(x, scale));
}

}  // namespace

double GetDFGamma(double x, double shape, double scale) {
  if (Invalid(x, shape, scale)) return kNaN;
  return Tails(x, shape, scale).lower;
}

double GetDFGammaUpper(double x, double shape, double scale) {
  if (Invalid(x, shape, scale)) return kNaN;
  return Tails(x, shape, scale).upper;
}

double GetInvGamma(double p, double shape, double scale) {
  if (Invalid(p, shape, scale)) return kNaN;
  return 0.5 * scale * GetInvChisq(p, 2.0 * shape);
}

double GetInvGammaUpper(double q, double shape, double scale) {
  if (Invalid(q, shape, scale)) return kNaN;
  return 0.5 * scale * GetInvChisqUpper(q, 2.0 * shape);
}

double GammaDensity(double x, double shape, double scale) {
  if (Invalid(x, shape, scale)) return kNaN;
  if (x < 0.0) return 0.0;
  if (x == 0.0) return shape < 1.0 ? HUGE_VAL : shape == 1.0 ? 1.0 / scale : 0.0;
  // x f(x) = a x^a e^-x / Gamma(a + 1) in the standard variable x / s.
  const detail::DD standard = detail::Quotient(x, scale);
  return shape * detail::GammaPowerTerm(shape, standard) / x;
}

}  // namespace orvik::stats
