#include "charts/given_limits_dialog.h"

#include <gtest/gtest.h>

#include "support/case_table.h"
#include "support/sheet_host.h"

namespace orvik::charts {
namespace {

using testing_support::SheetHost;

TEST(ControlLimitDialogTest, OptionButtonsEnableTheLimitBoxes) {
  GivenLimitsDialog dialog(1);
  EXPECT_TRUE(dialog.Control("AnalysisOpt").checked);
  EXPECT_FALSE(dialog.Control("UCLtxt").enabled);
  dialog.Click("ControlOpt");
  EXPECT_TRUE(dialog.Control("UCLtxt").enabled);
  EXPECT_TRUE(dialog.Control("LCLtxt").enabled);
  dialog.Click("AnalysisOpt");
  EXPECT_FALSE(dialog.Control("CLtxt").enabled);
  GivenLimitsDialog two(2);
  for (const char* name : {"UCL1txt", "CL1txt", "LCL1txt", "UCL2txt", "CL2txt", "LCL2txt", "Okay", "Cancel"})
    EXPECT_TRUE(two.HasControl(name)) << name;
  EXPECT_EQ(two.Name(), "ControlTwoLimit");
}

// The cases of data/given_limits.tsv.
TEST(ControlLimitDialogTest, ValidationOfOneSet) {
  for (const auto& row : testing_support::ReadCases("charts/data/given_limits.tsv")) {
    const bool accepted = row[0] == "accept";
    GivenLimitsDialog dialog(1);
    dialog.Click("ControlOpt");
    dialog.Type("UCLtxt", row[1]);
    dialog.Type("CLtxt", row[2]);
    dialog.Type("LCLtxt", row[3]);
    auto host = SheetHost({}, "A1");
    EXPECT_EQ(dialog.PressOk(host), accepted) << row.Where();
    const shell::GivenLimits& given = host.Settings().givenLimits;
    EXPECT_EQ(given.use, accepted);
    if (accepted) {
      EXPECT_EQ(given.charts[0].UCL, row[1]);
      EXPECT_TRUE(host.Messages().empty());
    } else {
      ASSERT_EQ(host.Messages().size(), 1u);
      EXPECT_EQ(host.Messages()[0], shell::RefusalBox("Include improper data or null cells"));
    }
  }
}

TEST(ControlLimitDialogTest, TwoSetsAreCheckedAndTheComputedChoiceClearsTheFlag) {
  auto host = SheetHost({}, "A1");
  GivenLimitsDialog dialog(2);
  dialog.Click("ControlOpt");
  for (const auto& [box, text] : {std::pair{"UCL1txt", "12"}, {"CL1txt", "10"}, {"LCL1txt", "8"},
                                  {"UCL2txt", "4"}, {"CL2txt", "2"}, {"LCL2txt", "2"}})
    dialog.Type(box, text);
  EXPECT_FALSE(dialog.PressOk(host));
  dialog.Type("LCL2txt", "0");
  EXPECT_TRUE(dialog.PressOk(host));
  EXPECT_TRUE(host.Settings().givenLimits.use);
  EXPECT_EQ(host.Settings().givenLimits.charts[1].CL, "2");

  GivenLimitsDialog computed(1);
  computed.LoadFrom(host.Settings().givenLimits);
  EXPECT_TRUE(computed.Control("ControlOpt").checked);
  EXPECT_EQ(computed.Control("UCLtxt").text, "12");
  computed.Click("AnalysisOpt");
  EXPECT_TRUE(computed.PressOk(host));
  EXPECT_FALSE(host.Settings().givenLimits.use);
}

}  // namespace
}  // namespace orvik::charts
