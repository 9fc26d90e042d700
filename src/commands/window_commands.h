#pragma once

#include <vector>

#include "shell/command_declaration.h"

namespace orvik::commands {

// The commands the window application carries out itself, in three parts
// of the menu order: the File, Edit, Tool (formatting), View and Window
// menus; the Graph menu's chart properties and printing; the Tool menu's
// accessories and the Help menu.
std::vector<shell::CommandDeclaration> WorksheetWindowCommands();
std::vector<shell::CommandDeclaration> ChartWindowCommands();
std::vector<shell::CommandDeclaration> AccessoryWindowCommands();

}  // namespace orvik::commands
