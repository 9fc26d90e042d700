#pragma once

// The regularized incomplete gamma functions
//   P(a, x) = gamma(a, x) / Gamma(a),  Q(a, x) = Gamma(a, x) / Gamma(a),
// each computed directly, so that whichever is small keeps its relative
// accuracy. Both return NaN for NaN arguments, a <= 0 or x < 0.

#include "stats/double_double.h"

namespace orvik::stats {

double RegularizedGammaP(double a, double x);
double RegularizedGammaQ(double a, double x);

namespace detail {

struct GammaTails {
  double lower = 0.0;  // P(a, x)
  double upper = 0.0;  // Q(a, x)
  double power = 0.0;  // x^a e^-x / Gamma(a + 1); x times the density is a * power
};

// For a > 0 and x >= 0 (x in double-double; only its exponent uses the low
// part). Infinite x gives {1, 0, 0}.
GammaTails IncompleteGamma(double a, DD x);

}  // namespace detail

}  // namespace orvik::stats
