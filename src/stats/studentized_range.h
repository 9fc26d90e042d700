#pragma once

// The studentized range distribution: the range of k independent standard
// normal values divided by an independent estimate s of their standard
// deviation with df degrees of freedom (s^2 df distributed as chi-square
// with df degrees of freedom). Tukey's simultaneous comparisons of k means
// take their critical values and adjusted p-values from it.
//
// k is a whole number 2 <= k <= 1000; df > 0 (not necessarily an integer,
// +infinity for a known standard deviation). Every function returns NaN
// for a NaN argument, a k or df outside those ranges, or a probability
// outside [0, 1]; it never throws. Accurate to 1e-11 relative in both
// tails (tested for k 2 to 100 and df 1 to infinity, tails down to 1e-20).
// A probability costs a few milliseconds, a quantile some tens.

namespace orvik::stats {

// P(Q <= q); 0 for q <= 0.
double GetDFTukey(double q, double k, double df);

// P(Q > q), computed directly; 1 for q <= 0.
double GetDFTukeyUpper(double q, double k, double df);

// q with P(Q <= q) = p; 0 for p = 0, +infinity for p = 1.
double GetInvTukey(double p, double k, double df);

// q with P(Q > q) = alpha: the critical value of Tukey's comparisons at
// level alpha.
double GetInvTukeyUpper(double alpha, double k, double df);

}  // namespace orvik::stats
