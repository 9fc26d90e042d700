#pragma once

// The sample coefficient of variation of normal subgroups: its density, its
// integral by Simpson's three-eighths rule, its quantiles and the limits of
// the coefficient-of-variation control chart.
//
// Every function returns NaN when an argument is NaN or invalid (a subgroup
// size that is not a whole number from 2 to 999999, an in-control CV that is not
// positive and finite, a probability outside (0, 1)); none throws.

#include "stats/simpson38.h"

namespace orvik::stats {

// The density at c of the sample CV s / x-bar of n normal values whose
// coefficient of variation is `cv` (sigma / mu, mu > 0). Over the whole real
// line it integrates to 1: the mass Phi(sqrt(n) / cv) lies above 0, the rest,
// from subgroups with a negative mean, below. For n = 2 the density jumps at
// 0; there c = +0.0 gives the limit from above and c = -0.0 the limit from
// below.
double CVDensity(double c, double n, double cv);

// The integral of CVDensity(., n, cv) over [lower, upper] by Simpson's
// three-eighths rule with `intervals` equal steps (a whole number of at least
// 1). The chart integrates from 0 with 10000 intervals.
double Simpson38(double lower, double upper, double intervals, double n, double cv);

// The four-argument form reads the in-control CV from the library: the one
// SetCVInControl set last on the calling thread (NaN, and so a NaN integral,
// until it is set).
void SetCVInControl(double cv);
double CVInControl();
double Simpson38(double lower, double upper, double intervals, double n);

// P(0 < CV-hat <= c | x-bar > 0): the distribution of the sample CV of the
// subgroups with a positive mean, from the Simpson integral of the density
// over [0, c] with 10000 intervals, divided by Phi(sqrt(n) / cv).
double CVDistribution(double c, double n, double cv);

// The p-quantile of that distribution: the c at which CVDistribution is p,
// found by Newton's method on the Simpson integral, safeguarded by bisection.
double CVQuantile(double p, double n, double cv);

// The limits of the CV control chart at a false-alarm probability of 0.0027:
// the 0.99865 and 0.00135 quantiles for subgroups of n values and the
// in-control CV g / 10000 (g = 500 is a CV of 0.05).
double CVHighBT(int n, int g);
double CVLowBT(int n, int g);

}  // namespace orvik::stats
