#pragma once

// The F distribution with df1 > 0 numerator and df2 > 0 denominator degrees
// of freedom (not necessarily integers; either may be +infinity, the limits
// chi-square(df1) / df1 and df2 / chi-square(df2), and both infinite is the
// point mass at 1). Every function returns NaN for a NaN argument, a degree
// of freedom not positive, or a probability outside [0, 1]; it never throws.
// Accurate to 1e-13 relative in both tails (tested from 0.5 to 1e7 degrees
// of freedom); beyond 1e7 the results stay accurate, but near the centre the
// time grows with sqrt(df), to about a millisecond at 1e10.

namespace orvik::stats {

// P(X <= f); 0 for f <= 0.
double GetDFF(double f, double df1, double df2);

// P(X > f), computed directly; 1 for f <= 0.
double GetDFFUpper(double f, double df1, double df2);

// f with P(X <= f) = p; 0 for p = 0, +infinity for p = 1.
double GetInvF(double p, double df1, double df2);

// f with P(X > f) = q.
double GetInvFUpper(double q, double df1, double df2);

}  // namespace orvik::stats
