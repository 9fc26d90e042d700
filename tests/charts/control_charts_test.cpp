#include "charts/control_charts.h"

#include <gtest/gtest.h>

#include "charts/control_form.h"
#include "support/accuracy_sample.h"
#include "support/sheet_host.h"

// The charts' grids, limits, codes, labels, refusals and log lines are held
// by the golden cases (tests/golden/mnuBarX-R and the other chart keys);
// these tests cover what a single run of orvik-cli cannot show.
namespace orvik::charts {
namespace {

using testing_support::LogLines;
using testing_support::MessageTexts;
using testing_support::SheetHost;
using Lines = std::vector<std::string>;

// Three subgroups of two: means 2, 2, 5 and ranges 2, 0, 2.
const std::vector<std::vector<std::string>> kThreePairs = {{"1", "3"}, {"2", "2"}, {"4", "6"}};

TEST(XMRViewTest, CentreLineOfLargeValuesOfSmallSpread) {
  // The mean 10000000.2 to 8 places: a plain running sum would put it at
  // 10000000.2000001.
  auto host = SheetHost(testing_support::Column(testing_support::AccuracySampleTexts()), "A:A");
  XMRView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.table->TextRows()[0][2], "10000000.2");
  EXPECT_EQ(window.charts[0].lines.at(1).value, 10000000.2);
}

// The counts 3, 7, 5: the largest count 7 is the least sample size taken.
// A refused size leaves the dialog open with the text as typed and writes
// no log line; the runner then gives up with cancel, which writes the
// cancel line.
TEST(PnViewTest, SampleSizeDialog) {
  const std::string kNotANumber = "Please, input valid numerical data";
  const std::string kImproper = "Improper data for np control chart";
  const struct {
    std::string n;
    std::string refusal;  // empty when accepted
  } cases[] = {
      {"-5", kImproper},  // a number below the largest count, though negative
      {"0", kNotANumber},
      {"-0", kNotANumber},
      {"abc", kNotANumber},
      {"7 units", kNotANumber},  // a number inside text is text
      {"", kNotANumber},
      {"6.5", kImproper},  // below the largest count
      {"7", ""},           // exactly the largest count
      {"50", ""},
  };
  const Lines started = {"np control chart generation is starting"};
  for (const auto& c : cases) {
    SCOPED_TRACE("Pntxt = \"" + c.n + "\"");
    const bool accepted = c.refusal.empty();
    auto host = SheetHost({{"3"}, {"7"}, {"5"}}, "A1:A3", {{"PnSubForm", "Pntxt", c.n}});
    PnView(host);
    EXPECT_EQ(MessageTexts(host), accepted ? Lines{} : Lines{c.refusal});
    EXPECT_EQ(host.AnyDialogCancelled(), !accepted);
    EXPECT_EQ(host.Windows().size(), accepted ? 1u : 0u);
    EXPECT_EQ(LogLines(host), (Lines{started[0], accepted ? "np control chart generation is completed"
                                                          : "Cancel np control chart generation"}));
    if (accepted) {
      EXPECT_EQ(host.Settings().npSampleSize, std::stod(c.n));
    }

    // The dialog alone, after the block's counts set its floor.
    auto dialog_host = SheetHost({}, "A1");
    dialog_host.Settings().npSampleSizeFloor = 7;
    const auto dialog = MakePnSubForm();
    dialog->Type("Pntxt", c.n);
    EXPECT_EQ(dialog->PressOk(dialog_host), accepted);
    EXPECT_EQ(dialog->Control("Pntxt").text, c.n);
    EXPECT_EQ(MessageTexts(dialog_host), accepted ? Lines{} : Lines{c.refusal});
    EXPECT_TRUE(LogLines(dialog_host).empty());
  }

  // Counts below zero put the floor below zero; a negative size that is not
  // below it is still improper.
  auto negative = SheetHost({{"-3"}, {"-8"}}, "A1:A2", {{"PnSubForm", "Pntxt", "-1"}});
  PnView(negative);
  EXPECT_EQ(MessageTexts(negative), Lines{kImproper});
  EXPECT_TRUE(negative.Windows().empty());
}

TEST(PointInformationTest, ChartsAnswerByTheWindowTitle) {
  auto host = SheetHost(kThreePairs, "A1:B3");
  XbarRView(host);
  const auto& two = host.Windows().at(0);
  EXPECT_EQ(PointInformation(two, "ChartOne", 3), "Number: 3 | Value: 5");
  EXPECT_EQ(PointInformation(two, "ChartTwo", 2), "Number: 2 | Value: 0");
  EXPECT_EQ(PointInformation(two, "ChartOne", 4), std::nullopt);

  auto c = SheetHost({{"2"}, {"4"}, {"6"}}, "A1:A3");
  CView(c);
  EXPECT_EQ(PointInformation(c.Windows().at(0), "ChartOne", 1), "Number: 1 | Value: 2");
  shell::ResultWindow other = c.Windows().at(0);
  other.title = "Run chart";
  EXPECT_EQ(PointInformation(other, "ChartOne", 1), std::nullopt);

  // A series that carries no x values is numbered as it is drawn, 1 to N.
  shell::ResultWindow bare = c.Windows().at(0);
  bare.charts.at(0).series.at(0).x = {};
  EXPECT_EQ(PointInformation(bare, "ChartOne", 3), "Number: 3 | Value: 6");
  EXPECT_EQ(PointInformation(bare, "ChartOne", 4), std::nullopt);
}

}  // namespace
}  // namespace orvik::charts
