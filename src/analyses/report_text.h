#pragma once

#include <string>

namespace orvik::analyses {

// The text shown for a p-value, or for a value that stands in for one: six
// decimals always written out ("0.000000", "1.000000", "0.048123"), after
// decimal rounding with ties to the even digit.
inline constexpr const char* kZeroSixDecimals = "0.000000";
std::string SixDecimals(double value);

// A confidence bound as shown: rounded to 8 places, shortest text.
std::string BoundText(double bound);

// An interval as shown: "(" lower " , " upper ")", each bound by BoundText.
std::string IntervalText(double lower, double upper);

// The interval shown where none can be given ("(0.000000 , 0.000000)").
std::string EmptyIntervalText();

// A test statistic as shown: rounded to 6 places, shortest text.
std::string StatisticText(double statistic);

}  // namespace orvik::analyses
