#include "shell/result_window.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace orvik::shell {

const char* WindowKindName(WindowKind kind) {
  switch (kind) {
    case WindowKind::ControlForm: return "ControlForm";
    case WindowKind::DataChart: return "DataChart";
    case WindowKind::DOEDoc: return "DOEDoc";
  }
  return "DataChart";
}

ChartSeries& ResultWindow::Chart(const std::string& name) {
  for (auto& chart : charts)
    if (chart.name == name) return chart;
  throw std::out_of_range("result window has no chart " + name);
}

bool ResultWindow::ShowsNonFiniteNumber() const {
  const auto finite = [](const NumberSeries& numbers) {
    const auto& values = numbers.Values();
    return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
  };
  for (const ChartSeries& chart : charts) {
    for (const PlotSeries& series : chart.series)
      if (!finite(series.x) || !finite(series.y)) return true;
    for (const ChartLine& line : chart.lines)
      if (!std::isfinite(line.value) || ShowsNonFiniteText(line.label)) return true;
    for (const ChartLabel& label : chart.labels)
      if (ShowsNonFiniteText(label.text) || (label.x && !std::isfinite(*label.x)) ||
          (label.y && !std::isfinite(*label.y)))
        return true;
  }
  return table && table->ShowsNonFiniteNumber();
}

ResultWindow MakeControlForm(std::string title, bool two_charts) {
  ResultWindow window;
  window.kind = WindowKind::ControlForm;
  window.title = std::move(title);
  window.table = ResultTable{};
  window.charts.emplace_back().name = "ChartOne";
  if (two_charts) window.charts.emplace_back().name = "ChartTwo";
  return window;
}

ResultWindow MakeDataChart(std::string title) {
  ResultWindow window;
  window.kind = WindowKind::DataChart;
  window.title = std::move(title);
  window.table = ResultTable{};
  window.charts.emplace_back().name = "DataChartView";
  return window;
}

}  // namespace orvik::shell
