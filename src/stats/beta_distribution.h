#pragma once

// The beta distribution with shapes a > 0 and b > 0 on [0, 1]. Every
// function returns NaN for a NaN argument, a shape not positive and finite,
// or a probability outside [0, 1]; it never throws.

namespace orvik::stats {

// P(X <= x) = I_x(a, b); 0 for x <= 0, 1 for x >= 1.
double GetDFBeta(double x, double a, double b);
// P(X > x) = I_(1-x)(b, a), computed directly; 1 for x <= 0, 0 for x >= 1.
double GetDFBetaUpper(double x, double a, double b);
// x with P(X <= x) = p.
double GetInvBeta(double p, double a, double b);
// x with P(X > x) = q.
double GetInvBetaUpper(double q, double a, double b);
// The density x^(a-1) (1-x)^(b-1) / B(a, b); 0 outside [0, 1].
double BetaDensity(double x, double a, double b);

}  // namespace orvik::stats
