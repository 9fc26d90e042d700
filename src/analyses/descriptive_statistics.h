#pragma once

#include <optional>
#include <span>

#include "shell/host.h"
#include "shell/result_table.h"

namespace orvik::analyses {

// The thirteen summary values of one pooled sample, as stored (rounded where
// the analysis rounds them). Quartiles need at least three values and the
// coefficient of variation a mean other than 0; otherwise they are empty and
// the grid shows "*".
struct DescriptiveSummary {
  long n = 0;
  double mean = 0.0;      // rounded to 12 decimals
  double variance = 0.0;  // rounded to 12 decimals
  double standardDeviation = 0.0;  // of the rounded variance, rounded to 12 decimals
  double median = 0.0;
  double maximum = 0.0;
  double minimum = 0.0;
  double range = 0.0;
  std::optional<double> q1;
  std::optional<double> q3;
  std::optional<double> interquartileRange;
  std::optional<double> coefficientOfVariation;  // percent, rounded to 10 decimals
  double sum = 0.0;
};

// Summarises a sample of at least two values. The values are sorted by a
// copy, so `sample` keeps its reading order.
DescriptiveSummary SummariseSample(std::span<const double> sample);

// The result grid: heading "Descriptive statistics" | "Result", then one row
// per statistic, values rounded to 6 decimals for display, on white.
shell::ResultTable DescriptiveTable(const DescriptiveSummary& summary);

// The command "mnuBasicStat": pools every numeric cell of the selected block
// into one sample and shows its summary in a result window. A block without
// any number ends it by throwing shell::CommandFailed after its message.
void DescriptiveStatistics(shell::Host& host);

}  // namespace orvik::analyses
