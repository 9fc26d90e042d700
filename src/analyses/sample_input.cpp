#include "analyses/sample_input.h"

#include "shell/command_failed.h"

#include "shell/analysis_input.h"

namespace orvik::analyses {

std::optional<SampleSummary> ReadOneSample(shell::Host& host, const SessionLines& lines) {
  if (!shell::ResolveDataBlock(host)) return std::nullopt;
  host.Log().AppendSessionLine(lines.Starting());
  const auto figures = shell::CollectNumericCells(host);
  if (!figures) return std::nullopt;
  const std::vector<double>& sample = host.CurrentSelection().values;
  if (sample.empty()) {
    FailRun(host, lines);
    return std::nullopt;
  }
  if (sample.size() < 2) {
    host.Refuse(worksheet::messages::kNotEnoughData);
    return std::nullopt;
  }
  return SummariseForInference(sample);
}

bool ResolveTwoColumns(shell::Host& host) {
  return shell::ResolveDataBlock(host) && shell::RequireColumnSpan(host, 2, worksheet::messages::kSelectTwoColumns);
}

void ShowReport(shell::Host& host, const SessionLines& lines, shell::ResultTable table) {
  shell::ResultWindow window = shell::MakeDataChart(lines.stem);
  window.charts.clear();  // a grid of results, no chart
  window.table = std::move(table);
  shell::ShowResultOrFail(host, std::move(window), worksheet::messages::kInputValidData, lines.cancel);
  host.Log().AppendSessionLine(lines.Completed());
}

void FailRun(shell::Host& host, const SessionLines& lines) {
  host.Refuse(worksheet::messages::kInputValidData);
  if (!lines.cancel.empty()) host.Log().AppendSessionLine(lines.cancel);
  throw shell::CommandFailed(lines.stem);
}

}  // namespace orvik::analyses
