// The chi-square distribution.
//
// Method: P(X <= x) = P(df/2, x/2), the regularized incomplete gamma function
// (Abramowitz and Stegun 26.4.19), each tail computed directly
// (incomplete_gamma.h).
//
// Quantile: Newton's method in ln x (quantile_solver.h) on the tail that
// holds the target, which is then at most 1/2. Starting values as in Best
// and Roberts, Applied Statistics algorithm AS 91 (1975): the inverted
// leading series term (p Gamma(df/2 + 1))^(2/df) for small df or small p,
// otherwise the Wilson-Hilferty cube-root approximation, corrected far in
// the upper tail.

#include "stats/chi_square_distribution.h"

#include <cmath>
#include <limits>

#include "stats/incomplete_gamma.h"
#include "stats/normal_distribution.h"
#include "stats/quantile_solver.h"

namespace orvik::stats {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool InvalidDf(double df) { return std::isnan(df) || !(df > 0.0 && df < kInfinity); }

detail::GammaTails Tails(double x, double df) {
  if (x <= 0.0) return {0.0, 1.0, 0.0};
  return detail::IncompleteGamma(0.5 * df, detail::DD{0.5 * x, 0.0});
}

// Starting value for the quantile with lower tail p or upper tail q
// (the smaller one is given exactly; the other is 1 minus it).
double StartingQuantile(double p, double q, double df) {
  const double a = 0.5 * df;
  const double small_x = 2.0 * std::exp((std::log(p) + std::lgamma(a + 1.0)) / a);
  if (df < -1.24 * std::log(p)) return small_x;
  const double z = p < q ? GetInvNormal(p) : GetInvNormalUpper(q);
  const double c = 2.0 / (9.0 * df);
  const double cube = 1.0 - c + z * std::sqrt(c);
  if (cube <= 0.0) return small_x;
  double x = df * cube * cube * cube;
  if (x > 2.2 * df + 6.0) x = -2.0 * (std::log(q) - (a - 1.0) * std::log(0.5 * x) + std::lgamma(a));
  return x > 0.0 ? x : small_x;
}

double Quantile(double p, double q, double df) {
  const double a = 0.5 * df;
  const bool lower = p <= q;
  const auto tail = [&](double x) {
    const detail::GammaTails t = Tails(x, df);
    const double probability = lower ? t.lower : t.upper;
    const double slope = a * t.power / probability;
    return detail::TailSlope{probability, lower ? slope : -slope};
  };
  const double start = StartingQuantile(p, q, df);
  return detail::SolveLogQuantile(tail, lower ? p : q, start, lower);
}

}  // namespace

double GetDFChisq(double x, double df) {
  if (std::isnan(x) || InvalidDf(df)) return kNaN;
  return Tails(x, df).lower;
}

double GetDFChisqUpper(double x, double df) {
  if (std::isnan(x) || InvalidDf(df)) return kNaN;
  return Tails(x, df).upper;
}

double GetInvChisq(double p, double df) {
  if (!(p >= 0.0 && p <= 1.0) || InvalidDf(df)) return kNaN;
  if (p == 0.0) return 0.0;
  if (p == 1.0) return kInfinity;
  return Quantile(p, 1.0 - p, df);
}

double GetInvChisqUpper(double q, double df) {
  if (!(q >= 0.0 && q <= 1.0) || InvalidDf(df)) return kNaN;
  if (q == 0.0) return kInfinity;
  if (q == 1.0) return 0.0;
  return Quantile(1.0 - q, q, df);
}

}  // namespace orvik::stats
