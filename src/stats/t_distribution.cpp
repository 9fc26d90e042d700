// Student's t distribution.
//
// Method: for u >= 0, P(T > u) = I_x(df/2, 1/2) / 2 and
// P(|T| < u) = I_y(1/2, df/2) with x = df / (df + u^2), y = u^2 / (df + u^2)
// (Abramowitz and Stegun 26.7.1), both from the incomplete beta function,
// which computes each of the pair directly. x and y are formed in
// double-double from u and df, so even at df = 1e7, where the tail is
// (1 - y)^(df/2) to within a factor, no digits are lost. Beyond u = 1e150
// the leading term of the series, (df / u^2)^(df/2) / (df B(df/2, 1/2)), is
// exact to double precision; from df = 1e100 on, the distribution is the
// normal one to double precision.
//
// Quantile: Newton's method in ln u (quantile_solver.h) on the tail, or on
// the centred probability P(|T| < u) = |2p - 1| when p is within 1/4 of 1/2,
// where 2p - 1 is exact. Starting values: the Cornish-Fisher expansion of t
// about the normal quantile (Abramowitz and Stegun 26.7.5) where the tail is
// near-normal, and the inverted leading tail term where it is a power law.

#include "stats/t_distribution.h"

#include <cmath>
#include <limits>

#include "stats/density_terms.h"
#include "stats/incomplete_beta.h"
#include "stats/normal_distribution.h"
#include "stats/quantile_solver.h"

namespace orvik::stats {

namespace {

using detail::DD;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNormalLimit = 1e100;

struct TTail {
  double tail = 0.5;    // P(T > u)
  double centre = 0.0;  // P(|T| < u)
  double power = 0.0;   // u times the density at u
};

// 1 / (a B(a, b)) in logarithms, a = 1/2, b = df/2: the density at 0 is
// exp(this) / (2 sqrt(df)).
double LogDensityAtZeroScaled(double df) { return detail::LogInverseABeta(0.5, 0.5 * df); }

TTail Tail(double u, double df) {
  if (u == 0.0) return {0.5, 0.0, 0.0};
  if (std::isinf(u)) return {0.0, 1.0, 0.0};
  if (df >= kNormalLimit) {
    const double tail = detail::NormalUpper(u);
    return {tail, u > 1.0 ? 1.0 - 2.0 * tail : 2.0 * detail::NormalCentered(u), u * detail::NormalDensity(u)};
  }
  if (u < 1e-100) {
    // P(|T| < u) = 2 f(0) u to within a relative u^2.
    const double density_at_zero = 0.5 * std::exp(LogDensityAtZeroScaled(df)) / std::sqrt(df);
    return {0.5, 2.0 * density_at_zero * u, density_at_zero * u};
  }
  if (u > 1e150) {
    const DD log_x = detail::LogDD(df) - detail::LogDD(u) * 2.0;
    const detail::BetaTails r = detail::IncompleteBetaTinyX(0.5 * df, 0.5, log_x);
    return {0.5 * r.lower, r.upper, r.power};
  }
  const DD u2 = detail::TwoProduct(u, u);
  const DD denominator = u2 + df;
  // The smaller of x and y by division, the other as its exact complement.
  DD x, y;
  if (u2.hi < df) {
    y = u2 / denominator;
    x = DD{1.0, 0.0} - y;
  } else {
    x = DD{df, 0.0} / denominator;
    y = DD{1.0, 0.0} - x;
  }
  const detail::BetaTails r = detail::IncompleteBeta(0.5 * df, 0.5, x, y);
  return {0.5 * r.lower, r.upper, r.power};
}

bool InvalidDf(double df) { return std::isnan(df) || !(df > 0.0); }

// Starting value for u > 0 with P(T > u) = q, q <= 1/2.
double StartingQuantile(double q, double df) {
  const double z = GetInvNormalUpper(q);
  const double z2 = z * z;
  const double cornish_fisher =
      z + z * (z2 + 1.0) / (4.0 * df) + z * ((5.0 * z2 + 16.0) * z2 + 3.0) / (96.0 * df * df);
  // P(T > u) ~ (df / u^2)^(df/2) / (df B(df/2, 1/2)) for u^2 >> df.
  const double log_beta = -(LogDensityAtZeroScaled(df) + std::log(0.5));
  const double power_law = std::sqrt(df) * std::exp(-(std::log(q) + std::log(df) + log_beta) / df);
  if (std::isfinite(power_law) && power_law * power_law > 3.0 * df) return power_law;
  return cornish_fisher > 0.0 ? cornish_fisher : std::fmax(z, 1e-300);
}

// u > 0 with P(T > u) = q, for 0 < q <= 1/4.
double UpperQuantile(double q, double df) {
  const auto tail = [df](double x) {
    const TTail t = Tail(x, df);
    return detail::TailSlope{t.tail, -t.power / t.tail};
  };
  return detail::SolveLogQuantile(tail, q, StartingQuantile(q, df), false);
}

// u > 0 with P(|T| < u) = c, for 0 < c <= 1/2.
double CentralQuantile(double c, double df) {
  const auto centre = [df](double x) {
    const TTail t = Tail(x, df);
    return detail::TailSlope{t.centre, 2.0 * t.power / t.centre};
  };
  const double start = c < 1e-3 ? 0.5 * c * std::sqrt(df) / std::exp(LogDensityAtZeroScaled(df) - std::log(2.0))
                                : StartingQuantile(0.5 - 0.5 * c, df);
  return detail::SolveLogQuantile(centre, c, start, true);
}

}  // namespace

double GetDFT(double t, double df) {
  if (std::isnan(t) || InvalidDf(df)) return kNaN;
  const TTail r = Tail(std::fabs(t), df);
  return t < 0.0 ? r.tail : 0.5 + 0.5 * r.centre;
}

double GetDFTUpper(double t, double df) {
  if (std::isnan(t) || InvalidDf(df)) return kNaN;
  const TTail r = Tail(std::fabs(t), df);
  return t > 0.0 ? r.tail : 0.5 + 0.5 * r.centre;
}

double GetInvT(double p, double df) {
  if (!(p >= 0.0 && p <= 1.0) || InvalidDf(df)) return kNaN;
  if (p == 0.0) return -kInfinity;
  if (p == 1.0) return kInfinity;
  if (p == 0.5) return 0.0;
  if (df >= kNormalLimit) return GetInvNormal(p);
  const double sign = p < 0.5 ? -1.0 : 1.0;
  if (p >= 0.25 && p <= 0.75) return sign * CentralQuantile(std::fabs(2.0 * p - 1.0), df);
  return sign * UpperQuantile(p < 0.5 ? p : 1.0 - p, df);
}

double GetInvTUpper(double q, double df) { return -GetInvT(q, df); }

}  // namespace orvik::stats
