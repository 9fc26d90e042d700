#pragma once

#include <qcustomplot.h>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shell/chart_presentation.h"
#include "shell/chart_series.h"

namespace orvik::gui {

// The text of a click on point `number` (1-based, in the chart's first
// series) of the chart named `chart_name`, or nothing when that chart shows
// no point information.
using PointInfoSource = std::function<std::optional<std::string>(const std::string& chart_name, long number)>;

// The font of chart texts: sized in pixels, in the program's chart font
// unless a family is named.
QFont ChartFont(int pixels, bool bold = false, const QString& family = {});

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

  // What the user set in the chart property dialog; the chart is drawn
  // again in it at once.
  const shell::ChartPresentation& Presentation() const { return presentation_; }
  void SetPresentation(const shell::ChartPresentation& presentation);
  // The style series `index` is drawn in, every field filled: the user's
  // settings over the analysis's own.
  shell::SeriesPresentation SeriesStyle(std::size_t index) const;

  // The view as drawn (or as the window aligned it) is the one Reset View
  // goes back to after zooming and panning.
  void RememberView();
  void ResetView();
  // The room right of the plot that the limit lines' labels take, as drawn.
  int LabelMargin() const { return label_margin_; }

  bool ShowsPointInfo() const { return info_ != nullptr; }
  // Shows the information of point `number` (1-based) of the first series,
  // as a click on it does; returns the text shown, empty when the chart has
  // none for that point.
  QString ShowPointInfo(long number);
  QString PointInfo() const;

 protected:
  // Hovering over a point tells what a click on it tells.
  void mouseMoveEvent(QMouseEvent* event) override;
  // A drag pans; with Ctrl or Shift held it draws a rubber band to zoom to.
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void OnPlottableClick(QCPAbstractPlottable* plottable, int index, QMouseEvent* event);
  // The text of a data point under `position`, or empty.
  QString PointTextAt(const QPointF& position) const;
  void ApplyAxisLook(QCPAxis* axis, const shell::AxisPresentation& look, bool numeric_ticks);

  shell::ChartSeries chart_;
  PointInfoSource point_info_;
  shell::ChartPresentation presentation_;
  std::array<QCPRange, 3> home_;  // x, y and right-hand y ranges
  int label_margin_ = 0;
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
  std::vector<std::pair<QCPGraph*, QCPScatterStyle>> dense_;  // with the markers shown zoomed in
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

// The style the analysis draws series `index` of `chart` in, every field
// filled.
shell::SeriesPresentation DefaultSeriesStyle(const shell::ChartSeries& chart, std::size_t index);

// The charts of a result window one above the other, as for the screen:
// the widest chart's width and the sum of the heights, a chart not yet
// shown counting 640 x 400.
QSize StackedSize(const std::vector<ChartView*>& charts);
// Draws the charts stacked into StackedSize(charts) logical pixels.
void PaintCharts(QCPPainter& painter, const std::vector<ChartView*>& charts);
// The same into `size` logical pixels, each chart keeping its share of the height.
void PaintCharts(QCPPainter& painter, const std::vector<ChartView*>& charts, QSize size);
// The size of a saved picture: its width and height in pixels at its
// resolution. The charts are laid out at width and height times 96 / dpi
// screen pixels and scaled up, so that a higher resolution gives finer
// lines and text, not smaller ones. Vector files (SVG, PDF) are as large in
// inches as the raster picture would print.
struct PictureSize {
  int width = 0;
  int height = 0;
  int dpi = 192;
};
// Twice the stacked size at 192 dots per inch: sharp when printed.
PictureSize DefaultPictureSize(const std::vector<ChartView*>& charts);
// Saves the charts stacked as one picture, the format chosen by the file's
// extension: .png, .jpg or .jpeg, .bmp, .svg, .pdf. False when the file
// cannot be written or the extension is none of these.
bool SaveCharts(const std::vector<ChartView*>& charts, const QString& path);
bool SaveCharts(const std::vector<ChartView*>& charts, const QString& path, const PictureSize& size);

}  // namespace orvik::gui
