#include "analyses/interval_estimation.h"

#include <cmath>
#include <string>

#include "analyses/confidence_levels.h"
#include "analyses/report_text.h"
#include "stats/critical_value_tables.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

namespace {

using shell::ResultTable;

double Proportion(const ProportionCounts& counts) {
  return static_cast<double>(counts.defects) / static_cast<double>(counts.sample);
}

// Intervals centred on `centre` whose half-width at each reported level is
// factor(level) * spread.
template <typename Factor>
ReportedIntervals Centred(double centre, double spread, Factor factor) {
  ReportedIntervals intervals;
  for (std::size_t i = 0; i < kReportedLevels.size(); ++i) {
    const double half_width = factor(kReportedLevels[i]) * spread;
    intervals[i] = {centre - half_width, centre + half_width};
  }
  return intervals;
}

double NormalCritical(int level) { return kNormalCriticalValues[static_cast<std::size_t>(level)]; }

ResultTable IntervalTable(const char* heading, const ReportedIntervals& intervals) {
  ResultTable table;
  table.columns = {"Confidence level", heading};
  table.background = shell::kWhite;
  for (std::size_t i = 0; i < intervals.size(); ++i)
    table.AddRow({kConfidenceLabels[static_cast<std::size_t>(kReportedLevels[i])],
                  IntervalText(intervals[i].lower, intervals[i].upper)});
  return table;
}

// A heading that stands below other rows of a report is an ordinary row.
void AddIntervalRows(ResultTable& table, const char* heading, const ReportedIntervals& intervals,
                     bool floor_lower_at_zero) {
  table.AddRow({"Confidence level", heading}, HeadingRowStyle());
  for (std::size_t i = 0; i < intervals.size(); ++i) {
    const Interval& ci = intervals[i];
    // A proportion cannot be negative: a lower bound below 0 is shown as
    // the fixed zero text; the upper bound keeps its value even above 1.
    const std::string lower = floor_lower_at_zero && ci.lower < 0.0 ? kZeroSixDecimals : BoundText(ci.lower);
    table.AddRow({kConfidenceLabels[static_cast<std::size_t>(kReportedLevels[i])],
                  "(" + lower + " , " + BoundText(ci.upper) + ")"});
  }
}

ResultTable ReportWithoutHeading() {
  ResultTable table;
  table.columns = {"", ""};
  table.background = shell::kWhite;
  return table;
}

}  // namespace

ReportedIntervals MeanIntervals(const SampleSummary& s, std::optional<double> sigma) {
  const double root_n = std::sqrt(static_cast<double>(s.n));
  if (sigma) return Centred(s.mean, *sigma / root_n, NormalCritical);
  const int row = TTableRow(s.n - 1);
  return Centred(s.mean, s.standardDeviation / root_n, [row](int level) { return stats::Estt(row, level); });
}

std::optional<ReportedIntervals> VarianceIntervals(const SampleSummary& s) {
  if (s.n > 801) return std::nullopt;
  const double row = static_cast<double>(s.n - 2);
  const double scaled = static_cast<double>(s.n - 1) * s.variance;
  ReportedIntervals intervals;
  for (std::size_t i = 0; i < kReportedLevels.size(); ++i)
    intervals[i] = {scaled / stats::EstChi(row, kReportedLevels[i]), scaled / stats::EstinvChi(row, kReportedLevels[i])};
  return intervals;
}

ReportedIntervals ProportionIntervals(double p, long n) {
  return Centred(p, std::sqrt(p * (1.0 - p) / static_cast<double>(n)), NormalCritical);
}

double PooledVariance(const SampleSummary& a, const SampleSummary& b) {
  const double n1 = static_cast<double>(a.n), n2 = static_cast<double>(b.n);
  return stats::Round(((n1 - 1) * a.variance + (n2 - 1) * b.variance) / (n1 + n2 - 2), 12);
}

ReportedIntervals DiffMeanIntervals(const SampleSummary& a, const SampleSummary& b,
                                    std::optional<std::pair<double, double>> sigmas) {
  const double n1 = static_cast<double>(a.n), n2 = static_cast<double>(b.n);
  const double difference = a.mean - b.mean;
  if (sigmas) {
    const auto [sigma1, sigma2] = *sigmas;
    return Centred(difference, std::sqrt(sigma1 * sigma1 / n1 + sigma2 * sigma2 / n2), NormalCritical);
  }
  const int row = TTableRow(a.n + b.n - 2);
  const double spread = std::sqrt(PooledVariance(a, b)) * std::sqrt(1.0 / n1 + 1.0 / n2);
  return Centred(difference, spread, [row](int level) { return stats::Estt(row, level); });
}

std::array<Interval, 4> RatioVarianceIntervals(const SampleSummary& a, const SampleSummary& b) {
  const double ratio = a.variance / b.variance;
  const double row1 = FTableRow(a.n - 1), row2 = FTableRow(b.n - 1);
  std::array<Interval, 4> intervals;
  for (std::size_t level = 0; level < intervals.size(); ++level) {
    const double l = static_cast<double>(level);
    intervals[level] = {ratio * (1.0 / stats::EstF(row1, row2, l)), ratio * stats::EstF(row2, row1, l)};
  }
  return intervals;
}

ReportedIntervals TwoProportionIntervals(double p1, long n1, double p2, long n2) {
  const double spread =
      std::sqrt(p1 * (1.0 - p1) / static_cast<double>(n1) + p2 * (1.0 - p2) / static_cast<double>(n2));
  return Centred(p1 - p2, spread, NormalCritical);
}

ResultTable MeanEstimationTable(const SampleSummary& sample, std::optional<double> sigma) {
  ResultTable table = IntervalTable("CI for the mean", MeanIntervals(sample, sigma));
  AddDescriptiveBlock(table, "Descriptive statistics", sample);
  return table;
}

ResultTable VarianceEstimationTable(const SampleSummary& sample) {
  ResultTable table;
  if (const auto intervals = VarianceIntervals(sample)) {
    table = IntervalTable("CI for the variance", *intervals);
  } else {
    table.columns = {"Confidence level", "CI for the variance"};
    table.background = shell::kWhite;
    for (const int level : kReportedLevels)
      table.AddRow({kConfidenceLabels[static_cast<std::size_t>(level)], EmptyIntervalText()});
  }
  AddDescriptiveBlock(table, "Descriptive statistics", sample);
  return table;
}

ResultTable ProportionEstimationTable(const ProportionCounts& counts) {
  const double p = Proportion(counts);
  ResultTable table = ReportWithoutHeading();
  table.AddRow({"Estimate for the 1-sample proportion", BoundText(p)});
  AddIntervalRows(table, "CI for the sample proportion", ProportionIntervals(p, counts.sample), true);
  return table;
}

ResultTable DiffMeanTable(const SampleSummary& first, const SampleSummary& second,
                          std::optional<std::pair<double, double>> sigmas) {
  ResultTable table = IntervalTable("CI for the difference of means", DiffMeanIntervals(first, second, sigmas));
  AddDescriptiveBlock(table, "Population 1", first);
  AddDescriptiveBlock(table, "Population 2", second);
  return table;
}

ResultTable PairedDiffMeanTable(const SampleSummary& differences, const SampleSummary& first,
                                const SampleSummary& second) {
  ResultTable table = IntervalTable("CI for the difference of means", MeanIntervals(differences, std::nullopt));
  AddDescriptiveBlock(table, "Population 1", first);
  AddDescriptiveBlock(table, "Smaple 2", second);
  return table;
}

ResultTable RatioVarianceTable(const SampleSummary& first, const SampleSummary& second) {
  ResultTable table;
  table.columns = {"Confidence level", "CI for the 2-sample variance "};
  table.background = shell::kWhite;
  const std::array<Interval, 4> intervals = RatioVarianceIntervals(first, second);
  for (std::size_t i = 0; i < intervals.size(); ++i)
    table.AddRow({kRatioLevelLabels[i], IntervalText(intervals[i].lower, intervals[i].upper)});
  AddDescriptiveBlock(table, "Population 1", first);
  AddDescriptiveBlock(table, "Population 2", second);
  return table;
}

ResultTable TwoProportionTable(const ProportionCounts& first, const ProportionCounts& second) {
  const double p1 = Proportion(first), p2 = Proportion(second);
  ResultTable table = ReportWithoutHeading();
  table.AddRow({"Estimate for the 2-sample proportion", ""}, HeadingRowStyle());
  table.AddRow({"[ Population 1 ]", BoundText(p1)});
  table.AddRow({"[ Population 2 ]", BoundText(p2)});
  AddIntervalRows(table, "CI for the 2-sample proportion",
                  TwoProportionIntervals(p1, first.sample, p2, second.sample), false);
  return table;
}

}  // namespace orvik::analyses
