#include "analyses/normality_test.h"

#include <algorithm>
#include <cmath>

#include "analyses/anova_report.h"
#include "analyses/p_values.h"
#include "analyses/residual_plots.h"
#include "analyses/sample_input.h"
#include "analyses/sample_summary.h"
#include "shell/analysis_input.h"
#include "stats/anderson_darling.h"
#include "stats/decimal_numbers.h"
#include "stats/shapiro_wilk.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"Normality test", "Cancel normality test"};
constexpr const char* kTooManyValues = "Normality test takes at most 5000 values";
constexpr std::size_t kLargestSample = 5000;

shell::ResultWindow MakeReport(const std::vector<double>& values, const NormalTestSettings& s) {
  const SampleSummary summary = SummariseForInference(values);
  shell::ResultWindow window = shell::MakeDataChart(kLines.stem);
  shell::ResultTable table = ReportGrid(2);
  AddHeading(table, {"1. Hypothesis", ""});
  table.AddRow({"H0", "Data follow a normal distribution"});
  table.AddRow({"H1", "Data do not follow a normal distribution"});
  AddDescriptiveBlock(table, "2. Descriptive statistics", summary);
  std::string statistic_label;
  double statistic = 0.0;
  double p = 0.0;
  if (!s.andersonDarling) {
    const stats::ShapiroWilkResult sw = stats::ShapiroWilk(values);
    const double n_table = std::min<double>(static_cast<double>(values.size()), 49.0);
    const double critical = stats::WValue(n_table);
    statistic_label = "W";
    statistic = sw.w;
    p = sw.p_value;
    AddHeading(table, {"3. Test statistic (Shapiro-Wilk)", ""});
    table.AddRow({"W = " + ShownStatistic(sw.w), ""});
    table.AddRow({"W critical value (5%, n = " + stats::FormatNumber(n_table) + ")", ShownStatistic(critical)});
    AddHeading(table, {"4. Test result", ""});
    table.AddRow({"p-value", ShownPValue(p)});
    table.AddRow({"significance level", stats::FormatNumber(s.alphaPercent) + "%"});
    table.AddRow({"Result", Decision(p, s.alphaPercent / 100.0)});
    table.AddRow({"Result at 5% (W against its critical value)", sw.w < critical ? "Reject H0" : "Fail to reject H0"});
  } else {
    const stats::AndersonDarlingResult ad = stats::AndersonDarling(values);
    statistic_label = "A-Squared";
    statistic = ad.a2;
    p = ad.p_value;
    AddHeading(table, {"3. Test statistic (Anderson-Darling)", ""});
    table.AddRow({"A-Squared = " + ShownStatistic(ad.a2), ""});
    table.AddRow({"A-Squared adjusted = " + ShownStatistic(ad.a2Adjusted), "(1 + 0.75/n + 2.25/n^2)"});
    AddHeading(table, {"4. Test result", ""});
    table.AddRow({"p-value", ShownPValue(p)});
    table.AddRow({"significance level", stats::FormatNumber(s.alphaPercent) + "%"});
    table.AddRow({"Result", Decision(p, s.alphaPercent / 100.0)});
  }
  window.table = std::move(table);
  window.charts.front() = NormalProbabilityChart("DataChartView", values, "Normal probability plot", "Data");
  auto& labels = window.charts.front().labels;
  labels.push_back({"N = " + std::to_string(values.size()), {}, {}});
  labels.push_back({statistic_label + " = " + ShownStatistic(statistic), {}, {}});
  labels.push_back({"p-value = " + ShownPValue(p), {}, {}});
  return window;
}

}  // namespace

NormalTest::NormalTest() : AnalysisDialog("NormalTest", "Normality test", kLines.cancel) {
  AddTextBox("alphatxt", "5").caption = "Significance level (%)";
  AddOptionButton("ShapiroWilk", "test", true).caption = "Shapiro-Wilk";
  AddOptionButton("AndersonDarling", "test", false).caption = "Anderson-Darling";
  AddOkCancel();
}

bool NormalTest::OnOk(shell::Host& host) {
  const auto alpha = AlphaPercent();
  if (!alpha) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*alpha, Control("AndersonDarling").checked};
  return true;
}

std::unique_ptr<shell::DialogModel> MakeNormalTest() { return std::make_unique<NormalTest>(); }

void NormalTestView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host)) return;
  if (!shell::RequireColumnSpan(host, 1, worksheet::messages::kSelectOneColumnOnly)) return;
  if (!shell::CollectNumericCells(host)) return;
  const std::vector<double> values = host.CurrentSelection().values;
  if (values.size() < 3) return host.Refuse(worksheet::messages::kNotEnoughData);
  if (values.size() > kLargestSample) return host.Refuse(kTooManyValues);
  if (std::all_of(values.begin(), values.end(), [&](double v) { return v == values.front(); }))
    return host.Refuse(worksheet::messages::kAllDataSame);
  host.Log().AppendSessionLine(kLines.Starting());
  NormalTest dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  // Numbers beyond a double (values near 1e308) end in the failure path.
  shell::ShowResultOrFail(host, MakeReport(values, *settings), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace orvik::analyses
