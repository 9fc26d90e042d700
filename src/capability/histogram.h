#pragma once

#include <span>
#include <vector>

#include "shell/host.h"
#include "shell/result_table.h"
#include "shell/result_window.h"

namespace orvik::capability {

// The classes of a histogram as the class rule makes them from the data.
struct HistogramClasses {
  int decimals = 1;          // p: places of the width and the limits
  double width = 0.0;        // h
  // Class i (from 0) spans [lowerLimits[i], upperLimit(i)); the upper limit
  // of a class is the lower limit of the next, the last one's is kept apart.
  std::vector<double> lowerLimits;
  double lastUpperLimit = 0.0;
  std::vector<long> frequencies;
  long n = 0;

  long classCount() const { return static_cast<long>(lowerLimits.size()); }
  double upperLimit(long i) const;
};

// The number of classes for n values: Round((16 n)^(1/3) + 0.5, 0).
long HistogramClassCount(long n);

// The places p of the width and the limits, read off the shortest text of
// the smallest value: with A the length of that text with a leading blank
// for a non-negative value (a minus sign otherwise) and B the length of the
// text of the value truncated toward zero, p = A - B - 1 when A - B >= 2,
// else 1. A positive minimum thus gets one place more than it shows, a
// negative one as many as it shows.
int HistogramDecimals(double minimum);

// Makes the classes of `values` (at least two distinct values) and counts
// them: the width loop, the coverage check, classes centred on the data
// range, and counting with lower <= x < upper. The last class also takes a
// value equal to its upper limit, so that every value of the sample is
// counted and the frequencies add up to n.
HistogramClasses MakeHistogramClasses(std::span<const double> values, double minimum, double maximum);

// The classes as bars: one per class at its centre, the frequency as height.
shell::PlotSeries HistogramBars(const HistogramClasses& classes);

// The eight-column frequency table.
shell::ResultTable FrequencyTable(const HistogramClasses& classes);

// The command "mnuHistogram": the histogram and frequency table of the
// numeric cells of the selected block.
void HistogramView(shell::Host& host);

}  // namespace orvik::capability
