#pragma once

#include "analyses/analysis_settings.h"

namespace orvik::analyses {

// Both tail probabilities of a statistic, each from the library's own
// function for that tail (the upper one never as 1 - CDF, which loses the
// digits of small p-values).
struct Tails {
  double lower = 0.5;  // P(X <= statistic)
  double upper = 0.5;  // P(X > statistic)
};

Tails NormalTails(double z);
Tails TTails(double t, double df);
Tails ChiSquareTails(double chi_square, double df);
Tails FTails(double f, double df1, double df2);

// The p-value for the alternative: the tail in the direction of H1 for a
// one-sided test (so a statistic on the other side gives p > 0.5), twice
// the smaller tail for a two-sided one (t = 0 gives 1).
double PValue(const Tails& tails, Alternative alternative);

// "Reject H0" when p < alpha, otherwise "Fail to reject H0": a p-value
// equal to alpha is not rejected. `alpha` is a fraction (0.05), compared
// with the unrounded p-value.
const char* Decision(double p_value, double alpha);

}  // namespace orvik::analyses
