#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shell/chart_presentation.h"
#include "shell/chart_series.h"
#include "shell/command_run.h"
#include "shell/result_table.h"

namespace orvik::shell {

enum class WindowKind {
  ControlForm,  // control charts: ChartOne, ChartTwo and the grid DataView
  DataChart,    // graphs and capability: DataChartView and the grid DataView
  DOEDoc,       // a design sheet, where it is reported as a window (orvik-cli)
};

const char* WindowKindName(WindowKind kind);

// One result window as an analysis fills it; the host shows it.
struct ResultWindow {
  WindowKind kind = WindowKind::DataChart;
  std::string title;
  std::vector<ChartSeries> charts;
  std::optional<ResultTable> table;  // DataView
  // The tool key of the command that made the window ("mnuBarX-R"), so the
  // window can offer the given-limits dialog and run the command again.
  std::string commandKey;
  // How the window was made: its command's data and dialog answers, so it
  // can be drawn again (given limits) and saved with its project. Null for
  // windows whose making is not known (older project files).
  std::shared_ptr<const CommandRun> run;
  // The look the user gave its charts, one entry per restyled chart.
  std::vector<ChartPresentation> presentation;

  ChartSeries& Chart(const std::string& name);
  // Whether the grid, a plotted value, a line or a label holds a number that
  // is not finite. No analysis shows such a window: it takes its run-time
  // failure path instead.
  bool ShowsNonFiniteNumber() const;
};

// A control chart window with its two charts "ChartOne" and "ChartTwo"
// (a one-chart command leaves ChartTwo out) and its grid.
ResultWindow MakeControlForm(std::string title, bool two_charts);
// A graph window with its chart "DataChartView" and its grid.
ResultWindow MakeDataChart(std::string title);

}  // namespace orvik::shell
