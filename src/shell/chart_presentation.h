#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/result_table.h"

namespace orvik::shell {

// How a chart is drawn beyond what its analysis describes: the settings of
// the chart property dialog. Plain values only, so that the result window
// keeps them with its record, project files save them and a window drawn
// again (given limits) takes them over. An unset field draws as the
// analysis made the chart.

enum class LineStyle { Solid, Dash, Dot, DashDot, None };
enum class MarkerShape { Circle, Disc, Square, Diamond, Triangle, Cross, Plus, Star, None };
// Automatic: the chart's own legend (marked points, curves over bars) under
// the plot; Hidden: none; the corners: every series named, inside the plot.
enum class LegendPlace { Automatic, Hidden, TopRight, TopLeft, BottomRight, BottomLeft, Below };

struct AxisPresentation {
  std::optional<std::string> title;  // replaces the analysis's axis title
  // A fixed range instead of one that holds every point and line.
  bool fixedRange = false;
  double minimum = 0.0;
  double maximum = 1.0;
  // Logarithmic scale; drawn only while the axis' range is positive.
  bool logScale = false;
  int decimals = -1;  // tick label decimals; -1 chooses them automatically
  friend bool operator==(const AxisPresentation&, const AxisPresentation&) = default;
};

// One plotted series, by its place in the chart's description.
struct SeriesPresentation {
  std::optional<Rgb> lineColor;
  std::optional<double> lineWidth;  // in pixels
  std::optional<LineStyle> lineStyle;
  std::optional<MarkerShape> marker;
  std::optional<double> markerSize;  // in pixels
  std::optional<Rgb> markerColor;
  friend bool operator==(const SeriesPresentation&, const SeriesPresentation&) = default;
};

struct ChartPresentation {
  std::string chart;  // the chart's name: "ChartOne", "DataChartView"
  std::optional<std::string> title;
  AxisPresentation x;
  AxisPresentation y;
  std::string fontFamily;  // empty: the program's chart font
  // Text sizes in pixels: the title, the axis titles, the tick labels and
  // the other texts (limit labels, legend).
  int titleSize = 15;
  int axisTitleSize = 12;
  int tickLabelSize = 12;
  bool gridLines = true;
  LegendPlace legend = LegendPlace::Automatic;
  std::vector<SeriesPresentation> series;
  // The limit lines and their labels.
  std::optional<Rgb> limitColor;
  std::optional<LineStyle> limitStyle;
  int limitDecimals = -1;  // the number in each label; -1 keeps the label as made
  friend bool operator==(const ChartPresentation&, const ChartPresentation&) = default;
};

// Chart `chart` in its analysis's own look: nothing set.
inline ChartPresentation PlainPresentation(std::string chart) {
  ChartPresentation plain;
  plain.chart = std::move(chart);
  return plain;
}

// A limit line's label "UCL= 12.3456" with its number written to `decimals`
// places: the number after the last '=' or, without one, the label's last
// word when that is a number. A label without a number, or decimals < 0,
// stays as it is.
std::string RelabelLimit(const std::string& label, double value, int decimals);

}  // namespace orvik::shell
