#pragma once

// The Weibull distribution with shape k > 0 and scale lambda > 0,
// P(X <= x) = 1 - exp(-(x / lambda)^k) for x >= 0, and its special case
// k = 1, the exponential distribution, given by its mean. Every function
// returns NaN for a NaN argument, a parameter not positive and finite, or a
// probability outside [0, 1]; it never throws.

namespace orvik::stats {

// P(X <= x); 0 for x <= 0.
double GetDFWeibull(double x, double shape, double scale);
// P(X > x), computed directly; 1 for x <= 0.
double GetDFWeibullUpper(double x, double shape, double scale);
// x with P(X <= x) = p; 0 for p = 0, +infinity for p = 1.
double GetInvWeibull(double p, double shape, double scale);
// x with P(X > x) = q.
double GetInvWeibullUpper(double q, double shape, double scale);
// The density; 0 for x < 0.
double WeibullDensity(double x, double shape, double scale);

// The exponential distribution with the given mean: the Weibull
// distribution of shape 1 and scale `mean`.
double GetDFExponential(double x, double mean);
double GetDFExponentialUpper(double x, double mean);
double GetInvExponential(double p, double mean);
double GetInvExponentialUpper(double q, double mean);
double ExponentialDensity(double x, double mean);

}  // namespace orvik::stats
