#pragma once

// The normal distribution: both tails and the quantile.
//
// Every function returns NaN when an argument is NaN or a parameter is
// invalid (standard deviation not positive and finite, probability outside
// [0, 1]); it never throws.

#include "stats/double_double.h"

namespace orvik::stats {

// P(X <= x) for X normal with the given mean and standard deviation.
double GetDFNormal(double x, double mean, double sd);

// P(X > x), computed directly rather than as 1 - GetDFNormal, so that it
// keeps full relative accuracy far in the upper tail.
double GetDFNormalUpper(double x, double mean, double sd);

// The standard normal quantile: z with P(Z <= z) = p. p = 0 gives -infinity,
// p = 1 gives +infinity.
double GetInvNormal(double p);

// z with P(Z > z) = q, accurate for q near 0 where 1 - q would lose digits.
double GetInvNormalUpper(double q);

namespace detail {

// P(Z > z) for a standard normal Z, with z given in double-double so that
// callers who form z from other quantities keep its exponent exact.
double NormalUpper(DD z);
inline double NormalUpper(double z) { return NormalUpper(DD{z, 0.0}); }

// P(Z <= z) - 1/2, with full relative accuracy near z = 0.
double NormalCentered(double z);

// The standard normal density.
double NormalDensity(double z);

}  // namespace detail

}  // namespace orvik::stats
