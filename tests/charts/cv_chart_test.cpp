#include "charts/cv_chart.h"

#include <gtest/gtest.h>

#include <sstream>

#include "charts/control_charts.h"
#include "charts/control_form.h"
#include "support/case_table.h"
#include "support/sheet_host.h"
#include "worksheet/worksheet.h"

// The CV chart's whole result is held by the golden cases under
// tests/golden/mnuCV and its quantiles by the statistics accuracy tests;
// these tests hold the input checks and the dialog.
namespace orvik::charts {
namespace {

using testing_support::LogLines;
using testing_support::MessageTexts;
using testing_support::SheetHost;
using Lines = std::vector<std::string>;

const Lines kCompleted = {"CV control chart generation is starting", "CV control chart generation is completed"};

// "1,2;3,4" as rows of cells and the range of the whole block.
testing_support::SheetRows Rows(const std::string& text, std::string& range) {
  testing_support::SheetRows rows;
  std::stringstream lines(text);
  for (std::string line; std::getline(lines, line, ';');) {
    rows.emplace_back();
    std::stringstream cells(line + ",");
    for (std::string cell; std::getline(cells, cell, ',');) rows.back().push_back(cell);
  }
  range = "A1:" + worksheet::ColumnLetters(static_cast<long>(rows[0].size())) + std::to_string(rows.size());
  return rows;
}

TEST(CVViewTest, SubgroupsNeedTwoToTwentyFiveNumbersAndAPositiveMean) {
  for (const auto& row : testing_support::ReadCases("charts/data/cv_inputs.tsv")) {
    SCOPED_TRACE(row.Where());
    std::string range;
    auto host = SheetHost(Rows(row[0], range), range);
    CVView(host);
    if (row[1] == "accept") {
      EXPECT_TRUE(MessageTexts(host).empty());
      EXPECT_EQ(host.Windows().size(), 1u);
      EXPECT_EQ(LogLines(host), kCompleted);
    } else {
      EXPECT_EQ(MessageTexts(host), Lines{"Please, input valid data"});
      EXPECT_TRUE(host.Windows().empty());
      EXPECT_TRUE(LogLines(host).empty());
    }
  }
}

TEST(CVViewTest, DialogTakesOrEstimatesTheInControlCV) {
  for (const auto& row : testing_support::ReadCases("charts/data/cv_form.tsv")) {
    SCOPED_TRACE(row.Where());
    auto host = SheetHost({{"1", "3"}, {"2", "4"}}, "A1:B2", {{"CVForm", "CVtxt", row[0]}, {"CVForm", "Alphatxt", row[1]}});
    CVView(host);
    if (row[2] == "refuse") {
      EXPECT_EQ(MessageTexts(host), Lines{"Please, input valid numerical data"});
      EXPECT_TRUE(host.Windows().empty());
      EXPECT_EQ(LogLines(host), (Lines{kCompleted[0], "Cancel CV control chart generation"}));
      continue;
    }
    EXPECT_TRUE(MessageTexts(host).empty());
    EXPECT_EQ(LogLines(host), kCompleted);
    ASSERT_EQ(host.Windows().size(), 1u);
    const auto& lines = host.Windows()[0].charts.at(0).lines;
    EXPECT_NEAR(lines.at(1).value, row.Number(2), 1e-12);  // CL
    EXPECT_EQ(host.Settings().Last<CVChartSettings>().alpha, std::stod(row[1]));
  }
}

// All subgroups constant: the estimated CV is 0 and no limits exist, so the
// chart ends on its failure path.
TEST(CVViewTest, ConstantSubgroupsFailTheEstimate) {
  auto host = SheetHost({{"5", "5"}, {"7", "7"}}, "A1:B2");
  EXPECT_THROW(CVView(host), ChartFailed);
  EXPECT_EQ(MessageTexts(host), Lines{"Fail CV control chart generation"});
  EXPECT_EQ(LogLines(host), (Lines{kCompleted[0], "Cancel CV control chart generation"}));
}

}  // namespace
}  // namespace orvik::charts
