#pragma once

#include <span>
#include <string>
#include <vector>

#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// The five-number summary of one column with its range and IQR.
struct BoxSummary {
  std::string heading;  // the column's header name
  long n = 0;
  double minimum = 0.0;
  double q1 = 0.0;      // rounded to 10 decimals
  double median = 0.0;  // rounded to 10 decimals
  double q3 = 0.0;      // rounded to 10 decimals
  double maximum = 0.0;
  double range = 0.0;
  double interquartileRange = 0.0;  // rounded to 8 decimals
};

// Summarises the values of one column (at least one value); they need not be
// sorted.
BoxSummary SummariseColumn(std::string heading, std::span<const double> values);

// The DataChart window: the eight-row grid with one column per data column,
// and one box per column with whiskers to its minimum and maximum.
shell::ResultWindow BoxPlotWindow(const std::vector<BoxSummary>& boxes);

// The command "mnuBoxPlot": one box per selected column, at most 10 columns.
void BoxPlotView(shell::Host& host);

}  // namespace orvik::capability
