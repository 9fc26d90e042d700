// Shewhart limits of the fraction nonconforming: the binomial standard
// deviation sqrt(p (1 - p) / n) of a proportion in a sample of n, and the
// limits at three of them about the centre line (Montgomery, Introduction
// to Statistical Quality Control, 7th ed., 2013, section 7.2.1, eq. 7.8;
// variable sample sizes section 7.2.2).

#include "stats/proportion_limits.h"

#include <cmath>
#include <limits>

#include "stats/decimal_numbers.h"

namespace orvik::stats {

namespace {

bool ValidArguments(double p_bar, double n) { return p_bar >= 0.0 && p_bar <= 1.0 && n > 0.0; }

}  // namespace

double ProportionSigma(double p_bar, double n) {
  if (!ValidArguments(p_bar, n)) return std::numeric_limits<double>::quiet_NaN();
  return std::sqrt(p_bar * (1.0 - p_bar) / n);
}

double ProportionLine(double p_bar, double n, double sigmas) {
  if (!ValidArguments(p_bar, n) || std::isnan(sigmas)) return std::numeric_limits<double>::quiet_NaN();
  const double line = Round(p_bar + sigmas * ProportionSigma(p_bar, n), 8);
  if (line > 1.0) return 1.0;
  if (line < 0.0) return 0.0;
  return line;
}

double PChart(double p_bar, double n) { return ProportionLine(p_bar, n, 3.0); }

double PChart2(double p_bar, double n) { return ProportionLine(p_bar, n, -3.0); }

}  // namespace orvik::stats
