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

}  // namespace orvik::stats
