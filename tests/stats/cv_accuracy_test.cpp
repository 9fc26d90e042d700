// Accuracy of the sample-CV functions: quantiles against Boost.Math's
// noncentral t (sqrt(n) / CV-hat is noncentral t with n - 1 degrees of
// freedom and noncentrality sqrt(n) / cv), the Simpson integral of the
// density against the same distribution, and the chart's limits against a
// simulation of a million normal subgroups per setting.

#include <gtest/gtest.h>

// First, for its error policies.
#include "stats/boost_reference.h"

#include <boost/math/distributions/non_central_t.hpp>
#include <cmath>
#include <iostream>
#include <numbers>
#include <string>

#include "stats/coefficient_of_variation.h"

namespace orvik::stats {
namespace {

using Long = long double;

boost::math::non_central_t_distribution<Long> SampleT(int n, double cv) {
  return {static_cast<Long>(n - 1), std::sqrt(static_cast<Long>(n)) / cv};
}

// The p-quantile of CV-hat given a positive mean: P(T > sqrt(n) / q) =
// p P(T > 0), and P(T > 0) = Phi(delta).
double ReferenceQuantile(double p, int n, double cv) {
  const auto t = SampleT(n, cv);
  const Long mass = boost::math::cdf(boost::math::normal_distribution<Long>(), t.non_centrality());
  return static_cast<double>(std::sqrt(static_cast<Long>(n)) / boost::math::quantile(boost::math::complement(t, p * mass)));
}

// Small and large subgroups, CVs from 0.01 (noncentrality 500 at n = 25) to
// 0.5 (a heavy upper tail at n = 2), at the levels of the chart's limits
// and 2-sigma lines and the median.
TEST(CVAccuracy, QuantilesAgreeWithTheNoncentralT) {
  double worst = 0.0;
  for (const int n : {2, 3, 5, 10, 25})
    for (const double cv : {0.01, 0.05, 0.2, 0.5})
      for (const double p : {0.00135, 0.02275, 0.5, 0.97725, 0.99865}) {
        const double ours = CVQuantile(p, n, cv), reference = ReferenceQuantile(p, n, cv);
        const double error = std::fabs(ours - reference) / reference;
        worst = std::max(worst, error);
        EXPECT_LE(error, 1e-10) << "n " << n << " cv " << cv << " p " << p;
      }
  std::cout << "worst relative error of CVQuantile: " << worst << "\n";
}

// The Simpson integral of the density over [0, U] is P(T > sqrt(n) / U),
// over [-U, -0] P(T < -sqrt(n) / U); where neither tail beyond U holds
// mass, the two add up to 1. n = 2 has a density that jumps at 0, which
// -0.0 and +0.0 take from their own sides.
TEST(CVAccuracy, Simpson38IntegratesTheDensityToOneOverTheSupport) {
  struct Case {
    int n;
    double cv, reach;
    bool whole;  // no mass beyond +-reach to 1e-12
  };
  for (const Case& c : {Case{5, 0.1, 2.0, true}, Case{25, 0.05, 1.0, true}, Case{3, 0.3, 50.0, false},
                        Case{2, 1.0, 20.0, false}, Case{2, 0.2, 5.0, false}, Case{10, 0.3, 10.0, true}}) {
    SCOPED_TRACE("n " + std::to_string(c.n) + " cv " + std::to_string(c.cv));
    const auto t = SampleT(c.n, c.cv);
    const Long edge = std::sqrt(static_cast<Long>(c.n)) / c.reach;
    const double positive = Simpson38(0.0, c.reach, 100000, c.n, c.cv);
    const double negative = Simpson38(-c.reach, -0.0, 100000, c.n, c.cv);
    EXPECT_NEAR(positive, static_cast<double>(boost::math::cdf(boost::math::complement(t, edge))), 1e-11);
    EXPECT_NEAR(negative, static_cast<double>(boost::math::cdf(t, -edge)), 1e-11);
    if (c.whole) {
      EXPECT_NEAR(positive + negative, 1.0, 1e-11);
    }
  }
}

// Normal subgroups of CV cv, a million a setting (subgroups of a negative
// mean, which the chart refuses, are drawn again): the fraction beyond each
// limit must lie within four standard errors of its probability.
TEST(CVAccuracy, LimitsHoldTheirFalseAlarmRateInSimulation) {
  constexpr int kSubgroups = 1'000'000;
  for (const auto& [n, cv] : std::vector<std::pair<int, double>>{{3, 0.3}, {5, 0.1}, {10, 0.05}}) {
    SCOPED_TRACE("n " + std::to_string(n) + " cv " + std::to_string(cv));
    const double lcl = CVQuantile(0.00135, n, cv), ucl = CVQuantile(0.99865, n, cv);
    const double lower2 = CVQuantile(0.02275, n, cv), upper2 = CVQuantile(0.97725, n, cv);
    testing::Random random(20070402u + static_cast<unsigned>(n));
    long below = 0, above = 0, below2 = 0, above2 = 0;
    std::vector<double> x(static_cast<std::size_t>(n));
    for (int drawn = 0; drawn < kSubgroups;) {
      double sum = 0.0;
      for (int j = 0; j < n; j += 2) {  // Box-Muller pairs
        const double radius = std::sqrt(-2.0 * std::log(random.Uniform(0x1p-60, 1.0)));
        const double angle = 2.0 * std::numbers::pi * random.Uniform(0.0, 1.0);
        x[j] = 1.0 + cv * radius * std::cos(angle);
        if (j + 1 < n) x[j + 1] = 1.0 + cv * radius * std::sin(angle);
      }
      for (const double v : x) sum += v;
      const double mean = sum / n;
      if (mean <= 0.0) continue;
      double squares = 0.0;
      for (const double v : x) squares += (v - mean) * (v - mean);
      const double sample_cv = std::sqrt(squares / (n - 1)) / mean;
      below += sample_cv < lcl;
      above += sample_cv > ucl;
      below2 += sample_cv < lower2;
      above2 += sample_cv > upper2;
      ++drawn;
    }
    const auto expect_rate = [](long count, double p) {
      const double rate = static_cast<double>(count) / kSubgroups;
      const double error = std::sqrt(p * (1.0 - p) / kSubgroups);
      std::cout << "rate " << rate << " against " << p << " (" << (rate - p) / error << " standard errors)\n";
      EXPECT_NEAR(rate, p, 4.0 * error);
    };
    expect_rate(below, 0.00135);
    expect_rate(above, 0.00135);
    expect_rate(below2, 0.02275);
    expect_rate(above2, 0.02275);
  }
}

}  // namespace
}  // namespace orvik::stats
