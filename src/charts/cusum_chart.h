#pragma once

// The tabular CUSUM chart ("mnuCUSUM"): the upper and lower cumulative sums
// of the deviations of the values (or subgroup means) from the target
// beyond an allowance K, against the decision interval H (Montgomery,
// Introduction to Statistical Quality Control, 6th ed., section 9.1).

#include <memory>
#include <vector>

#include "charts/time_weighted_chart.h"

namespace orvik::charts {

// What CUSUMForm confirms: mu0 and sigma (empty: from the data), k and h
// in units of sigma / sqrt(n), and the fast initial response.
struct CusumParameters {
  ProcessParameters process;
  double k = 0.5;
  double h = 5.0;
  bool fastInitialResponse = false;
};

// The CUSUM dialog: Targettxt, Sigmatxt, Ktxt (k >= 0, default 0.5), Htxt
// (h > 0, default 5), the check box FIR, CmdOk, CmdCancel.
std::unique_ptr<shell::DialogModel> MakeCUSUMForm();

// The sums of every point, rounded to 8 places at each step like the other
// charts' statistics, so that a sum that returns to zero in decimal
// arithmetic is exactly zero:
//   C+_i = max(0, x_i - (target + K) + C+_{i-1}),
//   C-_i = max(0, (target - K) - x_i + C-_{i-1}),
// both starting from `start` (0, or H / 2 for the fast initial response).
// The run counts N+ and N- count the points since the sum last stood at 0:
// 0 where the sum is 0, one more than at the point before otherwise.
struct CusumSums {
  std::vector<double> upper;
  std::vector<double> lower;
  std::vector<double> upperRun;
  std::vector<double> lowerRun;
};
CusumSums TabularCusum(const std::vector<double>& points, double target, double allowance, double start);

// "mnuCUSUM": after CUSUMForm, a ControlForm window "CUSUM control chart".
void CUSUMView(shell::Host& host);

}  // namespace orvik::charts
