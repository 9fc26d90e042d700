#include "capability/scatterplot.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "analyses/column_choice.h"
#include "analyses/correlation.h"
#include "analyses/regression_fit.h"
#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;
using stats::Round;

constexpr const char* kStartingLine = "Scatterplot generation is starting";
constexpr const char* kCompletedLine = "Scatterplot generation is completed";
constexpr const char* kCancelLine = "Cancel scatterplot generation";
constexpr const char* kEmptyGroup = "(empty)";

// "Y = 1.5 + 0.25 X", "Y = 1.5 - 0.25 X".
std::string Equation(double intercept, double slope) {
  const double b = Round(slope, 6);
  return "Y = " + FormatNumber(Round(intercept, 6)) + (b < 0 ? " - " : " + ") + FormatNumber(std::fabs(b)) + " X";
}

ScatterPairs ReadPairs(const worksheet::Worksheet& sheet, const worksheet::DataSelection& block, bool grouped) {
  // x is the left column and y the right one, whichever way the block was dragged.
  auto columns = analyses::ColumnsOfBlock(sheet, block);
  std::sort(columns.begin(), columns.end(), [](const auto& a, const auto& b) { return a.column < b.column; });
  ScatterPairs pairs;
  pairs.xName = columns[0].name;
  pairs.yName = columns[1].name;
  const std::vector<double> x = analyses::ColumnCells(sheet, block, columns[0].column);
  const std::vector<double> y = analyses::ColumnCells(sheet, block, columns[1].column);
  std::vector<std::string> groups;
  if (grouped) groups = analyses::ColumnTexts(sheet, block, columns[2].column);
  for (std::size_t r = 0; r < x.size(); ++r) {
    if (std::isnan(x[r]) || std::isnan(y[r])) continue;
    pairs.x.push_back(x[r]);
    pairs.y.push_back(y[r]);
    pairs.group.push_back(!grouped ? std::string() : groups[r].empty() ? kEmptyGroup : groups[r]);
  }
  return pairs;
}

}  // namespace

DotplotForm::DotplotForm(const DotplotSettings& previous, bool three_columns)
    : AnalysisDialog("DotplotForm", "Scatterplot", kCancelLine) {
  AddCheckBox("FitLine", previous.FitLine).caption = "Fitted line (least squares)";
  auto& group = AddCheckBox("GroupColumn", three_columns);
  group.caption = "Group by the third column";
  group.enabled = three_columns;
  AddOkCancel();
}

bool DotplotForm::OnOk(shell::Host& /*host*/) {
  result_.FitLine = Control("FitLine").checked;
  result_.GroupColumn = Control("GroupColumn").checked && Control("GroupColumn").enabled;
  return true;
}

std::unique_ptr<shell::DialogModel> MakeDotplotForm() { return std::make_unique<DotplotForm>(DotplotSettings{}, false); }

shell::ResultWindow DotplotWindow(const ScatterPairs& pairs, const DotplotSettings& settings) {
  shell::ResultWindow window = shell::MakeDataChart("Scatterplot");
  const analyses::RegressionFit fit = analyses::FitLine(pairs.x, pairs.y, true);
  const analyses::PairCorrelation r = analyses::Pearson(pairs.x, pairs.y);
  double x_sum = 0.0, y_sum = 0.0;
  for (std::size_t i = 0; i < pairs.x.size(); ++i) {
    x_sum += pairs.x[i];
    y_sum += pairs.y[i];
  }
  const double n = static_cast<double>(pairs.x.size());

  shell::ResultTable& table = *window.table;
  table.columns = {"Scatterplot", "Result"};
  table.AddRow({"X", pairs.xName});
  table.AddRow({"Y", pairs.yName});
  table.AddRow({"N", std::to_string(pairs.x.size())});
  table.AddRow({"Mean of X", FormatNumber(Round(x_sum / n, 8))});
  table.AddRow({"Mean of Y", FormatNumber(Round(y_sum / n, 8))});
  table.AddRow({"Correlation coefficient(r)", FormatNumber(Round(r.r, 8))});
  table.AddRow({"Intercept", FormatNumber(Round(fit.intercept, 8))});
  table.AddRow({"Slope", FormatNumber(Round(fit.slope, 8))});
  table.AddRow({"R-Sq(%)", FormatNumber(Round(fit.rSquared * 100, 4))});

  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Scatterplot";
  chart.xTitle = pairs.xName;
  chart.yTitle = pairs.yName;
  // One series per group in the order the groups first appear.
  std::vector<std::string> order;
  for (const auto& g : pairs.group)
    if (std::find(order.begin(), order.end(), g) == order.end()) order.push_back(g);
  for (const auto& g : order) {
    shell::PlotSeries points;
    points.name = settings.GroupColumn ? g : pairs.yName;
    points.type = shell::SeriesType::Points;
    for (std::size_t i = 0; i < pairs.x.size(); ++i) {
      if (pairs.group[i] != g) continue;
      points.x.push_back(pairs.x[i]);
      points.y.push_back(pairs.y[i]);
    }
    chart.series.push_back(std::move(points));
  }
  chart.seriesLegend = settings.GroupColumn;
  if (settings.FitLine) {
    const auto [lo, hi] = std::minmax_element(pairs.x.begin(), pairs.x.end());
    shell::PlotSeries line;
    line.name = "Fitted line";
    line.type = shell::SeriesType::Line;
    line.color = shell::kRed;
    line.curve = true;
    for (const double v : {*lo, *hi}) {
      line.x.push_back(v);
      line.y.push_back(fit.intercept + fit.slope * v);
    }
    chart.series.push_back(std::move(line));
    chart.labels.push_back({Equation(fit.intercept, fit.slope), std::nullopt, std::nullopt});
    chart.labels.push_back({"R-Sq = " + FormatNumber(Round(fit.rSquared * 100, 2)) + "%", std::nullopt, std::nullopt});
  }
  return window;
}

void DotplotView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  const worksheet::Worksheet& sheet = *host.ActiveWorksheet();
  const worksheet::DataSelection& block = host.CurrentSelection();
  const long span = std::labs(block.lastColumn - block.firstColumn) + 1;
  const long with_data = static_cast<long>(analyses::ColumnsOfBlock(sheet, block).size());
  if ((span != 2 && span != 3) || with_data < 2) {
    host.Refuse(worksheet::messages::kSelectTwoColumns);
    return;
  }
  // A third column past the data holds no groups.
  const bool three_columns = span == 3 && with_data == 3;
  ScatterPairs pairs = ReadPairs(sheet, block, three_columns);
  if (pairs.x.size() < 3) {
    host.Refuse(worksheet::messages::kNotEnoughData);
    return;
  }
  const auto no_spread = [](const std::vector<double>& v) {
    return std::all_of(v.begin(), v.end(), [&](double a) { return a == v.front(); });
  };
  if (no_spread(pairs.x) || no_spread(pairs.y)) {
    host.Refuse(worksheet::messages::kAllDataSame);
    return;
  }
  host.Log().AppendSessionLine(kStartingLine);
  DotplotForm form(host.Settings().Last<DotplotSettings>(), three_columns);
  const auto settings = shell::AskParameters(host, form);
  if (!settings) return;
  if (!settings->GroupColumn)
    std::fill(pairs.group.begin(), pairs.group.end(), std::string());
  shell::ShowResultOrFail(host, DotplotWindow(pairs, *settings), worksheet::messages::kInputValidData, kCancelLine);
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::capability
