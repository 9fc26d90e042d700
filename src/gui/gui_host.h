#pragma once

#include <QMessageBox>
#include <functional>

#include "shell/host.h"

namespace orvik::gui {

class MainWindow;

// The host of the window application: real message boxes, dialogs bound to
// the core dialog models, and result windows opened in the main window.
class GuiHost : public shell::Host {
 public:
  explicit GuiHost(MainWindow& window) : window_(window) {}

  shell::MessageAnswer ShowMessage(const shell::MessageBox& box) override;

  // Answers message boxes in place of the user (tests and scripted runs);
  // every box is still recorded.
  void SetMessageResponder(std::function<shell::MessageAnswer(const shell::MessageBox&)> responder) {
    responder_ = std::move(responder);
  }
  // Answers dialogs in place of the user: the function fills the model and
  // returns whether OK or Cancel is pressed.
  void SetDialogResponder(std::function<bool(shell::DialogModel&)> responder) { dialog_responder_ = std::move(responder); }
  const std::vector<shell::MessageBox>& ShownMessages() const { return shown_; }

 protected:
  shell::DialogOutcome ShowDialog(shell::DialogModel& dialog) override;
  void OpenResultWindow(shell::ResultWindow window) override;
  void OpenDesignSheet(worksheet::Worksheet sheet) override;
  worksheet::Worksheet* CurrentWorksheet() override;

 private:
  MainWindow& window_;
  std::function<shell::MessageAnswer(const shell::MessageBox&)> responder_;
  std::function<bool(shell::DialogModel&)> dialog_responder_;
  std::vector<shell::MessageBox> shown_;
};

// The message box the user sees for `box`: its title, text, icon and buttons.
QMessageBox* MakeMessageBox(const shell::MessageBox& box, QWidget* parent);

}  // namespace orvik::gui
