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

 protected:
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void OnPlottableClick(QCPAbstractPlottable* plottable, int index);

  shell::ChartSeries chart_;
  PointInfoSource point_info_;
  Look look_;
  QCPItemText* info_ = nullptr;
  // For each plottable drawn, the index of its series in the description.
  QHash<QCPAbstractPlottable*, int> series_of_;
  // The marks of one kind drawn over a series: each mark's point number and
  // code, in the order of the graph's data. A click on a mark of the first
  // series lands on its graph.
  struct MarkSet {
    std::vector<long> numbers;
    std::vector<QString> codes;
    bool first = false;
    bool rule = false;  // flagged by run rules alone
  };
  void AddMarks(const shell::PlotSeries& series, const QVector<double>& x, const QVector<double>& y,
                QCPAxis* value_axis, bool first);
  QHash<QCPAbstractPlottable*, MarkSet> marks_;
  // Lines too long for point markers; zooming in shows them.
  void UpdateDensity();
  std::vector<QCPGraph*> dense_;
  // The rule letters beside flagged points, in the order of their points.
  void PlaceRuleLetters();
  std::vector<QCPItemText*> rule_letters_;
  struct LineLabel {
    QCPItemText* item;
    double value;
  };
  void PlaceLineLabels();
  std::vector<LineLabel> line_labels_;
  bool legend_below_ = false;  // the legend sits in a row under the plot
  void UpdateLegend();
  QSet<QCPAbstractPlottable*> overlays_;  // curves drawn over bars
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
