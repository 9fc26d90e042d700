#pragma once

// The regularized incomplete beta function I_x(a, b) and its complement
// 1 - I_x(a, b) = I_(1-x)(b, a), each computed directly. Both return NaN for
// NaN arguments, a or b not positive and finite, or x outside [0, 1].

#include "stats/double_double.h"

namespace orvik::stats {

double RegularizedBeta(double x, double a, double b);
double RegularizedBetaUpper(double x, double a, double b);

namespace detail {

struct BetaTails {
  double lower = 0.0;  // I_x(a, b)
  double upper = 0.0;  // I_y(b, a) = 1 - I_x(a, b)
  double power = 0.0;  // x^a y^b / B(a, b)
};

// For a, b > 0 and x + y = 1, both given in double-double by a caller who
// can form them from its own arguments without rounding (the t and F
// distributions); the power term, and with it the result, then keeps its
// relative accuracy however large a and b are.
BetaTails IncompleteBeta(double a, double b, DD x, DD y);

// I_x(a, b) for x so small that (a + b) x < 1e-20 (x may underflow), from
// ln x: the leading term x^a / (a B(a, b)) of the power series, to which the
// next term adds less than 1e-20.
BetaTails IncompleteBetaTinyX(double a, double b, DD log_x);

}  // namespace detail

}  // namespace orvik::stats
