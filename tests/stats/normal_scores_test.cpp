#include "stats/normal_scores.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvik::stats {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The classical closed forms for the largest of n = 2..5 standard normal
// values: 1/sqrt(pi), 3/(2 sqrt(pi)), 6 atan(sqrt 2) / pi^(3/2) and
// 5/(4 sqrt(pi)) (1 + 6/pi asin(1/3)).
TEST(NormalScores, ClosedFormsForSmallSamples) {
  const double root_pi = std::sqrt(kPi);
  EXPECT_NEAR(NormalScore(2, 2), 1.0 / root_pi, 1e-15);
  EXPECT_NEAR(NormalScore(3, 3), 1.5 / root_pi, 1e-15);
  EXPECT_NEAR(NormalScore(4, 4), 6.0 * std::atan(std::sqrt(2.0)) / (kPi * root_pi), 1e-15);
  EXPECT_NEAR(NormalScore(5, 5), 1.25 / root_pi * (1.0 + 6.0 / kPi * std::asin(1.0 / 3.0)), 1e-15);
  EXPECT_EQ(NormalScore(1, 1), 0.0);
  EXPECT_EQ(NormalScore(2, 3), 0.0);
}

// Order statistics of any continuous distribution obey the triangle rule
// (n - i) E[X(i:n)] + i E[X(i+1:n)] = n E[X(i:n-1)], which ties together
// three integrals the code computes independently.
TEST(NormalScores, TriangleRuleAcrossAWholeSample) {
  constexpr int n = 5000;
  double previous = NormalScore(1, n);
  for (int i = 1; i < n; ++i) {
    const double next = NormalScore(i + 1, n);
    if (i % 97 == 1 || i > n - 3) {
      EXPECT_NEAR((n - i) * previous + i * next, n * NormalScore(i, n - 1), 1e-10) << "i = " << i;
    }
    EXPECT_GT(next, previous);
    previous = next;
  }
  for (int m : {6, 7, 31})
    for (int i = 1; i < m; ++i)
      EXPECT_NEAR((m - i) * NormalScore(i, m) + i * NormalScore(i + 1, m), m * NormalScore(i, m - 1), 1e-13);
}

}  // namespace
}  // namespace orvik::stats
