#include "shell/dialog_model.h"

#include <gtest/gtest.h>

#include "cli/cli_host.h"
#include "shell/host.h"

namespace orvik::shell {
namespace {

// The record LimitsDialog confirms.
struct TestLimits {
  std::string upper;
};

// A small dialog in the shape of the analysis dialogs: two option buttons
// that enable their own text box, a box that falls back to "0" when left
// empty, and a validation on OK that fills its record.
class LimitsDialog : public DialogModel {
 public:
  using Parameters = TestLimits;
  LimitsDialog() : DialogModel("TestLimits", "Limits") {
    AddOptionButton("OptUpper", "side", true);
    AddOptionButton("OptLower", "side");
    AddTextBox("Uppertxt");
    AddTextBox("Lowertxt").enabled = false;
    AddCheckBox("ChkLog");
  }
  int clicks = 0;
  const TestLimits& Result() const { return result_; }

 protected:
  void OnClick(const std::string& control) override {
    ++clicks;
    MutableControl("Uppertxt").enabled = control == "OptUpper" ? true : Control("Uppertxt").enabled;
    if (control == "OptLower") {
      MutableControl("Uppertxt").enabled = false;
      MutableControl("Lowertxt").enabled = true;
    }
  }
  void OnFocusLost(const std::string& control) override {
    if (Control(control).text.empty()) MutableControl(control).text = "0";
  }
  bool OnOk(Host& host) override {
    if (Control("Uppertxt").text == "0") {
      host.Refuse("Input upper limit");
      return false;
    }
    result_.upper = Control("Uppertxt").text;
    return true;
  }
  void OnCancel(Host& host) override { host.Log().AppendSessionLine("Cancel input specification"); }

 private:
  TestLimits result_;
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

TEST(AskParametersTest, KeepsTheLastConfirmedRecordOfItsOwnTypeOnly) {
  cli::CliHost host(worksheet::Worksheet("WorkSheet 1"), {{"TestLimits", "Uppertxt", "7"}}, {});
  host.Settings().Last<std::string>() = "another dialog's record";
  LimitsDialog dialog;
  const auto confirmed = AskParameters(host, dialog);
  ASSERT_TRUE(confirmed.has_value());
  EXPECT_EQ(confirmed->upper, "7");
  EXPECT_EQ(host.Settings().Last<TestLimits>().upper, "7");
  EXPECT_EQ(host.Settings().Last<std::string>(), "another dialog's record");

  // Cancel returns nothing and keeps the record confirmed before.
  cli::CliHost cancelling(worksheet::Worksheet("WorkSheet 1"), {{"TestLimits", "Uppertxt", "5"}}, {"TestLimits"});
  cancelling.Settings().Last<TestLimits>().upper = "3";
  LimitsDialog cancelled;
  EXPECT_EQ(AskParameters(cancelling, cancelled), std::nullopt);
  EXPECT_EQ(cancelling.Settings().Last<TestLimits>().upper, "3");
}

TEST(CliHostDialogTest, CheckMarksTakeOnlyOneOrZero) {
  LimitsDialog dialog;
  EXPECT_THROW(ApplyControlSetting(dialog, {"TestLimits", "ChkLog", "yes"}), std::invalid_argument);
}

}  // namespace
}  // namespace orvik::shell
