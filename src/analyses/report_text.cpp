#include "analyses/report_text.h"

#include <cmath>
#include <cstdio>

#include "stats/decimal_numbers.h"

namespace orvik::analyses {

std::string SixDecimals(double value) {
  // Round first so that a tie goes to the even digit as everywhere else in
  // the reports; the rounded double then prints its six places exactly.
  const double rounded = stats::Round(value, 6);
  if (!std::isfinite(rounded)) return stats::FormatNumber(rounded);
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", rounded == 0.0 ? 0.0 : rounded);
  return text;
}

std::string BoundText(double bound) { return stats::FormatNumber(stats::Round(bound, 8)); }

std::string IntervalText(double lower, double upper) {
  return "(" + BoundText(lower) + " , " + BoundText(upper) + ")";
}

std::string EmptyIntervalText() {
  return std::string("(") + kZeroSixDecimals + " , " + kZeroSixDecimals + ")";
}

std::string StatisticText(double statistic) { return stats::FormatNumber(stats::Round(statistic, 6)); }

}  // namespace orvik::analyses
