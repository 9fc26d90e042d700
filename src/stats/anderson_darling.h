#pragma once

// The Anderson-Darling test of normality with the mean and standard
// deviation estimated from the sample (T. W. Anderson and D. A. Darling,
// Journal of the American Statistical Association 49, 1954; R. B.
// D'Agostino and M. A. Stephens, Goodness-of-Fit Techniques, 1986,
// section 4.8 and Table 4.9).

#include <span>

namespace orvik::stats {

struct AndersonDarlingResult {
  double a2 = 0.0;          // A^2
  double a2Adjusted = 0.0;  // A^2 (1 + 0.75 / n + 2.25 / n^2)
  double p_value = 0.0;     // from the adjusted statistic
};

// A^2 of the sample (any order, at least 3 values, not all equal: otherwise
// NaN for all three). A NaN value gives NaN.
AndersonDarlingResult AndersonDarling(std::span<const double> sample);

// The p-value of an adjusted statistic by D'Agostino and Stephens's four
// exponential pieces, clamped to [0, 1].
double AndersonDarlingPValue(double a2_adjusted);

}  // namespace orvik::stats
