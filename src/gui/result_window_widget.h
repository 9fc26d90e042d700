#pragma once

#include <QPushButton>
#include <QTableView>
#include <QTabWidget>
#include <QWidget>
#include <vector>

#include "shell/result_window.h"

namespace orvik::gui {

class ChartView;

// A result window (`ControlForm` or `DataChart`) showing one core result
// record: its charts on the first tab, its grid `DataView` on the second.
class ResultWindowWidget : public QWidget {
  Q_OBJECT

 public:
  explicit ResultWindowWidget(shell::ResultWindow window, QWidget* parent = nullptr);

  const shell::ResultWindow& Record() const { return record_; }
  const std::vector<ChartView*>& Charts() const { return charts_; }
  // The chart that commands act on: the one last clicked, else the first.
  ChartView* ActiveChart() const;
  QTableView* DataView() const { return grid_; }
  // The text the grid shows in a cell.
  QString CellText(int row, int column) const;
  // Whether the window is a control chart that its command can draw again
  // with given limits: a ControlForm that knows its tool key.
  bool OffersGivenLimits() const;
  // The "Given limits..." button over the charts; null when the window
  // does not offer them.
  QPushButton* GivenLimitsButton() const { return given_limits_; }
  // The grid as tab-separated text, heading row first when it has one.
  QString GridText() const;
  // Restyles the chart `look.chart` names: the window's record keeps the
  // look (project files save it) and the chart is drawn in it at once. A
  // look with nothing set drops the chart's entry.
  void SetPresentation(const shell::ChartPresentation& look);

 signals:
  // The user asked for given limits through the button or a chart's
  // context menu; `key` is the tool key that made the window.
  void givenLimitsRequested(const QString& key);
  void ruleSettingsRequested();
  // A chart was restyled: the project has changed.
  void presentationChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Stacked charts line up: they share their sample axis, so that sample k
  // stands at the same place in each (a chart the user gave a fixed x range
  // keeps it), and their plots have the same left and right edges.
  void AlignCharts();

  shell::ResultWindow record_;
  QTabWidget* tabs_ = nullptr;
  QTableView* grid_ = nullptr;
  std::vector<ChartView*> charts_;
  ChartView* active_ = nullptr;
  bool stacked_ = false;  // the charts stand one above the other
  QPushButton* given_limits_ = nullptr;
};

}  // namespace orvik::gui
