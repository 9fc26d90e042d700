#pragma once

#include <span>

namespace orvik::stats {

// Order statistics of a sample sorted ascending, x(1) <= ... <= x(N).

// The median: the middle value for odd N, the mean of the two middle values
// for even N. NaN for an empty sample.
double SortedMedian(std::span<const double> sorted);

// The value at a 1-based, possibly fractional, position p of the sorted
// sample: with j = Int(p) and f = p - j, x(j) + f (x(j + 1) - x(j)); x(j)
// itself when f = 0. This is the (N + 1) rule of the quartiles: Q1 at
// position (N + 1) / 4, Q3 at 3 (N + 1) / 4. A position below 1 reads x(1)
// and one above N reads x(N), so very small samples still get quartiles
// inside their own range. NaN for an empty sample.
double ValueAtPosition(std::span<const double> sorted, double position);

}  // namespace orvik::stats
