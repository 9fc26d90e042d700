#include "stats/normal_distribution.h"

#include <gtest/gtest.h>

#include <cmath>

#include "distribution_checks.h"

namespace orvik::stats {
namespace {

// Phi(z) to 20 digits, computed with mpmath (30-digit erfc).
TEST(NormalDistribution, LowerTailMatchesHighPrecisionValues) {
  const struct {
    double z, phi;
  } cases[] = {
      {-37.5, 4.6053530095819548438e-308}, {-20.0, 2.7536241186062336951e-89},
      {-5.0, 2.8665157187919391167e-7},    {-1.96, 0.024997895148220434137},
      {0.0, 0.5},                          {1.0, 0.84134474606854294859},
      {3.0, 0.99865010196836990547},
  };
  for (const auto& c : cases) {
    EXPECT_LE(RelativeError(GetDFNormal(c.z, 0.0, 1.0), c.phi), 1e-15) << "z = " << c.z;
    EXPECT_LE(RelativeError(GetDFNormalUpper(-c.z, 0.0, 1.0), c.phi), 1e-15) << "z = " << c.z;
  }
}

// Phi^-1(p) to 20 digits: roots of ln Phi(z) = ln p in 60-digit mpmath.
TEST(NormalDistribution, QuantileMatchesHighPrecisionValues) {
  const struct {
    double p, z;
  } cases[] = {
      {1e-300, -37.047096299361199237}, {1e-100, -21.273453560965324295}, {1e-20, -9.262340089798407579572},
      {1e-10, -6.3613409024040561991},  {0.001, -3.090232306167813535358},  {0.025, -1.9599639845400542355},
      {0.25, -0.6744897501960817432},   {0.75, 0.6744897501960817432},    {0.975, 1.9599639845400542355},
      {1.0 - 0x1.0p-53, 8.2095361516013868556},
  };
  for (const auto& c : cases) {
    EXPECT_LE(RelativeError(GetInvNormal(c.p), c.z), 2e-15) << "p = " << c.p;
    EXPECT_LE(RelativeError(GetInvNormalUpper(c.p), -c.z), 2e-15) << "p = " << c.p;
  }
  EXPECT_EQ(GetInvNormal(0.5), 0.0);
}

TEST(NormalDistribution, MeanAndScaleStandardiseExactly) {
  // 1e6 + 4.25 * 0.5 is exact in binary, so this is z = 4.25 without rounding.
  EXPECT_LE(RelativeError(GetDFNormalUpper(1e6 + 2.125, 1e6, 0.5), GetDFNormalUpper(4.25, 0.0, 1.0)), 1e-15);
  EXPECT_LE(RelativeError(GetDFNormal(-7.5, 2.5, 1.25), GetDFNormal(-8.0, 0.0, 1.0)), 1e-15);
}

TEST(NormalDistribution, EdgesAndInvalidArguments) {
  EXPECT_EQ(GetDFNormal(0.0, 0.0, 1.0), 0.5);
  EXPECT_EQ(GetDFNormal(-kInf, 0.0, 1.0), 0.0);
  EXPECT_EQ(GetDFNormal(kInf, 0.0, 1.0), 1.0);
  EXPECT_EQ(GetDFNormalUpper(50.0, 0.0, 1.0), 0.0);
  EXPECT_GT(GetDFNormal(-38.4, 0.0, 1.0), 0.0);  // subnormal, not flushed
  EXPECT_EQ(GetInvNormal(0.0), -kInf);
  EXPECT_EQ(GetInvNormal(1.0), kInf);
  for (double bad : {kNaN, 0.0, -1.0, kInf}) EXPECT_TRUE(std::isnan(GetDFNormal(0.0, 0.0, bad))) << bad;
  EXPECT_TRUE(std::isnan(GetDFNormal(kNaN, 0.0, 1.0)));
  EXPECT_TRUE(std::isnan(GetDFNormalUpper(0.0, kNaN, 1.0)));
  for (double bad : {kNaN, -0.1, 1.5}) {
    EXPECT_TRUE(std::isnan(GetInvNormal(bad))) << bad;
    EXPECT_TRUE(std::isnan(GetInvNormalUpper(bad))) << bad;
  }
}

}  // namespace
}  // namespace orvik::stats
