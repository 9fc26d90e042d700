#include "charts/control_charts.h"

#include <gtest/gtest.h>

#include "charts/chart_test_support.h"
#include "charts/control_form.h"
#include "support/accuracy_sample.h"

namespace orvik::charts {
namespace {

using testing::LogLines;
using testing::MessageTexts;
using testing::SheetHost;
using Lines = std::vector<std::string>;

// Three subgroups of two: means 2, 2, 5 and ranges 2, 0, 2, so the grand
// mean is 3 and R-bar 4/3; with A2 = 1.88 and D4 = 3.267 at n = 2:
// xbar UCL 3 + 1.88 * 4/3 = 5.50666667, LCL 0.49333333; R UCL 4.356.
const std::vector<std::vector<std::string>> kThreePairs = {{"1", "3"}, {"2", "2"}, {"4", "6"}};

TEST(XbarRViewTest, GridLegendLabelsAndLogLines) {
  auto host = SheetHost(kThreePairs, "A1:B3");
  XbarRView(host);
  EXPECT_TRUE(host.Messages().empty());
  EXPECT_EQ(LogLines(host), (Lines{"xbar-R control chart generation is starting",
                                   "xbar-R control chart generation is completed"}));
  ASSERT_EQ(host.Windows().size(), 1u);
  const shell::ResultWindow& window = host.Windows()[0];
  EXPECT_EQ(window.title, "xbar-R control chart");
  EXPECT_EQ(window.commandKey, "mnuBarX-R");
  const shell::ResultTable& table = *window.table;
  EXPECT_EQ(table.columns, (Lines{"xbar", "xbar UCL", "xbar CL", "xbar LCL", "xbar Code", "R", "R UCL", "R CL",
                                  "R LCL", "R Code"}));
  ASSERT_EQ(table.TextRows().size(), 3u + 13u);
  EXPECT_EQ(table.TextRows()[0], (Lines{"2", "5.50666667", "3", "0.49333333", "", "2", "4.356", "1.33333333", "0", ""}));
  EXPECT_EQ(table.TextRows()[2][0], "5");
  // The legend: an empty row, the blue heading, the eleven code lines.
  EXPECT_EQ(table.TextRows()[3], Lines(10, ""));
  EXPECT_EQ(table.TextRows()[4][0], " [xbar & R Code] ");
  EXPECT_EQ(table.StyleOfRow(4).foreground, shell::kBlue);
  EXPECT_EQ(table.TextRows()[5][0], " * : outside the control limits");
  EXPECT_EQ(table.TextRows()[6][0], " Run: successive points appear on the one side of the centerline");
  EXPECT_EQ(table.TextRows()[15][0], " I : at least four out of 10 successive points fall in between 2sigma and 3sigma ");

  ASSERT_EQ(window.charts.size(), 2u);
  const shell::ChartSeries& upper = window.charts[0];
  EXPECT_EQ(upper.xTitle, "Sample");
  EXPECT_EQ(upper.series.at(0).y, (std::vector<double>{2, 2, 5}));
  EXPECT_EQ(upper.lines.at(0).label, "UCL= 5.50666667");
  EXPECT_EQ(upper.lines.at(1).label, "CL= 3");
  EXPECT_EQ(upper.lines.at(2).label, "LCL= 0.49333333");
  EXPECT_EQ(window.charts[1].lines.at(0).label, "UCL= 4.356");
}

TEST(XbarRViewTest, OutOfLimitPointsAreCodedAndMarked) {
  // Five subgroups (9, 11) and one (19, 21): grand mean 70/6, R-bar 2, so
  // UCL = 11.67 + 1.88 * 2 = 15.43 and the mean 20 lies beyond it; the
  // means 10 stay above the lower sigma line 9.16.
  std::vector<std::vector<std::string>> rows(5, {"9", "11"});
  rows.push_back({"19", "21"});
  auto host = SheetHost(rows, "A1:B6");
  XbarRView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.table->TextRows()[5][4], "* ");
  EXPECT_EQ(window.table->TextRows()[4][4], "");
  EXPECT_EQ(window.charts[0].series[0].marked, (std::vector<long>{6}));
}

TEST(XbarRViewTest, RefusalsBeforeTheStartingLine) {
  const struct {
    std::vector<std::vector<std::string>> rows;
    std::string range;
    std::string message;
  } cases[] = {
      {{{"1"}, {"2"}, {"3"}}, "A1:A3", "If n=1, please select x-MR control chart"},
      {{{"1", "2"}, {"2", ""}, {"3", "4"}}, "A1:B3", "Improper data for xbar-R control chart"},
      {{{"1", "2"}, {"2", "x"}, {"3", "4"}}, "A1:B3", "Improper data for xbar-R control chart"},
      {{}, "A1:B3", "Select data from worksheet"},
  };
  for (const auto& c : cases) {
    auto host = SheetHost(c.rows, c.range);
    XbarRView(host);
    EXPECT_EQ(MessageTexts(host), Lines{c.message}) << c.range;
    EXPECT_TRUE(LogLines(host).empty()) << c.message;
    EXPECT_TRUE(host.Windows().empty());
  }
}

TEST(XbarRViewTest, SubgroupSizeElevenEndsOnTheFailurePath) {
  std::vector<std::vector<std::string>> rows(3);
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 11; ++c) rows[r].push_back(std::to_string(r + c));
  auto host = SheetHost(rows, "A1:K3");
  EXPECT_THROW(XbarRView(host), ChartFailed);
  ASSERT_EQ(host.Messages().size(), 1u);
  EXPECT_EQ(host.Messages()[0].text, "Fail xbar-R control chart generation");
  EXPECT_EQ(host.Messages()[0].icon, shell::MessageIcon::Exclamation);
  EXPECT_EQ(LogLines(host), (Lines{"xbar-R control chart generation is starting",
                                   "Cancel xbar-R control chart generation"}));
  EXPECT_TRUE(host.Windows().empty());

  // The xbar chart alone reads no D4 and draws.
  auto xbar = SheetHost(rows, "A1:K3");
  XbarView(xbar);
  EXPECT_EQ(xbar.Windows().size(), 1u);
}

TEST(XbarRViewTest, CancelledSelectionWritesItsLine) {
  auto host = SheetHost(kThreePairs, "A1:B3", {}, {"Selection"});
  XbarRView(host);
  EXPECT_EQ(LogLines(host), (Lines{"xbar-R control chart generation is starting", "Cancel Subgroup selection"}));
  EXPECT_TRUE(host.Windows().empty());
}

TEST(XbarRViewTest, SelectionCanNarrowTheColumns) {
  // Columns B and C only: subgroups (3, 5), (2, 2), (6, 8).
  auto host = SheetHost({{"1", "3", "5"}, {"2", "2", "2"}, {"4", "6", "8"}}, "A1:C3",
                        {{"Selection", "FirstColtxt", "B"}, {"Selection", "LastColtxt", "C"}});
  XbarRView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  EXPECT_EQ(host.Windows()[0].charts[0].series[0].y, (std::vector<double>{4, 2, 7}));
  auto bad = SheetHost(kThreePairs, "A1:B3", {{"Selection", "FirstColtxt", "1x"}});
  XbarRView(bad);
  EXPECT_EQ(MessageTexts(bad), Lines{"Please, select valid data"});
  EXPECT_EQ(LogLines(bad).back(), "Cancel Subgroup selection");
}

TEST(StandaloneChartsTest, TitlesHeadingsAndLines) {
  const struct {
    void (*view)(shell::Host&);
    const char* title;
    const char* statistic;
    const char* log_name;
  } cases[] = {
      {XbarView, "xbar control chart", "xbar", "xbar"},
      {RView, "R control chart", "R", "R"},
      {SView, "S control chart", "s", "s"},
      {MRView, "MR control chart", "MR", "MR"},
  };
  for (const auto& c : cases) {
    auto host = SheetHost(kThreePairs, "A1:B3");
    c.view(host);
    ASSERT_EQ(host.Windows().size(), 1u) << c.title;
    const auto& window = host.Windows()[0];
    EXPECT_EQ(window.title, c.title);
    EXPECT_EQ(window.charts.size(), 1u);
    EXPECT_EQ(window.table->columns, (Lines{c.statistic, "UCL", "CL", "LCL", "Out-of-control Code"}));
    EXPECT_EQ(window.table->TextRows().at(window.table->TextRows().size() - 12)[0], " [Out-of-control Code] ");
    EXPECT_EQ(LogLines(host), (Lines{std::string(c.log_name) + " control chart generation is starting",
                                     std::string(c.log_name) + " control chart generation is completed"}));
  }
}

TEST(XbarSViewTest, TwoChartsOfMeansAndStandardDeviations) {
  auto host = SheetHost({{"1", "2", "3"}, {"2", "4", "6"}, {"3", "3", "3"}}, "A1:C3");
  XbarSView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.title, "xbar-s control chart");
  EXPECT_EQ(window.table->columns[5], "s");
  EXPECT_EQ(window.table->columns[9], "s Code");
  EXPECT_EQ(window.table->TextRows()[4][0], " [xbar & s Code] ");
  EXPECT_EQ(window.charts[1].series[0].y, (std::vector<double>{1, 2, 0}));
}

TEST(SViewTest, ItsOwnRefusals) {
  auto two_rows = SheetHost({{"1", "2", "3"}, {"2", "4", "6"}}, "A1:C2");
  SView(two_rows);
  EXPECT_EQ(MessageTexts(two_rows), Lines{"Sample size must be more than two"});
  auto improper = SheetHost({{"1", "2", "3"}, {"2", "", "6"}, {"1", "1", "2"}}, "A1:C3");
  SView(improper);
  EXPECT_EQ(MessageTexts(improper),
            Lines{"Selected data include improper data in columns or sample size must be more than two"});
  std::vector<std::vector<std::string>> eleven(3, Lines{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"});
  eleven[1][0] = "3";
  auto failing = SheetHost(eleven, "A1:K3");
  EXPECT_THROW(SView(failing), ChartFailed);
  EXPECT_EQ(MessageTexts(failing), Lines{"Fail s control chart generation"});
}

TEST(XMRViewTest, MovingRangesStandBesideTheirSecondSample) {
  auto host = SheetHost({{"10"}, {"12"}, {"11"}, {"15"}, {"14"}}, "A1:A5");
  XMRView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.title, "x-MR control chart");
  EXPECT_EQ(window.table->columns[0], "x");
  EXPECT_EQ(window.table->columns[5], "MR");
  EXPECT_EQ(window.table->TextRows()[0], (Lines{"10", "17.72", "12.4", "7.08", "", "", "", "", "", ""}));
  EXPECT_EQ(window.table->TextRows()[1], (Lines{"12", "17.72", "12.4", "7.08", "", "2", "6.534", "2", "0", ""}));
  EXPECT_EQ(window.table->TextRows()[6][0], " [x & MR Code] ");
  EXPECT_EQ(window.charts[1].series[0].name, "Moving Range");
  EXPECT_EQ(window.charts[1].series[0].x, (std::vector<double>{2, 3, 4, 5}));
}

TEST(XMRViewTest, CentreLineOfLargeValuesOfSmallSpread) {
  // The mean 10000000.2 to 8 places: a plain running sum would put it at
  // 10000000.2000001.
  auto host = SheetHost(testing_support::AccuracySampleColumn(), "A:A");
  XMRView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.table->TextRows()[0][2], "10000000.2");
  EXPECT_EQ(window.charts[0].lines.at(1).value, 10000000.2);
}

TEST(MRViewTest, CentreLineUnroundedAndLabelsToSixPlaces) {
  // Moving ranges 1, 0, 0: MR-bar 1/3, UCL 3.267 / 3 = 1.089.
  auto host = SheetHost({{"0"}, {"1"}, {"1"}, {"1"}}, "A1:A4");
  MRView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  // The lower sigma line is 1/3 - 0.6666666666/3, so the two zero ranges
  // fall in the lower zone and rule G marks all three points.
  EXPECT_EQ(window.table->TextRows()[0], (Lines{"1", "1.089", "0.333333333333333", "0", "G "}));
  EXPECT_EQ(window.charts[0].lines[1].label, "CL= 0.333333");
  EXPECT_EQ(window.charts[0].lines[0].label, "UCL= 1.089");

  auto one_value = SheetHost({{"5"}}, "A1");
  MRView(one_value);
  EXPECT_EQ(MessageTexts(one_value), Lines{"Improper data for MR control chart"});
  auto text = SheetHost({{"5"}, {"a"}, {"6"}}, "A1:A3");
  MRView(text);
  EXPECT_EQ(MessageTexts(text), Lines{"Improper data for MR control chart"});
}

TEST(CViewTest, CountsLimitsAndTheZeroFloor) {
  auto host = SheetHost({{"2"}, {"4"}, {"6"}, {"4"}}, "A1:A4");
  CView(host);
  ASSERT_EQ(host.Windows().size(), 1u);
  const auto& window = host.Windows()[0];
  EXPECT_EQ(window.title, "c control chart");
  EXPECT_EQ(window.table->columns, (Lines{"c", "UCL", "CL", "LCL", "Out-of-control Code"}));
  EXPECT_EQ(window.table->TextRows()[0], (Lines{"2", "10", "4", "0", ""}));
  EXPECT_EQ(window.charts[0].lines[2].label, "LCL= 0");
  EXPECT_EQ(LogLines(host), (Lines{"c control chart generation is starting", "c control chart generation is completed"}));
}

TEST(AttributeChartsTest, OneColumnChecksAndInvalidCells) {
  const struct {
    void (*view)(shell::Host&);
    std::vector<std::vector<std::string>> rows;
    std::string range;
    std::string message;
    Lines log;
  } cases[] = {
      {CView, {{"1", "2"}, {"3", "4"}}, "A1:B2", "Please select one column only ", {}},
      {PnView, {{"1", "2"}, {"3", "4"}}, "A1:B2", "Please select one column only", {}},
      // A whole-sheet selection passes only when the data is one column.
      {CView, {{"1", "2"}, {"3", "4"}}, "all", "Please select one column only ", {}},
      {CView, {{"1"}, {""}, {"4"}}, "A1:A3", "Please, input valid data", {"c control chart generation is starting"}},
      {PnView, {{"1"}, {"x"}, {"4"}}, "A1:A3", "Please, input valid data", {"np control chart generation is starting"}},
  };
  for (const auto& c : cases) {
    auto host = SheetHost(c.rows, c.range);
    c.view(host);
    EXPECT_EQ(MessageTexts(host), Lines{c.message}) << c.range;
    EXPECT_EQ(LogLines(host), c.log) << c.message;
    EXPECT_TRUE(host.Windows().empty());
  }
  auto one_column_sheet = SheetHost({{"2"}, {"4"}, {"6"}}, "all");
  CView(one_column_sheet);
  EXPECT_EQ(one_column_sheet.Windows().size(), 1u);
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
    if (accepted) EXPECT_EQ(host.Settings().Last<NpSampleSize>().n, std::stod(c.n));
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
