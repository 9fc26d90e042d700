#pragma once

// Student's t distribution with df > 0 degrees of freedom (not necessarily
// an integer; df = +infinity is the standard normal). Every function returns
// NaN for a NaN argument, df not positive, or a probability outside [0, 1];
// it never throws. Accurate to 1e-13 relative in both tails (tested from
// 0.5 to 1e7 degrees of freedom).

namespace orvik::stats {

// P(T <= t).
double GetDFT(double t, double df);

// P(T > t), computed directly.
double GetDFTUpper(double t, double df);

// t with P(T <= t) = p; -infinity for p = 0, +infinity for p = 1.
double GetInvT(double p, double df);

// t with P(T > t) = q.
double GetInvTUpper(double q, double df);

}  // namespace orvik::stats
