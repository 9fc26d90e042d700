#include "charts/control_charts.h"

#include <gtest/gtest.h>

#include "charts/control_form.h"
#include "support/accuracy_sample.h"
#include "support/case_table.h"
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
  const Lines started = {"np control chart generation is starting"};
  for (const auto& row : testing_support::ReadCases("charts/data/np_sample_sizes.tsv")) {
    SCOPED_TRACE(row.Where());
    const bool accepted = row[1] == "accept";
    const std::string refusal = row[1] == "improper" ? kImproper : kNotANumber;
    auto host = SheetHost({{"3"}, {"7"}, {"5"}}, "A1:A3", {{"PnSubForm", "Pntxt", row[0]}});
    PnView(host);
    EXPECT_EQ(MessageTexts(host), accepted ? Lines{} : Lines{refusal});
    EXPECT_EQ(host.AnyDialogCancelled(), !accepted);
    EXPECT_EQ(host.Windows().size(), accepted ? 1u : 0u);
    EXPECT_EQ(LogLines(host), (Lines{started[0], accepted ? "np control chart generation is completed"
                                                          : "Cancel np control chart generation"}));
    if (accepted) {
      EXPECT_EQ(host.Settings().Last<NpSampleSize>().n, std::stod(row[0]));
    }
  }

  // Counts below zero put the floor below zero; a negative size that is not
  // below it is still improper.
  auto negative = SheetHost({{"-3"}, {"-8"}}, "A1:A2", {{"PnSubForm", "Pntxt", "-1"}});
  PnView(negative);
  EXPECT_EQ(MessageTexts(negative), Lines{kImproper});
  EXPECT_TRUE(negative.Windows().empty());
}

TEST(PointInformationTest, ChartsAnswerWhereTheCommandNamesThem) {
  auto xbar_r = SheetHost(kThreePairs, "A1:B3");
  XbarRView(xbar_r);
  const shell::ResultWindow& two = xbar_r.Windows().at(0);
  auto c = SheetHost({{"2"}, {"4"}, {"6"}}, "A1:A3");
  CView(c);
  const shell::ResultWindow& one = c.Windows().at(0);
  // A series that carries no x values is numbered as it is drawn, 1 to N.
  shell::ResultWindow bare = one;
  bare.charts.at(0).series.at(0).x = {};

  constexpr shell::PointAnswers kNone{}, kUpper{true, false}, kLower{false, true}, kBoth{true, true};
  const std::optional<std::string> none;
  const struct {
    const shell::ResultWindow& window;
    const char* chart;
    long point;
    shell::PointAnswers answers;
    std::optional<std::string> text;
  } cases[] = {
      {two, "ChartOne", 3, kBoth, "Number: 3 | Value: 5"},
      {two, "ChartTwo", 2, kBoth, "Number: 2 | Value: 0"},
      {two, "ChartOne", 4, kBoth, none},  // beyond the last point
      {two, "ChartOne", 0, kBoth, none},
      {two, "ChartOne", 3, kLower, none},  // a two-chart window answers on each chart as named
      {two, "ChartTwo", 2, kUpper, none},
      {two, "ChartThree", 1, kBoth, none},
      // The only chart of a one-chart window answers when either is named.
      {one, "ChartOne", 1, kUpper, "Number: 1 | Value: 2"},
      {one, "ChartOne", 1, kLower, "Number: 1 | Value: 2"},
      {one, "ChartOne", 1, kNone, none},
      {one, "ChartTwo", 1, kBoth, none},
      {bare, "ChartOne", 3, kLower, "Number: 3 | Value: 6"},
      {bare, "ChartOne", 4, kLower, none},
  };
  for (const auto& c : cases)
    EXPECT_EQ(PointInformation(c.window, c.chart, c.point, c.answers), c.text)
        << c.window.title << " " << c.chart << " " << c.point;
}

}  // namespace
}  // namespace orvik::charts
