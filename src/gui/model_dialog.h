#pragma once

#include <QDialog>
#include <QHash>

#include "shell/dialog_model.h"
#include "shell/host.h"

namespace orvik::gui {

// The window of a core dialog model: one widget per control, named as the
// control, laid out in the model's order. Leaving a text box, clicking a
// button, OK and Cancel go to the model; after each the widgets take the
// model's texts, check marks and enabling again. OK closes the window only
// when the model accepts its input; Cancel and the close box run the
// model's cancel handling.
class ModelDialog : public QDialog {
  Q_OBJECT

 public:
  ModelDialog(shell::DialogModel& model, shell::Host& host, QWidget* parent = nullptr);

  // The widget of control `name`, or null.
  QWidget* ControlWidget(const QString& name) const { return widgets_.value(name); }
  // Copies the model's control states into the widgets.
  void Refresh();

  void accept() override;
  void reject() override;

 private:
  shell::DialogModel& model_;
  shell::Host& host_;
  QHash<QString, QWidget*> widgets_;
};

}  // namespace orvik::gui
