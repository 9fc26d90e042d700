#pragma once

#include <span>

#include "shell/host.h"

namespace orvik::charts {

// One runs test: the number of runs counted, its expectation and variance
// under randomness, and the normal approximation's lower-tail probability
// P(Z <= z) (too few runs) and upper-tail probability P(Z > z) (too many).
// Without any variance (all points on one side) z and both
// probabilities are NaN.
struct RunsTest {
  long runs = 0;
  double expected = 0.0;
  double variance = 0.0;
  double z = 0.0;
  double fewer = 0.0;
  double more = 0.0;
};

// The tests for non-random patterns of a series in time order.
struct RunPatterns {
  double median = 0.0;
  long above = 0;  // points above the median (n1)
  long below = 0;  // points below it (n2); points on it are left out
  // Runs about the median: a run is a maximal sequence of points on one
  // side; a point on the median neither continues nor breaks it.
  // E = 1 + 2 n1 n2 / (n1 + n2), Var = 2 n1 n2 (2 n1 n2 - n1 - n2) /
  // ((n1 + n2)^2 (n1 + n2 - 1)).
  RunsTest aboutMedian;
  long longestAboutMedian = 0;  // in points
  // Runs up or down over the m points left after dropping each point equal
  // to the one before it: a run is a maximal sequence of rises or of falls.
  // E = (2m - 1) / 3, Var = (16m - 29) / 90.
  long upDownPoints = 0;  // m
  RunsTest upOrDown;
  long longestUpOrDown = 0;  // in points, both ends of the run counted
};

RunPatterns AnalyseRuns(std::span<const double> series);

// The command "mnuRun": the run chart of one column of values, or of the
// means of the subgroups in the rows of a wider block, with the median as
// centre line and the runs tests in the grid beside it. It writes only
// "Run chart generation is completed".
void RunChartView(shell::Host& host);

}  // namespace orvik::charts
