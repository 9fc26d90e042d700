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

std::vector<ControlSetting> WithoutDefaults(
    const std::vector<ControlSetting>& states,
    const std::function<std::unique_ptr<DialogModel>(const std::string&)>& make_fresh) {
  std::vector<ControlSetting> kept;
  std::string fresh_name;
  std::unique_ptr<DialogModel> fresh;
  std::vector<ControlSetting> defaults;
  // Once a click is kept, the texts after it stay too: its handler may
  // have changed them from their defaults.
  bool clicked = false;
  for (const ControlSetting& state : states) {
    if (state.dialog != fresh_name) {
      fresh_name = state.dialog;
      fresh = make_fresh(state.dialog);
      defaults = fresh ? ControlStates(*fresh) : std::vector<ControlSetting>{};
      clicked = false;
    }
    const bool is_default = std::find(defaults.begin(), defaults.end(), state) != defaults.end();
    if (is_default && !clicked) continue;
    kept.push_back(state);
    const bool is_click = fresh && fresh->HasControl(state.control) &&
                          fresh->Control(state.control).kind != ControlKind::TextBox;
    clicked = clicked || is_click;
  }
  return kept;
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
