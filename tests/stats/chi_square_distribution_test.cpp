#include "stats/chi_square_distribution.h"
#include "distribution_checks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvik::stats {
namespace {

// Closed forms: df = 2 is exponential, P(X > x) = e^(-x/2); df = 1 has
// P(X > x) = erfc(sqrt(x / 2)); df = 4 has P(X > x) = e^(-x/2) (1 + x/2).
TEST(ChiSquareDistribution, ClosedFormsForOneTwoAndFourDegrees) {
  for (const double x_double : {1e-300, 1e-12, 0.01, 0.5, 2.0, 9.0, 80.0, 700.0, 1300.0}) {
    const long double x = x_double;
    const long double exponential = std::exp(-x / 2.0L);
    EXPECT_LE(RelativeError(GetDFChisqUpper(double(x), 2.0), exponential), 1e-15) << "x = " << double(x);
    EXPECT_LE(RelativeError(GetDFChisq(double(x), 2.0), -std::expm1(-x / 2.0L)), 1e-15) << "x = " << double(x);
    EXPECT_LE(RelativeError(GetDFChisqUpper(double(x), 4.0), exponential * (1.0L + x / 2.0L)), 1e-15);
    if (x < 1400.0L) {
      EXPECT_LE(RelativeError(GetDFChisqUpper(double(x), 1.0), std::erfc(std::sqrt(x / 2.0L))), 1e-14);
    }
  }
  for (const double q_double : {1e-300, 1e-20, 0.05, 0.5, 0.9999}) {
    const long double q = q_double;
    EXPECT_LE(RelativeError(GetInvChisqUpper(double(q), 2.0), -2.0L * std::log(q)), 1e-15) << "q = " << double(q);
    EXPECT_LE(RelativeError(GetInvChisq(double(q), 2.0), -2.0L * std::log1p(-q)), 1e-15) << "q = " << double(q);
  }
}

// For df = 2k, P(X > x) is the Poisson probability of fewer than k events
// with mean x/2; summed here in long double for k = 50 (df = 100).
TEST(ChiSquareDistribution, EvenDegreesMatchPoissonSums) {
  for (const double x_double : {30.0, 70.0, 100.0, 140.0, 400.0}) {
    const long double x = x_double;
    const long double mean = x / 2.0L;
    long double term = std::exp(-mean);
    long double sum = 0.0L;
    for (int j = 0; j < 50; ++j) {
      sum += term;
      term *= mean / (j + 1);
    }
    EXPECT_LE(RelativeError(GetDFChisqUpper(double(x), 100.0), sum), 1e-14) << "x = " << double(x);
  }
}

TEST(ChiSquareDistribution, ComplementaryQuantilesAgree) {
  // 1 - p is exact here, so both forms name the same point.
  EXPECT_EQ(GetInvChisq(0.75, 7.0), GetInvChisqUpper(0.25, 7.0));
}

}  // namespace
}  // namespace orvik::stats
