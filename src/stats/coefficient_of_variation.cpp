// The sample coefficient of variation of normal subgroups.
//
// Method: for n normal values with mean mu > 0 and CV gamma = sigma / mu,
// sqrt(n) / CV-hat = sqrt(n) x-bar / s follows a noncentral t distribution
// with n - 1 degrees of freedom and noncentrality delta = sqrt(n) / gamma
// (Iglewicz, Myers and Howe 1968; McKay 1932 for the sample CV; Kang, Lee,
// Seong and Hawkins, Journal of Quality Technology 39(2), 2007, for the
// control chart). Writing x-bar and s through Z = sqrt(n) x-bar / sigma,
// normal with mean delta, and W = (n - 1) s^2 / sigma^2, chi-square with
// nu = n - 1 degrees of freedom, the density of CV-hat at c > 0 is
//   f(c) = 2 (nu / 2n)^(nu/2) / Gamma(nu/2) c^(nu-1)
//          * (1 / sqrt(2 pi)) Int_0^inf z^nu exp(-(z - delta)^2 / 2 - a z^2) dz
// with a = nu c^2 / 2n. Completing the square turns the integral into
// exp(-a delta^2 / (1 + 2a)) s E[X^nu; X > 0] for X normal with mean
// m = delta / (1 + 2a) and standard deviation s = 1 / sqrt(1 + 2a), and that
// truncated moment follows exactly from the recurrence
//   E[X^k; X > 0] = m E[X^(k-1); X > 0] + (k - 1) s^2 E[X^(k-2); X > 0],
// started from Phi(m / s) and m Phi(m / s) + s phi(m / s). Everything is
// summed in logarithms, so noncentralities of 10^5 (a CV of 0.0001) and
// densities far in the tails neither overflow nor underflow early. For c < 0
// the same holds with delta replaced by -delta.
#include "stats/coefficient_of_variation.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

#include "stats/normal_distribution.h"
#include "stats/quantile_solver.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLogTwo = 0.69314718055994530942;
constexpr double kInvSqrtTwoPi = 0.39894228040143267794;
constexpr int kChartIntervals = 10000;
constexpr double kChartAlpha = 0.0027;

thread_local double in_control_cv = kNaN;

bool ValidSize(double n) { return n >= 2.0 && n == std::floor(n) && n < 1e6; }
bool ValidCV(double cv) { return cv > 0.0 && std::isfinite(cv); }

// ln E[X^k; X > 0] for X normal with mean m and standard deviation s > 0;
// -infinity where the moment is 0 to double precision; k >= 1. For m / s >= 1 the
// recurrence runs on E[X^k; X > 0] / m^k, whose terms are all positive;
// below it on E[X^k; X > 0] / s^k. Both are rescaled as they grow, so large
// k cannot overflow.
double LogPositiveMoment(int k, double m, double s) {
  const double t = m / s;
  const double below = detail::NormalUpper(-t);  // Phi(t)
  const double density = kInvSqrtTwoPi * std::exp(-0.5 * t * t);
  const bool scaled_by_mean = t >= 1.0;
  const double r2 = scaled_by_mean ? 1.0 / (t * t) : 0.0;
  double previous = below;
  double current = scaled_by_mean ? below + density / t : t * below + density;
  double log_scale = 0.0;
  for (int j = 2; j <= k; ++j) {
    const double next = scaled_by_mean ? current + (j - 1) * r2 * previous : t * current + (j - 1) * previous;
    previous = current;
    current = next;
    if (current > 1e200) {
      previous *= 1e-200;
      current *= 1e-200;
      log_scale += 200.0 * std::log(10.0);
    }
  }
  if (!(current > 0.0)) return -HUGE_VAL;
  return k * std::log(scaled_by_mean ? m : s) + std::log(current) + log_scale;
}

// The density of the sample CV for one subgroup size and in-control CV, with
// the factors that do not depend on c worked out once.
class CVDensityTerms {
 public:
  CVDensityTerms(double n, double cv)
      : n_(n),
        nu_(n - 1.0),
        cv_(cv),
        delta_(std::sqrt(n) / cv),
        log_constant_(kLogTwo + 0.5 * nu_ * std::log(nu_ / (2.0 * n)) - std::lgamma(0.5 * nu_)) {}

  double Delta() const { return delta_; }

  double operator()(double c) const {
    if (std::isnan(c)) return kNaN;
    const double size = std::fabs(c);
    if (std::isinf(size)) return 0.0;
    if (size == 0.0 && nu_ > 1.0) return 0.0;
    const double a = nu_ * c * c / (2.0 * n_);
    const double w = 1.0 + 2.0 * a;
    const double ratio = size / cv_;
    const double exponent = 0.5 * nu_ * ratio * ratio / w;  // a delta^2 / (1 + 2a)
    const double s = 1.0 / std::sqrt(w);
    const double m = (std::signbit(c) ? -delta_ : delta_) / w;
    const double power = nu_ > 1.0 ? (nu_ - 1.0) * std::log(size) : 0.0;
    return std::exp(log_constant_ + power - exponent + std::log(s) +
                    LogPositiveMoment(static_cast<int>(nu_), m, s));
  }

 private:
  double n_;
  double nu_;
  double cv_;
  double delta_;
  double log_constant_;
};

// The mass of the sample CV above 0: P(x-bar > 0) = Phi(delta).
double PositiveMass(double delta) { return detail::NormalUpper(-delta); }

// A quantile of the positive-mean distribution, solved on the smaller tail
// with the safeguarded Newton iteration in ln x of the other distributions
// (quantile_solver.h): the lower tail is the Simpson integral over [0, x]
// divided by Phi(delta), the upper tail its complement, and the slope
// d ln tail / d ln x is x f(x) over the tail. The start is the lognormal
// approximation of the sample CV, whose log has a variance near
// (1/2 + cv^2) / (n - 1).
double SolveQuantile(double p, double n, double cv) {
  const CVDensityTerms density(n, cv);
  const double mass = PositiveMass(density.Delta());
  const bool upper = p > 0.5;
  const auto tail = [&](double x) {
    const double below = Simpson38(0.0, x, kChartIntervals, density) / mass;
    // Far beyond the quantile the complement can round to 0 or below; the
    // least positive double keeps the iteration bracketing from that side.
    const double value = std::fmax(upper ? 1.0 - below : below, DBL_MIN);
    const double slope = x * density(x) / mass / value;
    return detail::TailSlope{value, upper ? -slope : slope};
  };
  const double spread = std::sqrt((0.5 + cv * cv) / (n - 1.0));
  const double start = cv * std::exp(GetInvNormal(p) * spread);
  return detail::SolveLogQuantile(tail, upper ? 1.0 - p : p, start, !upper, 1e-12);
}

bool ValidIntervals(double intervals) {
  return intervals >= 1.0 && intervals == std::floor(intervals) && intervals <= INT_MAX;
}

}  // namespace

double CVDensity(double c, double n, double cv) {
  if (!ValidSize(n) || !ValidCV(cv)) return kNaN;
  return CVDensityTerms(n, cv)(c);
}

double Simpson38(double lower, double upper, double intervals, double n, double cv) {
  if (!std::isfinite(lower) || !std::isfinite(upper) || !ValidIntervals(intervals) || !ValidSize(n) ||
      !ValidCV(cv))
    return kNaN;
  return Simpson38(lower, upper, static_cast<int>(intervals), CVDensityTerms(n, cv));
}

void SetCVInControl(double cv) { in_control_cv = cv; }
double CVInControl() { return in_control_cv; }

double Simpson38(double lower, double upper, double intervals, double n) {
  return Simpson38(lower, upper, intervals, n, in_control_cv);
}

double CVDistribution(double c, double n, double cv) {
  if (std::isnan(c) || !ValidSize(n) || !ValidCV(cv)) return kNaN;
  if (c <= 0.0) return 0.0;
  if (std::isinf(c)) return 1.0;
  const CVDensityTerms density(n, cv);
  const double below = Simpson38(0.0, c, kChartIntervals, density) / PositiveMass(density.Delta());
  return std::fmin(below, 1.0);
}

double CVQuantile(double p, double n, double cv) {
  if (!(p > 0.0 && p < 1.0) || !ValidSize(n) || !ValidCV(cv)) return kNaN;
  return SolveQuantile(p, n, cv);
}

double CVHighBT(int n, int g) {
  if (g < 1) return kNaN;
  return CVQuantile(1.0 - 0.5 * kChartAlpha, n, g / 10000.0);
}

double CVLowBT(int n, int g) {
  if (g < 1) return kNaN;
  return CVQuantile(0.5 * kChartAlpha, n, g / 10000.0);
}

}  // namespace orvik::stats
