#include "analyses/sample_summary.h"

#include "analyses/descriptive_statistics.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

SampleSummary SummariseForInference(std::span<const double> sample) {
  const DescriptiveSummary d = SummariseSample(sample);
  return {d.n, d.mean, d.variance, d.standardDeviation};
}

void AddDescriptiveBlock(shell::ResultTable& table, const std::string& heading, const SampleSummary& s) {
  const auto shown = [](double x) { return stats::FormatNumber(stats::Round(x, 8)); };
  table.AddRow({heading, ""}, HeadingRowStyle());
  table.AddRow({"N", std::to_string(s.n)});
  table.AddRow({"Mean", shown(s.mean)});
  table.AddRow({"Standard deviation", shown(s.standardDeviation)});
  table.AddRow({"Variance", shown(s.variance)});
}

shell::RowStyle HeadingRowStyle() {
  shell::RowStyle style;
  style.bold = true;
  return style;
}

}  // namespace orvik::analyses
