#pragma once

// The gamma distribution with shape a > 0 and scale s > 0 (mean a s). Every
// function returns NaN for a NaN argument, a parameter not positive and
// finite, or a probability outside [0, 1]; it never throws. Accurate to
// 1e-13 relative in both tails, as the chi-square distribution it shares its
// functions with.

namespace orvik::stats {

// P(X <= x); 0 for x <= 0.
double GetDFGamma(double x, double shape, double scale);
// P(X > x), computed directly; 1 for x <= 0.
double GetDFGammaUpper(double x, double shape, double scale);
// x with P(X <= x) = p; 0 for p = 0, +infinity for p = 1.
double GetInvGamma(double p, double shape, double scale);
// x with P(X > x) = q.
double GetInvGammaUpper(double q, double shape, double scale);
// The density; 0 for x < 0.
double GammaDensity(double x, double shape, double scale);

}  // namespace orvik::stats
