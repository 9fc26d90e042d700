#include "commands/result_window_actions.h"

#include "charts/control_form.h"
#include "charts/given_limits_dialog.h"
#include "commands/command_registry.h"

namespace orvik::commands {

bool OffersGivenLimits(const shell::ResultWindow& window) {
  const shell::CommandDeclaration* command = FindCommand(window.commandKey);
  return window.kind == shell::WindowKind::ControlForm && command != nullptr && command->givenLimitSets > 0;
}

namespace {

void OpenGivenLimits(shell::Host& host, std::string_view key, const shell::CommandRun* run) {
  const shell::CommandDeclaration* command = FindCommand(key);
  if (command == nullptr || command->givenLimitSets == 0) return;
  charts::GivenLimitsDialog dialog(command->givenLimitSets);
  dialog.LoadFrom(host.Settings().givenLimits);
  if (host.RunDialog(dialog) != shell::DialogOutcome::Accepted) return;
  if (command->run == nullptr) return;
  if (run != nullptr) host.Replay(*run, command->run);
  else command->run(host);
}

}  // namespace

void OpenGivenLimits(shell::Host& host, std::string_view key) { OpenGivenLimits(host, key, nullptr); }

void OpenGivenLimits(shell::Host& host, const shell::ResultWindow& window) {
  OpenGivenLimits(host, window.commandKey, window.run.get());
}

std::optional<std::string> PointInformation(const shell::ResultWindow& window, const std::string& chart_name,
                                            long point_number) {
  const shell::CommandDeclaration* command = FindCommand(window.commandKey);
  if (command == nullptr) return std::nullopt;
  return charts::PointInformation(window, chart_name, point_number, command->pointInformation);
}

}  // namespace orvik::commands
