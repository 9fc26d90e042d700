#include "shell/result_window.h"

#include <stdexcept>

namespace orvik::shell {

const char* WindowKindName(WindowKind kind) {
  switch (kind) {
    case WindowKind::ControlForm: return "ControlForm";
    case WindowKind::DataChart: return "DataChart";
  }
  return "DataChart";
}

ChartSeries& ResultWindow::Chart(const std::string& name) {
  for (auto& chart : charts)
    if (chart.name == name) return chart;
  throw std::out_of_range("result window has no chart " + name);
}

ResultWindow MakeControlForm(std::string title, bool two_charts) {
  ResultWindow window{WindowKind::ControlForm, std::move(title), {}, ResultTable{}, {}};
  window.charts.emplace_back().name = "ChartOne";
  if (two_charts) window.charts.emplace_back().name = "ChartTwo";
  return window;
}

ResultWindow MakeDataChart(std::string title) {
  ResultWindow window{WindowKind::DataChart, std::move(title), {}, ResultTable{}, {}};
  window.charts.emplace_back().name = "DataChartView";
  return window;
}

}  // namespace orvik::shell
