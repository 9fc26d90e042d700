#include "capability/pareto_chart.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "shell/analysis_input.h"
#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "worksheet/cell_number.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kStartingLine = "Pareto chart generation is starting";
constexpr const char* kCompletedLine = "Pareto chart generation is completed";
constexpr const char* kCancelLine = "Cancel pareto chart generation";
constexpr const char* kConfirmColumns = "Confirm selected columns data";
constexpr const char* kSelectData = "Please, select data";
constexpr const char* kOther = "Other";

// What the two columns of the block hold.
struct ParetoInput {
  std::vector<ParetoEntry> entries;
  bool anyCell = false;       // the block holds any text at all
  bool unreadable = false;    // a quantity that is not a number, or negative
};

// Reads the block's rows top to bottom, whichever way it was dragged, so
// that equal quantities keep the order the user sees. The item is the left
// column of the two, the quantity the right one. A row without a quantity
// is left out; a quantity that is text or negative cannot be charted.
ParetoInput ReadParetoColumns(const worksheet::Worksheet& sheet, const worksheet::DataSelection& block) {
  ParetoInput input;
  // A block that starts below the data (its end clipped above its start)
  // holds no rows.
  if (worksheet::RowsToWalk(block) == 0) return input;
  const long item_col = block.columnStep > 0 ? block.firstColumn : block.firstColumn - 1;
  const long quantity_col = item_col + 1;
  const long top = std::min(block.firstRow, block.lastRow);
  // Rows past the data are empty; they add nothing.
  const long bottom = std::min(std::max(block.firstRow, block.lastRow), sheet.DataRowCnt());
  for (long row = top; row <= bottom; ++row) {
    const std::string item = worksheet::TrimBlanks(sheet.Text(row, item_col));
    const std::string_view quantity_text = sheet.Text(row, quantity_col);
    if (!item.empty() || !quantity_text.empty()) input.anyCell = true;
    if (worksheet::TrimBlanks(quantity_text).empty()) continue;
    const std::optional<double> quantity = worksheet::ParseCellNumber(quantity_text);
    if (!quantity || *quantity < 0) {
      input.unreadable = true;
      continue;
    }
    input.entries.push_back({item, *quantity});
  }
  return input;
}

}  // namespace

std::vector<ParetoRow> ParetoRows(const std::vector<ParetoEntry>& entries) {
  std::vector<ParetoRow> rows;
  stats::CompensatedSum other, sum;
  for (const auto& entry : entries) {
    sum.Add(entry.quantity);
    if (entry.item == kOther) other.Add(entry.quantity);
    else rows.push_back({entry.item, entry.quantity});
  }
  const double total = sum.Value();
  std::stable_sort(rows.begin(), rows.end(),
                   [](const ParetoRow& a, const ParetoRow& b) { return a.quantity > b.quantity; });
  if (other.Value() > 0) rows.push_back({kOther, other.Value()});

  // Compensated like the total, so that the cumulative quantities and their
  // percentages do not drift from it.
  stats::CompensatedSum running;
  for (auto& row : rows) {
    running.Add(row.quantity);
    row.cumulativeQuantity = running.Value();
    row.percent = Round(row.quantity / total * 100, 4);
    row.cumulativePercent = Round(row.cumulativeQuantity / total * 100, 4);
  }
  return rows;
}

shell::ResultWindow ParetoSelectView(const std::vector<ParetoRow>& rows) {
  shell::ResultWindow window = shell::MakeDataChart("Pareto chart");
  shell::ResultTable& table = *window.table;
  table.columns = {"No.", "Item", "Quantity", "Percent(%)", "Cumulative quantity", "Cumulative percent(%)"};
  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Pareto Chart";
  chart.xTitle = "Item";
  chart.yTitle = "Quantity";
  chart.y2Title = "Cumulative percent(%)";
  shell::PlotSeries bars;
  bars.name = "Quantity";
  bars.type = shell::SeriesType::Bar;
  shell::PlotSeries cumulative;
  cumulative.name = "Cumulative percent(%)";
  cumulative.type = shell::SeriesType::Line;
  cumulative.onSecondAxis = true;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ParetoRow& row = rows[i];
    table.AddRow({std::to_string(i + 1), row.item, FormatNumber(row.quantity), FormatNumber(row.percent),
                  FormatNumber(row.cumulativeQuantity), FormatNumber(row.cumulativePercent)});
    const double position = static_cast<double>(i + 1);
    bars.x.push_back(position);
    bars.y.push_back(row.quantity);
    cumulative.x.push_back(position);
    cumulative.y.push_back(row.cumulativePercent);
    chart.categories.push_back(row.item);
  }
  chart.series.push_back(std::move(bars));
  chart.series.push_back(std::move(cumulative));
  return window;
}

void ParetoSelection(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  if (!shell::RequireColumnSpan(host, 2, worksheet::messages::kSelectTwoColumns)) return;
  const ParetoInput input = ReadParetoColumns(*host.ActiveWorksheet(), host.CurrentSelection());
  if (!input.anyCell) {
    host.Refuse(kSelectData);
    return;
  }
  if (input.entries.empty() && !input.unreadable) {
    host.Refuse(worksheet::messages::kSelectValidDataShort);
    return;
  }

  host.Log().AppendSessionLine(kStartingLine);
  // The same compensated total as the percentages are taken of.
  stats::CompensatedSum sum;
  for (const auto& entry : input.entries) sum.Add(entry.quantity);
  const double total = sum.Value();
  if (input.unreadable || !(total > 0) || !std::isfinite(total)) {
    host.Refuse(kConfirmColumns);
    host.Log().AppendSessionLine(kCancelLine);
    return;
  }
  shell::ShowResultOrFail(host, ParetoSelectView(ParetoRows(input.entries)), kConfirmColumns, kCancelLine);
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::capability
