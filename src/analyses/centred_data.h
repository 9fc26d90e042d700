#pragma once

#include <span>
#include <vector>

namespace orvik::analyses {

// Values taken as deviations from a reference value, each deviation formed
// on the decimal texts the user typed (stats::DecimalDifference), so that
// data of many constant leading digits (1000000000000.4, ...) keep every
// digit of their spread. Sums of squares and means of the regression and
// analyses of variance are formed from the deviations.
struct CentredData {
  double reference = 0.0;
  std::vector<double> deviations;

  // The value of a deviation (or of a mean of deviations) in the data's
  // own units.
  double Value(double deviation) const { return reference + deviation; }
};

// `values` about their first value (reference 0 for an empty span).
CentredData Centre(std::span<const double> values);
// `values` about the given reference.
CentredData Centre(std::span<const double> values, double reference);

// The compensated mean of `values` (NaN for none).
double Mean(std::span<const double> values);
// The compensated sum of squared deviations from `mean`.
double SquaredDeviations(std::span<const double> values, double mean);

}  // namespace orvik::analyses
