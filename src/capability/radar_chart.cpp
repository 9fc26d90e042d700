#include "capability/radar_chart.h"

#include <algorithm>
#include <cmath>

#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"
#include "worksheet/cell_number.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;

constexpr const char* kStartingLine = "Radar chart generation is starting";
constexpr const char* kCompletedLine = "Radar chart generation is completed";

}  // namespace

RadarForm::RadarForm(const RadarSettings& previous, double largest_value)
    : AnalysisDialog("RadarForm", "Radar chart", ""), largest_(largest_value) {
  AddTextBox("Maxtxt", previous.scaleMaximum ? FormatNumber(*previous.scaleMaximum) : "").caption =
      "Scale maximum (empty: the largest value)";
  AddOkCancel();
}

bool RadarForm::OnOk(shell::Host& host) {
  const std::string& text = Control("Maxtxt").text;
  if (text.find_first_not_of(" \t") == std::string::npos) {
    result_.scaleMaximum.reset();
    return true;
  }
  const auto maximum = worksheet::ParseCellNumber(text);
  if (!maximum || !(*maximum > 0.0) || !std::isfinite(*maximum) || *maximum < largest_) {
    host.Refuse(analyses::kInvalidNumericalData);
    return false;
  }
  result_.scaleMaximum = *maximum;
  return true;
}

std::unique_ptr<shell::DialogModel> MakeRadarForm() { return std::make_unique<RadarForm>(RadarSettings{}, 0.0); }

shell::ResultWindow RadarWindow(const GraphTable& table, double scale_maximum) {
  shell::ResultWindow window = shell::MakeDataChart("Radar chart");
  shell::ResultTable& grid = *window.table;
  grid.columns = {"No.", table.labelled ? "Category" : "Row"};
  grid.columns.insert(grid.columns.end(), table.names.begin(), table.names.end());
  for (std::size_t r = 0; r < table.categories.size(); ++r) {
    std::vector<std::string> row{std::to_string(r + 1), table.categories[r]};
    for (const auto& column : table.columns) row.push_back(FormatNumber(column[r]));
    grid.AddRow(std::move(row));
  }
  grid.AddRow({"", "Scale maximum", FormatNumber(scale_maximum)});

  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Radar Chart";
  chart.categories = table.categories;
  chart.seriesLegend = true;
  chart.reportsCategories = true;
  chart.lines.push_back({shell::LineOrientation::Horizontal, scale_maximum, "", std::nullopt, false});
  for (std::size_t c = 0; c < table.columns.size(); ++c) {
    shell::PlotSeries polygon;
    polygon.name = table.names[c];
    polygon.type = shell::SeriesType::Radar;
    for (std::size_t r = 0; r < table.columns[c].size(); ++r) {
      polygon.x.push_back(static_cast<double>(r + 1));
      polygon.y.push_back(table.columns[c][r]);
    }
    chart.series.push_back(std::move(polygon));
  }
  return window;
}

void RadarView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  GraphTable table = ReadGraphTable(*host.ActiveWorksheet(), host.CurrentSelection(), true);
  if (table.improperCells > 0) {
    host.Notify(worksheet::messages::kEliminated);
    table = WithoutImproperRows(table);
  }
  if (table.columns.empty() || table.categories.size() < 3) {
    host.Refuse(worksheet::messages::kNotEnoughData);
    return;
  }
  double largest = 0.0;
  for (const auto& column : table.columns) {
    for (const double v : column) {
      if (v < 0.0 || !std::isfinite(v)) {
        host.Refuse(worksheet::messages::kInputValidData);
        return;
      }
      largest = std::max(largest, v);
    }
  }
  if (!(largest > 0.0)) {
    host.Refuse(worksheet::messages::kSelectValidData);
    return;
  }
  host.Log().AppendSessionLine(kStartingLine);
  RadarForm form(host.Settings().Last<RadarSettings>(), largest);
  const auto settings = shell::AskParameters(host, form);
  if (!settings) return;
  const double scale = settings->scaleMaximum.value_or(largest);
  shell::ShowResultOrFail(host, RadarWindow(table, scale), worksheet::messages::kInputValidData, "");
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::capability
