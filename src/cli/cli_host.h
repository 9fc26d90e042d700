#pragma once

#include <set>
#include <string>
#include <vector>

#include "shell/command_declaration.h"
#include "shell/host.h"

namespace orvik::cli {

// One --set DIALOG.CONTROL=VALUE of the command line.
using DialogSetting = shell::ControlSetting;

// The host of a headless run: one worksheet "WorkSheet 1", message boxes
// recorded and answered OK, dialogs filled from the command line's settings
// and then confirmed (or cancelled), result windows recorded.
class CliHost : public shell::Host {
 public:
  CliHost(worksheet::Worksheet sheet, std::vector<DialogSetting> settings, std::set<std::string> cancelled_dialogs);

  shell::MessageAnswer ShowMessage(const shell::MessageBox& box) override;

  const std::vector<shell::MessageBox>& Messages() const { return messages_; }
  const std::vector<shell::ResultWindow>& Windows() const { return windows_; }
  // Hands the recorded windows over without copying them.
  std::vector<shell::ResultWindow> TakeWindows() { return std::move(windows_); }
  bool AnyDialogCancelled() const { return any_dialog_cancelled_; }

 protected:
  shell::DialogOutcome ShowDialog(shell::DialogModel& dialog) override;
  void OpenResultWindow(shell::ResultWindow window) override;
  // A design sheet is printed as a window of kind DOEDoc whose table is the
  // sheet: its column headers, then its rows of cells.
  void OpenDesignSheet(worksheet::Worksheet sheet) override;
  worksheet::Worksheet* CurrentWorksheet() override { return &sheet_; }

 private:
  worksheet::Worksheet sheet_;
  std::vector<DialogSetting> settings_;
  std::set<std::string> cancelled_dialogs_;
  std::vector<shell::MessageBox> messages_;
  std::vector<shell::ResultWindow> windows_;
  bool any_dialog_cancelled_ = false;
};

// Runs, before the command, every dialog named in `settings` that sets
// program-wide options rather than being opened by a command (the catalog
// marks them opensBeforeCommand), each once in the order first named: its
// settings, then OK, as if the user had used it earlier in the session.
// Returns false when one of them was refused and given up; the command is
// then not run. A dialog that `command` opens itself (the gauge study's
// design) is left to the command.
bool RunDialogsBeforeCommand(CliHost& host, const std::vector<DialogSetting>& settings,
                             const shell::CommandDeclaration& command);

}  // namespace orvik::cli
