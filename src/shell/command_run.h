#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "shell/dialog_model.h"
#include "worksheet/worksheet.h"

namespace orvik::shell {

// One control of a dialog set to a value, as `--set DIALOG.CONTROL=VALUE`
// of orvik-cli writes it: a text box's text, or 1 / 0 for an option button
// or check box.
struct ControlSetting {
  std::string dialog;
  std::string control;
  std::string value;
  friend bool operator==(const ControlSetting&, const ControlSetting&) = default;
};

// Everything needed to run a command again exactly as it ran: its tool key,
// the worksheet it read (a copy, shared by the windows of runs over the same
// data) with the selection it read, and the controls of every dialog the
// user confirmed, in order. A result window keeps the record of the run
// that made it, so it can be drawn again without the worksheet, and the
// History pane writes it as an orvik-cli line.
struct CommandRun {
  std::string key;
  std::shared_ptr<const worksheet::Worksheet> data;
  worksheet::GridSelection selection;
  // Dialogs that set program-wide options before the command (the given
  // control limits), as last confirmed, then the command's own dialogs.
  std::vector<ControlSetting> settings;
};

// The state of `dialog`'s settable controls as settings that bring a fresh
// copy of it to the same state: chosen option buttons and every check box
// first (their click handlers may change other controls), then the texts of
// the enabled text boxes.
std::vector<ControlSetting> ControlStates(const DialogModel& dialog);

// Leaves out of `states` what a freshly made dialog of the same name has
// already, once the kept clicks are made on it; `make_fresh` gives that
// dialog, or null when it is not known (its settings are all kept).
std::vector<ControlSetting> WithoutDefaults(const std::vector<ControlSetting>& states,
                                            const std::function<std::unique_ptr<DialogModel>(const std::string&)>& make_fresh);

// Brings `dialog` to the states recorded for it in `states` (those of its
// name), touching only the controls that differ, so a text box the user
// never typed into is not left as if typed.
void RestoreControlStates(DialogModel& dialog, const std::vector<ControlSetting>& states);

// Applies one setting to an open dialog as the user's input would: a text
// box is typed into and left, an option button or check box takes 1 or 0.
// Throws std::invalid_argument for a value the control cannot take.
void ApplyControlSetting(DialogModel& dialog, const ControlSetting& setting);

// The orvik-cli line that runs `run` again over the sheet file `sheet_path`:
// `orvik-cli run KEY --sheet PATH --select RANGE --set D.C=V ...`, each
// argument quoted for a POSIX shell where it needs it.
std::string RunLine(const CommandRun& run, const std::string& sheet_path);

// The selection in orvik-cli's range notation ("B2:D20", "B:D", "3:7",
// "all"); empty when no block is selected.
std::string RangeText(const worksheet::GridSelection& selection);

}  // namespace orvik::shell
