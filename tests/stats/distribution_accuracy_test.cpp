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

// An argument (or probability) x with up to two parameters.
struct Point {
  double x = 0.0;
  double a = 0.0;
  double b = 0.0;
  bool large_df = false;  // a degree of freedom above 1e5
};

void ExpectWithinTargets(const WorstError& worst) {
  std::cout << worst.Report() << "\n";
  ::testing::Test::RecordProperty("worst_relative_error", worst.Report());
  EXPECT_GE(worst.count(), kPoints);
  EXPECT_LE(worst.worst(), 1e-13) << worst.Report();
  EXPECT_LE(worst.worst_large_df(), 1e-11) << worst.Report();
}

// Draws points until both tails have kPoints comparisons (points whose
// reference is below 1e-300 do not count). make(real, point) builds the
// Boost distribution in the precision of `real`.
template <typename Sample, typename Make, typename Lower, typename Upper>
void CheckTails(const char* lower_name, const char* upper_name, std::uint64_t seed, Sample sample, Make make,
                Lower lower, Upper upper) {
  Random random(seed);
  WorstError worst_lower(lower_name), worst_upper(upper_name);
  for (int i = 0; (worst_lower.count() < kPoints || worst_upper.count() < kPoints) && i < 3 * kPoints; ++i) {
    const Point p = sample(random, i);
    const auto d = make(Long(), p);
    const auto dp = make(Precise(), p);
    const std::string where = Where("x=%.17g a=%.17g b=%.17g", p.x, p.a, p.b);
    CheckProbability(
        worst_lower, lower(p), [&] { return cdf(d, Long(p.x)); }, [&] { return cdf(dp, Precise(p.x)); }, p.large_df,
        where);
    CheckProbability(
        worst_upper, upper(p), [&] { return cdf(complement(d, Long(p.x))); },
        [&] { return cdf(complement(dp, Precise(p.x))); }, p.large_df, where);
  }
  ExpectWithinTargets(worst_lower);
  ExpectWithinTargets(worst_upper);
}

// The same for the quantiles: x of the point is the probability, and
// quantiles beyond the doubles (or below 1e-300) do not count.
template <typename Sample, typename Make, typename Lower, typename Upper>
void CheckQuantiles(const char* lower_name, const char* upper_name, std::uint64_t seed, Sample sample, Make make,
                    Lower lower, Upper upper) {
  Random random(seed);
  WorstError worst_lower(lower_name), worst_upper(upper_name);
  for (int i = 0; (worst_lower.count() < kPoints || worst_upper.count() < kPoints) && i < 2 * kPoints; ++i) {
    Point p = sample(random, i);
    p.x = random.Probability();
    const std::string where = Where("p=%.17g a=%.17g b=%.17g", p.x, p.a, p.b);
    CheckQuantile(worst_lower, lower(p), p.x, false, make(Long(), p), make(Precise(), p), p.large_df, where);
    CheckQuantile(worst_upper, upper(p), p.x, true, make(Long(), p), make(Precise(), p), p.large_df, where);
  }
  ExpectWithinTargets(worst_lower);
  ExpectWithinTargets(worst_upper);
}

Point DegreesOfFreedom(Random& random) {
  Point p;
  p.a = random.DegreesOfFreedom();
  p.large_df = p.a > 1e5;
  return p;
}

Point TwoDegreesOfFreedom(Random& random) {
  Point p;
  p.a = random.DegreesOfFreedom();
  p.b = random.DegreesOfFreedom();
  p.large_df = p.a > 1e5 || p.b > 1e5;
  return p;
}

const auto kNormal = [](auto real, const Point& p) { return bm::normal_distribution<decltype(real)>(p.a, p.b); };
const auto kT = [](auto real, const Point& p) { return bm::students_t_distribution<decltype(real)>(p.a); };
const auto kChiSquare = [](auto real, const Point& p) { return bm::chi_squared_distribution<decltype(real)>(p.a); };
const auto kF = [](auto real, const Point& p) { return bm::fisher_f_distribution<decltype(real)>(p.a, p.b); };

TEST(DistributionAccuracy, NormalBothTails) {
  const auto sample = [](Random& random, int i) {
    const double z = i % 3 == 0 ? random.Uniform(-10.0, 10.0)
                     : i % 3 == 1 ? random.Sign() * random.LogUniform(1e-20, 1.0)
                                  : random.Sign() * random.LogUniform(1.0, 38.5);
    Point p{z, 0.0, 1.0};
    if (i % 10 == 0) {
      p.a = random.Uniform(-1e3, 1e3);
      p.b = random.LogUniform(1e-3, 1e3);
      p.x = p.a + z * p.b;
    }
    return p;
  };
  CheckTails(
      "GetDFNormal", "GetDFNormalUpper", 1, sample, kNormal, [](const Point& p) { return GetDFNormal(p.x, p.a, p.b); },
      [](const Point& p) { return GetDFNormalUpper(p.x, p.a, p.b); });
}

TEST(DistributionAccuracy, StudentTBothTails) {
  const auto sample = [](Random& random, int i) {
    Point p = DegreesOfFreedom(random);
    p.x = i % 4 == 0 ? random.Uniform(-6.0, 6.0)
          : i % 4 == 1 ? random.Sign() * random.LogUniform(1e-10, 1e300)
          : i % 4 == 2 ? random.Uniform(-40.0, 40.0)
                       : random.Sign() * random.LogUniform(1e-3, 1e6);
    return p;
  };
  CheckTails(
      "GetDFT", "GetDFTUpper", 2, sample, kT, [](const Point& p) { return GetDFT(p.x, p.a); },
      [](const Point& p) { return GetDFTUpper(p.x, p.a); });
}

TEST(DistributionAccuracy, ChiSquareBothTails) {
  const auto sample = [](Random& random, int i) {
    Point p = DegreesOfFreedom(random);
    p.x = i % 3 == 0 ? std::fmax(1e-300, p.a + random.Uniform(-40.0, 40.0) * std::sqrt(2.0 * p.a))
          : i % 3 == 1 ? random.LogUniform(1e-300, 1e300)
                       : p.a * random.LogUniform(0.01, 100.0);
    return p;
  };
  CheckTails(
      "GetDFChisq", "GetDFChisqUpper", 3, sample, kChiSquare, [](const Point& p) { return GetDFChisq(p.x, p.a); },
      [](const Point& p) { return GetDFChisqUpper(p.x, p.a); });
}

TEST(DistributionAccuracy, FBothTails) {
  const auto sample = [](Random& random, int i) {
    Point p = TwoDegreesOfFreedom(random);
    p.x = i % 3 == 0   ? random.LogUniform(0.2, 5.0)
          : i % 3 == 1 ? random.LogUniform(1e-300, 1e300)
                       : random.LogUniform(1e-5, 1e5);
    return p;
  };
  CheckTails(
      "GetDFF", "GetDFFUpper", 4, sample, kF, [](const Point& p) { return GetDFF(p.x, p.a, p.b); },
      [](const Point& p) { return GetDFFUpper(p.x, p.a, p.b); });
}

TEST(QuantileAccuracy, Normal) {
  CheckQuantiles(
      "GetInvNormal", "GetInvNormalUpper", 5, [](Random&, int) { return Point{0.0, 0.0, 1.0}; }, kNormal,
      [](const Point& p) { return GetInvNormal(p.x); }, [](const Point& p) { return GetInvNormalUpper(p.x); });
}

TEST(QuantileAccuracy, StudentT) {
  CheckQuantiles(
      "GetInvT", "GetInvTUpper", 6, [](Random& random, int) { return DegreesOfFreedom(random); }, kT,
      [](const Point& p) { return GetInvT(p.x, p.a); }, [](const Point& p) { return GetInvTUpper(p.x, p.a); });
}

TEST(QuantileAccuracy, ChiSquare) {
  CheckQuantiles(
      "GetInvChisq", "GetInvChisqUpper", 7, [](Random& random, int) { return DegreesOfFreedom(random); }, kChiSquare,
      [](const Point& p) { return GetInvChisq(p.x, p.a); }, [](const Point& p) { return GetInvChisqUpper(p.x, p.a); });
}

TEST(QuantileAccuracy, F) {
  CheckQuantiles(
      "GetInvF", "GetInvFUpper", 8, [](Random& random, int) { return TwoDegreesOfFreedom(random); }, kF,
      [](const Point& p) { return GetInvF(p.x, p.a, p.b); }, [](const Point& p) { return GetInvFUpper(p.x, p.a, p.b); });
}

}  // namespace
}  // namespace orvik::stats
