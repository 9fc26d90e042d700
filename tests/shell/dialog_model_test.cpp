#include "shell/dialog_model.h"

#include <gtest/gtest.h>

#include "cli/cli_host.h"

namespace orvik::shell {
namespace {

// A small dialog in the shape of the analysis dialogs: two option buttons
// that enable their own text box, and a check box. Focus-loss fixes, OK and
// cancel are tested on the real dialogs (CpkForm, the analysis dialogs).
class LimitsDialog : public DialogModel {
 public:
  LimitsDialog() : DialogModel("TestLimits", "Limits") {
    AddOptionButton("OptUpper", "side", true);
    AddOptionButton("OptLower", "side");
    AddTextBox("Uppertxt");
    AddTextBox("Lowertxt").enabled = false;
    AddCheckBox("ChkLog");
  }
  int clicks = 0;

 protected:
  void OnClick(const std::string& control) override {
    ++clicks;
    MutableControl("Uppertxt").enabled = control == "OptUpper" ? true : Control("Uppertxt").enabled;
    if (control == "OptLower") {
      MutableControl("Uppertxt").enabled = false;
      MutableControl("Lowertxt").enabled = true;
    }
  }
  bool OnOk(Host&) override { return true; }
  void OnCancel(Host&) override {}
};

TEST(DialogModelTest, ChoosingAnOptionButtonUnchoosesTheOthersOfItsGroupAndRunsTheHandler) {
  LimitsDialog dialog;
  dialog.Click("OptLower");
  EXPECT_TRUE(dialog.Control("OptLower").checked);
  EXPECT_FALSE(dialog.Control("OptUpper").checked);
  EXPECT_FALSE(dialog.Control("Uppertxt").enabled);
  EXPECT_TRUE(dialog.Control("Lowertxt").enabled);
  EXPECT_EQ(dialog.clicks, 1);
}

TEST(DialogModelTest, SetCheckedClicksOnlyWhenTheStateChanges) {
  LimitsDialog dialog;
  dialog.SetChecked("ChkLog", true);
  dialog.SetChecked("ChkLog", true);
  EXPECT_TRUE(dialog.Control("ChkLog").checked);
  EXPECT_EQ(dialog.clicks, 1);
  dialog.SetChecked("ChkLog", false);
  EXPECT_FALSE(dialog.Control("ChkLog").checked);
  dialog.SetChecked("OptUpper", false);  // an option button is only ever chosen by a click
  EXPECT_TRUE(dialog.Control("OptUpper").checked);
  EXPECT_THROW(dialog.SetChecked("Uppertxt", true), std::invalid_argument);
}

TEST(DialogModelTest, UnknownControlsAreReported) {
  LimitsDialog dialog;
  EXPECT_FALSE(dialog.HasControl("Nosuch"));
  EXPECT_THROW(dialog.Click("Nosuch"), std::out_of_range);
  EXPECT_THROW(dialog.Type("Nosuch", "1"), std::out_of_range);
}

TEST(CliHostDialogTest, CheckMarksTakeOnlyOneOrZero) {
  LimitsDialog dialog;
  EXPECT_THROW(cli::ApplyDialogSetting(dialog, {"TestLimits", "ChkLog", "yes"}), std::invalid_argument);
}

}  // namespace
}  // namespace orvik::shell
