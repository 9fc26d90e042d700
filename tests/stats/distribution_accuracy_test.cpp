// Accuracy of the distribution functions and quantiles against Boost.Math,
// over 10,000 or more points per function spread over small, large and
// extreme arguments. Targets: relative error at most 1e-13 for results
// above 1e-300 and degrees of freedom 0.5 to 1e5, at most 1e-11 from 1e5 to
// 1e7. Each test prints the worst error it found.

#include <gtest/gtest.h>

#include <iostream>

#include "stats/boost_reference.h"
#include "stats/chi_square_distribution.h"
#include "stats/f_distribution.h"
#include "stats/normal_distribution.h"
#include "stats/t_distribution.h"

namespace orvik::stats {
namespace {

using namespace testing;
namespace bm = boost::math;

constexpr int kPoints = 10'000;
constexpr double kTarget = 1e-13;
constexpr double kTargetLargeDf = 1e-11;

// True while either function has fewer than kPoints compared points (those
// whose reference is below 1e-300 do not count).
bool Short(const WorstError& lower, const WorstError& upper) {
  return lower.count() < kPoints || upper.count() < kPoints;
}

void ExpectWithinTargets(const WorstError& worst) {
  std::cout << worst.Report() << "\n";
  ::testing::Test::RecordProperty("worst_relative_error", worst.Report());
  EXPECT_GE(worst.count(), kPoints);
  EXPECT_LE(worst.worst(), kTarget) << worst.Report();
  EXPECT_LE(worst.worst_large_df(), kTargetLargeDf) << worst.Report();
}

TEST(DistributionAccuracy, NormalBothTails) {
  Random random(1);
  WorstError lower("GetDFNormal"), upper("GetDFNormalUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    double z = 0.0;
    switch (i % 3) {
      case 0: z = random.Uniform(-10.0, 10.0); break;
      case 1: z = random.Sign() * random.LogUniform(1e-20, 1.0); break;
      default: z = random.Sign() * random.LogUniform(1.0, 38.5); break;
    }
    double mean = 0.0, sd = 1.0;
    if (i % 10 == 0) {
      mean = random.Uniform(-1e3, 1e3);
      sd = random.LogUniform(1e-3, 1e3);
    }
    const double x = mean + z * sd;
    const bm::normal_distribution<Long> d(mean, sd);
    const bm::normal_distribution<Precise> dp(mean, sd);
    const std::string where = Where("x=%.17g mean=%.17g sd=%.17g", x, mean, sd);
    CheckProbability(
        lower, GetDFNormal(x, mean, sd), [&] { return cdf(d, Long(x)); }, [&] { return cdf(dp, Precise(x)); }, false,
        where);
    CheckProbability(
        upper, GetDFNormalUpper(x, mean, sd), [&] { return cdf(complement(d, Long(x))); },
        [&] { return cdf(complement(dp, Precise(x))); }, false, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(DistributionAccuracy, StudentTBothTails) {
  Random random(2);
  WorstError lower("GetDFT"), upper("GetDFTUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double df = random.DegreesOfFreedom();
    double t = 0.0;
    switch (i % 4) {
      case 0: t = random.Uniform(-6.0, 6.0); break;
      case 1: t = random.Sign() * random.LogUniform(1e-10, 1e300); break;
      case 2: t = random.Uniform(-40.0, 40.0); break;
      default: t = random.Sign() * random.LogUniform(1e-3, 1e6); break;
    }
    const bm::students_t_distribution<Long> d(df);
    const bm::students_t_distribution<Precise> dp(df);
    const std::string where = Where("t=%.17g df=%.17g", t, df);
    CheckProbability(
        lower, GetDFT(t, df), [&] { return cdf(d, Long(t)); }, [&] { return cdf(dp, Precise(t)); }, df > 1e5, where);
    CheckProbability(
        upper, GetDFTUpper(t, df), [&] { return cdf(complement(d, Long(t))); },
        [&] { return cdf(complement(dp, Precise(t))); }, df > 1e5, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(DistributionAccuracy, ChiSquareBothTails) {
  Random random(3);
  WorstError lower("GetDFChisq"), upper("GetDFChisqUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double df = random.DegreesOfFreedom();
    double x = 0.0;
    switch (i % 3) {
      case 0: x = std::fmax(1e-300, df + random.Uniform(-40.0, 40.0) * std::sqrt(2.0 * df)); break;
      case 1: x = random.LogUniform(1e-300, 1e300); break;
      default: x = df * random.LogUniform(0.01, 100.0); break;
    }
    const bm::chi_squared_distribution<Long> d(df);
    const bm::chi_squared_distribution<Precise> dp(df);
    const std::string where = Where("x=%.17g df=%.17g", x, df);
    CheckProbability(
        lower, GetDFChisq(x, df), [&] { return cdf(d, Long(x)); }, [&] { return cdf(dp, Precise(x)); }, df > 1e5,
        where);
    CheckProbability(
        upper, GetDFChisqUpper(x, df), [&] { return cdf(complement(d, Long(x))); },
        [&] { return cdf(complement(dp, Precise(x))); }, df > 1e5, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(DistributionAccuracy, FBothTails) {
  Random random(4);
  WorstError lower("GetDFF"), upper("GetDFFUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double df1 = random.DegreesOfFreedom();
    const double df2 = random.DegreesOfFreedom();
    double f = 0.0;
    switch (i % 3) {
      case 0: f = random.LogUniform(0.2, 5.0); break;
      case 1: f = random.LogUniform(1e-300, 1e300); break;
      default: f = random.LogUniform(1e-5, 1e5); break;
    }
    const bm::fisher_f_distribution<Long> d(df1, df2);
    const bm::fisher_f_distribution<Precise> dp(df1, df2);
    const std::string where = Where("f=%.17g df1=%.17g df2=%.17g", f, df1, df2);
    const bool large = df1 > 1e5 || df2 > 1e5;
    CheckProbability(
        lower, GetDFF(f, df1, df2), [&] { return cdf(d, Long(f)); }, [&] { return cdf(dp, Precise(f)); }, large,
        where);
    CheckProbability(
        upper, GetDFFUpper(f, df1, df2), [&] { return cdf(complement(d, Long(f))); },
        [&] { return cdf(complement(dp, Precise(f))); }, large, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(QuantileAccuracy, Normal) {
  Random random(5);
  WorstError lower("GetInvNormal"), upper("GetInvNormalUpper");
  const bm::normal_distribution<Long> d;
  const bm::normal_distribution<Precise> dp;
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double p = random.Probability();
    const std::string where = Where("p=%.17g", p);
    CheckQuantile(lower, GetInvNormal(p), p, false, d, dp, false, where);
    CheckQuantile(upper, GetInvNormalUpper(p), p, true, d, dp, false, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(QuantileAccuracy, StudentT) {
  Random random(6);
  WorstError lower("GetInvT"), upper("GetInvTUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double p = random.Probability();
    const double df = random.DegreesOfFreedom();
    const bm::students_t_distribution<Long> d(df);
    const bm::students_t_distribution<Precise> dp(df);
    const std::string where = Where("p=%.17g df=%.17g", p, df);
    CheckQuantile(lower, GetInvT(p, df), p, false, d, dp, df > 1e5, where);
    CheckQuantile(upper, GetInvTUpper(p, df), p, true, d, dp, df > 1e5, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(QuantileAccuracy, ChiSquare) {
  Random random(7);
  WorstError lower("GetInvChisq"), upper("GetInvChisqUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double p = random.Probability();
    const double df = random.DegreesOfFreedom();
    const bm::chi_squared_distribution<Long> d(df);
    const bm::chi_squared_distribution<Precise> dp(df);
    const std::string where = Where("p=%.17g df=%.17g", p, df);
    CheckQuantile(lower, GetInvChisq(p, df), p, false, d, dp, df > 1e5, where);
    CheckQuantile(upper, GetInvChisqUpper(p, df), p, true, d, dp, df > 1e5, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

TEST(QuantileAccuracy, F) {
  Random random(8);
  WorstError lower("GetInvF"), upper("GetInvFUpper");
  for (int i = 0; Short(lower, upper) && i < 3 * kPoints; ++i) {
    const double p = random.Probability();
    const double df1 = random.DegreesOfFreedom();
    const double df2 = random.DegreesOfFreedom();
    const bm::fisher_f_distribution<Long> d(df1, df2);
    const bm::fisher_f_distribution<Precise> dp(df1, df2);
    const std::string where = Where("p=%.17g df1=%.17g df2=%.17g", p, df1, df2);
    const bool large = df1 > 1e5 || df2 > 1e5;
    CheckQuantile(lower, GetInvF(p, df1, df2), p, false, d, dp, large, where);
    CheckQuantile(upper, GetInvFUpper(p, df1, df2), p, true, d, dp, large, where);
  }
  ExpectWithinTargets(lower);
  ExpectWithinTargets(upper);
}

}  // namespace
}  // namespace orvik::stats
