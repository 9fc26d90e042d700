#pragma once

// The Shapiro-Wilk test of normality in Royston's approximation, for sample
// sizes 3 to 5,000.

#include <span>
#include <vector>

namespace orvik::stats {

struct ShapiroWilkResult {
  double w = 0.0;        // the statistic, in (0, 1]
  double p_value = 0.0;  // P(W <= w) under normality
};

// The coefficients a(1) < ... < a(n) of the test for a sample of n, 3 <= n
// <= 5000 (antisymmetric: a(n + 1 - i) = -a(i); their squares sum to 1).
// Throws std::out_of_range for other n.
std::vector<double> ShapiroWilkCoefficients(int n);

// W and its p-value for the sample (any order). Throws std::out_of_range for
// fewer than 3 or more than 5,000 values and std::invalid_argument when all
// values are equal. A NaN value gives NaN for both.
ShapiroWilkResult ShapiroWilk(std::span<const double> sample);

// The p-value of a statistic w for sample size n (a whole number 3..5000,
// otherwise std::out_of_range); NaN for w outside (0, 1].
double ShapiroWilkPValue(double w, double n);

// The 5 % critical value of W for sample size n, a whole number 3..49: a
// sample whose W is below it is rejected as non-normal at that level. Larger
// samples are asked with n = 49 by the callers. Other n throw
// std::out_of_range.
double WValue(double n);

}  // namespace orvik::stats
