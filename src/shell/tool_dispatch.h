#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "shell/dialog_model.h"
#include "shell/host.h"

namespace orvik::shell {

// Who carries out a tool key: the core (an analysis procedure that both
// front-ends run the same way through the host), or the window application
// itself (clipboard, window arrangement, formatting, which need windows).
enum class CommandScope { Core, Window };

// An analysis entry procedure: it begins with ResolveDataBlock and talks to
// the user only through the host.
using CommandProcedure = void (*)(Host&);

// One tool key of the menus and toolbars.
struct ToolCommand {
  std::string_view key;      // "mnuHistogram"
  std::string_view menu;     // the menu group: "mnuFile", "mnuEdit", ...
  std::string_view submenu;  // a submenu caption within the group, or empty
  std::string_view caption;  // the menu text
  CommandScope scope = CommandScope::Core;
  // The core procedure, once it is built; null for window commands and for
  // commands still to come (their menu entries show disabled).
  CommandProcedure run = nullptr;
};

// Every tool key in the dispatcher's order of tests. Menus, toolbars and
// orvik-cli run are all built from this one table.
const std::vector<ToolCommand>& ToolCommands();

// The command of `key`, or null for a key the dispatcher does not know.
const ToolCommand* FindToolCommand(std::string_view key);

// The dialogs of the application, by name, each made fresh with its default
// control states (orvik-cli lists them and checks --set against them).
struct DialogEntry {
  std::string_view name;
  std::unique_ptr<DialogModel> (*make)();
  // A dialog that sets program-wide options for later commands (the
  // given control limits) rather than being opened by one command. A
  // headless run given its settings applies it before the command runs.
  bool opensBeforeCommand = false;
};
const std::vector<DialogEntry>& DialogCatalog();
const DialogEntry* FindDialog(std::string_view name);

}  // namespace orvik::shell
