#pragma once

#include <qcustomplot.h>

#include "shell/chart_series.h"

namespace orvik::gui {

// One chart of a result window, drawn from the core's description. It keeps
// the description, so the chart property dialog can redraw it and a click on
// a point can name the point.
class ChartView : public QCustomPlot {
  Q_OBJECT

 public:
  // `window_title` decides whether a click on a point shows its information;
  // `only_chart` tells whether the window holds this chart alone.
  ChartView(const shell::ChartSeries& chart, const QString& window_title, bool only_chart,
            QWidget* parent = nullptr);

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

  bool ShowsPointInfo() const { return point_info_; }
  // Shows the information of point `index` (0-based) of series `series`, as
  // a click on it does; returns the text shown.
  QString ShowPointInfo(int series, int index);
  QString PointInfo() const;

 private:
  void OnPlottableClick(QCPAbstractPlottable* plottable, int index);

  shell::ChartSeries chart_;
  QString window_title_;
  bool point_info_ = false;
  Look look_;
  QCPItemText* info_ = nullptr;
  // For each plottable drawn, the index of its series in the description.
  QHash<QCPAbstractPlottable*, int> series_of_;
};

// Saves `chart` as a picture, the format chosen by the file's extension:
// .png, .jpg or .jpeg, .svg, .pdf. False when the file cannot be written or
// the extension is none of these.
bool SaveChart(QCustomPlot& chart, const QString& path);

}  // namespace orvik::gui
