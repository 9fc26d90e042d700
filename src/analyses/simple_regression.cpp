#include "analyses/simple_regression.h"

#include <algorithm>
#include <cmath>

#include "analyses/anova_report.h"
#include "analyses/regression_fit.h"
#include "analyses/residual_plots.h"
#include "analyses/sample_input.h"
#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"Simple linear regression", "Cancel simple linear regression"};
constexpr int kBandPoints = 50;
// The unusual observations listed; a large sample has about 5 % of them.
constexpr long kListedUnusual = 50;

struct Pairs {
  std::vector<double> x;
  std::vector<double> y;
  bool dropped = false;
};

Pairs ReadPairs(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                const SimpleRegSettings& s) {
  const auto x = ColumnCells(sheet, selection, s.predictorColumn);
  const auto y = ColumnCells(sheet, selection, s.responseColumn);
  Pairs pairs;
  for (std::size_t r = 0; r < x.size(); ++r) {
    if (std::isnan(x[r]) && std::isnan(y[r])) continue;
    if (std::isnan(x[r]) || std::isnan(y[r])) {
      pairs.dropped = true;
      continue;
    }
    pairs.x.push_back(x[r]);
    pairs.y.push_back(y[r]);
  }
  return pairs;
}

bool Constant(const std::vector<double>& v) {
  return std::all_of(v.begin(), v.end(), [&](double x) { return x == v.front(); });
}

std::string Signed(double value) {
  return value < 0.0 ? " - " + ShownStatistic(-value) : " + " + ShownStatistic(value);
}

void AddFittedLineChart(shell::ResultWindow& window, const RegressionFit& fit, const Pairs& pairs,
                        const std::string& x_name, const std::string& y_name, double level) {
  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Fitted line plot";
  chart.xTitle = x_name;
  chart.yTitle = y_name;
  shell::PlotSeries data = NamedSeries("Data", shell::SeriesType::Points);
  data.x = shell::NumberSeries(pairs.x);
  data.y = shell::NumberSeries(pairs.y);
  const auto [low, high] = std::minmax_element(pairs.x.begin(), pairs.x.end());
  const std::string percent = stats::FormatNumber(level * 100.0) + "%";
  shell::PlotSeries line = NamedSeries("Fit", shell::SeriesType::Line);
  shell::PlotSeries ci_low = NamedSeries(percent + " CI lower", shell::SeriesType::Line);
  shell::PlotSeries ci_high = NamedSeries(percent + " CI upper", shell::SeriesType::Line);
  shell::PlotSeries pi_low = NamedSeries(percent + " PI lower", shell::SeriesType::Line);
  shell::PlotSeries pi_high = NamedSeries(percent + " PI upper", shell::SeriesType::Line);
  for (int i = 0; i <= kBandPoints; ++i) {
    const double x0 = *low + (*high - *low) * i / kBandPoints;
    const double y0 = fit.intercept + fit.slope * x0;
    const BandWidths w = BandsAt(fit, x0, level);
    for (auto* s : {&line, &ci_low, &ci_high, &pi_low, &pi_high}) s->x.push_back(x0);
    line.y.push_back(y0);
    ci_low.y.push_back(y0 - w.confidence);
    ci_high.y.push_back(y0 + w.confidence);
    pi_low.y.push_back(y0 - w.prediction);
    pi_high.y.push_back(y0 + w.prediction);
  }
  chart.series = {std::move(data), std::move(line), std::move(ci_low), std::move(ci_high), std::move(pi_low),
                  std::move(pi_high)};
  chart.labels.push_back({"R-squared = " + ShownStatistic(fit.rSquared), {}, {}});
}

shell::ResultWindow MakeReport(const RegressionFit& fit, const Pairs& pairs, const std::string& x_name,
                               const std::string& y_name, double level) {
  shell::ResultWindow window = shell::MakeDataChart(kLines.stem);
  shell::ResultTable table = ReportGrid(6);
  AddHeading(table, {"1. Regression equation"});
  table.AddRow({y_name + " = " +
                (fit.constant ? ShownStatistic(fit.intercept) + Signed(fit.slope) : ShownStatistic(fit.slope)) + " " +
                x_name});
  AddHeading(table, {"2. Coefficients"});
  AddHeading(table, {"Predictor", "Coef", "SE Coef", "T", "p-value"});
  if (fit.constant)
    table.AddRow({"Constant", ShownStatistic(fit.intercept), ShownStatistic(fit.interceptSe),
                  ShownStatistic(fit.interceptT), ShownPValue(fit.interceptP)});
  table.AddRow({x_name, ShownStatistic(fit.slope), ShownStatistic(fit.slopeSe), ShownStatistic(fit.slopeT),
                ShownPValue(fit.slopeP)});
  table.AddRow({"S", ShownStatistic(fit.s)});
  table.AddRow({"R-squared", ShownStatistic(fit.rSquared)});
  table.AddRow({"R-squared(adj)", ShownStatistic(fit.adjustedRSquared)});
  AddAnovaTable(table, "3. Analysis of variance",
                {{"Regression", fit.regressionDf, fit.regressionSS, fit.regressionMS, fit.f, fit.fP},
                 {"Residual Error", fit.residualDf, fit.residualSS, fit.residualMS, {}, {}},
                 {"Total", fit.totalDf, fit.totalSS, {}, {}, {}}});
  AddHeading(table, {"4. Unusual observations"});
  AddHeading(table, {"Obs", x_name, y_name, "Fit", "Residual", "St Resid"});
  const double leverage_limit = 3.0 * (fit.constant ? 2.0 : 1.0) / static_cast<double>(fit.n);
  long unusual = 0;
  for (long i = 0; i < fit.n; ++i) {
    const bool large = std::fabs(fit.standardizedResiduals[i]) > 2.0;
    const bool leverage = fit.leverage[i] > leverage_limit;
    if (!large && !leverage) continue;
    if (++unusual > kListedUnusual) continue;
    std::string mark = ShownStatistic(fit.standardizedResiduals[i]);
    if (large) mark += " R";
    if (leverage) mark += " X";
    table.AddRow({std::to_string(i + 1), stats::FormatNumber(pairs.x[i]), stats::FormatNumber(pairs.y[i]),
                  ShownStatistic(fit.fitted[i]), ShownStatistic(fit.residuals[i]), mark});
  }
  if (unusual == 0) table.AddRow({"None"});
  if (unusual > kListedUnusual)
    table.AddRow({std::to_string(unusual - kListedUnusual) + " more unusual observations are not listed"});
  table.AddRow({"R: large standardized residual (|St Resid| > 2); X: high leverage (h > 3p/n)"});
  window.table = std::move(table);
  AddFittedLineChart(window, fit, pairs, x_name, y_name, level);
  AddResidualPlots(window, fit.residuals, fit.fitted);
  return window;
}

}  // namespace

SimpleReg::SimpleReg(std::vector<BlockColumn> columns)
    : ColumnChoiceDialog("SimpleReg", "Simple linear regression", std::move(columns)) {
  AddColumnBox("YColumn", 1, "Response (Y)");
  AddColumnBox("XColumn", 0, "Predictor (X)");
  AddCheckBox("NoConstant", false).caption = "Fit without a constant term";
  AddTextBox("Confidencetxt", "95").caption = "Confidence level (%)";
  AddOkCancel();
}

bool SimpleReg::OnOk(shell::Host& host) {
  if (!ResolveColumns(host)) return false;
  const auto confidence = Number("Confidencetxt");
  if (!confidence || !(*confidence > 0.0 && *confidence < 100.0)) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {ChosenColumns()[0], ChosenColumns()[1], Control("NoConstant").checked, *confidence};
  return true;
}

std::unique_ptr<shell::DialogModel> MakeSimpleReg() { return std::make_unique<SimpleReg>(); }

void SimpleRegView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host)) return;
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return;
  const auto columns = ColumnsOfBlock(*sheet, host.CurrentSelection());
  if (columns.size() < 2) {
    host.Refuse(worksheet::messages::kSelectTwoColumns);
    return;
  }
  host.Log().AppendSessionLine(kLines.Starting());
  SimpleReg dialog(columns);
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  const Pairs pairs = ReadPairs(*sheet, host.CurrentSelection(), *settings);
  if (pairs.dropped) host.Notify(worksheet::messages::kEliminated);
  const auto refuse = [&](const char* text) {
    host.Refuse(text);
    host.Log().AppendSessionLine(kLines.cancel);
  };
  if (pairs.x.size() < 3) return refuse(worksheet::messages::kNotEnoughData);
  const bool vertical = settings->noConstant ? std::all_of(pairs.x.begin(), pairs.x.end(), [](double v) { return v == 0.0; })
                                             : Constant(pairs.x);
  const bool horizontal = !settings->noConstant && Constant(pairs.y);
  if (vertical || horizontal) return refuse(worksheet::messages::kAllDataSame);
  const RegressionFit fit = FitLine(pairs.x, pairs.y, !settings->noConstant);
  // Numbers beyond a double (values near 1e308) end in the failure path.
  shell::ShowResultOrFail(host, MakeReport(fit, pairs, sheet->ColumnHeader(settings->predictorColumn),
                                   sheet->ColumnHeader(settings->responseColumn),
                                   settings->confidencePercent / 100.0), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace orvik::analyses
