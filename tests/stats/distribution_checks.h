#pragma once

// Checks shared by the tests of the distribution functions.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvik::stats {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

inline double RelativeError(double ours, long double reference) {
  return static_cast<double>(std::fabs((ours - reference) / reference));
}

// The exact quantile lies within a relative 1e-13 of x when the distribution
// function, stepped that far either side of x, brackets the target. Unlike
// F(x) = p this allows for the rounding of x itself, which moves F(x) by
// x F'(x) / F(x) units of 1e-16 (thousands at 1e7 degrees of freedom).
template <typename Cdf>
::testing::AssertionResult Brackets(Cdf cdf, double x, double p) {
  const double a = cdf(x * (1.0 - 1e-13));
  const double b = cdf(x * (1.0 + 1e-13));
  if (std::fmin(a, b) <= p && p <= std::fmax(a, b)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "x = " << x << " gives " << a << " .. " << b << " around p = " << p;
}

}  // namespace orvik::stats
