#pragma once

// The moving-average chart ("mnuMA"): the mean of the last w values (or
// subgroup means), fewer at the start, with limits that narrow as the
// window fills (Montgomery, Introduction to Statistical Quality Control,
// 6th ed., section 9.3).

#include <memory>
#include <vector>

#include "charts/time_weighted_chart.h"

namespace orvik::charts {

// What MAForm confirms: mu0 and sigma (empty: from the data) and the span w.
struct MovingAverageParameters {
  ProcessParameters process;
  long span = 3;
};

// The MA dialog: Targettxt, Sigmatxt, Spantxt (a whole w from 2 to the
// number of points, default 3), CmdOk, CmdCancel. The chart opens it with
// its number of points; made fresh, it accepts any whole w from 2 on.
std::unique_ptr<shell::DialogModel> MakeMAForm();

// M_i = the mean of points max(1, i - w + 1)..i, rounded to 8 places. The
// window's sum is kept compensated, so a million points drift by no more
// than one rounding.
std::vector<double> MovingAverages(const std::vector<double>& points, long span);

// The limits of points 1..count: target +- 3 point_sigma / sqrt(min(i, w)),
// rounded to 8 places, point_sigma being sigma / sqrt(n).
void MovingAverageLimits(double target, double point_sigma, long span, std::size_t count, std::vector<double>& ucl,
                         std::vector<double>& lcl);

// "mnuMA": after MAForm, a ControlForm window "MA control chart".
void MAView(shell::Host& host);

}  // namespace orvik::charts
