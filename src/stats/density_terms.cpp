#include "stats/density_terms.h"

#include <array>
#include <cmath>

namespace orvik::stats::detail {

namespace {

constexpr double kTwoPi = 6.28318530717958647693;
constexpr double kSqrtTwoPi = 2.50662827463100050242;

// delta(z) = ln Gamma(z) - (z - 1/2) ln z + z - ln sqrt(2 pi).
double StirlingError(double z) {
  if (z >= 15.0) {
    const double r = 1.0 / z;
    const double r2 = r * r;
    // B2n / (2n (2n - 1) z^(2n - 1)) for n = 1..7.
    return r * (1.0 / 12 +
                r2 * (-1.0 / 360 +
                      r2 * (1.0 / 1260 + r2 * (-1.0 / 1680 + r2 * (1.0 / 1188 + r2 * (-691.0 / 360360 +
                                                                                      r2 * (1.0 / 156)))))));
  }
  return std::log(StirlingFactor(z));
}

}  // namespace

double StirlingFactor(double z) {
  if (z >= 15.0) return std::exp(StirlingError(z));
  const auto direct = [](double v) { return std::tgamma(v) * std::exp(v) / (kSqrtTwoPi * std::pow(v, v - 0.5)); };
  // Whole and half-whole arguments (whole degrees of freedom) from a table.
  static const std::array<double, 30> halves = [&direct] {
    std::array<double, 30> t{};
    for (int k = 0; k < 30; ++k) t[k] = direct(0.5 * (k + 1));
    return t;
  }();
  const double twice = 2.0 * z;
  if (twice == std::floor(twice)) return halves[static_cast<int>(twice) - 1];
  return direct(z);
}

DD Bd0(DD k, DD m) {
  const DD d = k - m;
  const DD s = k + m;
  const double v = d.hi / s.hi;
  if (std::fabs(v) < 0.1) {
    // (k - m) v = (k - m)^2 / (k + m) carries the magnitude; the rest is at
    // most a thirtieth of it and needs only double precision.
    const DD lead = d * d / s;
    const double w = v * v;
    double series = 0.0;
    for (int j = 9; j >= 0; --j) series = series * w + 1.0 / (2 * j + 3);
    return lead + 2.0 * k.hi * v * w * series;
  }
  const DD ratio = k / m;
  const DD log_ratio = std::isnormal(ratio.hi) ? LogDD(ratio) : LogDD(k) - LogDD(m);
  return k * log_ratio + (m - k);
}

double GammaPowerTerm(double a, DD x) {
  if (x.hi <= 0.0 || std::isinf(x.hi)) return 0.0;
  const DD e = Bd0(DD{a, 0.0}, x);
  return ExpDD(-e) / (std::sqrt(kTwoPi * a) * StirlingFactor(a));
}

double BetaPowerTerm(double a, double b, DD x, DD y) {
  if (x.hi <= 0.0 || y.hi <= 0.0) return 0.0;
  const DD n = TwoSum(a, b);
  // x^a y^b n^n / (a^a b^b) = exp(-(bd0(a, n x) + bd0(b, n y))) because
  // n x + n y = a + b; the rest of 1 / B(a, b) is Stirling's form.
  const DD e = Bd0(DD{a, 0.0}, n * x) + Bd0(DD{b, 0.0}, n * y);
  const double scale = std::sqrt(a / n.hi) * std::sqrt(b / kTwoPi) * StirlingFactor(n.hi) /
                       (StirlingFactor(a) * StirlingFactor(b));
  return ExpDD(-e) * scale;
}

double LogInverseABeta(double a, double b) {
  const double n = a + b;
  // 1 / B(a, b) = sqrt(a b / (2 pi n)) n^n / (a^a b^b) e^(delta(n) - delta(a) - delta(b))
  // with n^n / (a^a b^b) = (n / a)^a (1 + a / b)^b.
  const DD log_n_over_a = LogDD(n) - LogDD(a);
  const double power = (log_n_over_a * a).hi + b * std::log1p(a / b);
  return power + 0.5 * std::log(a * b / (kTwoPi * n)) + StirlingError(n) - StirlingError(a) - StirlingError(b) -
         std::log(a);
}

}  // namespace orvik::stats::detail
