// The F distribution.
//
// Method: P(X <= f) = I_x(df1/2, df2/2) with x = df1 f / (df1 f + df2) and
// 1 - x = df2 / (df1 f + df2) (Abramowitz and Stegun 26.6.2), both formed in
// double-double from f and the degrees of freedom and handed to the
// incomplete beta function, which computes each tail directly. Where df1 f
// leaves the double range the leading series term in logarithms takes over;
// from 1e100 degrees of freedom on a side is infinite, and the distribution
// is a scaled chi-square (incomplete gamma function) or its reciprocal.
//
// Quantile: Newton's method in ln f (quantile_solver.h) on the tail holding
// the target. Starting value: Paulson's normal approximation to the cube root
// of F (Abramowitz and Stegun 26.6.15) solved for f, or, for small degrees
// of freedom far in a tail, the inverted leading term of that tail's series.

#include "stats/f_distribution.h"

#include <cmath>
#include <limits>

#include "stats/density_terms.h"
#include "stats/incomplete_beta.h"
#include "stats/incomplete_gamma.h"
#include "stats/normal_distribution.h"
#include "stats/quantile_solver.h"

namespace orvik::stats {

namespace {

using detail::DD;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kInfiniteDf = 1e100;

struct FTails {
  double lower = 0.0;
  double upper = 1.0;
  double power = 0.0;  // f times the density at f
};

bool InvalidDf(double df) { return std::isnan(df) || !(df > 0.0); }

FTails Tails(double f, double df1, double df2) {
  if (f <= 0.0) return {0.0, 1.0, 0.0};
  if (std::isinf(f)) return {1.0, 0.0, 0.0};
  const double a = 0.5 * df1;
  const double b = 0.5 * df2;
  const bool infinite1 = df1 >= kInfiniteDf;
  const bool infinite2 = df2 >= kInfiniteDf;
  if (infinite1 && infinite2) return f >= 1.0 ? FTails{1.0, 0.0, 0.0} : FTails{0.0, 1.0, 0.0};
  if (infinite2) {
    const detail::GammaTails g = detail::IncompleteGamma(a, detail::TwoProduct(a, f));
    return {g.lower, g.upper, a * g.power};
  }
  if (infinite1) {
    const detail::GammaTails g = detail::IncompleteGamma(b, detail::Quotient(b, f));
    return {g.upper, g.lower, b * g.power};
  }
  const DD product = detail::TwoProduct(df1, f);
  if (product.hi > 1e300) {
    // 1 - x = df2 / (df1 f) to double precision.
    const DD log_y = detail::LogDD(df2) - detail::LogDD(df1) - detail::LogDD(f);
    const detail::BetaTails r = detail::IncompleteBetaTinyX(b, a, log_y);
    return {r.upper, r.lower, r.power};
  }
  if (product.hi < 1e-280) {
    const DD log_x = detail::LogDD(df1) + detail::LogDD(f) - detail::LogDD(df2);
    const detail::BetaTails r = detail::IncompleteBetaTinyX(a, b, log_x);
    return {r.lower, r.upper, r.power};
  }
  const DD denominator = product + df2;
  // The smaller of x and y by division, the other as its exact complement.
  DD x, y;
  if (product.hi < df2) {
    x = product / denominator;
    y = DD{1.0, 0.0} - x;
  } else {
    y = DD{df2, 0.0} / denominator;
    x = DD{1.0, 0.0} - y;
  }
  const detail::BetaTails r = detail::IncompleteBeta(a, b, x, y);
  return {r.lower, r.upper, r.power};
}

// Paulson: z = ((1 - B) w - (1 - A)) / sqrt(B w^2 + A), w = f^(1/3),
// A = 2 / (9 df1), B = 2 / (9 df2), solved for w; 0 when it has no root.
double PaulsonQuantile(double z, double df1, double df2) {
  const double A = 2.0 / (9.0 * df1);
  const double B = 2.0 / (9.0 * df2);
  const double alpha = (1.0 - B) * (1.0 - B) - z * z * B;
  const double beta = -2.0 * (1.0 - A) * (1.0 - B);
  const double gamma = (1.0 - A) * (1.0 - A) - z * z * A;
  const double discriminant = beta * beta - 4.0 * alpha * gamma;
  if (alpha <= 0.0 || discriminant < 0.0) return 0.0;
  const double root = std::sqrt(discriminant);
  const double w = z >= 0.0 ? (-beta + root) / (2.0 * alpha) : (-beta - root) / (2.0 * alpha);
  return w > 0.0 ? w * w * w : 0.0;
}

double StartingQuantile(double p, double q, double df1, double df2) {
  const bool lower = p <= q;
  const double z = lower ? GetInvNormal(p) : GetInvNormalUpper(q);
  const double paulson = PaulsonQuantile(z, df1, df2);
  if (df1 >= kInfiniteDf || df2 >= kInfiniteDf) return paulson > 0.0 ? paulson : 1.0;
  const double a = 0.5 * df1;
  const double b = 0.5 * df2;
  const double log_beta = -(detail::LogInverseABeta(a, b) + std::log(a));
  // Leading tail terms: P ~ (df1 f / df2)^a / (a B), Q ~ (df2 / (df1 f))^b / (b B).
  const double power_law = lower ? df2 / df1 * std::exp((std::log(p * a) + log_beta) / a)
                                 : df2 / df1 * std::exp(-(std::log(q * b) + log_beta) / b);
  if (paulson <= 0.0) return power_law;
  if (lower && power_law < 0.5 * paulson) return power_law;
  if (!lower && power_law > 2.0 * paulson) return power_law;
  return paulson;
}

double Quantile(double p, double q, double df1, double df2) {
  if (df1 >= kInfiniteDf && df2 >= kInfiniteDf) return 1.0;
  const bool lower = p <= q;
  const auto tail = [&](double x) {
    const FTails t = Tails(x, df1, df2);
    const double probability = lower ? t.lower : t.upper;
    const double slope = t.power / probability;
    return detail::TailSlope{probability, lower ? slope : -slope};
  };
  const double start = StartingQuantile(p, q, df1, df2);
  return detail::SolveLogQuantile(tail, lower ? p : q, start > 0.0 && start < kInfinity ? start : 1.0, lower);
}

bool Invalid(double df1, double df2) { return InvalidDf(df1) || InvalidDf(df2); }

}  // namespace

double GetDFF(double f, double df1, double df2) {
  if (std::isnan(f) || Invalid(df1, df2)) return kNaN;
  return Tails(f, df1, df2).lower;
}

double GetDFFUpper(double f, double df1, double df2) {
  if (std::isnan(f) || Invalid(df1, df2)) return kNaN;
  return Tails(f, df1, df2).upper;
}

double GetInvF(double p, double df1, double df2) {
  if (!(p >= 0.0 && p <= 1.0) || Invalid(df1, df2)) return kNaN;
  if (p == 0.0) return 0.0;
  if (p == 1.0) return kInfinity;
  return Quantile(p, 1.0 - p, df1, df2);
}

double GetInvFUpper(double q, double df1, double df2) {
  if (!(q >= 0.0 && q <= 1.0) || Invalid(df1, df2)) return kNaN;
  if (q == 0.0) return kInfinity;
  if (q == 1.0) return 0.0;
  return Quantile(1.0 - q, q, df1, df2);
}

}  // namespace orvik::stats
