#pragma once

#include <string>
#include <vector>

#include "charts/control_limits.h"

namespace orvik::charts {

// Adds code `letter` followed by a blank to a row's code text unless that
// two-character code is already in it.
void AppendCode(std::string& codes, char letter);

// The out-of-limit test: a point strictly below LCL or strictly above UCL
// gets "* " as its whole code text (assigned, so it always comes first).
// `codes` is resized to the number of values.
void MarkOutOfLimits(const std::vector<double>& values, const ControlLimits& limits,
                     std::vector<std::string>& codes);

// Applies the run rules A to I, in that order, to `values` and appends their
// codes to `codes` (one text per point, already holding the "* " codes).
// The limits come in the order CL, UCL, UpperTwoSigma, LCL, LowerTwoSigma.
// Every rule walks the points once and marks each point at most once per
// rule, so the time is linear in the number of points.
void CheckRunRules(const std::vector<double>& values, double cl, double ucl, double upper_two_sigma,
                   double lcl, double lower_two_sigma, std::vector<std::string>& codes);

// Both steps for one chart: "* " codes, then rules A to I.
std::vector<std::string> OutOfControlCodes(const std::vector<double>& values, const ControlLimits& limits);

// The 1-based numbers of the points that carry any code; the chart draws
// them in the marked style.
std::vector<long> MarkedPoints(const std::vector<std::string>& codes);

}  // namespace orvik::charts
