// The double-double logarithm.
//
// Method: table-driven argument reduction (P. T. P. Tang, "Table-driven
// implementation of the logarithm function in IEEE floating-point
// arithmetic", ACM TOMS 16, 1990): x = f 2^e with f in [1/sqrt 2, sqrt 2),
// f = c (1 + r) with c = j / 128 the nearest table point, and
// ln f = ln c + 2 atanh(u), u = (f - c) / (f + c), |u| < 0.0028. f - c is
// exact; 2u is kept in double-double and u^3 / 3 + u^5 / 5 + u^7 / 7 (below
// 3e-6 of the whole) in double. The table values ln(j / 128) are summed in
// double-double once, from the same series with the larger u of f = j / 128
// about 1, where the first two odd powers are kept in double-double.

#include <array>
#include <cmath>

#include "stats/double_double.h"

namespace orvik::stats::detail {

namespace {

constexpr double kLn2Hi = 6.93147180559945286227e-01;
constexpr double kLn2Lo = 2.31904681384629955842e-17;
constexpr int kFirst = 90;  // 90 / 128 < 1 / sqrt 2
constexpr int kLast = 182;  // 182 / 128 > sqrt 2

// ln f for f in [1/sqrt 2, sqrt 2) by the plain series about 1, used only to
// build the table: ln f = 2u + 2u^3/3 + 2u^5 (1/5 + u^2/7 + ...),
// u = (f - 1) / (f + 1), |u| < 0.18.
DD LogNearOne(double f) {
  const DD u = DD{f - 1.0, 0.0} / TwoSum(f, 1.0);
  const DD u2 = u * u;
  constexpr DD kTwoThirds = {6.66666666666666629659e-01, 3.70074341541718847e-17};
  const DD cube_term = u2 * u * kTwoThirds;
  double series = 0.0;
  for (int j = 12; j >= 0; --j) series = series * u2.hi + 1.0 / (2 * j + 5);
  return DD{2.0 * u.hi, 2.0 * u.lo} + cube_term + 2.0 * u.hi * u2.hi * u2.hi * series;
}

}  // namespace

DD LogDD(double x) {
  static const std::array<DD, kLast - kFirst + 1> table = [] {
    std::array<DD, kLast - kFirst + 1> t{};
    for (int j = kFirst; j <= kLast; ++j) {
      const double c = j / 128.0;
      t[j - kFirst] = c < 1.4142135623730951 ? LogNearOne(c) : LogNearOne(0.5 * c) + DD{kLn2Hi, kLn2Lo};
    }
    return t;
  }();
  int e = 0;
  double f = std::frexp(x, &e);
  if (f < 0.70710678118654752) {
    f *= 2.0;
    --e;
  }
  const int j = static_cast<int>(std::lround(f * 128.0));
  const double c = j / 128.0;
  const DD u = DD{f - c, 0.0} / TwoSum(f, c);
  const double u2 = u.hi * u.hi;
  const double rest = 2.0 * u.hi * u2 * (1.0 / 3.0 + u2 * (1.0 / 5.0 + u2 * (1.0 / 7.0)));
  const DD ln_f = table[j - kFirst] + DD{2.0 * u.hi, 2.0 * u.lo} + rest;
  const DD e_ln2 = TwoProduct(static_cast<double>(e), kLn2Hi) + static_cast<double>(e) * kLn2Lo;
  return e_ln2 + ln_f;
}

}  // namespace orvik::stats::detail
