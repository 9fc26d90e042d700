// The normal distribution.
//
// Tails: P(Z > z) = erfc(z / sqrt 2) / 2 with erfc(x) = exp(-x^2) erfcx(x).
// The factor exp(-z^2 / 2) is evaluated from z^2 / 2 held in double-double,
// so the tail keeps its relative accuracy down to 1e-300; erfcx is one
// Chebyshev series in t = (x - K) / (x + K), the mapping of R. J. Schonfelder,
// "Chebyshev expansions for the error and related functions", Math. Comp. 32
// (1978) 1232-1240. Our coefficients come from tools/erfcx_chebyshev.py
// (45-digit arithmetic); in double the series is within 6e-16 of erfcx.
//
// Near the centre, P(Z <= z) - 1/2 = phi(z) (z + z^3/3 + z^5/15 + ...), the
// series of Abramowitz and Stegun 26.2.11, whose terms are all positive.
//
// Quantile: the starting value of Abramowitz and Stegun 26.2.23 (Hastings's
// rational approximation, error below 4.5e-4) refined by Halley's method on
// the tail, or on the centred function for probabilities within 1/4 of 1/2.
// Two steps reach full precision; a third confirms it.

#include "stats/normal_distribution.h"

#include <cmath>
#include <limits>

namespace orvik::stats {

namespace detail {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInverseSqrtTwoPi = 0.398942280401432677940;
constexpr double kInverseSqrtTwo = 0.707106781186547524401;

// erfc(x) exp(x^2) (x + K) as a Chebyshev series in (x - K) / (x + K).
constexpr double kErfcxK = 3.5;
constexpr double kErfcxSeries[] = {
    3.05337554094605412e+00,  -1.32335768077711613e+00, 4.71774527464954796e-01,  -1.38493652510236764e-01,
    3.28979587596942152e-02,  -6.02784010670633780e-03, 7.45076861339429258e-04,  -2.80889581917291602e-05,
    -1.05436104418545464e-05, 2.10712561039311864e-06,  -2.84681483753136721e-09, -5.41900675513766155e-08,
    4.88726682252625976e-09,  1.21847168650878570e-09,  -2.23350693123417431e-10, -2.86593929922318657e-11,
    8.51077924732222469e-12,  8.02004856904715264e-13,  -3.19184683481062961e-13, -2.94152439426043048e-14,
    1.21760273064576695e-14,  1.38479516910958175e-15,  -4.66042570679944464e-16, -7.48083901435196420e-17,
    1.70583862286533047e-17,  4.20227347300133355e-18,  -5.32445680659631661e-19, -2.31230869250549954e-19,
};

// exp(x^2) erfc(x) for x >= 0.
double ScaledErfc(double x) {
  const double t = (x - kErfcxK) / (x + kErfcxK);
  double b1 = 0.0;
  double b2 = 0.0;
  constexpr int kTerms = sizeof kErfcxSeries / sizeof kErfcxSeries[0];
  for (int j = kTerms - 1; j >= 1; --j) {
    const double b0 = 2.0 * t * b1 - b2 + kErfcxSeries[j];
    b2 = b1;
    b1 = b0;
  }
  return (t * b1 - b2 + 0.5 * kErfcxSeries[0]) / (x + kErfcxK);
}

// z^2 / 2 in double-double.
DD HalfSquare(DD z) {
  DD square = TwoProduct(z.hi, z.hi);
  square = square + 2.0 * z.hi * z.lo;
  return {0.5 * square.hi, 0.5 * square.lo};
}

}  // namespace

double NormalUpper(DD z) {
  if (std::isnan(z.hi)) return kNaN;
  if (z.hi < 0.0) return 1.0 - NormalUpper(-z);
  if (z.hi > 40.0) return 0.0;
  return 0.5 * ExpDD(-HalfSquare(z)) * ScaledErfc(z.hi * kInverseSqrtTwo);
}

double NormalCentered(double z) {
  if (std::fabs(z) > 1.0) return z > 0.0 ? 0.5 - NormalUpper(z) : NormalUpper(-z) - 0.5;
  const double z2 = z * z;
  // sum z^2k / (2k + 1)!! = 1 + z^2/3 (1 + z^2/5 (1 + ...)); 1 / (2k + 1)!!
  // falls below 1e-17 at k = 15.
  double series = 0.0;
  for (int k = 16; k >= 1; --k) series = 1.0 + series * z2 / (2 * k + 1);
  return NormalDensity(z) * z * series;
}

double NormalDensity(double z) {
  if (std::fabs(z) > 40.0) return 0.0;
  return kInverseSqrtTwoPi * ExpDD(-HalfSquare(DD{z, 0.0}));
}

}  // namespace detail

namespace {

using detail::DD;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// (x - mean) / sd in double-double.
DD Standardize(double x, double mean, double sd) {
  const double difference = x - mean;
  if (!std::isfinite(difference) || !std::isfinite(difference / sd)) return {difference / sd, 0.0};
  return detail::TwoSum(x, -mean) / DD{sd, 0.0};
}

bool ValidScale(double sd) { return sd > 0.0 && std::isfinite(sd); }

// Abramowitz and Stegun 26.2.23: z with P(Z > z) close to q, for 0 < q <= 1/2.
double StartingQuantile(double q) {
  const double t = std::sqrt(-2.0 * std::log(q));
  return t - (2.515517 + t * (0.802853 + t * 0.010328)) / (1.0 + t * (1.432788 + t * (0.189269 + t * 0.001308)));
}

// z > 0 with P(Z > z) = q, for 0 < q <= 1/4.
double UpperQuantile(double q) {
  double z = StartingQuantile(q);
  for (int iteration = 0; iteration < 6; ++iteration) {
    const double error = detail::NormalUpper(z) - q;
    const double step = error / (detail::NormalDensity(z) - 0.5 * error * z);
    z += step;
    if (std::fabs(step) <= 1e-15 * z) break;
  }
  return z;
}

// z with P(Z <= z) - 1/2 = c, for |c| <= 1/4.
double CentralQuantile(double c) {
  if (c == 0.0) return 0.0;
  double z = c > 0.0 ? StartingQuantile(0.5 - c) : -StartingQuantile(0.5 + c);
  for (int iteration = 0; iteration < 6; ++iteration) {
    const double error = detail::NormalCentered(z) - c;
    const double step = error / (detail::NormalDensity(z) + 0.5 * error * z);
    z -= step;
    if (std::fabs(step) <= 1e-15 * std::fabs(z)) break;
  }
  return z;
}

}  // namespace

double GetDFNormal(double x, double mean, double sd) {
  if (std::isnan(x) || std::isnan(mean) || !ValidScale(sd)) return kNaN;
  return detail::NormalUpper(-Standardize(x, mean, sd));
}

double GetDFNormalUpper(double x, double mean, double sd) {
  if (std::isnan(x) || std::isnan(mean) || !ValidScale(sd)) return kNaN;
  return detail::NormalUpper(Standardize(x, mean, sd));
}

double GetInvNormal(double p) {
  if (!(p >= 0.0 && p <= 1.0)) return kNaN;
  if (p == 0.0) return -kInfinity;
  if (p == 1.0) return kInfinity;
  if (p < 0.25) return -UpperQuantile(p);
  if (p > 0.75) return UpperQuantile(1.0 - p);  // exact: p > 1/2
  return CentralQuantile(p - 0.5);               // exact: 1/4 <= p <= 3/4
}

double GetInvNormalUpper(double q) { return -GetInvNormal(q); }

}  // namespace orvik::stats
