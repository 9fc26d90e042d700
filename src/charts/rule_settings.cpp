#include "charts/rule_settings.h"

#include <cmath>
#include <string>

#include "charts/chart_input.h"
#include "worksheet/cell_number.h"
#include "worksheet/worksheet.h"

namespace orvik::charts {

namespace {

constexpr const char* kDialogName = "RuleSettings";
constexpr const char* kInvalidCount = "Please, input valid numerical data";
// The longest run or window a rule may ask for.
constexpr int kMostPoints = 1000;

std::string RuleName(char letter) { return std::string("Rule") + letter; }
std::string CountName(char letter) { return RuleName(letter) + "Ktxt"; }
std::string WindowName(char letter) { return RuleName(letter) + "Mtxt"; }

// What the rule's check box says it looks for.
const char* RuleCaption(RuleKind kind) {
  switch (kind) {
    case RuleKind::OneSideRun: return "K points in a row on one side of CL";
    case RuleKind::Trend: return "K points in a row rising or falling";
    case RuleKind::OneSideWindow: return "K of M points on one side of CL";
    case RuleKind::ZoneWindow: return "K of M points between 2 and 3 sigma";
    case RuleKind::BeyondTwoWindow: return "K of M points beyond 2 sigma, same side";
    case RuleKind::BeyondOneWindow: return "K of M points beyond 1 sigma, same side";
    case RuleKind::Alternating: return "K points in a row alternating up and down";
    case RuleKind::WithinOneRun: return "K points in a row within 1 sigma";
    case RuleKind::BeyondOneRun: return "K points in a row beyond 1 sigma, either side";
  }
  return "";
}

// A count of points: a whole number from `least` to kMostPoints.
std::optional<int> ReadCount(const std::string& text, int least) {
  const auto number = worksheet::ParseCellNumber(text);
  if (!number || *number != std::floor(*number) || *number < least || *number > kMostPoints) return std::nullopt;
  return static_cast<int>(*number);
}

}  // namespace

RuleSettingsDialog::RuleSettingsDialog() : shell::DialogModel(kDialogName, "Rule Settings") {
  AddOptionButton("ProfileDefault", "profile", true).caption = "Default (rules A to I)";
  AddOptionButton("ProfileWestern", "profile").caption = "Western Electric";
  AddOptionButton("ProfileNelson", "profile").caption = "Nelson";
  AddOptionButton("ProfileCustom", "profile").caption = "Custom";
  AddCheckBox("Stages").caption = "Stages";
  AddTextBox("StageColtxt").caption = "Stage column";
  AddCheckBox("Historical").caption = "Historical limits";
  for (char letter = kFirstRule; letter <= kLastRule; ++letter) {
    AddCheckBox(RuleName(letter)).caption = std::string(1, letter) + ": " + RuleCaption(KindOf(letter));
    AddTextBox(CountName(letter)).caption = "      K";
    if (HasWindow(KindOf(letter))) AddTextBox(WindowName(letter)).caption = "      M";
  }
  AddCommandButton("CmdOk", "OK");
  AddCommandButton("CmdCancel", "Cancel");
  ShowRules(RuleSet::Default());
  UpdateEnabling();
}

void RuleSettingsDialog::ShowRules(const RuleSet& rules) {
  for (char letter = kFirstRule; letter <= kLastRule; ++letter) {
    const RuleChoice& rule = rules[letter];
    MutableControl(RuleName(letter)).checked = rule.on;
    MutableControl(CountName(letter)).text = std::to_string(rule.k);
    if (HasWindow(KindOf(letter))) MutableControl(WindowName(letter)).text = std::to_string(rule.m);
  }
}

void RuleSettingsDialog::UpdateEnabling() {
  const bool staged = Control("Stages").checked;
  MutableControl("StageColtxt").enabled = staged;
  MutableControl("Historical").enabled = staged;
}

void RuleSettingsDialog::LoadFrom(const ChartRuleSettings& settings) {
  const RuleSet& rules = settings.rules;
  const char* profile = rules == RuleSet::Default()           ? "ProfileDefault"
                        : rules == RuleSet::WesternElectric() ? "ProfileWestern"
                        : rules == RuleSet::Nelson()          ? "ProfileNelson"
                                                              : "ProfileCustom";
  Click(profile);
  ShowRules(rules);
  MutableControl("Stages").checked = settings.stages.on;
  MutableControl("StageColtxt").text =
      settings.stages.column > 0 ? worksheet::ColumnLetters(settings.stages.column) : std::string();
  MutableControl("Historical").checked = settings.stages.historical;
  UpdateEnabling();
}

void RuleSettingsDialog::OnClick(const std::string& control) {
  if (control == "ProfileDefault") ShowRules(RuleSet::Default());
  else if (control == "ProfileWestern") ShowRules(RuleSet::WesternElectric());
  else if (control == "ProfileNelson") ShowRules(RuleSet::Nelson());
  else if (control.starts_with("Rule")) SetChecked("ProfileCustom", true);
  UpdateEnabling();
}

// Editing a count so that the rules differ from the chosen profile's
// makes them custom.
void RuleSettingsDialog::OnFocusLost(const std::string& control) {
  if (!control.starts_with("Rule") || Control("ProfileCustom").checked) return;
  const RuleSet named = Control("ProfileWestern").checked  ? RuleSet::WesternElectric()
                        : Control("ProfileNelson").checked ? RuleSet::Nelson()
                                                           : RuleSet::Default();
  const std::optional<ChartRuleSettings> now = Read();
  if (!now || !(now->rules == named)) SetChecked("ProfileCustom", true);
}

std::optional<ChartRuleSettings> RuleSettingsDialog::Read() const {
  ChartRuleSettings settings;
  for (char letter = kFirstRule; letter <= kLastRule; ++letter) {
    RuleChoice& rule = settings.rules[letter];
    rule.on = Control(RuleName(letter)).checked;
    const bool window = HasWindow(KindOf(letter));
    // A run or trend needs two points at least; a window rule one of m.
    const auto k = ReadCount(Control(CountName(letter)).text, window ? 1 : 2);
    if (!k) return std::nullopt;
    rule.k = rule.m = *k;
    if (window) {
      const auto m = ReadCount(Control(WindowName(letter)).text, *k);
      if (!m) return std::nullopt;
      rule.m = *m;
    }
  }
  settings.stages.on = Control("Stages").checked;
  if (settings.stages.on) {
    const auto column = ParseColumn(Control("StageColtxt").text);
    if (!column) return std::nullopt;
    settings.stages.column = *column;
    settings.stages.historical = Control("Historical").checked;
  }
  return settings;
}

bool RuleSettingsDialog::OnOk(shell::Host& host) {
  const std::optional<ChartRuleSettings> settings = Read();
  if (!settings) {
    host.Refuse(kInvalidCount);
    return false;
  }
  host.Settings().Last<ChartRuleSettings>() = *settings;
  return true;
}

void RuleSettingsDialog::OnCancel(shell::Host&) {}

std::unique_ptr<shell::DialogModel> MakeRuleSettings() { return std::make_unique<RuleSettingsDialog>(); }

ChartRuleSettings RuleSettingsInForce(shell::Host& host) {
  const shell::CommandRun* run = host.Recording();
  if (!host.Replaying() || run == nullptr) return host.Settings().Last<ChartRuleSettings>();
  return RulesOfRun(*run);
}

ChartRuleSettings RulesOfRun(const shell::CommandRun& run) {
  RuleSettingsDialog dialog;
  shell::RestoreControlStates(dialog, run.settings);
  return dialog.Read().value_or(ChartRuleSettings{});
}

std::vector<shell::ControlSetting> RuleSettingStates(const ChartRuleSettings& settings) {
  RuleSettingsDialog dialog;
  dialog.LoadFrom(settings);
  return shell::ControlStates(dialog);
}

void RestoreRuleSettings(shell::Host& host, const std::vector<shell::ControlSetting>& states) {
  RuleSettingsDialog dialog;
  shell::RestoreControlStates(dialog, states);
  if (const auto settings = dialog.Read()) {
    host.Settings().Last<ChartRuleSettings>() = *settings;
    host.KeepOptions(shell::ControlStates(dialog));
  }
}

}  // namespace orvik::charts
