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

// The mean of `values` (NaN for none). It is the compensated sum divided by
// the count; when that sum overflows although every value is finite, the
// values are summed scaled down by a power of two (exact, so the digits are
// those of the unscaled sum) and the mean scaled back: the mean of values
// near the largest double is itself representable.
inline double CompensatedMean(std::span<const double> values) {
  const double n = static_cast<double>(values.size());
  const double total = CompensatedTotal(values);
  if (std::isfinite(total)) return total / n;
  double largest = 0.0;
  for (const double x : values) {
    if (!std::isfinite(x)) return total / n;
    largest = std::fmax(largest, std::fabs(x));
  }
  const int power = std::ilogb(largest);
  CompensatedSum scaled;
  for (const double x : values) scaled.Add(std::ldexp(x, -power));
  return std::ldexp(scaled.Value() / n, power);
}

// The standard deviation of `values` about `mean` with `n - 1` in the
// denominator, sqrt(sum (x - mean)^2 / (n - 1)). When the squares overflow
// although the deviations are finite, the deviations are scaled down by a
// power of two before squaring and the root scaled back, so a deviation
// that is representable is returned as such.
inline double CompensatedStandardDeviation(std::span<const double> values, double mean) {
  const double denominator = static_cast<double>(values.size()) - 1.0;
  CompensatedSum squares;
  double largest = 0.0;
  for (const double x : values) {
    const double d = x - mean;
    squares.Add(d * d);
    largest = std::fmax(largest, std::fabs(d));
  }
  const double plain = std::sqrt(squares.Value() / denominator);
  if (std::isfinite(plain) || !std::isfinite(largest)) return plain;
  const int power = std::ilogb(largest);
  CompensatedSum scaled;
  for (const double x : values) {
    const double d = std::ldexp(x - mean, -power);
    scaled.Add(d * d);
  }
  return std::ldexp(std::sqrt(scaled.Value() / denominator), power);
}

}  // namespace orvik::stats
