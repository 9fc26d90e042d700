#pragma once

#include <qcustomplot.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shell/chart_series.h"

namespace orvik::gui {

// The text of a click on point `number` (1-based, in the chart's first
// series) of the chart named `chart_name`, or nothing when that chart shows
// no point information.
using PointInfoSource = std::function<std::optional<std::string>(const std::string& chart_name, long number)>;

// The font of chart texts: sized in pixels.
QFont ChartFont(int pixels, bool bold = false);

// One chart of a result window, drawn from the core's description. It keeps
// the description, so the chart property dialog can redraw it, and asks its
// window's record what a click on a point shows.
class ChartView : public QCustomPlot {
  Q_OBJECT

 public:
  // Without a `point_info` source, clicks show nothing.
  explicit ChartView(const shell::ChartSeries& chart, PointInfoSource point_info = {}, QWidget* parent = nullptr);

  const shell::ChartSeries& Description() const { return chart_; }
  // Draws `chart` in place of the present description.
  void Draw(const shell::ChartSeries& chart);

  // What the user changes in the chart property dialog.
  struct Look {
    QColor lineColor;
    QCPScatterStyle::ScatterShape pointShape = QCPScatterStyle::ssCircle;
    Qt::PenStyle lineStyle = Qt::SolidLine;
    bool gridLines = true;
  };
  Look CurrentLook() const { return look_; }
  void SetLook(const Look& look);

  bool ShowsPointInfo() const { return info_ != nullptr; }
  // Shows the information of point `number` (1-based) of the first series,
  // as a click on it does; returns the text shown, empty when the chart has
  // none for that point.
  QString ShowPointInfo(long number);
  QString PointInfo() const;

 private:
  void OnPlottableClick(QCPAbstractPlottable* plottable, int index);

  shell::ChartSeries chart_;
  PointInfoSource point_info_;
  Look look_;
  QCPItemText* info_ = nullptr;
  // For each plottable drawn, the index of its series in the description.
  QHash<QCPAbstractPlottable*, int> series_of_;
  // The graph of the first series' marked points, drawn over the series, and
  // the point number of each of its markers: a click on a marked point lands
  // on this graph.
  QCPAbstractPlottable* first_marks_ = nullptr;
  std::vector<long> first_marked_numbers_;
};

// The charts of a result window one above the other, as for the screen:
// the widest chart's width and the sum of the heights, a chart not yet
// shown counting 640 x 400.
QSize StackedSize(const std::vector<ChartView*>& charts);
// Draws the charts stacked into StackedSize(charts) logical pixels.
void PaintCharts(QCPPainter& painter, const std::vector<ChartView*>& charts);
// Saves the charts stacked as one picture, the format chosen by the file's
// extension: .png, .jpg or .jpeg, .svg, .pdf. False when the file cannot be
// written or the extension is none of these.
bool SaveCharts(const std::vector<ChartView*>& charts, const QString& path);

}  // namespace orvik::gui
