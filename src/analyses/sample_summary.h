#pragma once

#include <span>
#include <string>

#include "shell/result_table.h"

namespace orvik::analyses {

// The figures of one sample that the intervals and tests use, computed as
// the descriptive statistics compute them: mean and variance rounded to 12
// places, the standard deviation the square root of the rounded variance.
struct SampleSummary {
  long n = 0;
  double mean = 0.0;
  double variance = 0.0;
  double standardDeviation = 0.0;
};

// The summary of a sample of at least two values.
SampleSummary SummariseForInference(std::span<const double> sample);

// Appends a descriptive block: the heading row `heading` ("Descriptive
// statistics", "Population 1", ...), then "N", "Mean", "Standard deviation"
// and "Variance", the last three rounded to 8 places.
void AddDescriptiveBlock(shell::ResultTable& table, const std::string& heading, const SampleSummary& summary);

// The style of the heading rows that stand inside a report.
shell::RowStyle HeadingRowStyle();

}  // namespace orvik::analyses
