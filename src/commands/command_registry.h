#pragma once

#include <string_view>
#include <vector>

#include "shell/command_declaration.h"

namespace orvik::commands {

// Every tool key, in the order of the menus and toolbars and of
// `orvik-cli keys`: each subsystem's declarations put together in menu
// order. Menus, toolbars, orvik-cli run and every other use of a tool key
// read this one registry.
const std::vector<shell::CommandDeclaration>& Commands();

// The command of `key` (matched exactly), or null for a key the program
// does not know.
const shell::CommandDeclaration* FindCommand(std::string_view key);

// Every dialog of the application, each declared beside the commands that
// open it, in the order `orvik-cli dialogs` lists them.
const std::vector<shell::DialogDeclaration>& Dialogs();

// The dialog named `name`, or null.
const shell::DialogDeclaration* FindDialog(std::string_view name);

}  // namespace orvik::commands
