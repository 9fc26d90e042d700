#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvik::shell {

class Host;

enum class ControlKind { TextBox, OptionButton, CheckBox, CommandButton, Label };

const char* ControlKindName(ControlKind kind);  // "TextBox", "OptionButton", ...

// One control of a dialog, under the name the application gives it.
struct DialogControl {
  std::string name;  // "Uppertxt", "SubYes", "CpkOk"
  ControlKind kind = ControlKind::TextBox;
  std::string caption;
  std::string text;     // text boxes
  bool checked = false; // option buttons and check boxes
  bool enabled = true;
  // Option buttons with the same group exclude each other.
  std::string group;
};

// A modal dialog without any windowing: its controls with their texts,
// check marks and enabling, and the logic behind the user's actions (clicks,
// leaving a text box, OK, cancel) with its validation messages. The GUI binds
// widgets to a model; orvik-cli drives the same model from --set.
class DialogModel {
 public:
  DialogModel(std::string name, std::string caption);
  virtual ~DialogModel() = default;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  const std::vector<DialogControl>& Controls() const { return controls_; }
  // Throws std::out_of_range for an unknown control name.
  const DialogControl& Control(std::string_view name) const;
  bool HasControl(std::string_view name) const;

  // The user types `text` into a text box and leaves it.
  void Type(std::string_view control, std::string text);
  // The user clicks a control: an option button becomes chosen (the others
  // of its group not), a check box toggles; the dialog's handler runs.
  void Click(std::string_view control);
  // Sets a check box or option button to `checked` as the user's clicks
  // would (an option button can only be chosen by a click).
  void SetChecked(std::string_view control, bool checked);

  // OK: validates and stores the parameters. Returns false when the input is
  // refused; the dialog then has shown its message and stays open.
  bool PressOk(Host& host) { return OnOk(host); }
  // Cancel or the close box: writes the cancel line where the dialog has one.
  void PressCancel(Host& host) { OnCancel(host); }

 protected:
  DialogControl& AddControl(DialogControl control);
  DialogControl& AddTextBox(std::string name, std::string default_text = {});
  DialogControl& AddOptionButton(std::string name, std::string group, bool checked = false);
  DialogControl& AddCheckBox(std::string name, bool checked = false);
  DialogControl& AddCommandButton(std::string name, std::string caption);
  DialogControl& AddLabel(std::string name, std::string caption);
  DialogControl& MutableControl(std::string_view name);

  virtual void OnClick(const std::string& /*control*/) {}
  virtual void OnFocusLost(const std::string& /*control*/) {}
  virtual bool OnOk(Host& host) = 0;
  virtual void OnCancel(Host& host) = 0;

 private:
  std::string name_;
  std::string caption_;
  std::vector<DialogControl> controls_;
};

}  // namespace orvik::shell
