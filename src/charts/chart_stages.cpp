#include "charts/chart_stages.h"

#include "worksheet/data_selection.h"

namespace orvik::charts {

ChartOptions ChartOptionsOf(shell::Host& host, std::size_t points, std::size_t row_offset) {
  const ChartRuleSettings settings = RuleSettingsInForce(host);
  ChartOptions options;
  options.rules = settings.rules;
  options.historical = settings.stages.historical;
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  const worksheet::DataSelection& block = host.CurrentSelection();
  if (!settings.stages.on || sheet == nullptr || points == 0) return options;
  if (static_cast<std::size_t>(worksheet::RowsToWalk(block)) != points + row_offset) return options;
  options.stageLabels.reserve(points);
  for (std::size_t i = 0; i < points; ++i) {
    const long row = block.firstRow + static_cast<long>(i + row_offset) * block.rowStep;
    const std::string_view text = sheet->Text(row, settings.stages.column);
    const std::size_t begin = text.find_first_not_of(" \t");
    const std::size_t end = text.find_last_not_of(" \t");
    options.stageLabels.emplace_back(begin == std::string::npos ? std::string_view() : text.substr(begin, end - begin + 1));
  }
  return options;
}

std::vector<ChartStage> SplitStages(const std::vector<std::string>& labels) {
  std::vector<ChartStage> stages;
  for (std::size_t i = 0; i < labels.size(); ++i)
    if (i == 0 || labels[i] != labels[i - 1]) stages.push_back({i, labels[i], {}});
  return stages;
}

ControlChart RuledChart(std::string statistic, std::vector<double> values, const StageLimits& limits_of,
                        const ChartOptions& options, double first_sample) {
  const std::size_t count = values.size();
  std::vector<ChartStage> stages = SplitStages(options.stageLabels);
  const ControlLimits whole = stages.empty() ? limits_of(0, count) : ControlLimits{};
  ControlChart chart = MakeControlChart(std::move(statistic), std::move(values), whole, first_sample);
  chart.rules = options.rules;
  if (stages.empty()) {
    FinishChart(chart);
    return chart;
  }
  for (std::size_t s = 0; s < stages.size(); ++s) {
    const std::size_t end = s + 1 < stages.size() ? stages[s + 1].first : count;
    stages[s].limits = s > 0 && options.historical ? stages[0].limits : limits_of(stages[s].first, end - stages[s].first);
  }
  // The last stage's limits label the lines; where the stages' limits
  // differ they are drawn as steps and listed row by row.
  chart.limits = stages.back().limits;
  bool differ = false;
  for (const ChartStage& stage : stages) {
    const ControlLimits& a = stage.limits;
    const ControlLimits& b = stages.front().limits;
    differ = differ || a.UCL != b.UCL || a.CL != b.CL || a.LCL != b.LCL || a.UpperTwoSigma != b.UpperTwoSigma ||
             a.LowerTwoSigma != b.LowerTwoSigma;
  }
  if (differ) {
    std::vector<double> ucl(count), cl(count), lcl(count), upper(count), lower(count);
    for (std::size_t s = 0; s < stages.size(); ++s) {
      const std::size_t end = s + 1 < stages.size() ? stages[s + 1].first : count;
      const ControlLimits& l = stages[s].limits;
      for (std::size_t i = stages[s].first; i < end; ++i)
        ucl[i] = l.UCL, cl[i] = l.CL, lcl[i] = l.LCL, upper[i] = l.UpperTwoSigma, lower[i] = l.LowerTwoSigma;
    }
    chart.pointLimits = PointLimits{std::move(ucl), std::move(lcl), std::move(upper), std::move(lower), std::move(cl)};
  }
  chart.stages = std::move(stages);
  FinishChart(chart);
  return chart;
}

}  // namespace orvik::charts
