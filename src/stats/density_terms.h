#pragma once

// Building blocks for the densities behind the gamma, chi-square, beta, t and
// F distributions, written so that no large quantity is formed and then
// cancelled.
//
// Method: Catherine Loader, "Fast and accurate computation of binomial
// probabilities" (2000). Gamma(z) is split as sqrt(2 pi) z^(z - 1/2) e^-z
// times e^delta(z), where delta is Stirling's error term, and a power such as
// x^a e^-x is written through the deviance bd0(a, x) = a ln(a / x) + x - a,
// which stays small and exact where the power itself would overflow. Here
// the deviance is evaluated in double-double (double_double.h).

#include "stats/double_double.h"

namespace orvik::stats::detail {

// e^delta(z) = Gamma(z) e^z / (sqrt(2 pi) z^(z - 1/2)) for z > 0. Below 15
// from the gamma function, above from the Stirling series (Bernoulli numbers
// B2 to B14), which is exact to the last bit there.
double StirlingFactor(double z);

// bd0(k, m) = k ln(k / m) + m - k >= 0 for k > 0, m > 0, in double-double.
// Near k = m it is summed from v = (k - m) / (k + m) as
// (k - m) v + 2k (v^3 / 3 + v^5 / 5 + ...), with the leading term exact;
// elsewhere from double-double logarithms.
DD Bd0(DD k, DD m);

// x^a e^-x / Gamma(a + 1) for a > 0 and x >= 0 (x in double-double): the
// factor in front of the series and continued fraction of the incomplete
// gamma function.
double GammaPowerTerm(double a, DD x);

// x^a y^b / B(a, b) for a, b > 0 and x + y = 1, with x and y given in
// double-double (the callers form them from their own arguments without
// rounding). x or y may be zero.
double BetaPowerTerm(double a, double b, DD x, DD y);

// ln(1 / (a B(a, b))) = ln Gamma(a + b) - ln Gamma(a + 1) - ln Gamma(b), for
// the leading term of the incomplete beta function at arguments so small
// that x itself underflows. Accurate to a few units of 1e-16 absolute while
// a is below 50.
double LogInverseABeta(double a, double b);

}  // namespace orvik::stats::detail
