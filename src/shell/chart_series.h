#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/number_series.h"
#include "shell/result_table.h"

namespace orvik::shell {

enum class SeriesType { Line, Points, Bar, Box, Pie, Radar, Area };

// One plotted series. For a box series, y holds minimum, Q1, median, Q3 and
// maximum of each box in turn, and x one position per box. A pie series
// holds its slices' values in y, in drawing order from twelve o'clock
// clockwise, named by the chart's categories; a marked slice stands out
// from the pie. A radar series holds one value per spoke (the chart's
// categories) and is drawn as a closed polygon on spokes scaled from 0 to
// the chart's one horizontal line. An area series is a line filled down to
// zero (the shaded probability under a density).
struct PlotSeries {
  std::string name;
  SeriesType type = SeriesType::Line;
  NumberSeries x;
  NumberSeries y;
  std::vector<long> marked;  // 1-based numbers of the points drawn as marked
  std::optional<Rgb> color;
  bool onSecondAxis = false;  // drawn against the right-hand value axis
  // A line drawn as steps, level across each point's x from halfway to the
  // one before to halfway to the next: limits that change from sample to
  // sample. Such a series has no point markers.
  bool stepped = false;
  bool dashed = false;
  // The out-of-control code of each marked point ("* ", "B ", "* C "), when
  // the chart has run rules: beyond-limit points and rule-flagged points are
  // drawn apart. Empty: every marked point is beyond a limit.
  std::vector<std::string> markCodes;
  // A smooth curve (a density, a fitted line): a line without point markers.
  bool curve = false;
};

enum class LineOrientation { Horizontal, Vertical };

// A horizontal or vertical line across the chart with its label, for example
// a control limit "UCL= 10.5" or a specification limit.
struct ChartLine {
  LineOrientation orientation = LineOrientation::Horizontal;
  double value = 0.0;
  std::string label;
  std::optional<Rgb> color;
  bool dashed = false;
};

// A free text on the chart; without a position it goes to the chart's corner.
// With a height alone it labels that level beside the plot as a limit
// line's label stands (the last step of a stepped limit).
struct ChartLabel {
  std::string text;
  std::optional<double> x;
  std::optional<double> y;
};

// Everything one chart of a result window draws. The core describes the
// chart; the front-ends only draw or print it.
struct ChartSeries {
  std::string name;  // "ChartOne", "ChartTwo", "DataChartView"
  std::string title;
  std::string xTitle;
  std::string yTitle;
  std::string y2Title;  // the right-hand axis, used by series on it
  std::vector<PlotSeries> series;
  std::vector<ChartLine> lines;
  std::vector<ChartLabel> labels;
  // Category names for a bar chart's x axis, one per bar position 1, 2, ...
  std::vector<std::string> categories;
  // A legend naming every series (graphs of several columns); otherwise
  // only marks and curves over bars are named.
  bool seriesLegend = false;
  // Whether orvik-cli lists the categories with the chart: the graphs whose
  // categories are their data (bar, pie and radar charts). The charts
  // before them keep their output as it was.
  bool reportsCategories = false;
};

}  // namespace orvik::shell
