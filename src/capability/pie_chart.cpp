#include "capability/pie_chart.h"

#include <algorithm>
#include <cmath>

#include "capability/graph_table.h"
#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"

namespace orvik::capability {

namespace {

using stats::FormatNumber;

constexpr const char* kStartingLine = "Pie chart generation is starting";
constexpr const char* kCompletedLine = "Pie chart generation is completed";
constexpr const char* kCancelLine = "Cancel pie chart generation";

std::string PercentText(double hundredths) { return FormatNumber(hundredths / 100.0); }

}  // namespace

PieForm::PieForm(const PieSettings& previous) : AnalysisDialog("PieForm", "Pie chart", kCancelLine) {
  AddCheckBox("SortSlices", previous.SortSlices).caption = "Sort slices, largest first";
  AddCheckBox("ExplodeLargest", previous.ExplodeLargest).caption = "Explode the largest slice";
  AddOkCancel();
}

bool PieForm::OnOk(shell::Host& /*host*/) {
  result_.SortSlices = Control("SortSlices").checked;
  result_.ExplodeLargest = Control("ExplodeLargest").checked;
  return true;
}

std::unique_ptr<shell::DialogModel> MakePieForm() { return std::make_unique<PieForm>(); }

void SetPercentages(std::vector<PieSlice>& slices) {
  double total = 0.0;
  for (const auto& s : slices) total += s.value;
  long assigned = 0;
  std::vector<std::pair<double, std::size_t>> remainders;
  for (std::size_t i = 0; i < slices.size(); ++i) {
    const double exact = slices[i].value / total * 10000.0;
    const double whole = std::floor(exact);
    slices[i].percent = whole;
    assigned += static_cast<long>(whole);
    remainders.push_back({exact - whole, i});
  }
  std::stable_sort(remainders.begin(), remainders.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  for (std::size_t k = 0; assigned < 10000 && k < remainders.size(); ++k, ++assigned)
    slices[remainders[k].second].percent += 1.0;
}

shell::ResultWindow PieWindow(std::vector<PieSlice> slices, const PieSettings& settings) {
  SetPercentages(slices);
  if (settings.SortSlices)
    std::stable_sort(slices.begin(), slices.end(), [](const PieSlice& a, const PieSlice& b) { return a.value > b.value; });
  shell::ResultWindow window = shell::MakeDataChart("Pie chart");
  shell::ResultTable& table = *window.table;
  table.columns = {"No.", "Item", "Value", "Percent(%)"};
  double total = 0.0;
  shell::ChartSeries& chart = window.charts.front();
  chart.title = "Pie Chart";
  chart.reportsCategories = true;
  shell::PlotSeries pie;
  pie.name = "Pie chart";
  pie.type = shell::SeriesType::Pie;
  std::size_t largest = 0;
  for (std::size_t i = 0; i < slices.size(); ++i) {
    const PieSlice& s = slices[i];
    table.AddRow({std::to_string(i + 1), s.name, FormatNumber(s.value), PercentText(s.percent)});
    total += s.value;
    pie.x.push_back(static_cast<double>(i + 1));
    pie.y.push_back(s.value);
    chart.categories.push_back(s.name + " (" + PercentText(s.percent) + "%)");
    if (s.value > slices[largest].value) largest = i;
  }
  table.AddRow({"", "Total", FormatNumber(total), "100"});
  if (settings.ExplodeLargest) pie.marked.push_back(static_cast<long>(largest + 1));
  chart.series.push_back(std::move(pie));
  return window;
}

void PieView(shell::Host& host) {
  if (!shell::ResolveDataBlock(host, worksheet::messages::kSelectDataFromWorksheet)) return;
  const GraphTable table = ReadGraphTable(*host.ActiveWorksheet(), host.CurrentSelection(), true);
  if (table.columns.size() > 1) {
    host.Refuse(worksheet::messages::kSelectOneColumnOnly);
    return;
  }
  std::vector<PieSlice> slices;
  double total = 0.0;
  for (std::size_t r = 0; !table.columns.empty() && r < table.categories.size(); ++r) {
    const double v = table.columns[0][r];
    if (std::isnan(v)) continue;
    if (v < 0.0 || !std::isfinite(v)) {
      host.Refuse(worksheet::messages::kInputValidData);
      return;
    }
    slices.push_back({table.categories[r], v, 0.0});
    total += v;
  }
  if (!(total > 0.0) || !std::isfinite(total)) {
    host.Refuse(worksheet::messages::kSelectValidData);
    return;
  }
  host.Log().AppendSessionLine(kStartingLine);
  PieForm form(host.Settings().Last<PieSettings>());
  const auto settings = shell::AskParameters(host, form);
  if (!settings) return;
  shell::ShowResultOrFail(host, PieWindow(std::move(slices), *settings), worksheet::messages::kInputValidData,
                          kCancelLine);
  host.Log().AppendSessionLine(kCompletedLine);
}

}  // namespace orvik::capability
