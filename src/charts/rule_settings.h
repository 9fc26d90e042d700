#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "charts/run_rules.h"
#include "shell/command_run.h"
#include "shell/dialog_model.h"
#include "shell/host.h"

namespace orvik::charts {

// Whether a chart is split into stages by the labels in one worksheet
// column (a new stage begins wherever the label changes), and whether the
// first stage's limits (phase I) apply to all later stages (phase II).
struct StageChoice {
  bool on = false;
  long column = 0;
  bool historical = false;
  friend bool operator==(const StageChoice&, const StageChoice&) = default;
};

// The program-wide choice of run rules and stages that every control chart
// applies (dialog RuleSettings).
struct ChartRuleSettings {
  RuleSet rules = RuleSet::Default();
  StageChoice stages;
  friend bool operator==(const ChartRuleSettings&, const ChartRuleSettings&) = default;
};

// The dialog RuleSettings: option buttons ProfileDefault (chosen at first),
// ProfileWestern, ProfileNelson, which fill in their rules, and
// ProfileCustom, which a change to any rule chooses; the check box Stages
// with the stage column StageColtxt and the check box Historical; per rule
// L from A to N a check box RuleL and the count RuleLKtxt, and for the
// rules with a window (C to K) its length RuleLMtxt; CmdOk, CmdCancel.
// OK stores the choice program-wide.
class RuleSettingsDialog : public shell::DialogModel {
 public:
  RuleSettingsDialog();
  // Shows `settings`, under the profile they match.
  void LoadFrom(const ChartRuleSettings& settings);
  // The settings the controls hold, or nothing when a count or the stage
  // column is not valid.
  std::optional<ChartRuleSettings> Read() const;

 protected:
  void OnClick(const std::string& control) override;
  void OnFocusLost(const std::string& control) override;
  bool OnOk(shell::Host& host) override;
  void OnCancel(shell::Host& host) override;

 private:
  void ShowRules(const RuleSet& rules);
  void UpdateEnabling();
};

std::unique_ptr<shell::DialogModel> MakeRuleSettings();

// The rules and stages a chart applies: while a window is drawn again, the
// ones its run recorded (a chart keeps the rules it was made with);
// otherwise the program-wide ones.
ChartRuleSettings RuleSettingsInForce(shell::Host& host);
// The rules and stages a run recorded: the default ones where it recorded
// none (it ran before any were chosen).
ChartRuleSettings RulesOfRun(const shell::CommandRun& run);

// The program-wide settings as the dialog's control states, to be saved
// with a project, and back: `states` are applied to the dialog and
// confirmed, as if the user had. States that do not make valid settings
// leave the program's settings as they are.
std::vector<shell::ControlSetting> RuleSettingStates(const ChartRuleSettings& settings);
void RestoreRuleSettings(shell::Host& host, const std::vector<shell::ControlSetting>& states);

}  // namespace orvik::charts
