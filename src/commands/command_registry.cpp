#include "commands/command_registry.h"

#include <initializer_list>

#include "analyses/analysis_commands.h"
#include "capability/capability_commands.h"
#include "charts/chart_commands.h"
#include "commands/window_commands.h"

namespace orvik::commands {

namespace {

template <class T>
std::vector<T> Joined(std::initializer_list<std::vector<T>> parts) {
  std::vector<T> all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace

const std::vector<shell::CommandDeclaration>& Commands() {
  static const std::vector<shell::CommandDeclaration> registry = Joined<shell::CommandDeclaration>({
      WorksheetWindowCommands(),
      capability::CapabilityCommands(),
      analyses::DescriptiveCommands(),
      charts::ChartCommands(),
      ChartWindowCommands(),
      analyses::InferenceCommands(),
      AccessoryWindowCommands(),
  });
  return registry;
}

const shell::CommandDeclaration* FindCommand(std::string_view key) {
  for (const auto& command : Commands())
    if (command.key == key) return &command;
  return nullptr;
}

const std::vector<shell::DialogDeclaration>& Dialogs() {
  static const std::vector<shell::DialogDeclaration> catalog = Joined<shell::DialogDeclaration>({
      charts::ChartDialogs(),
      capability::CapabilityDialogs(),
      analyses::InferenceDialogs(),
  });
  return catalog;
}

const shell::DialogDeclaration* FindDialog(std::string_view name) {
  for (const auto& dialog : Dialogs())
    if (dialog.name == name) return &dialog;
  return nullptr;
}

}  // namespace orvik::commands
