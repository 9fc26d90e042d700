#pragma once

#include <vector>

#include "shell/command_declaration.h"

namespace orvik::charts {

// The control chart commands of the Analysis menu's Control Charts submenu,
// in their menu order, built ones and those still to come.
std::vector<shell::CommandDeclaration> ChartCommands();

// The dialogs of the control charts: the given limits, which a result window
// opens before it runs its chart again, and Selection, PnSubForm and PSubForm.
std::vector<shell::DialogDeclaration> ChartDialogs();

}  // namespace orvik::charts
