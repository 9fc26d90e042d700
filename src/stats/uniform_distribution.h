#pragma once

// The continuous uniform distribution on [lower, upper]. Every function
// returns NaN for a NaN argument, bounds that are not finite or not
// lower < upper, or a probability outside [0, 1]; it never throws.

namespace orvik::stats {

// P(X <= x) = (x - lower) / (upper - lower), clamped to [0, 1].
double GetDFUniform(double x, double lower, double upper);
// P(X > x) = (upper - x) / (upper - lower), clamped to [0, 1].
double GetDFUniformUpper(double x, double lower, double upper);
// x with P(X <= x) = p.
double GetInvUniform(double p, double lower, double upper);
// x with P(X > x) = q.
double GetInvUniformUpper(double q, double lower, double upper);
// 1 / (upper - lower) inside the bounds, 0 outside.
double UniformDensity(double x, double lower, double upper);

}  // namespace orvik::stats
