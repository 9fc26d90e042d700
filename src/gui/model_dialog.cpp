#include "gui/model_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orvik::gui {

namespace {

// Command buttons that confirm or cancel the dialog, by the application's
// naming of them ("CmdOk", "CpkOk", "Okay", "Cancel", "CmdCancel").
bool IsOkButton(const std::string& name) {
  const QString n = QString::fromStdString(name).toLower();
  return n.endsWith(QStringLiteral("ok")) || n.endsWith(QStringLiteral("okay"));
}
// Some forms spell their cancel button "Cancle" (CpkCancle, PnCancle).
bool IsCancelButton(const std::string& name) {
  const QString n = QString::fromStdString(name).toLower();
  return n.contains(QStringLiteral("cancel")) || n.contains(QStringLiteral("cancle"));
}

}  // namespace

ModelDialog::ModelDialog(shell::DialogModel& model, shell::Host& host, QWidget* parent)
    : QDialog(parent), model_(model), host_(host) {
  setObjectName(QString::fromStdString(model.Name()));
  setWindowTitle(QString::fromStdString(model.Caption()));
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  auto* controls = new QWidget;
  auto* form = new QFormLayout(controls);
  form->setContentsMargins(0, 0, 0, 0);
  auto* buttons = new QHBoxLayout;
  bool has_ok = false;
  bool has_cancel = false;
  for (const shell::DialogControl& control : model.Controls()) {
    const QString name = QString::fromStdString(control.name);
    const QString caption = QString::fromStdString(control.caption);
    QWidget* widget = nullptr;
    switch (control.kind) {
      case shell::ControlKind::TextBox: {
        auto* edit = new QLineEdit;
        connect(edit, &QLineEdit::editingFinished, this, [this, edit, name] {
          if (edit->text().toStdString() == model_.Control(name.toStdString()).text) return;
          model_.Type(name.toStdString(), edit->text().toStdString());
          Refresh();
        });
        form->addRow(caption, edit);
        widget = edit;
        break;
      }
      case shell::ControlKind::OptionButton: {
        auto* radio = new QRadioButton(caption);
        // The model keeps the groups exclusive; the buttons only show it.
        radio->setAutoExclusive(false);
        connect(radio, &QRadioButton::clicked, this, [this, name] {
          model_.Click(name.toStdString());
          Refresh();
        });
        form->addRow(radio);
        widget = radio;
        break;
      }
      case shell::ControlKind::CheckBox: {
        auto* box = new QCheckBox(caption);
        connect(box, &QCheckBox::clicked, this, [this, name] {
          model_.Click(name.toStdString());
          Refresh();
        });
        form->addRow(box);
        widget = box;
        break;
      }
      case shell::ControlKind::CommandButton: {
        auto* button = new QPushButton(caption);
        if (IsOkButton(control.name)) {
          has_ok = true;
          button->setDefault(true);
          connect(button, &QPushButton::clicked, this, &ModelDialog::accept);
        } else if (IsCancelButton(control.name)) {
          has_cancel = true;
          connect(button, &QPushButton::clicked, this, &ModelDialog::reject);
        } else {
          connect(button, &QPushButton::clicked, this, [this, name] {
            model_.Click(name.toStdString());
            Refresh();
          });
        }
        buttons->addWidget(button);
        widget = button;
        break;
      }
      case shell::ControlKind::Label: {
        auto* label = new QLabel(caption);
        form->addRow(label);
        widget = label;
        break;
      }
    }
    widget->setObjectName(name);
    widgets_.insert(name, widget);
  }
  if (!has_ok || !has_cancel) {
    auto* box = new QDialogButtonBox;
    if (!has_ok) connect(box->addButton(QDialogButtonBox::Ok), &QPushButton::clicked, this, &ModelDialog::accept);
    if (!has_cancel)
      connect(box->addButton(QDialogButtonBox::Cancel), &QPushButton::clicked, this, &ModelDialog::reject);
    buttons->addWidget(box);
  }
  // A dialog of many controls (the rule settings) scrolls rather than
  // growing past the screen.
  constexpr int kRowsWithoutScrolling = 24;
  if (form->rowCount() > kRowsWithoutScrolling) {
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(controls);
    scroll->setMinimumWidth(controls->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width());
    scroll->setMinimumHeight(kRowsWithoutScrolling * controls->fontMetrics().height() * 2);
    layout->addWidget(scroll);
  } else {
    layout->addWidget(controls);
  }
  layout->addLayout(buttons);
  Refresh();
}

void ModelDialog::Refresh() {
  for (const shell::DialogControl& control : model_.Controls()) {
    QWidget* widget = widgets_.value(QString::fromStdString(control.name));
    if (!widget) continue;
    widget->setEnabled(control.enabled);
    const QSignalBlocker block(widget);
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
      const QString text = QString::fromStdString(control.text);
      if (edit->text() != text) edit->setText(text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget); button && button->isCheckable()) {
      button->setChecked(control.checked);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
      label->setText(QString::fromStdString(control.caption));
    }
  }
}

void ModelDialog::accept() {
  // A text box still being edited loses its focus to the OK button first.
  if (auto* edit = qobject_cast<QLineEdit*>(focusWidget())) {
    const std::string name = edit->objectName().toStdString();
    if (model_.HasControl(name) && model_.Control(name).text != edit->text().toStdString())
      model_.Type(name, edit->text().toStdString());
  }
  const bool accepted = model_.PressOk(host_);
  Refresh();
  if (accepted) QDialog::accept();
}

void ModelDialog::reject() {
  model_.PressCancel(host_);
  QDialog::reject();
}

}  // namespace orvik::gui
