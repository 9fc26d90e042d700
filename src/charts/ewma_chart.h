#pragma once

// The EWMA chart ("mnuEWMA"): the exponentially weighted moving average of
// the values (or subgroup means) with its exact time-varying limits
// (Montgomery, Introduction to Statistical Quality Control, 6th ed.,
// section 9.2; Lucas and Saccucci, "Exponentially weighted moving average
// control schemes", Technometrics 32, 1990).

#include <memory>
#include <vector>

#include "charts/time_weighted_chart.h"

namespace orvik::charts {

// What EWMAForm confirms: mu0 and sigma (empty: from the data), the weight
// lambda of the newest point and the width L of the limits in sigmas.
struct EwmaParameters {
  ProcessParameters process;
  double lambda = 0.2;
  double width = 3.0;
};

// The EWMA dialog: Targettxt, Sigmatxt, Lambdatxt (0 < lambda <= 1,
// default 0.2), Ltxt (L > 0, default 3), CmdOk, CmdCancel.
std::unique_ptr<shell::DialogModel> MakeEWMAForm();

// z_i = lambda x_i + (1 - lambda) z_{i-1} from z_0 = target, each plotted
// value rounded to 8 places (the recursion keeps the unrounded z).
std::vector<double> EwmaStatistics(const std::vector<double>& points, double target, double lambda);

// The limits of points 1..count: target +- L point_sigma
// sqrt(lambda / (2 - lambda) (1 - (1 - lambda)^(2i))), rounded to 8
// places, where point_sigma is the standard deviation of one plotted point
// (sigma / sqrt(n)). With lambda = 1 they are target +- L point_sigma at
// every point, the Shewhart limits.
void EwmaLimits(double target, double point_sigma, double lambda, double width, std::size_t count,
                std::vector<double>& ucl, std::vector<double>& lcl);

// "mnuEWMA": after EWMAForm, a ControlForm window "EWMA control chart".
void EWMAView(shell::Host& host);

}  // namespace orvik::charts
