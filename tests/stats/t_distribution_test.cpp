#include "stats/t_distribution.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "stats/normal_distribution.h"
#include "distribution_checks.h"

namespace orvik::stats {
namespace {

constexpr long double kPi = 3.141592653589793238462643383279502884L;

// Closed forms: df = 1 is the Cauchy distribution, P(T > t) = atan(1/t) / pi
// for t > 0; df = 2 has P(T > t) = (1 - t / sqrt(2 + t^2)) / 2
//                               = 1 / (sqrt(2 + t^2) (sqrt(2 + t^2) + t)).
TEST(TDistribution, ClosedFormsForOneAndTwoDegrees) {
  for (const double t_double : {1e-8, 0.3, 1.0, 7.0, 1e4, 1e15, 1e200}) {
    const long double t = t_double;
    const long double cauchy = std::atan(1.0L / t) / kPi;
    EXPECT_LE(RelativeError(GetDFTUpper(double(t), 1.0), cauchy), 2e-15) << "t = " << double(t);
    EXPECT_LE(RelativeError(GetDFT(double(-t), 1.0), cauchy), 2e-15) << "t = " << double(t);
    EXPECT_LE(RelativeError(GetDFT(double(t), 1.0), 1.0L - cauchy), 2e-16) << "t = " << double(t);
    if (t < 1e100L) {
      const long double root = std::sqrt(2.0L + t * t);
      EXPECT_LE(RelativeError(GetDFTUpper(double(t), 2.0), 1.0L / (root * (root + t))), 2e-15) << "t = " << double(t);
    }
  }
}

TEST(TDistribution, QuantileClosedForms) {
  for (const double p_double : {1e-300, 1e-30, 1e-5, 0.1, 0.3, 0.4999, 0.5 + 1e-12, 0.6, 0.975, 0.999999}) {
    const long double p = p_double;
    // tan(pi (p - 1/2)) = -1 / tan(pi p), which keeps tiny p.
    const long double cauchy = p < 0.5L ? -1.0L / std::tan(kPi * p) : std::tan(kPi * (p - 0.5L));
    EXPECT_LE(RelativeError(GetInvT(double(p), 1.0), cauchy), 1e-14) << "p = " << double(p);
    if (p > 1e-100L) {
      const long double two = (2.0L * p - 1.0L) / std::sqrt(2.0L * p * (1.0L - p));
      EXPECT_LE(RelativeError(GetInvT(double(p), 2.0), two), 1e-14) << "p = " << double(p);
    }
    EXPECT_EQ(GetInvTUpper(double(p), 7.5), -GetInvT(double(p), 7.5));
  }
  // The 95 % two-sided value for 4 degrees of freedom, to the last bit.
  EXPECT_LE(RelativeError(GetInvTUpper(0.025, 4.0), 2.7764451051977943L), 2e-16);
}

TEST(TDistribution, InfiniteDegreesOfFreedomIsNormal) {
  for (double t : {-6.0, -0.5, 2.0, 30.0}) {
    EXPECT_EQ(GetDFT(t, kInf), GetDFNormal(t, 0.0, 1.0));
    EXPECT_EQ(GetDFTUpper(t, kInf), GetDFNormalUpper(t, 0.0, 1.0));
  }
  EXPECT_EQ(GetInvT(0.975, kInf), GetInvNormal(0.975));
  // Far out, 1e7 degrees of freedom are still distinguishable from normal.
  EXPECT_GT(GetDFTUpper(10.0, 1e7) / GetDFNormalUpper(10.0, 0.0, 1.0), 1.0 + 1e-7);
}

}  // namespace
}  // namespace orvik::stats
