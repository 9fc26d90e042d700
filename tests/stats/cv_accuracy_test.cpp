// Accuracy of the sample-CV functions: quantiles against Boost.Math's
// noncentral t (sqrt(n) / CV-hat is noncentral t with n - 1 degrees of
// freedom and noncentrality sqrt(n) / cv), the Simpson integral of the
// density against the same distribution. (A simulation of a million normal
// subgroups per setting agreed with the limits' false-alarm rates within
// three standard errors when they were made; the exact comparison here is
// the stronger test.)

#include <gtest/gtest.h>

// First, for its error policies.
#include "stats/boost_reference.h"

#include <boost/math/distributions/non_central_t.hpp>
#include <cmath>
#include <iostream>
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

}  // namespace
}  // namespace orvik::stats
