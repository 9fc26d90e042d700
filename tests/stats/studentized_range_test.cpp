#include "stats/studentized_range.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvik::stats {
namespace {

// Identities over a grid of k, df and q: the two tails add up to 1, each is
// monotone in q, and the quantiles invert both tails. Reference values are
// in data/reference_values.tsv.
TEST(StudentizedRange, TailsAddUpAndQuantilesInvert) {
  for (const double k : {2.0, 5.0, 20.0}) {
    for (const double df : {1.0, 20.0, HUGE_VAL}) {
      double previous_upper = 1.0;
      for (const double q : {0.5, 3.0, 6.0}) {
        SCOPED_TRACE(testing::Message() << "k " << k << ", df " << df << ", q " << q);
        const double lower = GetDFTukey(q, k, df);
        const double upper = GetDFTukeyUpper(q, k, df);
        EXPECT_NEAR(lower + upper, 1.0, 1e-13);
        EXPECT_LE(upper, previous_upper);
        previous_upper = upper;
        if (upper > 1e-12 && upper < 0.999) {
          EXPECT_NEAR(GetInvTukeyUpper(upper, k, df) / q, 1.0, 1e-10);
        }
        if (lower > 1e-12 && lower < 0.5) {
          EXPECT_NEAR(GetInvTukey(lower, k, df) / q, 1.0, 1e-10);
        }
      }
    }
  }
}

// More means spread wider: the critical value grows with k and falls
// towards the normal-theory value as df grows.
TEST(StudentizedRange, CriticalValuesGrowWithMeansAndFallWithDegreesOfFreedom) {
  double previous = 0.0;
  for (const double k : {2.0, 3.0, 6.0, 20.0}) {
    const double q = GetInvTukeyUpper(0.05, k, 10.0);
    EXPECT_GT(q, previous) << k;
    previous = q;
  }
  EXPECT_GT(GetInvTukeyUpper(0.05, 4.0, 5.0), GetInvTukeyUpper(0.05, 4.0, 50.0));
  EXPECT_GT(GetInvTukeyUpper(0.05, 4.0, 50.0), GetInvTukeyUpper(0.05, 4.0, HUGE_VAL));
  // k = 2 at infinite df is sqrt(2) times the two-sided normal quantile.
  EXPECT_NEAR(GetInvTukeyUpper(0.05, 2.0, HUGE_VAL), std::sqrt(2.0) * 1.959963984540054, 1e-12);
}

}  // namespace
}  // namespace orvik::stats
