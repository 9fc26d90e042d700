#include "stats/order_statistics.h"

#include <cmath>
#include <limits>

namespace orvik::stats {

double SortedMedian(std::span<const double> sorted) {
  const std::size_t n = sorted.size();
  if (n == 0) return std::numeric_limits<double>::quiet_NaN();
  if (n % 2 == 1) return sorted[n / 2];
  const double a = sorted[n / 2 - 1], b = sorted[n / 2];
  const double sum = a + b;
  // Two values near the largest double overflow their sum, not their mean.
  if (!std::isfinite(sum) && std::isfinite(a) && std::isfinite(b)) return a / 2.0 + b / 2.0;
  return sum / 2.0;
}

double ValueAtPosition(std::span<const double> sorted, double position) {
  const std::size_t n = sorted.size();
  if (n == 0 || std::isnan(position)) return std::numeric_limits<double>::quiet_NaN();
  if (position <= 1.0) return sorted.front();
  if (position >= static_cast<double>(n)) return sorted.back();
  const double whole = std::floor(position);
  const double fraction = position - whole;
  const auto j = static_cast<std::size_t>(whole);  // 1-based
  if (fraction == 0.0) return sorted[j - 1];
  const double a = sorted[j - 1], b = sorted[j];
  const double step = b - a;
  // Values of opposite signs near the largest double overflow their
  // difference; the weighted mean of the two is still representable.
  if (!std::isfinite(step) && std::isfinite(a) && std::isfinite(b)) return (1.0 - fraction) * a + fraction * b;
  return a + fraction * step;
}

}  // namespace orvik::stats
