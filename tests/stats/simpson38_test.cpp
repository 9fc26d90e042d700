#include "stats/simpson38.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <thread>

#include "stats/coefficient_of_variation.h"

namespace orvik::stats {
namespace {

// Both the three-eighths and the 1/3 rule integrate cubics exactly, so every
// interval count from 2 up, whatever its remainder modulo 3, must too.
TEST(Simpson38, CubicsAreExactForEveryIntervalCount) {
  const auto cubic = [](double x) { return 2.0 * x * x * x - x * x + 3.0; };
  const double exact = 0.5 * (81.0 - 1.0) - (27.0 + 1.0) / 3.0 + 3.0 * 4.0;  // over [-1, 3]
  for (int intervals = 2; intervals <= 13; ++intervals)
    EXPECT_NEAR(Simpson38(-1.0, 3.0, intervals, cubic), exact, 1e-12) << intervals;
  EXPECT_NEAR(Simpson38(3.0, -1.0, 9, cubic), -exact, 1e-12);
  EXPECT_NEAR(Simpson38(0.0, 2.0, 1, cubic), 0.5 * 2.0 * (3.0 + 15.0), 1e-12);  // one step: trapezoid
}

// The error falls as h^4: halving the step divides it by about 16.
TEST(Simpson38, FourthOrderConvergence) {
  const auto sine = [](double x) { return std::sin(x); };
  for (int intervals : {30, 31, 32}) {
    const double coarse = std::fabs(Simpson38(0.0, 3.14159265358979323846, intervals, sine) - 2.0);
    const double fine = std::fabs(Simpson38(0.0, 3.14159265358979323846, 2 * intervals, sine) - 2.0);
    EXPECT_GT(coarse / fine, 12.0) << intervals;
    EXPECT_LT(coarse / fine, 20.0) << intervals;
  }
  // The coefficient-of-variation chart's call: 10,000 intervals from 0.
  EXPECT_NEAR(Simpson38(0.0, 5.0, 10000, [](double x) { return std::exp(-x); }), -std::expm1(-5.0), 1e-15);
}

TEST(Simpson38, NeedsAtLeastOneInterval) {
  EXPECT_THROW(Simpson38(0.0, 1.0, 0, [](double x) { return x; }), std::invalid_argument);
  EXPECT_THROW(Simpson38(0.0, 1.0, -3, [](double x) { return x; }), std::invalid_argument);
}

// The library's four-argument form integrates the density of the sample CV
// for the in-control CV its thread set last, and gives NaN before any.
TEST(Simpson38, LibraryFormReadsTheInControlCVOfItsThread) {
  SetCVInControl(0.1);
  EXPECT_EQ(Simpson38(0.0, 0.2, 10000, 5), Simpson38(0.0, 0.2, 10000, 5, 0.1));
  SetCVInControl(0.05);
  EXPECT_EQ(Simpson38(0.0, 0.2, 10000, 5), Simpson38(0.0, 0.2, 10000, 5, 0.05));
  double fresh = 0.0;
  std::thread([&fresh] { fresh = Simpson38(0.0, 0.2, 10000, 5); }).join();
  EXPECT_TRUE(std::isnan(fresh));
}

}  // namespace
}  // namespace orvik::stats
