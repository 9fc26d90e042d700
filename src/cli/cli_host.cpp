#include "cli/cli_host.h"

#include <stdexcept>

#include "commands/command_registry.h"

namespace orvik::cli {

CliHost::CliHost(worksheet::Worksheet sheet, std::vector<DialogSetting> settings,
                 std::set<std::string> cancelled_dialogs)
    : sheet_(std::move(sheet)), settings_(std::move(settings)), cancelled_dialogs_(std::move(cancelled_dialogs)) {}

shell::MessageAnswer CliHost::ShowMessage(const shell::MessageBox& box) {
  messages_.push_back(box);
  return shell::MessageAnswer::Ok;
}

shell::DialogOutcome CliHost::ShowDialog(shell::DialogModel& dialog) {
  for (const auto& setting : settings_)
    if (setting.dialog == dialog.Name()) shell::ApplyControlSetting(dialog, setting);
  // A refused OK leaves the dialog open; the runner then gives up and
  // presses cancel, as a user would.
  if (cancelled_dialogs_.count(dialog.Name()) == 0 && dialog.PressOk(*this)) return shell::DialogOutcome::Accepted;
  dialog.PressCancel(*this);
  any_dialog_cancelled_ = true;
  return shell::DialogOutcome::Cancelled;
}

void CliHost::OpenResultWindow(shell::ResultWindow window) { windows_.push_back(std::move(window)); }

void CliHost::OpenDesignSheet(worksheet::Worksheet sheet) {
  shell::ResultWindow window;
  window.kind = shell::WindowKind::DOEDoc;
  window.title = sheet.Name();
  shell::ResultTable table;
  for (long col = 1; col <= sheet.DataColCnt(); ++col) table.columns.push_back(sheet.ColumnHeader(col));
  for (long row = 1; row <= sheet.DataRowCnt(); ++row) {
    std::vector<std::string> cells;
    for (long col = 1; col <= sheet.DataColCnt(); ++col) cells.emplace_back(sheet.Text(row, col));
    table.AddRow(std::move(cells));
  }
  window.table = std::move(table);
  windows_.push_back(std::move(window));
}

bool RunDialogsBeforeCommand(CliHost& host, const std::vector<DialogSetting>& settings,
                             const shell::CommandDeclaration& command) {
  std::set<std::string> done(command.dialogs.begin(), command.dialogs.end());
  for (const auto& setting : settings) {
    if (!done.insert(setting.dialog).second) continue;
    const shell::DialogDeclaration* entry = commands::FindDialog(setting.dialog);
    if (entry == nullptr || !entry->opensBeforeCommand) continue;
    const auto dialog = entry->make();
    if (host.RunDialog(*dialog) != shell::DialogOutcome::Accepted) return false;
  }
  return true;
}

}  // namespace orvik::cli
