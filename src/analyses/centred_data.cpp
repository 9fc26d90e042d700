#include "analyses/centred_data.h"

#include <limits>

#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

CentredData Centre(std::span<const double> values) {
  return Centre(values, values.empty() ? 0.0 : values.front());
}

CentredData Centre(std::span<const double> values, double reference) {
  CentredData data;
  data.reference = reference;
  data.deviations.reserve(values.size());
  for (const double v : values) data.deviations.push_back(stats::DecimalDifference(v, reference));
  return data;
}

double Mean(std::span<const double> values) {
  if (values.empty()) return std::numeric_limits<double>::quiet_NaN();
  return stats::CompensatedTotal(values) / static_cast<double>(values.size());
}

double SquaredDeviations(std::span<const double> values, double mean) {
  stats::CompensatedSum sum;
  for (const double v : values) sum.Add((v - mean) * (v - mean));
  return sum.Value();
}

}  // namespace orvik::analyses
