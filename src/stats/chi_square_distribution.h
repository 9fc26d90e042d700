#pragma once

// The chi-square distribution with df > 0 degrees of freedom (not
// necessarily an integer). Every function returns NaN for a NaN argument, df
// not positive and finite, or a probability outside [0, 1]; it never throws.
// Accurate to 1e-13 relative in both tails (tested from 0.5 to 1e7 degrees
// of freedom); beyond 1e7 the results stay accurate, but near the centre the
// time grows with sqrt(df), to about a millisecond at 1e10.

namespace orvik::stats {

// P(X <= x); 0 for x <= 0.
double GetDFChisq(double x, double df);

// P(X > x), computed directly; 1 for x <= 0.
double GetDFChisqUpper(double x, double df);

// x with P(X <= x) = p; 0 for p = 0, +infinity for p = 1.
double GetInvChisq(double p, double df);

// x with P(X > x) = q.
double GetInvChisqUpper(double q, double df);

}  // namespace orvik::stats
