#include "capability/box_plot.h"

#include <algorithm>
#include <vector>

#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"
#include "stats/order_statistics.h"
#include "worksheet/cell_number.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kStartingLine = "Box-plot generation is starting";
constexpr const char* kCompletedLine = "Box-plot generation is completed";
constexpr const char* kCancelLine = "Cancel Box-plot generation";
constexpr long kMostColumns = 10;

// The numeric cells of one column of the block, walked with the row step.
std::vector<double> ColumnValues(const worksheet::Worksheet& sheet, const worksheet::DataSelection& block,
                                 long col) {
  std::vector<double> values;
  const worksheet::WalkSpan rows = worksheet::RowsWithData(sheet, block);
  for (long i = 0; i < rows.length; ++i)
    if (const auto value = worksheet::ParseCellNumber(sheet.Text(rows.At(i), col))) values.push_back(*value);
  return values;
}

}  // namespace

BoxSummary SummariseColumn(std::string heading, std::span<const double> values) {
  std::vector<double> sorted(values.begin(), values.end());
  std::sort(sorted.begin(), sorted.end());
  const double n = static_cast<double>(sorted.size());
  BoxSummary box;
  box.heading = std::move(heading);
  box.n = static_cast<long>(sorted.size());
  box.minimum = sorted.front();
  box.maximum = sorted.back();
  box.median = Round(stats::SortedMedian(sorted), 10);
  box.q1 = Round(stats::ValueAtPosition(sorted, (n + 1) / 4), 10);
  box.q3 = Round(stats::ValueAtPosition(sorted, 3 * (n + 1) / 4), 10);
  box.range = box.maximum - box.minimum;
  box.interquartileRange = Round(box.q3 - box.q1, 8);
  return box;
}

shell::ResultWindow BoxPlotWindow(const std::vector<BoxSummary>& boxes) {
  shell::ResultWindow window = shell::MakeDataChart("Box-plot");
  shell::ResultTable& table = *window.table;
  table.columns = {""};
  for (const auto& box : boxes) table.columns.push_back(box.heading);
  // The range is a difference of two values as read; ten decimals keep the
  // binary noise of the subtraction out of the grid.
  const auto row = [&boxes](const char* label, auto value_of) {
    std::vector<std::string> cells{label};
    for (const auto& box : boxes) cells.push_back(value_of(box));
    return cells;
  };
  table.AddRow(row("N", [](const BoxSummary& b) { return std::to_string(b.n); }));
  table.AddRow(row("Minimum", [](const BoxSummary& b) { return FormatNumber(b.minimum); }));
  table.AddRow(row("Q1", [](const BoxSummary& b) { return FormatNumber(b.q1); }));
  table.AddRow(row("Median", [](const BoxSummary& b) { return FormatNumber(b.median); }));
  table.AddRow(row("Q3", [](const BoxSummary& b) { return FormatNumber(b.q3); }));
  table.AddRow(row("Maximum", [](const BoxSummary& b) { return FormatNumber(b.maximum); }));
  table.AddRow(row("Range", [](const BoxSummary& b) { return FormatNumber(Round(b.range, 10)); }));
  table.AddRow(row("Interquartile range(IQR)", [](const BoxSummary& b) { return FormatNumber(b.interquartileRange); }));

  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Box-plot";
  shell::PlotSeries series;
  series.name = "Box-plot";
  series.type = shell::SeriesType::Box;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const BoxSummary& b = boxes[i];
    series.x.push_back(static_cast<double>(i + 1));
    std::vector<double>& five = series.y.Mutable();
    five.insert(five.end(), {b.minimum, b.q1, b.median, b.q3, b.maximum});
    chart.categories.push_back(b.heading);
  }
  chart.series.push_back(std::move(series));
  return window;
}

void BoxPlotView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  const worksheet::DataSelection& block = host.CurrentSelection();
  if (std::labs(block.lastColumn - block.firstColumn) + 1 > kMostColumns) {
    host.Refuse(worksheet::messages::kExceedColumns);
    return;
  }
  // Columns are read in the block's reading order; every one needs at least
  // one number (a single value makes a flat box at that value).
  const worksheet::Worksheet& sheet = *host.ActiveWorksheet();
  std::vector<BoxSummary> boxes;
  const long columns = worksheet::ColumnsToWalk(block);
  for (long i = 0, col = block.firstColumn; i < std::max(columns, 1L); ++i, col += block.columnStep) {
    // A block that starts beyond the data reads as one column without numbers.
    const std::vector<double> values = ColumnValues(sheet, block, col);
    if (values.empty()) {
      host.Refuse(worksheet::messages::kSelectValidDataShort);
      host.Log().AppendSessionLine(kCancelLine);
      return;
    }
    boxes.push_back(SummariseColumn(sheet.ColumnHeader(col), values));
  }
  host.Log().AppendSessionLine(kStartingLine);
  shell::ShowResultOrFail(host, BoxPlotWindow(boxes), worksheet::messages::kInputValidData, kCancelLine);
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::capability
