#pragma once

// Compensated summation: Neumaier's improved Kahan-Babuska algorithm
// (A. Neumaier, "Rundungsfehleranalyse einiger Verfahren zur Summation
// endlicher Summen", Zeitschrift fuer Angewandte Mathematik und Mechanik 54,
// 1974, pp. 39-51).
//
// Each addition s + x is followed by the exact error of its rounding, found
// from whichever of s and x is larger in magnitude, and the errors are summed
// apart. The result is within about one rounding of the exact sum plus
// n u^2 times the sum of the magnitudes (u = 2^-53), whatever the order of the
// terms, where plain summation errs by up to n u times the sum of the
// magnitudes. The analyses need it because their running sums hold values
// large against their spread: 1001 readings of 10000000.2 +- 0.1 summed
// plainly end 1e-4 off, which a report of 15 significant digits shows.
//
// The error terms are exact only under IEEE double arithmetic evaluated as
// written: the code must not be compiled with value-changing optimisations
// such as -ffast-math or -fassociative-math, which would fold them to zero.

#include <cmath>
#include <span>

namespace orvik::stats {

class CompensatedSum {
 public:
  void Add(double x) {
    const double t = sum_ + x;
    // Of the two addends, the smaller one's low-order digits are what the
    // rounding of t dropped; the larger one passes into t exactly.
    if (std::fabs(sum_) >= std::fabs(x)) compensation_ += (sum_ - t) + x;
    else compensation_ += (x - t) + sum_;
    sum_ = t;
  }

  // The sum of the values added so far (0 for none). A sum that overflows or
  // holds an infinity or NaN is what plain summation gives: an infinity of
  // its sign, or NaN.
  double Value() const {
    if (!std::isfinite(sum_)) return sum_;
    return sum_ + compensation_;
  }

 private:
  double sum_ = 0.0;
  double compensation_ = 0.0;
};

// The compensated sum of `values`.
inline double CompensatedTotal(std::span<const double> values) {
  CompensatedSum sum;
  for (const double x : values) sum.Add(x);
  return sum.Value();
}

}  // namespace orvik::stats
