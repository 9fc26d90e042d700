#include "stats/order_statistics.h"

#include <cmath>
#include <limits>

namespace orvik::stats {

double SortedMedian(std::span<const double> sorted) {
  const std::size_t n = sorted.size();
  if (n == 0) return std::numeric_limits<double>::quiet_NaN();
  if (n % 2 == 1) return sorted[n / 2];
  return (sorted[n / 2 - 1] + sorted[n / 2]) / 2.0;
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
  return sorted[j - 1] + fraction * (sorted[j] - sorted[j - 1]);
}

}  // namespace orvik::stats
