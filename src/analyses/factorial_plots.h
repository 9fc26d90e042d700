#pragma once

#include <string>
#include <vector>

#include "analyses/factorial_fit.h"
#include "shell/chart_series.h"

namespace orvik::analyses {

// The charts of the factorial analysis.

// A factor as its column names it, with the settings of its levels.
struct FactorSettings {
  std::string name;
  double low = -1.0;
  double high = 1.0;
};

// "DataChartView": the model's effects against their normal scores, the
// significant ones (t test with replicates, Lenth's margin without) in a
// red series of their own and labelled, with the line that effects of
// zero mean would follow.
shell::ChartSeries EffectsNormalPlot(const FactorialFit& fit);

// "ParetoEffects": the model's standardized effects in falling order,
// |t| with replicates and |effect| / PSE without, against the critical
// value t(1 - alpha/2, error df) or t(1 - alpha/2, m/3).
shell::ChartSeries EffectsPareto(const FactorialFit& fit);

// "MainEffects" and "InteractionPlot": the mean response of the factorial
// runs at each factor's low and high level, and of each pair of factors,
// in panels side by side.
shell::ChartSeries MainEffectsPlot(const FactorialFit& fit, const std::vector<CodedRun>& runs,
                                   const std::vector<FactorSettings>& factors);
shell::ChartSeries InteractionPlot(const FactorialFit& fit, const std::vector<CodedRun>& runs,
                                   const std::vector<FactorSettings>& factors);

}  // namespace orvik::analyses
