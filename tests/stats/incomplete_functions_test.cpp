// The double-double helpers beneath the incomplete gamma and beta
// functions, against long double arithmetic.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "stats/density_terms.h"
#include "stats/double_double.h"
#include "distribution_checks.h"

namespace orvik::stats {
namespace {

TEST(DoubleDouble, LogarithmCarriesExtraDigits) {
  for (double x : {4.9406564584124654e-324, 1e-300, 0.1, 0.7071, 1.0 + 0x1.0p-52, 3.0, 1e300}) {
    const detail::DD log = detail::LogDD(x);
    const long double sum = static_cast<long double>(log.hi) + log.lo;
    // long double holds 64 bits; hi alone holds 53.
    EXPECT_LE(std::fabs(sum - std::log(static_cast<long double>(x))), 4e-19L * std::fabs(sum) + 1e-19L) << x;
  }
  EXPECT_EQ(detail::LogDD(1.0).hi, 0.0);
}

TEST(DoubleDouble, ProductsAndSumsAreExact) {
  const detail::DD p = detail::TwoProduct(134217729.0, 134217727.0);  // (2^27 + 1)(2^27 - 1) = 2^54 - 1
  EXPECT_EQ(p.hi, 18014398509481984.0);
  EXPECT_EQ(p.lo, -1.0);
  const detail::DD s = detail::TwoSum(1.0, 1e-30);
  EXPECT_EQ(s.hi, 1.0);
  EXPECT_EQ(s.lo, 1e-30);
}

// bd0(k, m) = k ln(k / m) + m - k; where the terms do not cancel, long double
// gives it to 1e-19.
TEST(DensityTerms, DevianceMatchesDirectFormula) {
  const struct {
    long double k, m;
  } cases[] = {{1.0L, 3.0L}, {50.0L, 20.0L}, {0.25L, 1e-200L}, {1e6L, 1.5e6L}, {3e4L, 3.2e4L}};
  for (const auto& c : cases) {
    const long double direct = c.k * std::log(c.k / c.m) + c.m - c.k;
    const detail::DD ours = detail::Bd0({double(c.k), 0.0}, {double(c.m), 0.0});
    EXPECT_LE(std::fabs((ours.hi + static_cast<long double>(ours.lo) - direct) / direct), 1e-17L) << double(c.k);
  }
  // Near k = m, where the direct formula cancels: the value from mpmath.
  const detail::DD near = detail::Bd0({1e6 + 1.0, 0.0}, {1e6, 0.0});
  EXPECT_LE(RelativeError(near.hi, 4.999998333334166666166667e-7L), 2e-16);
}

TEST(DensityTerms, StirlingFactorMatchesGamma) {
  for (const double z_double : {0.25, 1.0, 7.5, 14.9, 15.0, 1e3, 1e8}) {
    const long double z = z_double;
    const long double exact = std::tgamma(z) * std::exp(z) / (std::sqrt(2.0L * 3.141592653589793238L) * std::pow(z, z - 0.5L));
    if (std::isfinite(exact)) {
      EXPECT_LE(RelativeError(detail::StirlingFactor(double(z)), exact), 5e-15) << double(z);
    }
  }
  EXPECT_NEAR(detail::StirlingFactor(1e8), std::exp(1.0 / 1.2e9), 1e-16);
}

}  // namespace
}  // namespace orvik::stats
