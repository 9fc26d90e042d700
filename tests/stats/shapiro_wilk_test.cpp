#include "stats/shapiro_wilk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

namespace orvik::stats {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Unit length and antisymmetry; the exact values of Shapiro and Wilk are
// in data/reference_values.tsv.
TEST(ShapiroWilk, CoefficientsHaveUnitLengthAndAntisymmetry) {
  for (int n : {3, 4, 5, 10}) {
    const std::vector<double> a = ShapiroWilkCoefficients(n);
    double squares = 0.0;
    for (double v : a) squares += v * v;
    EXPECT_NEAR(squares, 1.0, 1e-14) << "n = " << n;
    for (int k = 0; k < n / 2; ++k) EXPECT_EQ(a[k], -a[n - 1 - k]) << "n = " << n << ", k = " << k;
  }
}

// The example of Shapiro and Wilk (1965): weights of 11 men, W = 0.79 and
// significant at the 1 % level.
TEST(ShapiroWilk, PublishedExample) {
  const double weights[] = {148, 154, 158, 160, 161, 162, 166, 170, 182, 195, 236};
  const ShapiroWilkResult r = ShapiroWilk(weights);
  EXPECT_NEAR(r.w, 0.79, 0.005);
  EXPECT_LT(r.p_value, 0.01);
  EXPECT_GT(r.p_value, 0.001);
  // W does not depend on location, scale or order.
  std::vector<double> moved;
  for (double v : weights) moved.push_back(-3.0 * v + 1e4);
  EXPECT_NEAR(ShapiroWilk(moved).w, r.w, 1e-14);
}

// For n = 3, P(W <= w) = 6/pi (asin(sqrt w) - asin(sqrt 3/4)) exactly; W is
// 3/4 at its smallest and 1 for equally spaced values.
TEST(ShapiroWilk, ExactDistributionForThreeValues) {
  const double spaced[] = {1.0, 2.0, 3.0};
  EXPECT_NEAR(ShapiroWilk(spaced).w, 1.0, 1e-15);
  EXPECT_NEAR(ShapiroWilk(spaced).p_value, 1.0, 1e-15);
  const double lopsided[] = {0.0, 0.0, 1.0};
  EXPECT_NEAR(ShapiroWilk(lopsided).w, 0.75, 1e-15);
  EXPECT_NEAR(ShapiroWilk(lopsided).p_value, 0.0, 1e-7);
  EXPECT_NEAR(ShapiroWilkPValue(0.9, 3), 6.0 / kPi * (std::asin(std::sqrt(0.9)) - kPi / 3.0), 1e-15);
  EXPECT_NEAR(WValue(3), std::pow(std::sin(kPi / 3.0 + kPi / 120.0), 2), 1e-15);
}

// Under normality a W below WValue(n) occurs 5 % of the time; seeded
// simulation with 20,000 samples per size (standard error 0.0015).
TEST(ShapiroWilk, CriticalValuesHoldTheirLevelBySimulation) {
  std::mt19937_64 engine(11);
  std::normal_distribution<double> normal;
  for (int n : {4, 8, 12, 25, 49}) {
    const double critical = WValue(n);
    int rejected = 0;
    constexpr int kSamples = 20000;
    std::vector<double> sample(n);
    for (int s = 0; s < kSamples; ++s) {
      for (double& v : sample) v = normal(engine);
      if (ShapiroWilk(sample).w < critical) ++rejected;
    }
    EXPECT_NEAR(static_cast<double>(rejected) / kSamples, 0.05, 0.006) << "n = " << n;
  }
  // From n = 4 on (n = 3 has its own exact distribution) they increase.
  for (int n = 4; n < 49; ++n) EXPECT_LT(WValue(n), WValue(n + 1)) << n;
}

// Far from normal: an exponential sample of 5,000 is rejected outright.
TEST(ShapiroWilk, LargeSkewedSampleIsRejected) {
  std::mt19937_64 engine(5);
  std::exponential_distribution<double> exponential;
  std::vector<double> sample(5000);
  for (double& v : sample) v = exponential(engine);
  const ShapiroWilkResult r = ShapiroWilk(sample);
  EXPECT_LT(r.w, 0.95);
  EXPECT_LT(r.p_value, 1e-10);
}

TEST(ShapiroWilk, InvalidSamples) {
  EXPECT_THROW(ShapiroWilk(std::vector<double>{1.0, 2.0}), std::out_of_range);
  EXPECT_THROW(ShapiroWilk(std::vector<double>(5001, 1.0)), std::out_of_range);
  EXPECT_THROW(ShapiroWilk(std::vector<double>{2.0, 2.0, 2.0}), std::invalid_argument);
  EXPECT_TRUE(std::isnan(ShapiroWilk(std::vector<double>{1.0, std::nan(""), 3.0}).w));
}

}  // namespace
}  // namespace orvik::stats
