#pragma once

#include <vector>

#include "shell/command_declaration.h"

namespace orvik::capability {

// The Graph menu's graphs (histogram, scatterplot, Pareto chart, box-plot,
// connected line graph, bar, pie and radar charts, distribution plot), then the Analysis menu's run chart and capability analysis, in
// their menu order.
std::vector<shell::CommandDeclaration> CapabilityCommands();

// The dialogs of the capability analysis and the graphs: CpkForm,
// DotplotForm, PieForm, RadarForm and DistributionForm.
std::vector<shell::DialogDeclaration> CapabilityDialogs();

}  // namespace orvik::capability
