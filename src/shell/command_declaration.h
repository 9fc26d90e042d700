#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "shell/dialog_model.h"
#include "shell/result_window.h"

namespace orvik::shell {

class Host;

// Who carries out a tool key: the core (an analysis procedure that both
// front-ends run the same way through the host), or the window application
// itself (clipboard, window arrangement, formatting, which need windows).
enum class CommandScope { Core, Window };

// An analysis entry procedure: it begins with ResolveDataBlock and talks to
// the user only through the host.
using CommandProcedure = void (*)(Host&);

// Which charts of a control chart window show a point's number and value
// when the user clicks the point. A two-chart window answers on ChartOne
// when `upperChart` is set and on ChartTwo when `lowerChart` is set; a
// one-chart window has its only chart in ChartOne, which answers when
// either is set.
struct PointAnswers {
  bool upperChart = false;
  bool lowerChart = false;
};

// Everything the program knows about one tool key. Menus, toolbars,
// orvik-cli run and keys, the result windows' point information and given
// limits, and the tests all read these records, so a command exists in
// every front-end once it is declared.
struct CommandDeclaration {
  std::string_view key{};      // "mnuHistogram"
  std::string_view menu{};     // the menu group: "mnuFile", "mnuEdit", ...
  std::string_view submenu{};  // a submenu caption within the group, or empty
  std::string_view caption{};  // the menu text
  CommandScope scope = CommandScope::Core;
  // The core procedure, once it is built; null for window commands and for
  // commands still to come (their menu entries show disabled).
  CommandProcedure run = nullptr;
  // The names of the dialogs the procedure opens, in the order it opens them
  // (the given-limits dialogs, opened from a result window, are not listed).
  std::vector<std::string_view> dialogs{};
  // The kind of result window it opens, if any, and that window's charts.
  std::optional<WindowKind> window{};
  int chartCount = 0;
  PointAnswers pointInformation{};
  // The number of limit sets of its given-limits dialog (1: ControlLimit,
  // 2: ControlTwoLimit), or 0 when its window offers no given limits.
  int givenLimitSets = 0;
  // For a window command: whether the window application has built it.
  bool windowBuilt = true;

  // Whether the command can run: a core command with its procedure, or a
  // built window command. Menus show the others disabled.
  bool Available() const { return scope == CommandScope::Core ? run != nullptr : windowBuilt; }
};

// One dialog of the application, by name, made fresh with its default
// control states (orvik-cli lists them and checks --set against them).
struct DialogDeclaration {
  std::string_view name{};
  std::unique_ptr<DialogModel> (*make)() = nullptr;
  // A dialog that sets program-wide options for later commands (the given
  // control limits) rather than being opened by one command. A headless run
  // given its settings applies it before the command runs.
  bool opensBeforeCommand = false;
};

}  // namespace orvik::shell
