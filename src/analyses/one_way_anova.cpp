#include "analyses/one_way_anova.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "analyses/anova_report.h"
#include "analyses/one_way_fit.h"
#include "analyses/report_text.h"
#include "analyses/sample_input.h"
#include "shell/analysis_input.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"One-way ANOVA", "Cancel one-way ANOVA"};
constexpr std::size_t kMostTukeyLevels = 30;

// Levels in the order of their names (SortLevelNames).
void SortLevels(std::vector<FactorLevel>& levels) {
  std::vector<std::string> names;
  for (const auto& level : levels) names.push_back(level.name);
  SortLevelNames(names);
  std::vector<FactorLevel> sorted;
  for (const auto& name : names)
    for (auto& level : levels)
      if (level.name == name) sorted.push_back(std::move(level));
  levels = std::move(sorted);
}

std::vector<FactorLevel> ReadLevels(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                                    const OnewaySettings& settings) {
  std::vector<FactorLevel> levels;
  if (!settings.stacked) {
    for (const BlockColumn& column : ColumnsOfBlock(sheet, selection)) {
      FactorLevel level{column.name, {}};
      for (const double v : ColumnCells(sheet, selection, column.column))
        if (!std::isnan(v)) level.values.push_back(v);
      // A column without numbers is no group.
      if (!level.values.empty()) levels.push_back(std::move(level));
    }
    return levels;
  }
  const auto response = ColumnCells(sheet, selection, settings.responseColumn);
  const auto factor = ColumnTexts(sheet, selection, settings.factorColumn);
  std::unordered_map<std::string, std::size_t> level_of;  // so many levels cost no search each
  for (std::size_t r = 0; r < response.size(); ++r) {
    if (std::isnan(response[r]) || factor[r].empty()) continue;
    const auto [found, added] = level_of.try_emplace(factor[r], levels.size());
    if (added) levels.push_back({factor[r], {}});
    levels[found->second].values.push_back(response[r]);
  }
  SortLevels(levels);
  return levels;
}

// The refusal for levels that cannot be analysed, or nothing.
std::optional<std::string> Check(const std::vector<FactorLevel>& levels) {
  long n = 0;
  bool all_same = true;
  for (const auto& l : levels) {
    n += static_cast<long>(l.values.size());
    for (const double v : l.values) all_same = all_same && v == levels.front().values.front();
  }
  if (levels.size() == 1) return std::string(kOneLevel);
  if (levels.empty() || n <= static_cast<long>(levels.size())) return std::string(worksheet::messages::kNotEnoughData);
  if (all_same) return std::string(worksheet::messages::kAllDataSame);
  return std::nullopt;
}

shell::ResultWindow MakeReport(const OneWayFit& fit, const std::string& factor_name) {
  shell::ResultWindow window = shell::MakeDataChart(kLines.stem);
  shell::ResultTable table = ReportGrid(6);
  AddAnovaTable(table, "1. Analysis of variance",
                {{factor_name, fit.factorDf, fit.factorSS, fit.factorMS, fit.f, fit.p},
                 {"Error", fit.errorDf, fit.errorSS, fit.errorMS, {}, {}},
                 {"Total", fit.totalDf, fit.totalSS, {}, {}, {}}});
  table.AddRow({"S", ShownStatistic(fit.s)});
  table.AddRow({"R-squared", ShownStatistic(fit.rSquared)});
  table.AddRow({"R-squared(adj)", ShownStatistic(fit.adjustedRSquared)});
  AddHeading(table, {"2. Means and 95% CI (pooled S)"});
  AddHeading(table, {"Level", "N", "Mean", "StDev", "95% CI"});
  for (const auto& level : fit.levels)
    table.AddRow({level.name, std::to_string(level.n), ShownStatistic(level.mean), ShownStatistic(level.sd),
                  IntervalText(level.lower, level.upper)});
  AddHeading(table, {"3. Tukey simultaneous comparisons (95%)"});
  // Every pair of levels takes a studentized range integral; beyond
  // kMostTukeyLevels levels (a factor column of near-unique values) the
  // pairs are too many to read or to wait for.
  if (fit.levels.size() > kMostTukeyLevels) {
    table.AddRow({"Comparisons are shown for at most " + std::to_string(kMostTukeyLevels) + " levels"});
  } else {
    double critical = 0.0;
    const auto comparisons = TukeyComparisons(fit, 0.95, &critical);
    table.AddRow({"Studentized range q", ShownStatistic(critical)});
    AddHeading(table, {"Levels", "Difference", "SE", "Simultaneous 95% CI", "q", "Adjusted p-value"});
    for (const auto& c : comparisons)
      table.AddRow({fit.levels[c.first].name + " - " + fit.levels[c.second].name, ShownStatistic(c.difference),
                    ShownStatistic(c.se), IntervalText(c.lower, c.upper), ShownStatistic(c.q),
                    ShownPValue(c.adjustedP)});
  }
  window.table = std::move(table);

  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Interval plot (95% CI of the mean, pooled S)";
  chart.xTitle = factor_name;
  chart.yTitle = "Mean";
  shell::PlotSeries means = NamedSeries("Mean", shell::SeriesType::Points);
  for (std::size_t i = 0; i < fit.levels.size(); ++i) {
    const auto& level = fit.levels[i];
    const double x = static_cast<double>(i + 1);
    means.x.push_back(x);
    means.y.push_back(level.mean);
    shell::PlotSeries interval = NamedSeries(level.name + " 95% CI", shell::SeriesType::Line);
    interval.x.push_back(x);
    interval.x.push_back(x);
    interval.y.push_back(level.lower);
    interval.y.push_back(level.upper);
    chart.series.push_back(std::move(interval));
    chart.categories.push_back(level.name);
  }
  chart.series.push_back(std::move(means));
  return window;
}

// Checks the levels, fits them and shows the report, writing the completed
// line or, for levels it cannot use, the refusal and the cancel line.
void FitAndShow(shell::Host& host, const worksheet::Worksheet& sheet, const OnewaySettings& settings);

}  // namespace

Oneway::Oneway(std::vector<BlockColumn> columns)
    : ColumnChoiceDialog("Oneway", "One-way ANOVA", std::move(columns)) {
  AddOptionButton("Unstacked", "layout", true).caption = "Groups in columns";
  AddOptionButton("Stacked", "layout", false).caption = "Response and factor columns";
  AddColumnBox("ResponseColumn", 0, "Response");
  AddColumnBox("FactorColumn", 1, "Factor");
  AddOkCancel();
  UpdateBoxes();
}

void Oneway::UpdateBoxes() {
  const bool stacked = Control("Stacked").checked;
  MutableControl("ResponseColumn").enabled = stacked;
  MutableControl("FactorColumn").enabled = stacked;
}

void Oneway::OnClick(const std::string& control) {
  if (control == "Unstacked" || control == "Stacked") UpdateBoxes();
}

bool Oneway::OnOk(shell::Host& host) {
  if (!ResolveColumns(host)) return false;
  result_.stacked = Control("Stacked").checked;
  if (result_.stacked) {
    result_.responseColumn = ChosenColumns()[0];
    result_.factorColumn = ChosenColumns()[1];
  }
  return true;
}

std::unique_ptr<shell::DialogModel> MakeOneway() { return std::make_unique<Oneway>(); }

void OnewayView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host)) return;
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return;
  const auto columns = ColumnsOfBlock(*sheet, host.CurrentSelection());
  host.Log().AppendSessionLine(kLines.Starting());
  Oneway dialog(columns);
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  if (settings->stacked && columns.size() < 2) {
    host.Refuse(worksheet::messages::kSelectTwoColumns);
    host.Log().AppendSessionLine(kLines.cancel);
    return;
  }
  FitAndShow(host, *sheet, *settings);
}

void OnewayOfDesign(shell::Host& host, const worksheet::Worksheet& sheet, long response_column, long factor_column,
                    long first_row, long last_row) {
  host.CurrentSelection() = {std::min(response_column, factor_column), std::max(response_column, factor_column),
                             first_row, last_row, 1, 1, {}, 0};
  host.Log().AppendSessionLine(kLines.Starting());
  FitAndShow(host, sheet, {true, response_column, factor_column});
}

namespace {

void FitAndShow(shell::Host& host, const worksheet::Worksheet& sheet, const OnewaySettings& settings) {
  const auto levels = ReadLevels(sheet, host.CurrentSelection(), settings);
  if (const auto refusal = Check(levels)) {
    host.Refuse(*refusal);
    host.Log().AppendSessionLine(kLines.cancel);
    return;
  }
  const OneWayFit fit = FitOneWay(levels);
  const std::string factor_name =
      settings.stacked ? sheet.ColumnHeader(settings.factorColumn) : std::string("Factor");
  // Numbers beyond a double (values near 1e308) end in the failure path.
  shell::ShowResultOrFail(host, MakeReport(fit, factor_name), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace

}  // namespace orvik::analyses
