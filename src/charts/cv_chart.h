#pragma once

#include <vector>

#include "charts/chart_input.h"
#include "charts/control_limits.h"

namespace orvik::charts {

// The coefficient of variation of each subgroup, s / x-bar with the sample
// standard deviation, rounded to 12 places as the chart plots it.
std::vector<double> SubgroupCVs(const Subgroups& groups);

// The in-control CV estimated from the subgroups: the root mean square of
// their coefficients of variation.
double RootMeanSquareCV(const std::vector<double>& cvs);

// The CV chart's limits for subgroups of n values and the in-control CV
// `cv`: CL = cv, LCL and UCL the alpha/2 and 1 - alpha/2 quantiles of the
// sample CV given a positive mean, the 2-sigma lines its 0.02275 and
// 0.97725 quantiles, all rounded to 12 places. Throws ChartComputationError
// when cv is not positive and finite.
ControlLimits CVLimits(long n, double cv, double alpha);

}  // namespace orvik::charts
