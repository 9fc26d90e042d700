// A^2 = -n - (1/n) sum (2i - 1) [ln Phi(z(i)) + ln(1 - Phi(z(n + 1 - i)))]
// with z = (x - mean) / s (divisor n - 1) of the sorted sample; the
// logarithms of both tails come from the library's direct lower and upper
// normal tails, so far-out values keep their weight. The p-value of the
// adjusted statistic follows D'Agostino and Stephens (1986), Table 4.9.

#include "stats/anderson_darling.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "stats/compensated_sum.h"
#include "stats/normal_distribution.h"

namespace orvik::stats {

AndersonDarlingResult AndersonDarling(std::span<const double> sample) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const std::size_t count = sample.size();
  std::vector<double> x(sample.begin(), sample.end());
  if (count < 3 || std::any_of(x.begin(), x.end(), [](double v) { return std::isnan(v); })) return {kNaN, kNaN, kNaN};
  std::sort(x.begin(), x.end());
  if (x.front() == x.back()) return {kNaN, kNaN, kNaN};
  const double n = static_cast<double>(count);
  const double mean = CompensatedTotal(x) / n;
  CompensatedSum squares;
  for (const double v : x) squares.Add((v - mean) * (v - mean));
  const double sd = std::sqrt(squares.Value() / (n - 1.0));
  CompensatedSum sum;
  for (std::size_t i = 0; i < count; ++i) {
    const double lower = std::log(GetDFNormal(x[i], mean, sd));
    const double upper = std::log(GetDFNormalUpper(x[count - 1 - i], mean, sd));
    sum.Add((2.0 * static_cast<double>(i) + 1.0) * (lower + upper));
  }
  AndersonDarlingResult result;
  result.a2 = -n - sum.Value() / n;
  result.a2Adjusted = result.a2 * (1.0 + 0.75 / n + 2.25 / (n * n));
  result.p_value = AndersonDarlingPValue(result.a2Adjusted);
  return result;
}

double AndersonDarlingPValue(double a) {
  if (std::isnan(a)) return a;
  double p = 0.0;
  if (a >= 0.6) p = std::exp(1.2937 - 5.709 * a + 0.0186 * a * a);
  else if (a >= 0.34) p = std::exp(0.9177 - 4.279 * a - 1.38 * a * a);
  else if (a >= 0.2) p = -std::expm1(-8.318 + 42.796 * a - 59.938 * a * a);
  else p = -std::expm1(-13.436 + 101.14 * a - 223.73 * a * a);
  return std::clamp(p, 0.0, 1.0);
}

}  // namespace orvik::stats
