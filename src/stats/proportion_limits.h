#pragma once

namespace orvik::stats {

// Control limits of a proportion of nonconforming units in samples of n.
//
// PChart(p_bar, n) is the upper limit p_bar + 3 sqrt(p_bar (1 - p_bar) / n)
// and PChart2(p_bar, n) the lower limit p_bar - 3 sqrt(...), each rounded
// to 8 decimal places and then held within [0, 1]: no proportion lies
// outside it, so a limit beyond it would mark nothing. n need not be whole
// (an average sample size). NaN in, or p_bar outside [0, 1], or n not
// positive, gives NaN.
double PChart(double p_bar, double n);
double PChart2(double p_bar, double n);

// The line p_bar + sigmas sqrt(p_bar (1 - p_bar) / n), rounded to 8 places
// and held within [0, 1], for any number of sigmas (negative below the
// centre); PChart and PChart2 are the lines at +3 and -3. Invalid arguments
// as above.
double ProportionLine(double p_bar, double n, double sigmas);

// The standard deviation sqrt(p_bar (1 - p_bar) / n) of a proportion in a
// sample of n (binomial), unrounded. Invalid arguments as above.
double ProportionSigma(double p_bar, double n);

}  // namespace orvik::stats
