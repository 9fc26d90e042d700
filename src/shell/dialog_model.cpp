#include "shell/dialog_model.h"

#include <stdexcept>

namespace orvik::shell {

const char* ControlKindName(ControlKind kind) {
  switch (kind) {
    case ControlKind::TextBox: return "TextBox";
    case ControlKind::OptionButton: return "OptionButton";
    case ControlKind::CheckBox: return "CheckBox";
    case ControlKind::CommandButton: return "CommandButton";
    case ControlKind::Label: return "Label";
  }
  return "TextBox";
}

DialogModel::DialogModel(std::string name, std::string caption)
    : name_(std::move(name)), caption_(std::move(caption)) {}

const DialogControl& DialogModel::Control(std::string_view name) const {
  for (const auto& control : controls_)
    if (control.name == name) return control;
  throw std::out_of_range("dialog " + name_ + " has no control " + std::string(name));
}

bool DialogModel::HasControl(std::string_view name) const {
  for (const auto& control : controls_)
    if (control.name == name) return true;
  return false;
}

DialogControl& DialogModel::MutableControl(std::string_view name) {
  return const_cast<DialogControl&>(Control(name));
}

DialogControl& DialogModel::AddControl(DialogControl control) {
  controls_.push_back(std::move(control));
  return controls_.back();
}

DialogControl& DialogModel::AddTextBox(std::string name, std::string default_text) {
  DialogControl control;
  control.name = std::move(name);
  control.kind = ControlKind::TextBox;
  control.text = std::move(default_text);
  return AddControl(std::move(control));
}

DialogControl& DialogModel::AddOptionButton(std::string name, std::string group, bool checked) {
  DialogControl control;
  control.name = std::move(name);
  control.kind = ControlKind::OptionButton;
  control.group = std::move(group);
  control.checked = checked;
  return AddControl(std::move(control));
}

DialogControl& DialogModel::AddCheckBox(std::string name, bool checked) {
  DialogControl control;
  control.name = std::move(name);
  control.kind = ControlKind::CheckBox;
  control.checked = checked;
  return AddControl(std::move(control));
}

DialogControl& DialogModel::AddCommandButton(std::string name, std::string caption) {
  DialogControl control;
  control.name = std::move(name);
  control.kind = ControlKind::CommandButton;
  control.caption = std::move(caption);
  return AddControl(std::move(control));
}

DialogControl& DialogModel::AddLabel(std::string name, std::string caption) {
  DialogControl control;
  control.name = std::move(name);
  control.kind = ControlKind::Label;
  control.caption = std::move(caption);
  return AddControl(std::move(control));
}

void DialogModel::Type(std::string_view control, std::string text) {
  DialogControl& box = MutableControl(control);
  box.text = std::move(text);
  OnFocusLost(box.name);
}

void DialogModel::Click(std::string_view control) {
  DialogControl& clicked = MutableControl(control);
  const std::string name = clicked.name;
  if (clicked.kind == ControlKind::OptionButton) {
    for (auto& other : controls_)
      if (other.kind == ControlKind::OptionButton && other.group == clicked.group) other.checked = false;
    MutableControl(name).checked = true;
  } else if (clicked.kind == ControlKind::CheckBox) {
    clicked.checked = !clicked.checked;
  }
  OnClick(name);
}

void DialogModel::SetChecked(std::string_view control, bool checked) {
  const DialogControl& target = Control(control);
  if (target.kind == ControlKind::OptionButton) {
    if (checked) Click(control);
  } else if (target.kind == ControlKind::CheckBox) {
    if (target.checked != checked) Click(control);
  } else {
    throw std::invalid_argument("control " + target.name + " has no check mark");
  }
}

}  // namespace orvik::shell
