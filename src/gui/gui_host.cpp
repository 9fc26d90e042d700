#include "gui/gui_host.h"

#include "gui/main_window.h"
#include "gui/model_dialog.h"
#include "gui/worksheet_window.h"

namespace orvik::gui {

QMessageBox* MakeMessageBox(const shell::MessageBox& box, QWidget* parent) {
  QMessageBox::Icon icon = QMessageBox::Warning;
  switch (box.icon) {
    case shell::MessageIcon::Exclamation: icon = QMessageBox::Warning; break;
    case shell::MessageIcon::Question: icon = QMessageBox::Question; break;
    case shell::MessageIcon::Information: icon = QMessageBox::Information; break;
  }
  QMessageBox::StandardButtons buttons = QMessageBox::Ok;
  if (box.buttons == shell::MessageButtons::OkCancel) buttons = QMessageBox::Ok | QMessageBox::Cancel;
  if (box.buttons == shell::MessageButtons::SaveDiscardCancel)
    buttons = QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel;
  auto* message = new QMessageBox(icon, QString::fromStdString(box.title), QString::fromStdString(box.text), buttons,
                                  parent);
  message->setTextFormat(Qt::PlainText);
  message->setDefaultButton(box.buttons == shell::MessageButtons::SaveDiscardCancel ? QMessageBox::Save : QMessageBox::Ok);
  return message;
}

shell::MessageAnswer GuiHost::ShowMessage(const shell::MessageBox& box) {
  shown_.push_back(box);
  if (responder_) return responder_(box);
  std::unique_ptr<QMessageBox> message(MakeMessageBox(box, &window_));
  switch (message->exec()) {
    case QMessageBox::Ok:
    case QMessageBox::Save: return shell::MessageAnswer::Ok;
    case QMessageBox::Discard: return shell::MessageAnswer::Discard;
    default: return shell::MessageAnswer::Cancel;
  }
}

shell::DialogOutcome GuiHost::ShowDialog(shell::DialogModel& dialog) {
  if (dialog_responder_) {
    const bool ok = dialog_responder_(dialog) && dialog.PressOk(*this);
    if (!ok) dialog.PressCancel(*this);
    return ok ? shell::DialogOutcome::Accepted : shell::DialogOutcome::Cancelled;
  }
  ModelDialog window(dialog, *this, &window_);
  return window.exec() == QDialog::Accepted ? shell::DialogOutcome::Accepted : shell::DialogOutcome::Cancelled;
}

void GuiHost::OpenResultWindow(shell::ResultWindow window) { window_.OpenResultWindow(std::move(window)); }

void GuiHost::OpenDesignSheet(worksheet::Worksheet sheet) { window_.OpenDesignSheet(std::move(sheet)); }

worksheet::Worksheet* GuiHost::CurrentWorksheet() {
  WorksheetWindow* sheet = window_.ActiveWorksheetWindow();
  return sheet ? &sheet->Sheet() : nullptr;
}

}  // namespace orvik::gui
