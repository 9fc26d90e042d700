#include "stats/f_distribution.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "stats/chi_square_distribution.h"
#include "stats/t_distribution.h"
#include "distribution_checks.h"

namespace orvik::stats {
namespace {

// F(2, 2) has P(X <= f) = f / (1 + f) and quantile p / (1 - p).
TEST(FDistribution, ClosedFormForTwoAndTwoDegrees) {
  for (const double f_double : {1e-300, 1e-9, 0.25, 1.0, 3.0, 1e12, 1e300}) {
    const long double f = f_double;
    EXPECT_LE(RelativeError(GetDFF(double(f), 2.0, 2.0), f / (1.0L + f)), 1e-15) << "f = " << double(f);
    EXPECT_LE(RelativeError(GetDFFUpper(double(f), 2.0, 2.0), 1.0L / (1.0L + f)), 1e-15) << "f = " << double(f);
  }
  for (const double p_double : {1e-200, 0.1, 0.5, 0.9}) {
    const long double p = p_double;
    EXPECT_LE(RelativeError(GetInvF(double(p), 2.0, 2.0), p / (1.0L - p)), 1e-14) << "p = " << double(p);
    EXPECT_LE(RelativeError(GetInvFUpper(double(p), 2.0, 2.0), (1.0L - p) / p), 1e-14) << "p = " << double(p);
  }
}

// T^2 with df degrees of freedom is F(1, df): P(F > t^2) = 2 P(T > t). The two
// take different roads through the incomplete beta function.
TEST(FDistribution, AgreesWithSquaredT) {
  for (double df : {0.5, 1.0, 7.0, 300.0, 1e6}) {
    for (double t : {0.01, 0.8, 2.0, 9.0, 1e5}) {
      const long double two_tails = 2.0L * GetDFTUpper(t, df);
      if (two_tails < 1e-300L) continue;  // both underflow
      EXPECT_LE(RelativeError(GetDFFUpper(t * t, 1.0, df), two_tails), 1e-14) << "t = " << t << ", df = " << df;
    }
  }
}

// X ~ F(a, b) if and only if 1 / X ~ F(b, a); an infinite denominator leaves
// chi-square(df1) / df1.
TEST(FDistribution, ReciprocalAndInfiniteDegreesOfFreedom) {
  for (double f : {0.03125, 0.25, 1.0, 4.0, 16.0}) {  // 6 / f and 6 f exact
    EXPECT_LE(RelativeError(GetDFF(f, 3.5, 12.0), GetDFFUpper(1.0 / f, 12.0, 3.5)), 1e-14) << "f = " << f;
    EXPECT_LE(RelativeError(GetDFFUpper(f, 6.0, kInf), GetDFChisqUpper(6.0 * f, 6.0)), 1e-15) << "f = " << f;
    EXPECT_LE(RelativeError(GetDFF(f, kInf, 6.0), GetDFChisqUpper(6.0 / f, 6.0)), 1e-15) << "f = " << f;
  }
  EXPECT_EQ(GetDFF(0.999, kInf, kInf), 0.0);
  EXPECT_EQ(GetDFF(1.0, kInf, kInf), 1.0);
  EXPECT_EQ(GetInvFUpper(0.05, kInf, kInf), 1.0);
  EXPECT_LE(RelativeError(GetInvFUpper(0.05, 4.0, kInf), GetInvChisqUpper(0.05, 4.0) / 4.0L), 1e-14);
}

}  // namespace
}  // namespace orvik::stats
