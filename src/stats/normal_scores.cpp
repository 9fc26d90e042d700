// Normal scores: E[X(i:n)] = integral of x g(x) dx with the density of the
// i-th order statistic
//   g(x) = n C(n-1, i-1) Phi(x)^(i-1) (1 - Phi(x))^(n-i) phi(x)
// (David and Nagaraja, Order Statistics, 3rd ed., 2003, eq. 2.1.6).
//
// Method: g is evaluated in logarithms, with both tails of Phi taken
// directly, so that n = 5,000 and beyond neither overflow nor cancel. g is
// smooth and decays faster than any exponential, so the trapezoidal rule on
// an interval outside which g < e^-60 of its peak converges geometrically in
// the step (Trefethen and Weideman, "The exponentially convergent
// trapezoidal rule", SIAM Review 56, 2014); the step is halved until the
// mean settles to 1e-14. The mean is the ratio of the integrals of x g and
// g, which removes the binomial constant and most of the discretisation
// error. The interval is centred on Blom's approximation
// Phi^-1((i - 3/8) / (n + 1/4)) with the spread of the order statistic as
// its unit; a score costs about a hundred evaluations of the normal tail.

#include "stats/normal_scores.h"

#include <cmath>
#include <stdexcept>
#include <string>

#include "stats/decimal_numbers.h"
#include "stats/normal_distribution.h"

namespace orvik::stats {

namespace {

// Beyond this the spread of a middle order statistic nears the spacing of
// doubles around its mean.
constexpr double kLargestSample = 1e8;

bool IsWhole(double v) { return std::isfinite(v) && v == std::floor(v); }

// ln of g(x) without its constant factor.
double LogDensity(double x, double below, double above) {
  double log_lower = 0.0;
  double log_upper = 0.0;
  if (x <= 0.0) {
    const double lower = detail::NormalUpper(-x);
    log_lower = std::log(lower);
    log_upper = std::log1p(-lower);
  } else {
    const double upper = detail::NormalUpper(x);
    log_lower = std::log1p(-upper);
    log_upper = std::log(upper);
  }
  double result = -0.5 * x * x;
  if (below > 0.0) result += below * log_lower;
  if (above > 0.0) result += above * log_upper;
  return result;
}

// The score of rank i < (n + 1) / 2.
double LowerHalfScore(double i, double n) {
  const double below = i - 1.0;
  const double above = n - i;
  const double p = (i - 0.375) / (n + 0.25);
  const double centre = GetInvNormal(p);
  const double spread = std::sqrt(p * (1.0 - p) / (n + 2.0)) / detail::NormalDensity(centre);
  const double peak = LogDensity(centre, below, above);
  constexpr double kDrop = 60.0;
  double left = centre;
  do left -= spread; while (LogDensity(left, below, above) > peak - kDrop);
  double right = centre;
  do right += spread; while (LogDensity(right, below, above) > peak - kDrop);

  const auto weight = [&](double x) { return std::exp(LogDensity(x, below, above) - peak); };
  int panels = static_cast<int>(std::ceil((right - left) / spread)) * 2;
  double h = (right - left) / panels;
  double mass = 0.0;
  double moment = 0.0;
  for (int k = 1; k < panels; ++k) {
    const double x = left + k * h;
    const double w = weight(x);
    mass += w;
    moment += w * x;
  }
  double mean = moment / mass;
  for (int refinement = 0; refinement < 12; ++refinement) {
    for (int k = 1; k < 2 * panels; k += 2) {
      const double x = left + k * 0.5 * h;
      const double w = weight(x);
      mass += w;
      moment += w * x;
    }
    panels *= 2;
    h *= 0.5;
    const double refined = moment / mass;
    const bool settled = std::fabs(refined - mean) <= 1e-14 * std::fabs(refined) + 1e-16;
    mean = refined;
    if (settled) break;
  }
  return mean;
}

}  // namespace

double NormalScore(double i, double n) {
  if (!IsWhole(i) || !IsWhole(n) || n < 1.0 || i < 1.0 || i > n || n > kLargestSample)
    throw std::out_of_range("rank " + FormatNumber(i) + " of sample size " + FormatNumber(n) +
                            " is not a whole rank between 1 and the sample size (at most 1E+08)");
  if (2.0 * i == n + 1.0) return 0.0;
  if (2.0 * i > n + 1.0) return -LowerHalfScore(n + 1.0 - i, n);
  return LowerHalfScore(i, n);
}

}  // namespace orvik::stats
