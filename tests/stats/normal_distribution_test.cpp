#include "stats/normal_distribution.h"

#include <gtest/gtest.h>

#include <cmath>

#include "distribution_checks.h"

namespace orvik::stats {
namespace {

TEST(NormalDistribution, MeanAndScaleStandardiseExactly) {
  // 1e6 + 4.25 * 0.5 is exact in binary, so this is z = 4.25 without rounding.
  EXPECT_LE(RelativeError(GetDFNormalUpper(1e6 + 2.125, 1e6, 0.5), GetDFNormalUpper(4.25, 0.0, 1.0)), 1e-15);
  EXPECT_LE(RelativeError(GetDFNormal(-7.5, 2.5, 1.25), GetDFNormal(-8.0, 0.0, 1.0)), 1e-15);
}

}  // namespace
}  // namespace orvik::stats
