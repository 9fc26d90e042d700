#pragma once

#include <vector>

#include "shell/command_declaration.h"

namespace orvik::capability {

// The Graph menu's graphs (histogram, Pareto chart, box-plot and those still
// to come), then the Analysis menu's run chart and capability analysis, in
// their menu order.
std::vector<shell::CommandDeclaration> CapabilityCommands();

// The capability analysis's dialog CpkForm.
std::vector<shell::DialogDeclaration> CapabilityDialogs();

}  // namespace orvik::capability
