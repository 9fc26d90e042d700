#include "shell/command_run.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace orvik::shell {

std::vector<ControlSetting> ControlStates(const DialogModel& dialog) {
  std::vector<ControlSetting> states;
  for (const DialogControl& control : dialog.Controls()) {
    if (control.kind == ControlKind::OptionButton && control.checked)
      states.push_back({dialog.Name(), control.name, "1"});
    else if (control.kind == ControlKind::CheckBox)
      states.push_back({dialog.Name(), control.name, control.checked ? "1" : "0"});
  }
  for (const DialogControl& control : dialog.Controls())
    if (control.kind == ControlKind::TextBox && control.enabled)
      states.push_back({dialog.Name(), control.name, control.text});
  return states;
}

namespace {

bool IsText(const DialogModel& dialog, const ControlSetting& setting) {
  return dialog.HasControl(setting.control) && dialog.Control(setting.control).kind == ControlKind::TextBox;
}

// Whether `setting` would change the control as it stands.
bool Changes(const DialogModel& dialog, const ControlSetting& setting) {
  if (!dialog.HasControl(setting.control)) return true;
  const DialogControl& control = dialog.Control(setting.control);
  if (control.kind == ControlKind::TextBox) return control.text != setting.value;
  return control.checked != (setting.value == "1");
}

}  // namespace

std::vector<ControlSetting> WithoutDefaults(
    const std::vector<ControlSetting>& states,
    const std::function<std::unique_ptr<DialogModel>(const std::string&)>& make_fresh) {
  std::vector<ControlSetting> kept;
  for (std::size_t first = 0; first < states.size();) {
    std::size_t last = first;
    while (last < states.size() && states[last].dialog == states[first].dialog) ++last;
    const auto fresh = make_fresh(states[first].dialog);
    if (!fresh) {
      kept.insert(kept.end(), states.begin() + static_cast<long>(first), states.begin() + static_cast<long>(last));
    } else {
      // The clicks go first, onto a fresh dialog, as a replay makes them;
      // then only the texts that differ from what the clicks left remain.
      for (std::size_t i = first; i < last; ++i) {
        if (IsText(*fresh, states[i]) || !Changes(*fresh, states[i])) continue;
        ApplyControlSetting(*fresh, states[i]);
        kept.push_back(states[i]);
      }
      for (std::size_t i = first; i < last; ++i)
        if (IsText(*fresh, states[i]) && Changes(*fresh, states[i])) kept.push_back(states[i]);
    }
    first = last;
  }
  return kept;
}

void RestoreControlStates(DialogModel& dialog, const std::vector<ControlSetting>& states) {
  for (const ControlSetting& state : states)
    if (state.dialog == dialog.Name() && Changes(dialog, state)) ApplyControlSetting(dialog, state);
}

void ApplyControlSetting(DialogModel& dialog, const ControlSetting& setting) {
  const DialogControl& control = dialog.Control(setting.control);
  switch (control.kind) {
    case ControlKind::TextBox:
      dialog.Type(setting.control, setting.value);
      return;
    case ControlKind::OptionButton:
    case ControlKind::CheckBox:
      if (setting.value != "0" && setting.value != "1")
        throw std::invalid_argument(setting.dialog + "." + setting.control + " takes 1 or 0, not " + setting.value);
      dialog.SetChecked(setting.control, setting.value == "1");
      return;
    default:
      throw std::invalid_argument(setting.dialog + "." + setting.control + " cannot be set");
  }
}

namespace {

// `text` as one word of a POSIX shell command.
std::string ShellWord(const std::string& text) {
  const bool plain = !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || std::string_view("-_.,:=/+@%").find(c) != std::string_view::npos;
  });
  if (plain) return text;
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') quoted += "'\\''";
    else quoted += c;
  }
  return quoted + "'";
}

std::string Corner(long col, long row) {
  return (col > 0 ? worksheet::ColumnLetters(col) : std::string()) + (row > 0 ? std::to_string(row) : std::string());
}

}  // namespace

std::string RangeText(const worksheet::GridSelection& s) {
  if (!s.IsBlockSelected) return {};
  const bool whole_rows = s.SelBlockCol == -1 && s.SelBlockCol2 == -1;
  const bool whole_cols = s.SelBlockRow == -1 && s.SelBlockRow2 == -1;
  if (whole_rows && whole_cols) return "all";
  if (whole_cols) return worksheet::ColumnLetters(s.SelBlockCol) + ":" + worksheet::ColumnLetters(s.SelBlockCol2);
  if (whole_rows) return std::to_string(s.SelBlockRow) + ":" + std::to_string(s.SelBlockRow2);
  const std::string first = Corner(s.SelBlockCol, s.SelBlockRow);
  const std::string second = Corner(s.SelBlockCol2, s.SelBlockRow2);
  return first == second ? first : first + ":" + second;
}

std::string RunLine(const CommandRun& run, const std::string& sheet_path) {
  std::string line = "orvik-cli run " + ShellWord(run.key);
  if (!sheet_path.empty()) line += " --sheet " + ShellWord(sheet_path);
  if (const std::string range = RangeText(run.selection); !range.empty()) line += " --select " + ShellWord(range);
  for (const ControlSetting& setting : run.settings)
    line += " --set " + ShellWord(setting.dialog + "." + setting.control + "=" + setting.value);
  return line;
}

}  // namespace orvik::shell
