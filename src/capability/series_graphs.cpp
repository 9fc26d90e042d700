#include "capability/series_graphs.h"

#include <cmath>

#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::capability {

namespace {

struct GraphTexts {
  const char* title;
  const char* startingLine;
  const char* completedLine;
};

GraphTexts TextsOf(SeriesGraph graph) {
  if (graph == SeriesGraph::ConnectedLine)
    return {"Connected line graph", "Connected line graph generation is starting",
            "Connected line graph generation is completed"};
  return {"Bar chart", "Bar chart generation is starting", "Bar chart generation is completed"};
}

void SeriesGraphView(shell::Host& host, SeriesGraph graph) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  GraphTable table = ReadGraphTable(*host.ActiveWorksheet(), host.CurrentSelection(), true);
  const bool any_number = table.improperCells < static_cast<long>(table.columns.size() * table.categories.size());
  if (table.columns.empty() || table.categories.empty() || !any_number) {
    host.Refuse(worksheet::messages::kSelectValidData);
    return;
  }
  if (table.improperCells > 0) {
    host.Notify(worksheet::messages::kChangeToZero);
    for (auto& column : table.columns)
      for (double& v : column)
        if (std::isnan(v)) v = 0.0;
    table.improperCells = 0;
  }
  const GraphTexts texts = TextsOf(graph);
  host.Log().AppendSessionLine(texts.startingLine);
  shell::ShowResultOrFail(host, SeriesGraphWindow(graph, table), worksheet::messages::kInputValidData, "");
  host.Log().AppendSessionLine(texts.completedLine);
}

}  // namespace

shell::ResultWindow SeriesGraphWindow(SeriesGraph graph, const GraphTable& table) {
  const GraphTexts texts = TextsOf(graph);
  shell::ResultWindow window = shell::MakeDataChart(texts.title);
  shell::ResultTable& grid = *window.table;
  grid.columns = {"No.", table.labelled ? "Category" : "Row"};
  grid.columns.insert(grid.columns.end(), table.names.begin(), table.names.end());
  for (std::size_t r = 0; r < table.categories.size(); ++r) {
    std::vector<std::string> row{std::to_string(r + 1), table.categories[r]};
    for (const auto& column : table.columns) row.push_back(stats::FormatNumber(column[r]));
    grid.AddRow(std::move(row));
  }

  shell::ChartSeries& chart = window.charts.front();
  chart.title = texts.title;
  chart.xTitle = table.labelled ? "Category" : "Row";
  chart.yTitle = "Value";
  chart.categories = table.categories;
  chart.seriesLegend = true;
  chart.reportsCategories = true;
  for (std::size_t c = 0; c < table.columns.size(); ++c) {
    shell::PlotSeries series;
    series.name = table.names[c];
    series.type = graph == SeriesGraph::Bar ? shell::SeriesType::Bar : shell::SeriesType::Line;
    for (std::size_t r = 0; r < table.columns[c].size(); ++r) {
      series.x.push_back(static_cast<double>(r + 1));
      series.y.push_back(table.columns[c][r]);
    }
    chart.series.push_back(std::move(series));
  }
  return window;
}

void ConnectedLineView(shell::Host& host) { SeriesGraphView(host, SeriesGraph::ConnectedLine); }
void BarChartView(shell::Host& host) { SeriesGraphView(host, SeriesGraph::Bar); }

}  // namespace orvik::capability
