#pragma once

#include <vector>

#include "shell/command_declaration.h"

namespace orvik::analyses {

// The Analysis menu's descriptive statistics.
std::vector<shell::CommandDeclaration> DescriptiveCommands();

// The Analysis menu's interval estimations and hypothesis tests, then the
// analyses still to come (normality test to gage study), in menu order.
std::vector<shell::CommandDeclaration> InferenceCommands();

// The dialogs of the interval estimations and hypothesis tests.
std::vector<shell::DialogDeclaration> InferenceDialogs();

}  // namespace orvik::analyses
