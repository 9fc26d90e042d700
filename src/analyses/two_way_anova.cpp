#include "analyses/two_way_anova.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "analyses/anova_report.h"
#include "analyses/sample_input.h"
#include "analyses/two_way_fit.h"
#include "shell/analysis_input.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"Two-way ANOVA", "Cancel two-way ANOVA"};

struct Layout {
  std::vector<std::string> rowLevels;
  std::vector<std::string> columnLevels;
  TwoWayCells cells;
  std::vector<double> values;
  bool tooManyCells = false;  // more factor combinations than values: some must be empty
};

// The levels of a factor in the order of the values, each once.
std::unordered_map<std::string, std::size_t> Levels(const std::vector<std::string>& names) {
  std::unordered_map<std::string, std::size_t> index;
  for (std::size_t i = 0; i < names.size(); ++i) index.emplace(names[i], i);
  return index;
}

Layout ReadLayout(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection,
                  const TwowaySettings& s) {
  const auto response = ColumnCells(sheet, selection, s.responseColumn);
  const auto rows = ColumnTexts(sheet, selection, s.rowFactor);
  const auto columns = ColumnTexts(sheet, selection, s.columnFactor);
  Layout layout;
  std::vector<std::size_t> used;
  std::unordered_map<std::string, std::size_t> seen_rows, seen_columns;
  for (std::size_t k = 0; k < response.size(); ++k) {
    if (std::isnan(response[k]) || rows[k].empty() || columns[k].empty()) continue;
    used.push_back(k);
    if (seen_rows.emplace(rows[k], 0).second) layout.rowLevels.push_back(rows[k]);
    if (seen_columns.emplace(columns[k], 0).second) layout.columnLevels.push_back(columns[k]);
  }
  SortLevelNames(layout.rowLevels);
  SortLevelNames(layout.columnLevels);
  for (const std::size_t k : used) layout.values.push_back(response[k]);
  // A balanced layout fills every combination, so it has at least as many
  // values as combinations; checked before the table of cells is made.
  layout.tooManyCells = layout.rowLevels.size() * layout.columnLevels.size() > used.size();
  if (layout.tooManyCells) return layout;
  const auto row_index = Levels(layout.rowLevels), column_index = Levels(layout.columnLevels);
  layout.cells.assign(layout.rowLevels.size(), std::vector<std::vector<double>>(layout.columnLevels.size()));
  for (const std::size_t k : used)
    layout.cells[row_index.at(rows[k])][column_index.at(columns[k])].push_back(response[k]);
  return layout;
}

std::optional<std::string> Check(const Layout& layout) {
  if (layout.values.empty()) return std::string(worksheet::messages::kNotEnoughData);
  if (layout.rowLevels.size() < 2 || layout.columnLevels.size() < 2) return std::string(kOneLevel);
  if (layout.tooManyCells || !IsBalanced(layout.cells)) return std::string(kUnbalanced);
  if (std::all_of(layout.values.begin(), layout.values.end(), [&](double v) { return v == layout.values.front(); }))
    return std::string(worksheet::messages::kAllDataSame);
  return std::nullopt;
}

shell::ChartSeries MainEffects(const std::string& name, const std::string& factor,
                               const std::vector<std::string>& levels, const std::vector<double>& means,
                               double grand) {
  shell::ChartSeries chart;
  chart.name = name;
  chart.title = "Main effects plot: " + factor;
  chart.xTitle = factor;
  chart.yTitle = "Mean";
  shell::PlotSeries series = NamedSeries(factor, shell::SeriesType::Line);
  for (std::size_t i = 0; i < means.size(); ++i) {
    series.x.push_back(static_cast<double>(i + 1));
    series.y.push_back(means[i]);
  }
  chart.series.push_back(std::move(series));
  chart.categories = levels;
  chart.lines.push_back({shell::LineOrientation::Horizontal, grand, "Mean", {}, false});
  return chart;
}

shell::ResultWindow MakeReport(const TwoWayFit& fit, const Layout& layout, const std::string& row_name,
                               const std::string& column_name) {
  shell::ResultWindow window = shell::MakeDataChart(kLines.stem);
  shell::ResultTable table = ReportGrid(6);
  std::vector<AnovaLine> lines{
      {row_name, fit.rows.df, fit.rows.ss, fit.rows.ms, fit.rows.f, fit.rows.p},
      {column_name, fit.columns.df, fit.columns.ss, fit.columns.ms, fit.columns.f, fit.columns.p}};
  if (fit.interaction)
    lines.push_back({"Interaction", fit.rowsByColumns.df, fit.rowsByColumns.ss, fit.rowsByColumns.ms,
                     fit.rowsByColumns.f, fit.rowsByColumns.p});
  lines.push_back({"Error", fit.errorDf, fit.errorSS, fit.errorMS, {}, {}});
  lines.push_back({"Total", fit.totalDf, fit.totalSS, {}, {}, {}});
  AddAnovaTable(table, fit.interaction ? "1. Analysis of variance (with interaction, " +
                                             std::to_string(fit.replicates) + " replicates per cell)"
                                       : "1. Analysis of variance (additive model, no replication)",
                lines);
  table.AddRow({"S", ShownStatistic(fit.s)});
  table.AddRow({"R-squared", ShownStatistic(fit.rSquared)});
  table.AddRow({"R-squared(adj)", ShownStatistic(fit.adjustedRSquared)});
  AddHeading(table, {"2. Means"});
  std::vector<std::string> heading{row_name + " \\ " + column_name};
  heading.insert(heading.end(), layout.columnLevels.begin(), layout.columnLevels.end());
  heading.push_back("Mean");
  AddHeading(table, heading);
  for (std::size_t i = 0; i < layout.rowLevels.size(); ++i) {
    std::vector<std::string> row{layout.rowLevels[i]};
    for (const double m : fit.cellMeans[i]) row.push_back(ShownStatistic(m));
    row.push_back(ShownStatistic(fit.rowMeans[i]));
    table.AddRow(row);
  }
  std::vector<std::string> bottom{"Mean"};
  for (const double m : fit.columnMeans) bottom.push_back(ShownStatistic(m));
  table.AddRow(bottom);
  window.table = std::move(table);

  double grand = 0.0;
  for (const double m : fit.rowMeans) grand += m / static_cast<double>(fit.rowMeans.size());
  window.charts.front() = MainEffects("DataChartView", row_name, layout.rowLevels, fit.rowMeans, grand);
  window.charts.push_back(MainEffects("ColumnMainEffects", column_name, layout.columnLevels, fit.columnMeans, grand));
  shell::ChartSeries interaction;
  interaction.name = "InteractionPlot";
  interaction.title = "Interaction plot";
  interaction.xTitle = column_name;
  interaction.yTitle = "Mean";
  interaction.categories = layout.columnLevels;
  for (std::size_t i = 0; i < layout.rowLevels.size(); ++i) {
    shell::PlotSeries series = NamedSeries(row_name + " = " + layout.rowLevels[i], shell::SeriesType::Line);
    for (std::size_t j = 0; j < layout.columnLevels.size(); ++j) {
      series.x.push_back(static_cast<double>(j + 1));
      series.y.push_back(fit.cellMeans[i][j]);
    }
    interaction.series.push_back(std::move(series));
  }
  window.charts.push_back(std::move(interaction));
  return window;
}

// Checks the layout, fits it and shows the report with the completed line,
// or the refusal and the cancel line.
void FitAndShow(shell::Host& host, const worksheet::Worksheet& sheet, const TwowaySettings& settings) {
  const Layout layout = ReadLayout(sheet, host.CurrentSelection(), settings);
  if (const auto refusal = Check(layout)) {
    host.Refuse(*refusal);
    host.Log().AppendSessionLine(kLines.cancel);
    return;
  }
  const TwoWayFit fit = FitTwoWay(layout.cells);
  // Numbers beyond a double (values near 1e308) end in the failure path.
  shell::ShowResultOrFail(host, MakeReport(fit, layout, sheet.ColumnHeader(settings.rowFactor),
                                   sheet.ColumnHeader(settings.columnFactor)), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace

Twoway::Twoway(std::vector<BlockColumn> columns) : ColumnChoiceDialog("Twoway", "Two-way ANOVA", std::move(columns)) {
  AddColumnBox("ResponseColumn", 0, "Response");
  AddColumnBox("RowFactor", 1, "Row factor");
  AddColumnBox("ColumnFactor", 2, "Column factor");
  AddOkCancel();
}

bool Twoway::OnOk(shell::Host& host) {
  if (!ResolveColumns(host)) return false;
  result_ = {ChosenColumns()[0], ChosenColumns()[1], ChosenColumns()[2]};
  return true;
}

std::unique_ptr<shell::DialogModel> MakeTwoway() { return std::make_unique<Twoway>(); }

void TwowayView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host)) return;
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  if (sheet == nullptr) return;
  const auto columns = ColumnsOfBlock(*sheet, host.CurrentSelection());
  if (columns.size() < 3) return host.Refuse(worksheet::messages::kSelectThreeColumns);
  host.Log().AppendSessionLine(kLines.Starting());
  Twoway dialog(columns);
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  FitAndShow(host, *sheet, *settings);
}

void TwowayOfDesign(shell::Host& host, const worksheet::Worksheet& sheet, long response_column, long row_factor,
                    long column_factor, long first_row, long last_row) {
  host.CurrentSelection() = {std::min({response_column, row_factor, column_factor}),
                             std::max({response_column, row_factor, column_factor}), first_row, last_row, 1, 1, {}, 0};
  host.Log().AppendSessionLine(kLines.Starting());
  FitAndShow(host, sheet, {response_column, row_factor, column_factor});
}

}  // namespace orvik::analyses
