#include "analyses/estimation_commands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "analyses/estimation_dialogs.h"
#include "inference_reference.h"
#include "sample_sheets.h"
#include "shell/command_failed.h"
#include "support/accuracy_sample.h"
#include "support/sheet_host.h"

namespace orvik::analyses {
namespace {

using testing_support::Block;
using testing_support::HostOver;
using testing_support::LogLines;
using testing_support::MakeSheet;
using testing_support::MessageTexts;
using testing_support::SheetRows;
using Lines = std::vector<std::string>;


TEST(MeanEstimationTest, EstimatedSigmaReportAndLogLines) {
  auto host = HostOver(kFive, Block(1, 1, 1, 5));
  MeanEstimation(host);
  EXPECT_TRUE(host.Messages().empty());
  EXPECT_EQ(LogLines(host), (Lines{"Estimation for 1-sample mean is starting", "Estimation for 1-sample mean is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.columns, (Lines{"Confidence level", "CI for the mean"}));
  // 3 -+ t(0.05, 4) sqrt(2.5 / 5) = 3 -+ 2.1318468 * 0.7071068 = 3 -+ 1.5074433
  EXPECT_EQ(table.TextRows()[0], (Lines{"90.0%", "(1.49255668 , 4.50744332)"}));
  EXPECT_EQ(table.TextRows()[3], (Lines{"Descriptive statistics", ""}));
  EXPECT_EQ(table.TextRows()[6], (Lines{"Standard deviation", "1.58113883"}));
  EXPECT_EQ(table.TextRows()[7], (Lines{"Variance", "2.5"}));
}

TEST(MeanEstimationTest, LargeValuesOfSmallSpreadKeepTheMeanAndCentreTheIntervals) {
  auto host = HostOver(testing_support::AccuracySampleColumn(), Block(1, -1, 1, -1));
  MeanEstimation(host);
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.Row(4), (Lines{"N", "1001"}));
  EXPECT_EQ(table.Row(5), (Lines{"Mean", "10000000.2"}));
  EXPECT_EQ(table.Row(6), (Lines{"Standard deviation", "0.1"}));
  EXPECT_EQ(table.Row(7), (Lines{"Variance", "0.01"}));
  // 10000000.2 -+ t(alpha / 2, 1000) 0.1 / sqrt(1001); the ends are shown to
  // 7 places, so each lies within 5e-8 of its exact value.
  const struct {
    std::string level;
    double alpha;
  } levels[] = {{"90.0%", 0.10}, {"95.0%", 0.05}, {"99.0%", 0.01}};
  for (std::size_t i = 0; i < 3; ++i) {
    const Lines row = table.Row(i);
    EXPECT_EQ(row[0], levels[i].level);
    const double half = reference::TUpperQuantile(levels[i].alpha / 2, 1000) * 0.1 / std::sqrt(1001.0);
    double lower = 0, upper = 0;
    ASSERT_EQ(std::sscanf(row[1].c_str(), "(%lf , %lf)", &lower, &upper), 2) << row[1];
    EXPECT_NEAR(lower, 10000000.2 - half, 6e-8) << row[1];
    EXPECT_NEAR(upper, 10000000.2 + half, 6e-8) << row[1];
  }
}

TEST(MeanEstimationTest, GivenSigmaFromTheDialog) {
  auto host = HostOver(kFive, Block(1, 1, 1, 5),
                       {{"Estimation", "Inputsigma", "1"}, {"Estimation", "sigmatxt", "2"}});
  MeanEstimation(host);
  // 3 -+ 1.645 * 2 / sqrt(5) = 3 -+ 1.47133273
  EXPECT_EQ(OnlyTable(host).TextRows()[0], (Lines{"90.0%", "(1.52866727 , 4.47133273)"}));
}

TEST(MeanEstimationTest, RefusalsAndCancel) {
  auto empty = HostOver({{"a"}, {"b"}}, Block(1, 1, 1, 2));
  EXPECT_THROW(MeanEstimation(empty), shell::CommandFailed);
  EXPECT_EQ(MessageTexts(empty), (Lines{"Please, input valid data"}));
  EXPECT_EQ(LogLines(empty), (Lines{"Estimation for 1-sample mean is starting", "Cancel estimation for 1-sample mean"}));

  auto single = HostOver({{"4"}, {"x"}}, Block(1, 1, 1, 2));
  MeanEstimation(single);
  EXPECT_EQ(MessageTexts(single), (Lines{"All data are not enough to analysis"}));
  EXPECT_TRUE(single.Windows().empty());

  auto cancelled = CancellingHost(kFive, Block(1, 1, 1, 5), "Estimation");
  MeanEstimation(cancelled);
  EXPECT_EQ(LogLines(cancelled),
            (Lines{"Estimation for 1-sample mean is starting", "Cancel estimation for 1-sample mean"}));
  EXPECT_TRUE(cancelled.Windows().empty());

  auto no_block = HostOver(kFive, {});
  MeanEstimation(no_block);
  EXPECT_EQ(MessageTexts(no_block), (Lines{"Please, select valid data"}));
  EXPECT_TRUE(LogLines(no_block).empty());
}

TEST(MeanEstimationTest, InvalidGivenSigmaIsRefusedAndTheDialogStaysOpen) {
  for (const std::string text : {"", "0", "-1", "abc"}) {
    auto host = HostOver(kFive, Block(1, 1, 1, 5),
                         {{"Estimation", "Inputsigma", "1"}, {"Estimation", "sigmatxt", text}});
    MeanEstimation(host);
    EXPECT_EQ(MessageTexts(host), (Lines{"Please, input valid numerical data"})) << text;
    // The runner then gives up with cancel, as a user would.
    EXPECT_EQ(LogLines(host).back(), "Cancel estimation for 1-sample mean");
  }
}

TEST(EstimationDialogTest, EstSigmaPutsOneIntoTheDisabledBox) {
  Estimation dialog;
  EXPECT_TRUE(dialog.Control("EstSigma").checked);
  EXPECT_FALSE(dialog.Control("sigmatxt").enabled);
  dialog.Click("Inputsigma");
  EXPECT_TRUE(dialog.Control("sigmatxt").enabled);
  dialog.Type("sigmatxt", "3.5");
  dialog.Click("EstSigma");
  EXPECT_EQ(dialog.Control("sigmatxt").text, "1.0");
  EXPECT_FALSE(dialog.Control("sigmatxt").enabled);
}

TEST(VarianceEstimationTest, ReportOfOneToFive) {
  auto host = HostOver(kFive, Block(1, 1, 1, 5));
  VarianceEstimation(host);
  EXPECT_EQ(LogLines(host),
            (Lines{"Estimation for 1-sample variance is starting", "Estimation for 1-sample variance is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.columns, (Lines{"Confidence level", "CI for the variance"}));
  // 10 / chi2(0.025 upper, 4) = 10 / 11.1432868 ; 10 / chi2(0.025 lower, 4) = 10 / 0.4844186
  EXPECT_EQ(table.TextRows()[1], (Lines{"95.0%", "(0.8974013 , 20.64330496)"}));
}

TEST(VarianceEstimationTest, EightHundredTwoValuesShowTheZeroIntervals) {
  SheetRows rows;
  for (int i = 0; i < 802; ++i) rows.push_back({std::to_string(i % 7)});
  auto host = HostOver(rows, Block(1, 1, 1, 802));
  VarianceEstimation(host);
  const shell::ResultTable& table = OnlyTable(host);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(table.TextRows()[i][1], "(0.000000 , 0.000000)");
  rows.pop_back();
  auto within = HostOver(rows, Block(1, 1, 1, 801));
  VarianceEstimation(within);
  EXPECT_NE(OnlyTable(within).TextRows()[0][1], "(0.000000 , 0.000000)");
}

TEST(ProportionEstimationTest, CountsFromTheDialog) {
  auto host = HostOver({}, {}, {{"Proportions", "defecttxt", "2"}, {"Proportions", "sampletxt", "10"}});
  ProportionEstimation(host);
  EXPECT_EQ(LogLines(host), (Lines{"Estimation for 1-sample proportion is starting",
                                   "Estimation for 1-sample proportion is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.TextRows()[0], (Lines{"Estimate for the 1-sample proportion", "0.2"}));
  // 0.2 -+ 1.645 sqrt(0.016) = 0.2 -+ 0.20807787
  EXPECT_EQ(table.TextRows()[2], (Lines{"90.0%", "(0.000000 , 0.40807787)"}));
}

TEST(ProportionEstimationTest, ImpossibleCountsAreRefused) {
  for (const auto& [defects, sample] : std::vector<std::pair<std::string, std::string>>{
           {"11", "10"}, {"1.5", "10"}, {"1", "0"}, {"-1", "10"}, {"", "10"}}) {
    auto host = HostOver({}, {}, {{"Proportions", "defecttxt", defects}, {"Proportions", "sampletxt", sample}});
    ProportionEstimation(host);
    EXPECT_EQ(MessageTexts(host), (Lines{"Please, input valid numerical data"})) << defects << "/" << sample;
    EXPECT_TRUE(host.Windows().empty());
  }
}

TEST(DiffMeanTest, SelectionStepThenTheEstimation) {
  auto host = HostOver(kTwoColumns, Block(1, 1, 2, 8));
  DiffMeanSelection(host);
  EXPECT_EQ(LogLines(host), (Lines{"Estimation for 2-sample mean is starting",
                                   "Estimation for 2-sample mean(2-sample estimation) is starting",
                                   "Estimation for 2-sample mean(2-sample estimation) is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.columns, (Lines{"Confidence level", "CI for the difference of means"}));
  EXPECT_EQ(table.TextRows()[3], (Lines{"Population 1", ""}));
  EXPECT_EQ(table.TextRows()[4], (Lines{"N", "8"}));
  EXPECT_EQ(table.TextRows()[8], (Lines{"Population 2", ""}));
  EXPECT_EQ(table.TextRows()[9], (Lines{"N", "7"}));
}

TEST(DiffMeanTest, RightToLeftDragTakesTheRightColumnFirst) {
  auto host = HostOver({{"1", "10"}, {"2", "11"}, {"3", "13"}}, Block(2, 1, 1, 3));
  DiffMeanSelection(host);
  EXPECT_EQ(OnlyTable(host).TextRows()[5], (Lines{"Mean", "11.33333333"}));
}

TEST(DiffMeanTest, RefusalsAndCancel) {
  auto one_column = HostOver(kTwoColumns, Block(1, 1, 1, 8));
  DiffMeanSelection(one_column);
  EXPECT_EQ(MessageTexts(one_column), (Lines{"Please, select two columns"}));
  EXPECT_TRUE(LogLines(one_column).empty());

  auto improper = HostOver({{"1", "x"}, {"2", ""}, {"3", "4"}}, Block(1, 1, 2, 3));
  DiffMeanSelection(improper);
  EXPECT_EQ(MessageTexts(improper), (Lines{"Improper data for estimation for 2-sample mean(2-sample estimation)"}));
  EXPECT_EQ(LogLines(improper).back(), "Cancel estimation for 2-sample mean(2-sample estimation)");

  auto cancelled = CancellingHost(kTwoColumns, Block(1, 1, 2, 8), "TwoEstimation");
  DiffMeanSelection(cancelled);
  EXPECT_EQ(LogLines(cancelled),
            (Lines{"Estimation for 2-sample mean is starting", "Cancel estimation for 2-sample mean"}));
}

TEST(PairedDiffMeanTest, RowDifferencesAndTheSmapleBlock) {
  auto host = HostOver({{"5", "3"}, {"", ""}, {"6", "5"}, {"7", "4"}}, Block(1, 1, 2, 4));
  PairedDiffMean(host);
  EXPECT_EQ(LogLines(host), (Lines{"Estimation for 2-sample mean(paired t estimation) is starting",
                                   "Estimation for 2-sample mean(paired t estimation) is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  // Differences 2, 1, 3: mean 2, s = 1; 2 -+ t(0.025, 2) / sqrt 3 = 2 -+ 4.30265273 / 1.7320508
  EXPECT_EQ(table.TextRows()[1], (Lines{"95.0%", "(-0.48413771 , 4.48413771)"}));
  EXPECT_EQ(table.TextRows()[8], (Lines{"Smaple 2", ""}));
}

TEST(PairedDiffMeanTest, AValueWithoutItsPartnerIsImproper) {
  auto host = HostOver({{"5", "3"}, {"6", ""}, {"7", "4"}}, Block(1, 1, 2, 3));
  PairedDiffMean(host);
  EXPECT_EQ(MessageTexts(host), (Lines{"Improper data for paired t estimation"}));
  EXPECT_EQ(LogLines(host), (Lines{"Estimation for 2-sample mean(paired t estimation) is starting",
                                   "Cancel estimation for 2-sample mean(paired t estimation)"}));
}

TEST(RatioVarianceTest, ReportAndRefusals) {
  auto host = HostOver(kTwoColumns, Block(1, 1, 2, 8));
  RatioVariance(host);
  EXPECT_EQ(LogLines(host),
            (Lines{"Estimation for 2-sample variance is starting", "Estimation for 2-sample variance is completed"}));
  EXPECT_EQ(OnlyTable(host).columns, (Lines{"Confidence level", "CI for the 2-sample variance "}));

  auto few = HostOver({{"1", "2"}, {"2", ""}, {"4", ""}}, Block(1, 1, 2, 3));
  RatioVariance(few);
  EXPECT_EQ(MessageTexts(few), (Lines{"All data are not enough to analysis"}));

  auto flat = HostOver({{"1", "2"}, {"2", "2"}, {"4", "2"}}, Block(1, 1, 2, 3));
  RatioVariance(flat);
  EXPECT_EQ(MessageTexts(flat), (Lines{"Improper data for estimation for 2-sample variance"}));
  EXPECT_EQ(LogLines(flat).back(), "Cancel estimation for 2-sample variance");

  auto none = HostOver({{"1", "a"}, {"2", "b"}}, Block(1, 1, 2, 2));
  RatioVariance(none);
  EXPECT_EQ(MessageTexts(none), (Lines{"Improper data for estimation for 2-sample variance"}));
}

TEST(TwoProportionEstimationTest, CountsFromTheDialog) {
  auto host = HostOver({}, {},
                       {{"TwoProportions", "defect1txt", "5"}, {"TwoProportions", "sample1txt", "100"},
                        {"TwoProportions", "defect2txt", "12"}, {"TwoProportions", "sample2txt", "120"}});
  TwoProportionEstimation(host);
  EXPECT_EQ(LogLines(host), (Lines{"Estimation for 2-sample proportion is starting",
                                   "Estimation for 2-sample proportion is completed"}));
  EXPECT_EQ(OnlyTable(host).TextRows()[4], (Lines{"90.0%", "(-0.107575 , 0.007575)"}));
}

}  // namespace
}  // namespace orvik::analyses
