#include "analyses/hypothesis_commands.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analyses/hypothesis_dialogs.h"
#include "analyses/report_text.h"
#include "inference_reference.h"
#include "sample_sheets.h"
#include "shell/command_failed.h"
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


// The value cell of the row labelled `label`.
std::string Cell(const shell::ResultTable& table, const std::string& label) {
  for (const auto& row : table.TextRows())
    if (row[0] == label) return row[1];
  return "<no row " + label + ">";
}

TEST(MeanHypothesisTest, TOfZeroTwoSided) {
  auto host = HostOver(kFive, Block(1, 1, 1, 5), {{"MeanHypoth", "hypotxt", "3"}});
  MeanHypothesis(host);
  EXPECT_EQ(LogLines(host),
            (Lines{"Hypothesis test for 1-sample mean is starting", "Hypothesis test for 1-sample mean is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  const std::vector<Lines> head = {{"1. Hypothesis", ""}, {"H0", "mu = 3"},  {"H1", "mu >< 3"},
                                   {"2. Test statistics", ""}, {"t = 0", ""}, {"3. Test result", ""},
                                   {"p-value", "1.000000"}, {"significance level", "5%"},
                                   {"Result", "Fail to reject H0"}, {"Descriptive statistics", ""}};
  ASSERT_GE(table.TextRows().size(), head.size());
  for (std::size_t i = 0; i < head.size(); ++i) EXPECT_EQ(table.TextRows()[i], head[i]) << i;
}

TEST(MeanHypothesisTest, OneSidedDirectionsAndGivenSigma) {
  auto greater = HostOver(kFive, Block(1, 1, 1, 5),
                          {{"MeanHypoth", "hypotxt", "1"}, {"MeanHypoth", "Greater", "1"}});
  MeanHypothesis(greater);
  const shell::ResultTable& g = OnlyTable(greater);
  EXPECT_EQ(Cell(g, "H1"), "mu > 1");
  EXPECT_EQ(g.TextRows()[4][0], "t = 2.828427");
  EXPECT_EQ(Cell(g, "p-value"), "0.023710");  // P(T4 > 2 sqrt 2)
  EXPECT_EQ(Cell(g, "Result"), "Reject H0");

  auto less = HostOver(kFive, Block(1, 1, 1, 5),
                       {{"MeanHypoth", "hypotxt", "1"}, {"MeanHypoth", "Less", "1"},
                        {"MeanHypoth", "Inputsigma", "1"}, {"MeanHypoth", "sigmatxt", "1.5"},
                        {"MeanHypoth", "alphatxt", "10"}});
  MeanHypothesis(less);
  const shell::ResultTable& l = OnlyTable(less);
  EXPECT_EQ(Cell(l, "H1"), "mu < 1");
  EXPECT_EQ(l.TextRows()[4][0], "Z = 2.981424");
  const double p = reference::NormalLowerTail(2.0 / (1.5 / std::sqrt(5.0)));
  EXPECT_EQ(Cell(l, "p-value"), SixDecimals(p));
  EXPECT_EQ(Cell(l, "p-value"), "0.998565");
  EXPECT_EQ(Cell(l, "significance level"), "10%");
  EXPECT_EQ(Cell(l, "Result"), "Fail to reject H0");
}

TEST(MeanHypothesisTest, DialogRefusalsClearTheSigmaAndCancel) {
  auto bad_sigma = HostOver(kFive, Block(1, 1, 1, 5),
                            {{"MeanHypoth", "hypotxt", "1"}, {"MeanHypoth", "Inputsigma", "1"},
                             {"MeanHypoth", "sigmatxt", "abc"}});
  MeanHypothesis(bad_sigma);
  EXPECT_EQ(MessageTexts(bad_sigma), (Lines{"Please, input valid numerical data"}));
  EXPECT_EQ(LogLines(bad_sigma),
            (Lines{"Hypothesis test for 1-sample mean is starting", "Cancel hypothesis test for 1-sample"}));

  MeanHypoth dialog;
  dialog.Click("Inputsigma");
  dialog.Type("sigmatxt", "-2");
  dialog.Type("hypotxt", "1");
  auto host = HostOver(kFive, Block(1, 1, 1, 5));
  EXPECT_FALSE(dialog.PressOk(host));
  EXPECT_EQ(dialog.Control("sigmatxt").text, "");

  for (const auto& [control, value] : std::vector<std::pair<std::string, std::string>>{
           {"hypotxt", ""}, {"alphatxt", "0"}, {"alphatxt", "100"}, {"alphatxt", "x"}}) {
    std::vector<cli::DialogSetting> settings = {{"MeanHypoth", "hypotxt", "1"}, {"MeanHypoth", control, value}};
    auto refused = HostOver(kFive, Block(1, 1, 1, 5), settings);
    MeanHypothesis(refused);
    EXPECT_EQ(MessageTexts(refused), (Lines{"Please, input valid numerical data"})) << control << "=" << value;
  }

  auto cancelled = CancellingHost(kFive, Block(1, 1, 1, 5), "MeanHypoth");
  MeanHypothesis(cancelled);
  EXPECT_EQ(LogLines(cancelled),
            (Lines{"Hypothesis test for 1-sample mean is starting", "Cancel hypothesis test for 1-sample"}));
}

TEST(MeanHypothesisTest, DataRefusalsAndAFlatSample) {
  auto none = HostOver({{"x"}}, Block(1, 1, 1, 1));
  EXPECT_THROW(MeanHypothesis(none), shell::CommandFailed);
  EXPECT_EQ(MessageTexts(none), (Lines{"Please, input valid data"}));
  EXPECT_EQ(LogLines(none).back(), "Cancel hypothesis test for 1-sample");

  auto one = HostOver({{"3"}, {""}}, Block(1, 1, 1, 2));
  MeanHypothesis(one);
  EXPECT_EQ(MessageTexts(one), (Lines{"All data are not enough to analysis"}));

  // No spread and the hypothesised mean: t cannot be formed.
  auto flat = HostOver({{"3"}, {"3"}, {"3"}}, Block(1, 1, 1, 3), {{"MeanHypoth", "hypotxt", "3"}});
  EXPECT_THROW(MeanHypothesis(flat), shell::CommandFailed);
  EXPECT_EQ(MessageTexts(flat), (Lines{"Please, input valid data"}));
  EXPECT_EQ(LogLines(flat).back(), "Cancel hypothesis test for 1-sample");
  EXPECT_TRUE(flat.Windows().empty());
}

TEST(VarianceHypothesisTest, ChiSquareReportWithItsSingularHeading) {
  auto host = HostOver(kFive, Block(1, 1, 1, 5), {{"MeanHypoth", "hypotxt", "1"}});
  VarianceHypothesis(host);
  EXPECT_EQ(LogLines(host), (Lines{"Hypothesis test for 1-sample variance is starting",
                                   "Hypothesis test for 1-sample variance is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.TextRows()[1], (Lines{"H0", "sigma^2 = 1"}));
  EXPECT_EQ(table.TextRows()[2], (Lines{"H1", "sigma^2 >< 1"}));
  EXPECT_EQ(table.TextRows()[3][0], "2. Test statistic");
  EXPECT_EQ(table.TextRows()[4][0], "Chi-Square = 10");
  EXPECT_EQ(Cell(table, "p-value"), SixDecimals(2 * reference::ChiSquareUpperTail(10, 4)));

  auto zero = HostOver(kFive, Block(1, 1, 1, 5), {{"MeanHypoth", "hypotxt", "0"}});
  VarianceHypothesis(zero);
  EXPECT_EQ(MessageTexts(zero), (Lines{"Please, input valid numerical data"}));
}

TEST(ProportionHypothesisTest, CountsAndHypothesisedProportion) {
  auto host = HostOver({}, {},
                       {{"HypothProportion", "defecttxt", "8"}, {"HypothProportion", "sampletxt", "100"},
                        {"HypothProportion", "proportiontxt", "0.05"}, {"HypothProportion", "Greater", "1"}});
  ProportionHypothesis(host);
  EXPECT_EQ(LogLines(host), (Lines{"Hypothesis test for 1-sample proportion is starting",
                                   "Hypothesis test for 1-sample proportion is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.TextRows()[1], (Lines{"H0", "p = 0.05"}));
  EXPECT_EQ(table.TextRows()[2], (Lines{"H1", "p > 0.05"}));
  EXPECT_EQ(table.TextRows()[4][0], "Z = 1.376494");
  EXPECT_EQ(Cell(table, "p-value"), SixDecimals(reference::NormalUpperTail(3 / std::sqrt(4.75))));
  EXPECT_EQ(table.TextRows().size(), 9u);

  for (const std::string p0 : {"0", "1", "1.2", ""}) {
    auto refused = HostOver({}, {},
                            {{"HypothProportion", "defecttxt", "8"}, {"HypothProportion", "sampletxt", "100"},
                             {"HypothProportion", "proportiontxt", p0}});
    ProportionHypothesis(refused);
    EXPECT_EQ(MessageTexts(refused), (Lines{"Please, input valid numerical data"})) << p0;
    EXPECT_EQ(LogLines(refused).back(), "Cancel hypothesis test for 1-sample");
  }
}

TEST(TwoProportionHypothesisTest, MisspeltDifferenceAndPooledZ) {
  auto host = HostOver({}, {},
                       {{"TwoHypothProportion", "defect1txt", "5"}, {"TwoHypothProportion", "sample1txt", "100"},
                        {"TwoHypothProportion", "defect2txt", "12"}, {"TwoHypothProportion", "sample2txt", "120"},
                        {"TwoHypothProportion", "Less", "1"}});
  TwoProportionHypothesis(host);
  EXPECT_EQ(LogLines(host), (Lines{"Hypothesis test for 2-sample proportion is starting",
                                   "Hypothesis test for 2-sample proportion is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.TextRows()[1], (Lines{"H0", "Proportion differnce = 0"}));
  EXPECT_EQ(table.TextRows()[2], (Lines{"H1", "Proportion differnce < 0"}));
  EXPECT_EQ(table.TextRows()[4][0], "Z = -1.382928");

  auto zero = HostOver({}, {},
                       {{"TwoHypothProportion", "defect1txt", "0"}, {"TwoHypothProportion", "sample1txt", "10"},
                        {"TwoHypothProportion", "defect2txt", "0"}, {"TwoHypothProportion", "sample2txt", "10"}});
  EXPECT_THROW(TwoProportionHypothesis(zero), shell::CommandFailed);
  EXPECT_EQ(MessageTexts(zero), (Lines{"Please, input valid data"}));
  EXPECT_TRUE(zero.Windows().empty());
}

TEST(TwoHypothVarianceTest, ReaultRowAndDirection) {
  auto host = HostOver(kTwoColumns, Block(1, 1, 2, 8), {{"TwoHypoth", "Greater", "1"}});
  TwoHypothVariance(host);
  EXPECT_EQ(LogLines(host), (Lines{"Hypothesis test for 2-sample variance is starting",
                                   "Hypothesis test for 2-sample variance is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.TextRows()[1], (Lines{"H0", "sigma^2_1= sigma^2_2"}));
  EXPECT_EQ(table.TextRows()[2], (Lines{"H1", "sigma^2_1> sigma^2_2"}));
  EXPECT_EQ(table.TextRows()[3][0], "2. Test statistics");
  // s1^2 = 0.06, s2^2 = 0.08285714: F = 0.724138 on 7 and 6 degrees of freedom.
  EXPECT_EQ(table.TextRows()[4][0], "F = 0.724138");
  EXPECT_EQ(table.TextRows()[8][0], "Reault");
  EXPECT_EQ(Cell(table, "p-value"), SixDecimals(reference::FUpperTail(0.06 / 0.082857142857, 7, 6)));
  EXPECT_EQ(Cell(table, "Reault"), "Fail to reject H0");

  auto cancelled = CancellingHost(kTwoColumns, Block(1, 1, 2, 8), "TwoHypoth");
  TwoHypothVariance(cancelled);
  EXPECT_EQ(LogLines(cancelled).back(), "Cancel hypothesis test for 2-sample variance");

  auto one_column = HostOver(kTwoColumns, Block(1, 1, 1, 8));
  TwoHypothVariance(one_column);
  EXPECT_EQ(MessageTexts(one_column), (Lines{"Please, select two columns"}));
  EXPECT_TRUE(LogLines(one_column).empty());
}

TEST(TwoHypothMeanTest, EqualAndUnequalVariance) {
  auto pooled = HostOver(kTwoColumns, Block(1, 1, 2, 8));
  TwoHypothMean(pooled);
  EXPECT_EQ(LogLines(pooled), (Lines{"Hypothesis for 2-sample mean(2-sample t test) is starting",
                                     "Hypothesis for 2-sample mean(2-sample t test) is completed"}));
  const shell::ResultTable& p = OnlyTable(pooled);
  EXPECT_EQ(p.TextRows()[1], (Lines{"H0", "mu1= mu2"}));
  EXPECT_EQ(p.TextRows()[2], (Lines{"H1", "mu1>< mu2"}));
  EXPECT_EQ(p.TextRows()[4][1], "(Assume equal variance)");

  auto welch = HostOver(kTwoColumns, Block(1, 1, 2, 8), {{"TwoHypoth", "EqualVar", "0"}});
  TwoHypothMean(welch);
  const shell::ResultTable& w = OnlyTable(welch);
  EXPECT_EQ(w.TextRows()[4][1], "(Assume unequal variance)");
  // Welch by hand: a = 0.06 / 8, b = 0.0828571428571 / 7.
  const double a = 0.06 / 8, b = 0.082857142857 / 7;
  const double t = (10.05 - 10.242857142857) / std::sqrt(a + b);
  const double df = (a + b) * (a + b) / (a * a / 7 + b * b / 6);
  EXPECT_EQ(w.TextRows()[4][0], "t = -1.386897");
  EXPECT_EQ(Cell(w, "p-value"), SixDecimals(2 * reference::TLowerTail(t, df)));

  auto few = HostOver({{"1", "2"}, {"2", ""}}, Block(1, 1, 2, 2));
  TwoHypothMean(few);
  EXPECT_EQ(MessageTexts(few), (Lines{"All data are not enough to analysis"}));

  auto none = HostOver({{"1", "a"}, {"2", "b"}}, Block(1, 1, 2, 2));
  EXPECT_THROW(TwoHypothMean(none), shell::CommandFailed);
  EXPECT_EQ(MessageTexts(none), (Lines{"Please, input valid data"}));
  EXPECT_EQ(LogLines(none).back(), "Cancel hypothesis for 2-sample mean(2-sample t test)");
}

TEST(TwoHypothPairedMeanTest, MissingBlankAfterTheTwoSidedOperator) {
  auto host = HostOver({{"5", "3"}, {"6", "5"}, {"7", "4"}}, Block(1, 1, 2, 3));
  TwoHypothPairedMean(host);
  EXPECT_EQ(LogLines(host), (Lines{"Hypothesis for 2-sample mean(paired t test) is starting",
                                   "Hypothesis for 2-sample mean(paired t test) is completed"}));
  const shell::ResultTable& table = OnlyTable(host);
  EXPECT_EQ(table.TextRows()[1], (Lines{"H0", "Difference of means(μD) = 0"}));
  EXPECT_EQ(table.TextRows()[2], (Lines{"H1", "Difference of means(μD) ><0"}));
  // Differences 2, 1, 3: t = 2 / (1 / sqrt 3) = 3.464102 on 2 degrees of freedom.
  EXPECT_EQ(table.TextRows()[4][0], "t = 3.464102");
  EXPECT_EQ(Cell(table, "p-value"), SixDecimals(2 * reference::TUpperTail(2 * std::sqrt(3.0), 2)));
  EXPECT_EQ(Cell(table, "Smaple 2"), "");

  auto unmatched = HostOver({{"5", "3"}, {"6", ""}, {"7", "4"}}, Block(1, 1, 2, 3));
  TwoHypothPairedMean(unmatched);
  EXPECT_EQ(MessageTexts(unmatched), (Lines{"Improper data for Hypothesis for 2-sample mean(paired t test)"}));
  EXPECT_EQ(LogLines(unmatched).back(), "Cancel hypothesis for 2-sample mean(paired t test)");

  auto cancelled = CancellingHost({{"5", "3"}, {"6", "5"}, {"7", "4"}}, Block(1, 1, 2, 3), "TwoHypoth");
  TwoHypothPairedMean(cancelled);
  EXPECT_EQ(LogLines(cancelled), (Lines{"Hypothesis for 2-sample mean(paired t test) is starting",
                                        "Cancel hypothesis for 2-sample mean(paired t test)"}));
}

TEST(TwoHypothDialogTest, EqualVarOnlyForTheTTest) {
  EXPECT_TRUE(TwoHypoth(TwoHypoth::Tested::Means).Control("EqualVar").enabled);
  EXPECT_TRUE(TwoHypoth(TwoHypoth::Tested::Means).Control("EqualVar").checked);
  EXPECT_FALSE(TwoHypoth(TwoHypoth::Tested::Variances).Control("EqualVar").enabled);
  EXPECT_FALSE(TwoHypoth(TwoHypoth::Tested::PairedMeans).Control("EqualVar").enabled);
  const TwoHypoth dialog;
  EXPECT_EQ(dialog.Control("alphatxt").text, "5");
  EXPECT_TRUE(dialog.Control("TwoSided").checked);
}

}  // namespace
}  // namespace orvik::analyses
