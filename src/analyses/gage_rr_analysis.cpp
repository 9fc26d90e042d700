#include "analyses/gage_rr_analysis.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "analyses/anova_report.h"
#include "analyses/column_choice.h"
#include "analyses/gage_rr_study.h"
#include "analyses/report_text.h"
#include "analyses/sample_input.h"
#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::analyses {

namespace {

const SessionLines kLines{"Gage R&R Analysis", kCancelGageStudy};

std::unordered_map<std::string, std::size_t> IndexOf(const std::vector<std::string>& levels) {
  std::unordered_map<std::string, std::size_t> index;
  for (std::size_t i = 0; i < levels.size(); ++i) index.emplace(levels[i], i);
  return index;
}

std::string Percent(double value) { return SixDecimals(value) + "%"; }

// One line of the table of components: its variance and standard deviation
// with their shares of the total and of the tolerance.
void AddComponent(shell::ResultTable& table, const std::string& source, double variance,
                  const GageVariances& all, const GageRRSettings& settings) {
  const double sd = std::sqrt(variance);
  const double study_var = settings.multiplier * sd;
  std::vector<std::string> row{source,
                               SixDecimals(variance),
                               Percent(100.0 * variance / all.Total()),
                               SixDecimals(sd),
                               SixDecimals(study_var),
                               Percent(100.0 * sd / std::sqrt(all.Total()))};
  if (settings.tolerance) row.push_back(Percent(100.0 * study_var / *settings.tolerance));
  table.AddRow(std::move(row));
}

void AddComponentsTable(shell::ResultTable& table, const std::string& title, const GageVariances& v,
                        bool interaction_row, bool appraiser_rows, const GageRRSettings& settings) {
  AddHeading(table, {title});
  std::vector<std::string> heading{"Source",          "VarComp",
                                   "%Contribution",   "StdDev (SD)",
                                   "Study Var (" + stats::FormatNumber(settings.multiplier) + " * SD)",
                                   "%Study Var"};
  if (settings.tolerance) heading.push_back("%Tolerance");
  AddHeading(table, std::move(heading));
  AddComponent(table, "Total Gage R&R", v.Gage(), v, settings);
  AddComponent(table, "Repeatability", v.repeatability, v, settings);
  AddComponent(table, "Reproducibility", v.Reproducibility(), v, settings);
  if (appraiser_rows) AddComponent(table, "Appraiser", v.appraiser, v, settings);
  if (interaction_row) AddComponent(table, "Appraiser*Part", v.interaction, v, settings);
  AddComponent(table, "Part-to-Part", v.part, v, settings);
  AddComponent(table, "Total Variation", v.Total(), v, settings);
  const auto ndc = DistinctCategories(v);
  table.AddRow({"Number of Distinct Categories", ndc ? std::to_string(*ndc) : "*"});
}

void AddStudyRows(shell::ResultTable& table, const GageStudy& study, const GageRRSettings& settings) {
  table.AddRow({"Parts", std::to_string(study.parts.size())});
  table.AddRow({"Appraisers", std::to_string(study.appraisers.size())});
  table.AddRow({"Trials", std::to_string(study.Trials())});
  table.AddRow({"Study variation multiplier", SixDecimals(settings.multiplier)});
  if (settings.tolerance) table.AddRow({"Process tolerance", SixDecimals(*settings.tolerance)});
}

GageVariances AnovaTables(shell::ResultTable& table, const GageStudy& study, const GageRRSettings& settings) {
  const GageAnova anova = FitGageAnova(study);
  const TwoWayFit& fit = anova.fit;
  const auto line = [](const std::string& source, const TwoWayTerm& t) {
    return AnovaLine{source, t.df, t.ss, t.ms, t.f, t.p};
  };
  AddAnovaTable(table, "1. Two-way ANOVA table with interaction",
                {line("Part", anova.part), line("Appraiser", anova.appraiser),
                 line("Appraiser*Part", anova.interaction),
                 {"Repeatability", fit.errorDf, fit.errorSS, fit.errorMS, {}, {}},
                 {"Total", fit.totalDf, fit.totalSS, {}, {}, {}}});
  table.AddRow({"Alpha to remove interaction term", SixDecimals(kInteractionPoolingLevel)});
  std::string components_title = "2. Gage R&R";
  if (anova.pooled) {
    AddAnovaTable(table, "2. Two-way ANOVA table without interaction",
                  {line("Part", anova.pooledPart), line("Appraiser", anova.pooledAppraiser),
                   {"Repeatability", anova.pooledDf, anova.pooledSS, anova.pooledMS, {}, {}},
                   {"Total", fit.totalDf, fit.totalSS, {}, {}, {}}});
    components_title = "3. Gage R&R";
  }
  AddComponentsTable(table, components_title, anova.variances, !anova.pooled, true, settings);
  return anova.variances;
}

GageVariances XbarRTables(shell::ResultTable& table, const GageStudy& study, const GageRRSettings& settings) {
  const GageXbarR xr = FitGageXbarR(study);
  AddHeading(table, {"1. Averages and ranges"});
  AddHeading(table, {"Appraiser", "Average", "Average range"});
  for (std::size_t j = 0; j < study.appraisers.size(); ++j)
    table.AddRow({study.appraisers[j], SixDecimals(xr.appraiserAverages[j]), SixDecimals(xr.appraiserRangeBars[j])});
  table.AddRow({"R-bar", SixDecimals(xr.rBar)});
  table.AddRow({"X-diff", SixDecimals(xr.xDiff)});
  table.AddRow({"Rp", SixDecimals(xr.partRange)});
  table.AddRow({"K1", SixDecimals(xr.K1)});
  table.AddRow({"K2", SixDecimals(xr.K2)});
  table.AddRow({"K3", SixDecimals(xr.K3)});
  table.AddRow({"EV", SixDecimals(xr.EV)});
  table.AddRow({"AV", SixDecimals(xr.AV)});
  table.AddRow({"PV", SixDecimals(xr.PV)});
  AddComponentsTable(table, "2. Gage R&R", xr.variances, false, false, settings);
  return xr.variances;
}

GageRows ReadRows(const worksheet::Worksheet& sheet, const worksheet::DataSelection& rows, long part_column,
                  long appraiser_column, long measurement_column) {
  return {ColumnTexts(sheet, rows, part_column), ColumnTexts(sheet, rows, appraiser_column),
          ColumnCells(sheet, rows, measurement_column)};
}

// The rows of a study sheet: the whole of its Part, Appraiser and
// Measurement columns, wherever they stand; nothing when one is missing.
std::optional<GageRows> ReadStudySheet(const worksheet::Worksheet& sheet) {
  const worksheet::SheetDesign& design = *sheet.Design();
  const auto columns = worksheet::FindDesignColumns(sheet, design);
  if (!columns) return std::nullopt;
  worksheet::DataSelection rows;
  rows.firstRow = columns->firstRow;
  rows.lastRow = columns->lastRow;
  rows.firstColumn = 1;
  rows.lastColumn = sheet.DataColCnt();
  return ReadRows(sheet, rows, columns->Of(design, "Part"), columns->Of(design, "Appraiser"),
                  columns->Of(design, design.response));
}

// The rows of the user's block: its three columns taken left to right,
// whichever way it was dragged.
GageRows ReadBlock(const worksheet::Worksheet& sheet, const worksheet::DataSelection& selection) {
  const long first = std::min(selection.firstColumn, selection.lastColumn);
  return ReadRows(sheet, selection, first, first + 1, first + 2);
}

bool IsStudySheet(const worksheet::Worksheet* sheet) {
  return sheet != nullptr && sheet->Design() && sheet->Design()->kind == kGageStudyKind;
}

}  // namespace

std::optional<GageStudy> MakeGageStudy(const GageRows& rows) {
  GageStudy study;
  std::unordered_map<std::string, std::size_t> seen_parts, seen_appraisers;
  for (std::size_t k = 0; k < rows.measurements.size(); ++k) {
    if (!std::isfinite(rows.measurements[k]) || rows.parts[k].empty() || rows.appraisers[k].empty())
      return std::nullopt;
    if (seen_parts.emplace(rows.parts[k], 0).second) study.parts.push_back(rows.parts[k]);
    if (seen_appraisers.emplace(rows.appraisers[k], 0).second) study.appraisers.push_back(rows.appraisers[k]);
  }
  // At least two trials of each combination: checked on the count before
  // the table of cells is made.
  if (study.parts.size() < 2 || study.appraisers.size() < 2 ||
      2 * study.parts.size() * study.appraisers.size() > rows.measurements.size())
    return std::nullopt;
  SortLevelNames(study.parts);
  SortLevelNames(study.appraisers);
  const auto part_index = IndexOf(study.parts), appraiser_index = IndexOf(study.appraisers);
  study.cells.assign(study.parts.size(), std::vector<std::vector<double>>(study.appraisers.size()));
  for (std::size_t k = 0; k < rows.measurements.size(); ++k)
    study.cells[part_index.at(rows.parts[k])][appraiser_index.at(rows.appraisers[k])].push_back(rows.measurements[k]);
  if (!IsBalanced(study.cells)) return std::nullopt;
  return study;
}

shell::ResultWindow GageReport(const GageStudy& study, const GageRRSettings& settings) {
  shell::ResultWindow window = shell::MakeDataChart(kLines.stem);
  shell::ResultTable table = ReportGrid(7);
  const bool anova = settings.method == GageMethod::Anova;
  AddHeading(table, {anova ? "Gage R&R Study - ANOVA Method" : "Gage R&R Study - Xbar/R Method"});
  AddStudyRows(table, study, settings);
  const GageVariances variances = anova ? AnovaTables(table, study, settings) : XbarRTables(table, study, settings);
  window.table = std::move(table);
  window.charts = GageCharts(study, variances, settings);
  return window;
}

void GageRRAnalysis(shell::Host& host) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  std::optional<GageRows> rows;
  GageRRSettings settings;
  if (IsStudySheet(sheet)) {
    rows = ReadStudySheet(*sheet);
    settings = StudySettings(*sheet->Design());
  } else {
    if (!shell::ResolveDataBlock(host)) return;
    if (!shell::RequireColumnSpan(host, 3, worksheet::messages::kSelectThreeColumns)) return;
    sheet = host.ActiveWorksheet();
    if (sheet == nullptr) return;
    rows = ReadBlock(*sheet, host.CurrentSelection());
    settings = host.Settings().Last<GageRRSettings>();
  }
  const auto study = rows ? MakeGageStudy(*rows) : std::nullopt;
  if (!study) return host.Refuse(worksheet::messages::kIncludeImproper);
  const auto& m = rows->measurements;
  if (std::all_of(m.begin(), m.end(), [&](double v) { return v == m.front(); }))
    return host.Refuse(worksheet::messages::kAllDataSame);
  host.Log().AppendSessionLine(kLines.Starting());
  shell::ShowResultOrFail(host, GageReport(*study, settings), worksheet::messages::kInputValidData, kLines.cancel);
  host.Log().AppendSessionLine(kLines.Completed());
}

}  // namespace orvik::analyses
