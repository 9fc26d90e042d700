#include "commands/result_window_actions.h"

#include "charts/control_form.h"
#include "charts/given_limits_dialog.h"
#include "charts/rule_settings.h"
#include "commands/command_registry.h"

namespace orvik::commands {

bool OffersGivenLimits(const shell::ResultWindow& window) {
  const shell::CommandDeclaration* command = FindCommand(window.commandKey);
  return window.kind == shell::WindowKind::ControlForm && command != nullptr && command->givenLimitSets > 0;
}

bool OffersRuleSettings(const shell::ResultWindow& window) { return OffersGivenLimits(window); }

namespace {

constexpr const char* kRuleSettings = "RuleSettings";

// The options a window's chart is drawn again with: today's given limits
// and other options, but the rules and stages the chart was made with.
std::vector<shell::ControlSetting> OptionsKeepingRules(const shell::Host& host, const shell::CommandRun& run) {
  std::vector<shell::ControlSetting> options;
  for (const shell::ControlSetting& option : host.OptionsBeforeCommand())
    if (option.dialog != kRuleSettings) options.push_back(option);
  for (const shell::ControlSetting& setting : run.settings)
    if (setting.dialog == kRuleSettings) options.push_back(setting);
  return options;
}

void OpenGivenLimits(shell::Host& host, std::string_view key, const shell::CommandRun* run) {
  const shell::CommandDeclaration* command = FindCommand(key);
  if (command == nullptr || command->givenLimitSets == 0) return;
  charts::GivenLimitsDialog dialog(command->givenLimitSets);
  dialog.LoadFrom(host.Settings().givenLimits);
  if (host.RunDialog(dialog) != shell::DialogOutcome::Accepted) return;
  if (command->run == nullptr) return;
  if (run != nullptr) host.Replay(*run, command->run, OptionsKeepingRules(host, *run));
  else command->run(host);
}

}  // namespace

void OpenGivenLimits(shell::Host& host, std::string_view key) { OpenGivenLimits(host, key, nullptr); }

void OpenGivenLimits(shell::Host& host, const shell::ResultWindow& window) {
  OpenGivenLimits(host, window.commandKey, window.run.get());
}

void OpenRuleSettings(shell::Host& host) {
  charts::RuleSettingsDialog dialog;
  dialog.LoadFrom(host.Settings().Last<charts::ChartRuleSettings>());
  host.RunDialog(dialog);
}

void OpenRuleSettings(shell::Host& host, const shell::ResultWindow& window) {
  const shell::CommandDeclaration* command = FindCommand(window.commandKey);
  if (command == nullptr || !OffersRuleSettings(window)) return OpenRuleSettings(host);
  charts::RuleSettingsDialog dialog;
  dialog.LoadFrom(window.run ? charts::RulesOfRun(*window.run) : host.Settings().Last<charts::ChartRuleSettings>());
  if (host.RunDialog(dialog) != shell::DialogOutcome::Accepted || command->run == nullptr) return;
  if (window.run) host.Replay(*window.run, command->run);
  else command->run(host);
}

std::optional<std::string> PointInformation(const shell::ResultWindow& window, const std::string& chart_name,
                                            long point_number) {
  const shell::CommandDeclaration* command = FindCommand(window.commandKey);
  if (command == nullptr) return std::nullopt;
  return charts::PointInformation(window, chart_name, point_number, command->pointInformation);
}

}  // namespace orvik::commands
