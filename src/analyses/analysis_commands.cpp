#include "analyses/analysis_commands.h"

#include "analyses/correlation.h"
#include "analyses/descriptive_statistics.h"
#include "analyses/design_sheets.h"
#include "analyses/estimation_commands.h"
#include "analyses/factorial_anova.h"
#include "analyses/estimation_dialogs.h"
#include "analyses/gage_rr_analysis.h"
#include "analyses/gage_rr_study.h"
#include "analyses/hypothesis_commands.h"
#include "analyses/hypothesis_dialogs.h"
#include "analyses/normality_test.h"
#include "analyses/one_way_anova.h"
#include "analyses/simple_regression.h"
#include "analyses/two_way_anova.h"

namespace orvik::analyses {

namespace {

using shell::CommandDeclaration;

// A report of figures: a DataChart window holding a grid and no chart.
CommandDeclaration Report(std::string_view key, std::string_view submenu, std::string_view caption,
                          shell::CommandProcedure run, std::vector<std::string_view> dialogs = {}) {
  return {.key = key,
          .menu = "mnuAnalysis",
          .submenu = submenu,
          .caption = caption,
          .run = run,
          .dialogs = std::move(dialogs),
          .window = shell::WindowKind::DataChart};
}

// A report with its charts: a DataChart window holding a grid and
// `charts` charts.
CommandDeclaration Graph(std::string_view key, std::string_view submenu, std::string_view caption,
                         shell::CommandProcedure run, std::vector<std::string_view> dialogs, int charts) {
  CommandDeclaration declaration = Report(key, submenu, caption, run, std::move(dialogs));
  declaration.chartCount = charts;
  return declaration;
}

constexpr std::string_view kDesign = "Design of Experiments";

// A design command: its dialog, then a new design sheet.
CommandDeclaration Design(std::string_view key, std::string_view caption, shell::CommandProcedure run,
                          std::string_view dialog) {
  return {.key = key,
          .menu = "mnuAnalysis",
          .submenu = kDesign,
          .caption = caption,
          .run = run,
          .dialogs = {dialog},
          .window = shell::WindowKind::DOEDoc};
}

constexpr std::string_view kAnova = "Analysis of Variance";
constexpr std::string_view kEstimation = "Interval Estimation";
constexpr std::string_view kTests = "Hypothesis Tests";
constexpr std::string_view kGage = "Gage R&&R";

}  // namespace

std::vector<CommandDeclaration> DescriptiveCommands() {
  return {Report("mnuBasicStat", "", "&Descriptive Statistics", DescriptiveStatistics)};
}

std::vector<CommandDeclaration> InferenceCommands() {
  return {
      Report("mnuMeanEst", kEstimation, "1-Sample Mean", MeanEstimation, {"Estimation"}),
      Report("mnuVarianceEst", kEstimation, "1-Sample Variance", VarianceEstimation),
      Report("mnuRatioEst", kEstimation, "1-Sample Proportion", ProportionEstimation, {"Proportions"}),
      Report("mnuTwoMean", kEstimation, "2-Sample Mean", DiffMeanSelection, {"TwoEstimation"}),
      Report("mnuPaired", kEstimation, "Paired Samples", PairedDiffMean),
      Report("mnuRatioVarEst", kEstimation, "Ratio of Variances", RatioVariance),
      Report("mnuRatioProEst", kEstimation, "2-Sample Proportion", TwoProportionEstimation, {"TwoProportions"}),
      Report("mnuMeanHypoth", kTests, "1-Sample Mean", MeanHypothesis, {"MeanHypoth"}),
      Report("mnuVarianceHypoth", kTests, "1-Sample Variance", VarianceHypothesis, {"MeanHypoth"}),
      Report("mnuRatioHypoth", kTests, "1-Sample Proportion", ProportionHypothesis, {"HypothProportion"}),
      Report("mnuRatioDiffHypoth", kTests, "2-Sample Proportion", TwoProportionHypothesis, {"TwoHypothProportion"}),
      Report("mnuVarDiffHypoth", kTests, "2-Sample Variance", TwoHypothVariance, {"TwoHypoth"}),
      Report("mnuIndependent", kTests, "2-Sample t Test", TwoHypothMean, {"TwoHypoth"}),
      Report("mnuHypoPaired", kTests, "Paired t Test", TwoHypothPairedMean, {"TwoHypoth"}),
      Graph("mnuNormalTest", "", "&Normality Test", NormalTestView, {"NormalTest"}, 1),
      Report("mnuCorrelation", "", "C&orrelation", CorrelationView, {"Correlation"}),
      Graph("mnuSimpleReg", "", "Simple &Linear Regression", SimpleRegView, {"SimpleReg"}, 5),
      Graph("mnuOneway", kAnova, "One-way ANOVA", OnewayView, {"Oneway"}, 1),
      Graph("mnuTwoway", kAnova, "Two-way ANOVA", TwowayView, {"Twoway"}, 3),
      Design("mnuOneDesign", "One-factor Design...", OneDesignView, "DOEOneFactor"),
      Design("mnuTwoDesign", "Two-factor Design...", TwoDesignView, "DOETwoFactor"),
      Design("mnuFactorDesign", "Factorial Design...", FactorDesignView, "DOESelection"),
      Graph("DOEAnalysis", kDesign, "Analyze Design...", DOEAnalysisView, {"DOEAnalysisForm"}, 4),
      {.key = "mnuGageRR", .menu = "mnuAnalysis", .submenu = kGage, .caption = "&Gage R&&R Study...",
       .run = GageRRStudyView, .dialogs = {"GageRRFactor"}, .window = shell::WindowKind::DOEDoc},
      Graph("GageRRAnalysis", kGage, "Gage R&&R &Analysis", GageRRAnalysis, {}, 6),
  };
}

std::vector<shell::DialogDeclaration> InferenceDialogs() {
  return {
      {"Estimation", MakeEstimation},
      {"TwoEstimation", MakeTwoEstimation},
      {"Proportions", MakeProportions},
      {"TwoProportions", MakeTwoProportions},
      {"MeanHypoth", MakeMeanHypoth},
      {"HypothProportion", MakeHypothProportion},
      {"TwoHypothProportion", MakeTwoHypothProportion},
      {"TwoHypoth", MakeTwoHypoth},
      {"NormalTest", MakeNormalTest},
      {"Correlation", MakeCorrelation},
      {"SimpleReg", MakeSimpleReg},
      {"Oneway", MakeOneway},
      {"Twoway", MakeTwoway},
      {"DOEOneFactor", MakeDOEOneFactor},
      {"DOETwoFactor", MakeDOETwoFactor},
      {"DOESelection", MakeDOESelection},
      // The last study's settings stand for those of a worksheet block
      // analysed without a study sheet.
      {"GageRRFactor", MakeGageRRFactor, true},
      {"DOEAnalysisForm", MakeDOEAnalysisForm},
  };
}

}  // namespace orvik::analyses
