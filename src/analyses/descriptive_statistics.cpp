#include "analyses/descriptive_statistics.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "shell/analysis_input.h"
#include "shell/command_failed.h"
#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "stats/order_statistics.h"

namespace orvik::analyses {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kStartingLine = "Descriptive statistics analysis is starting";
constexpr const char* kCompletedLine = "Descriptive statistics analysis is completed";
constexpr const char* kCancelLine = "Cancel descriptive statistics analysis";
constexpr const char* kNotEnough = "All data are not enough to descriptive statistics analysis";
constexpr const char* kSmallSampleWarning = "Warning descriptive statistics generation";

std::string Shown(double value) { return FormatNumber(Round(value, 6)); }
std::string ShownOrStar(const std::optional<double>& value) { return value ? Shown(*value) : "*"; }

}  // namespace

DescriptiveSummary SummariseSample(std::span<const double> sample) {
  DescriptiveSummary s;
  s.n = static_cast<long>(sample.size());
  const double n = static_cast<double>(s.n);

  // The sum and the mean come from a running sum of the values, the
  // variance from two more, of the values and of their squares, both taken
  // about the first value: that leaves the formula's result unchanged in
  // exact arithmetic but keeps its digits when the values are large against
  // their spread (a 1000.001 mm gauge reading would otherwise lose the
  // variance to cancellation). All three sums are compensated, so that their
  // error does not grow with the number of values: the plain sum of 1001
  // readings of 10000000.2 +- 0.1 ends 1e-4 off, which the 15 significant
  // digits the report shows of the sum would reveal.
  const double shift = sample.front();
  stats::CompensatedSum sum, shifted_sum, shifted_squares;
  for (const double x : sample) {
    sum.Add(x);
    shifted_sum.Add(x - shift);
    shifted_squares.Add((x - shift) * (x - shift));
  }
  s.sum = sum.Value();
  // A sum past the largest double still has a representable mean.
  s.mean = Round(std::isfinite(s.sum) ? s.sum / n : stats::CompensatedMean(sample), 12);
  const double centred = shifted_sum.Value();
  // Cancellation may leave a hair below zero; an overflow leaves NaN, which
  // must stay NaN (std::max would turn it into a variance of 0).
  const double variance = (shifted_squares.Value() - centred * centred / n) / (n - 1);
  s.variance = Round(variance < 0.0 ? 0.0 : variance, 12);
  s.standardDeviation = Round(std::sqrt(s.variance), 12);
  if (s.mean != 0.0) s.coefficientOfVariation = Round(100.0 * s.standardDeviation / s.mean, 10);

  // Sorting orders the sample exactly as exchanging out-of-order pairs
  // would; equal values are indistinguishable, so stability does not matter.
  std::vector<double> sorted(sample.begin(), sample.end());
  std::sort(sorted.begin(), sorted.end());
  s.median = stats::SortedMedian(sorted);
  s.minimum = sorted.front();
  s.maximum = sorted.back();
  s.range = s.maximum - s.minimum;
  if (s.n >= 3) {
    s.q1 = stats::ValueAtPosition(sorted, (n + 1) / 4);
    s.q3 = stats::ValueAtPosition(sorted, 3 * (n + 1) / 4);
    s.interquartileRange = *s.q3 - *s.q1;
  }
  return s;
}

shell::ResultTable DescriptiveTable(const DescriptiveSummary& s) {
  shell::ResultTable table;
  table.columns = {"Descriptive statistics", "Result"};
  table.background = shell::kWhite;
  table.AddRow({"N", std::to_string(s.n)});
  table.AddRow({"Mean", Shown(s.mean)});
  table.AddRow({"Variance", Shown(s.variance)});
  table.AddRow({"Standard deviation", Shown(s.standardDeviation)});
  table.AddRow({"Median", Shown(s.median)});
  table.AddRow({"Maximum", FormatNumber(s.maximum)});  // as read from the cells
  table.AddRow({"Minimum", FormatNumber(s.minimum)});
  table.AddRow({"Range", Shown(s.range)});
  table.AddRow({"Q1", ShownOrStar(s.q1)});
  table.AddRow({"Q3", ShownOrStar(s.q3)});
  table.AddRow({"Interquartile range(IQR)", ShownOrStar(s.interquartileRange)});
  table.AddRow({"Coefficient of variation(CV)",
                s.coefficientOfVariation ? Shown(*s.coefficientOfVariation) + "%" : "*"});
  table.AddRow({"Sum", Shown(s.sum)});
  return table;
}

void DescriptiveStatistics(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectValidDataShort)) return;
  host.Log().AppendSessionLine(kStartingLine);
  const auto figures = shell::CollectNumericCells(host);
  const std::vector<double>& sample = host.CurrentSelection().values;
  if (!figures || sample.empty()) {
    // No number in the block: the mean cannot be formed.
    host.Refuse(worksheet::messages::kInputValidData);
    host.Log().AppendSessionLine(kCancelLine);
    throw shell::CommandFailed(kCancelLine);
  }
  if (sample.size() == 1) {
    host.Refuse(kNotEnough);
    return;
  }
  shell::ResultWindow window = shell::MakeDataChart("Descriptive statistics");
  window.charts.clear();  // a grid of results, no chart
  window.table = DescriptiveTable(SummariseSample(sample));
  shell::ShowResultOrFail(host, std::move(window), worksheet::messages::kInputValidData, kCancelLine);
  if (sample.size() < 3) host.Refuse(kSmallSampleWarning);
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::analyses
