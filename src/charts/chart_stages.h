#pragma once

#include <functional>
#include <string>
#include <vector>

#include "charts/control_form.h"
#include "charts/rule_settings.h"
#include "shell/host.h"

namespace orvik::charts {

// What a chart takes from the rule settings in force and the worksheet: its
// rules and, when it is split into stages, one stage label per point.
struct ChartOptions {
  RuleSet rules = RuleSet::Default();
  std::vector<std::string> stageLabels;  // empty: one stage
  bool historical = false;               // every stage takes the first stage's limits
};

// The options of a chart of `points` points whose point i stands in the
// block's row `i + row_offset` (walked with the row step). The stage labels
// are the texts of the stage column in those rows, blanks trimmed; a chart
// whose points are not one per row (individual values over several
// columns) is not split.
ChartOptions ChartOptionsOf(shell::Host& host, std::size_t points, std::size_t row_offset = 0);

// Where each stage begins: a new stage wherever the label changes.
std::vector<ChartStage> SplitStages(const std::vector<std::string>& labels);

// The limits of the points first..first + count - 1 of a chart, computed
// from those points alone (and replaced by given limits where the user gave
// them).
using StageLimits = std::function<ControlLimits(std::size_t first, std::size_t count)>;

// The finished chart of `values`: one set of limits over all points, or in
// stages one set per stage (with historical limits the first stage's for
// all), drawn as steps where they differ; codes by the options' rules,
// restarting at each stage.
ControlChart RuledChart(std::string statistic, std::vector<double> values, const StageLimits& limits_of,
                        const ChartOptions& options, double first_sample = 1.0);

}  // namespace orvik::charts
