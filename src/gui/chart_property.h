#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <functional>
#include <vector>

#include <qcustomplot.h>

#include "shell/chart_presentation.h"

namespace orvik::gui {

class ChartView;
class ResultWindowWidget;

// The chart property dialog `ChartProperty` for one chart of a result
// window: titles, axes (range, log scale, tick decimals), fonts, grid lines,
// legend, each series' line and markers, and the limit lines. Apply and OK
// restyle the chart at once through its window, which keeps the look;
// Cancel puts back the look the chart had when the dialog opened.
class ChartProperty : public QDialog {
  Q_OBJECT

 public:
  ChartProperty(ResultWindowWidget& window, ChartView& chart, QWidget* parent = nullptr);

  // The look the dialog's controls describe. Only what differs from the
  // analysis's own drawing is set, so an untouched chart stays unstyled.
  shell::ChartPresentation Current() const;
  void Apply();
  void reject() override;

  // Replaces the platform colour dialog (tests): given the present colour,
  // it returns the chosen one, or an invalid colour for none.
  void SetColorChooser(std::function<QColor(const QColor&)> chooser) { choose_color_ = std::move(chooser); }

  QLineEdit* TitleEdit() const { return title_; }
  QCheckBox* GridLines() const { return grid_; }

 private:
  struct AxisControls {
    QLineEdit* title = nullptr;
    QCheckBox* automatic = nullptr;
    QDoubleSpinBox* minimum = nullptr;
    QDoubleSpinBox* maximum = nullptr;
    QCheckBox* log = nullptr;
    QSpinBox* decimals = nullptr;
  };
  QWidget* MakeChartPage();
  QWidget* MakeAxesPage();
  QWidget* MakeSeriesPage();
  QWidget* MakeLimitsPage();
  QWidget* MakeAxisBox(const QString& name, const QString& title, const shell::AxisPresentation& look,
                       const QCPAxis& axis, AxisControls& controls);
  shell::AxisPresentation AxisLook(const AxisControls& controls, const std::string& own_title) const;
  // The series page shows series `index`; its edits go to styles_.
  void ShowSeries(int index);
  void StoreSeries();
  shell::SeriesPresentation ShownSeries() const;
  QPushButton* ColorButton(const QString& name, QColor* color);
  static void Paint(QPushButton* button, const QColor& color);

  ResultWindowWidget& window_;
  ChartView& chart_;
  shell::ChartPresentation original_;
  std::function<QColor(const QColor&)> choose_color_;

  QLineEdit* title_ = nullptr;
  QFontComboBox* font_ = nullptr;
  QString initial_family_;
  QSpinBox* title_size_ = nullptr;
  QSpinBox* axis_title_size_ = nullptr;
  QSpinBox* tick_size_ = nullptr;
  QCheckBox* grid_ = nullptr;
  QComboBox* legend_ = nullptr;
  AxisControls x_;
  AxisControls y_;
  // The series page: one style per series of the chart, every field set.
  std::vector<shell::SeriesPresentation> styles_;
  int shown_series_ = -1;
  QComboBox* series_ = nullptr;
  QColor line_color_;
  QPushButton* line_color_button_ = nullptr;
  QDoubleSpinBox* line_width_ = nullptr;
  QComboBox* line_style_ = nullptr;
  QComboBox* marker_ = nullptr;
  QDoubleSpinBox* marker_size_ = nullptr;
  QColor marker_color_;
  QPushButton* marker_color_button_ = nullptr;
  bool marker_follows_line_ = true;
  // The limit lines: no colour chosen keeps each line's own.
  QColor limit_color_;
  QPushButton* limit_color_button_ = nullptr;
  QComboBox* limit_style_ = nullptr;
  QSpinBox* limit_decimals_ = nullptr;
};

}  // namespace orvik::gui
