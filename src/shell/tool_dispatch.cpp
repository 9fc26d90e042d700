#include "shell/tool_dispatch.h"

#include "analyses/descriptive_statistics.h"
#include "analyses/estimation_commands.h"
#include "analyses/estimation_dialogs.h"
#include "analyses/hypothesis_commands.h"
#include "analyses/hypothesis_dialogs.h"
#include "capability/box_plot.h"
#include "capability/cpk_form.h"
#include "capability/histogram.h"
#include "capability/pareto_chart.h"
#include "charts/chart_input.h"
#include "charts/control_charts.h"
#include "charts/given_limits_dialog.h"
#include "capability/process_capability.h"

namespace orvik::shell {

namespace {

constexpr CommandScope W = CommandScope::Window;
constexpr CommandScope C = CommandScope::Core;

}  // namespace

const std::vector<ToolCommand>& ToolCommands() {
  static const std::vector<ToolCommand> table = {
      {"mnuNew", "mnuFile", "", "&New WorkSheet", W},
      {"mnuOpen", "mnuFile", "", "&Open Project...", W},
      {"mnuSave", "mnuFile", "", "&Save Project", W},
      {"mnuSaveAs", "mnuFile", "", "Save Project &As...", W},
      {"mnuPrint", "mnuFile", "", "&Print...", W},
      {"mnuWorkSheetPrint", "mnuFile", "", "Print WorkSheet", W},
      {"mnuExit", "mnuFile", "", "E&xit", W},
      {"mnuDataImport", "mnuFile", "", "&Import Data...", W},
      {"mnuDataExport", "mnuFile", "", "&Export Data...", W},
      {"mnuDB", "mnuFile", "", "&Database Connection...", W},
      {"mnuCut", "mnuEdit", "", "Cu&t", W},
      {"mnuCopy", "mnuEdit", "", "&Copy", W},
      {"mnuPaste", "mnuEdit", "", "&Paste", W},
      {"mnuChartDataCopy", "mnuEdit", "", "Copy Result &Data", W},
      {"mnuGraphSave", "mnuEdit", "", "Save &Graph As Picture...", W},
      {"mnuDel", "mnuEdit", "", "C&lear", W},
      {"mnuSelectAll", "mnuEdit", "", "Select &All", W},
      {"mnuInsertRow", "mnuEdit", "Insert/Delete", "Insert &Row", W},
      {"mnuInsertCol", "mnuEdit", "Insert/Delete", "Insert C&olumn", W},
      {"mnuDelRow", "mnuEdit", "Insert/Delete", "Delete Ro&w", W},
      {"mnuDelCol", "mnuEdit", "Insert/Delete", "Delete Col&umn", W},
      {"mnuFind", "mnuEdit", "", "&Find...", W},
      {"mnuFindNext", "mnuEdit", "", "Find &Next", W},
      {"mnuReplace", "mnuEdit", "", "R&eplace...", W},
      {"mnuSort", "mnuTool", "", "&Sort...", W},
      {"mnuCellType", "mnuTool", "", "&Cell Type...", W},
      {"mnuWorkSheetName", "mnuTool", "", "&Rename WorkSheet...", W},
      {"mnuSheetHeaderName", "mnuTool", "", "Column &Header Name...", W},
      {"mnuItalic", "mnuTool", "Font Style", "&Italic", W},
      {"mnuUnderline", "mnuTool", "Font Style", "&Underline", W},
      {"mnuBold", "mnuTool", "Font Style", "&Bold", W},
      {"mnuLeft", "mnuTool", "Alignment", "Align &Left", W},
      {"mnuCenter", "mnuTool", "Alignment", "Align &Center", W},
      {"mnuRight", "mnuTool", "Alignment", "Align &Right", W},
      {"mnuStandardToolbar", "mnuView", "", "&Standard Toolbar", W},
      {"mnuFormatToolbar", "mnuView", "", "&Format Toolbar", W},
      {"mnuStatusBar", "mnuView", "", "Status &Bar", W},
      {"mnuSession", "mnuView", "", "S&ession Window", W},
      {"mnuTileH", "mnuWindow", "", "Tile &Horizontally", W},
      {"mnuTileV", "mnuWindow", "", "Tile &Vertically", W},
      {"mnuCascade", "mnuWindow", "", "&Cascade", W},
      {"mnuArrangeIcons", "mnuWindow", "", "&Arrange Icons", W},
      {"mnuHistogram", "mnuGraph", "", "&Histogram", C, capability::HistogramView},
      {"mnuDotplot", "mnuGraph", "", "&Scatterplot", C},
      {"mnuPareto", "mnuGraph", "", "&Pareto Chart", C, capability::ParetoSelection},
      {"mnuBoxPlot", "mnuGraph", "", "&Box-plot", C, capability::BoxPlotView},
      {"mnuDotGraphPlot", "mnuGraph", "", "&Connected Line Graph", C},
      {"mnuBarGraph", "mnuGraph", "", "B&ar Chart", C},
      {"mnuPie", "mnuGraph", "", "P&ie Chart", C},
      {"mnuRader", "mnuGraph", "", "&Radar Chart", C},
      {"mnuDistribution", "mnuGraph", "", "&Distribution Plot", C},
      {"mnuRun", "mnuAnalysis", "", "&Run Chart", C},
      {"mnuPCR", "mnuAnalysis", "", "Process &Capability Analysis", C, capability::CpkSelection},
      {"mnuBasicStat", "mnuAnalysis", "", "&Descriptive Statistics", C, analyses::DescriptiveStatistics},
      {"mnuBarX-R", "mnuAnalysis", "Control Charts", "xbar-R Chart", C, charts::XbarRView},
      {"mnuBarX", "mnuAnalysis", "Control Charts", "xbar Chart", C, charts::XbarView},
      {"mnuR", "mnuAnalysis", "Control Charts", "R Chart", C, charts::RView},
      {"mnuBarXS", "mnuAnalysis", "Control Charts", "xbar-s Chart", C, charts::XbarSView},
      {"mnuS", "mnuAnalysis", "Control Charts", "s Chart", C, charts::SView},
      {"mnuX-Rs", "mnuAnalysis", "Control Charts", "x-MR Chart", C, charts::XMRView},
      {"mnuMR", "mnuAnalysis", "Control Charts", "MR Chart", C, charts::MRView},
      {"mnuP", "mnuAnalysis", "Control Charts", "p Chart", C},
      {"mnuPn", "mnuAnalysis", "Control Charts", "np Chart", C, charts::PnView},
      {"mnuC", "mnuAnalysis", "Control Charts", "c Chart", C, charts::CView},
      {"mnuU", "mnuAnalysis", "Control Charts", "u Chart", C},
      {"mnuCUSUM", "mnuAnalysis", "Control Charts", "CUSUM Chart", C},
      {"mnuEWMA", "mnuAnalysis", "Control Charts", "EWMA Chart", C},
      {"mnuMA", "mnuAnalysis", "Control Charts", "MA Chart", C},
      {"mnuCV", "mnuAnalysis", "Control Charts", "CV Chart", C},
      {"mnuChartProperty", "mnuGraph", "", "Chart &Properties...", W},
      {"mnuChartPrint", "mnuGraph", "", "Print C&hart...", W},
      {"mnuMeanEst", "mnuAnalysis", "Interval Estimation", "1-Sample Mean", C, analyses::MeanEstimation},
      {"mnuVarianceEst", "mnuAnalysis", "Interval Estimation", "1-Sample Variance", C, analyses::VarianceEstimation},
      {"mnuRatioEst", "mnuAnalysis", "Interval Estimation", "1-Sample Proportion", C, analyses::ProportionEstimation},
      {"mnuTwoMean", "mnuAnalysis", "Interval Estimation", "2-Sample Mean", C, analyses::DiffMeanSelection},
      {"mnuPaired", "mnuAnalysis", "Interval Estimation", "Paired Samples", C, analyses::PairedDiffMean},
      {"mnuRatioVarEst", "mnuAnalysis", "Interval Estimation", "Ratio of Variances", C, analyses::RatioVariance},
      {"mnuRatioProEst", "mnuAnalysis", "Interval Estimation", "2-Sample Proportion", C, analyses::TwoProportionEstimation},
      {"mnuMeanHypoth", "mnuAnalysis", "Hypothesis Tests", "1-Sample Mean", C, analyses::MeanHypothesis},
      {"mnuVarianceHypoth", "mnuAnalysis", "Hypothesis Tests", "1-Sample Variance", C, analyses::VarianceHypothesis},
      {"mnuRatioHypoth", "mnuAnalysis", "Hypothesis Tests", "1-Sample Proportion", C, analyses::ProportionHypothesis},
      {"mnuRatioDiffHypoth", "mnuAnalysis", "Hypothesis Tests", "2-Sample Proportion", C, analyses::TwoProportionHypothesis},
      {"mnuVarDiffHypoth", "mnuAnalysis", "Hypothesis Tests", "2-Sample Variance", C, analyses::TwoHypothVariance},
      {"mnuIndependent", "mnuAnalysis", "Hypothesis Tests", "2-Sample t Test", C, analyses::TwoHypothMean},
      {"mnuHypoPaired", "mnuAnalysis", "Hypothesis Tests", "Paired t Test", C, analyses::TwoHypothPairedMean},
      {"mnuNormalTest", "mnuAnalysis", "", "&Normality Test", C},
      {"mnuCorrelation", "mnuAnalysis", "", "C&orrelation", C},
      {"mnuSimpleReg", "mnuAnalysis", "", "Simple &Linear Regression", C},
      {"mnuOneway", "mnuAnalysis", "Analysis of Variance", "One-way ANOVA", C},
      {"mnuTwoway", "mnuAnalysis", "Analysis of Variance", "Two-way ANOVA", C},
      {"mnuOneDesign", "mnuAnalysis", "Design of Experiments", "One-factor Design...", C},
      {"mnuTwoDesign", "mnuAnalysis", "Design of Experiments", "Two-factor Design...", C},
      {"mnuFactorDesign", "mnuAnalysis", "Design of Experiments", "Factorial Design...", C},
      {"mnuGageRR", "mnuAnalysis", "", "&Gage R&&R Study...", C},
      {"mnuCal", "mnuTool", "", "Calc&ulator", W},
      {"mnuMemo", "mnuTool", "", "&Memo", W},
      {"mnuDate", "mnuTool", "", "Calen&dar", W},
      {"mnuInformation", "mnuHelp", "", "&About Orvik 2.0", W},
      {"mnuContents", "mnuHelp", "", "&Contents", W},
  };
  return table;
}

const ToolCommand* FindToolCommand(std::string_view key) {
  for (const auto& command : ToolCommands())
    if (command.key == key) return &command;
  return nullptr;
}

const std::vector<DialogEntry>& DialogCatalog() {
  static const std::vector<DialogEntry> catalog = {
      {"ControlLimit", charts::MakeControlLimit, true},
      {"ControlTwoLimit", charts::MakeControlTwoLimit, true},
      {"Selection", charts::MakeSubgroupSelection},
      {"PnSubForm", charts::MakePnSubForm},
      {"CpkForm", capability::MakeCpkForm},
      {"Estimation", analyses::MakeEstimation},
      {"TwoEstimation", analyses::MakeTwoEstimation},
      {"Proportions", analyses::MakeProportions},
      {"TwoProportions", analyses::MakeTwoProportions},
      {"MeanHypoth", analyses::MakeMeanHypoth},
      {"HypothProportion", analyses::MakeHypothProportion},
      {"TwoHypothProportion", analyses::MakeTwoHypothProportion},
      {"TwoHypoth", analyses::MakeTwoHypoth},
  };
  return catalog;
}

const DialogEntry* FindDialog(std::string_view name) {
  for (const auto& entry : DialogCatalog())
    if (entry.name == name) return &entry;
  return nullptr;
}

}  // namespace orvik::shell
