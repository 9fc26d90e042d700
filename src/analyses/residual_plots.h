#pragma once

#include <span>
#include <string>

#include "shell/result_window.h"

namespace orvik::analyses {

// A normal probability plot named `name`: the sorted values (x) against
// their normal scores (y, stats::NormalScore; Blom's approximation above
// 5,000 values), with the line of the normal
// distribution of the values' mean and standard deviation,
// score = (x - mean) / sd. At least two values, not all equal.
shell::ChartSeries NormalProbabilityChart(const std::string& name, std::span<const double> values,
                                          const std::string& title, const std::string& x_title);

// The four residual plots of a fit, appended to the window's charts:
// "ResidualNormal" (normal probability), "ResidualFits" (versus fits),
// "ResidualOrder" (versus observation order) and "ResidualHistogram"
// (a histogram of about sqrt(n) classes, at most 20).
void AddResidualPlots(shell::ResultWindow& window, std::span<const double> residuals, std::span<const double> fitted);

}  // namespace orvik::analyses
