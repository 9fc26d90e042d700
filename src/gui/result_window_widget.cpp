#include "gui/result_window_widget.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "commands/result_window_actions.h"
#include "gui/chart_view.h"
#include "gui/result_grid_model.h"
#include "worksheet/delimited_cells.h"
#include "worksheet/sheet_edits.h"

namespace orvik::gui {

namespace {

QColor ToColor(shell::Rgb rgb) {
  return QColor((rgb.value >> 16) & 0xFF, (rgb.value >> 8) & 0xFF, rgb.value & 0xFF);
}

}  // namespace

ResultWindowWidget::ResultWindowWidget(shell::ResultWindow window_record, QWidget* parent)
    : QWidget(parent), record_(std::move(window_record)) {
  const shell::ResultWindow& window = record_;
  const bool control = window.kind == shell::WindowKind::ControlForm;
  setObjectName(QString::fromLatin1(shell::WindowKindName(window.kind)));
  setWindowTitle(QString::fromStdString(window.title));
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(control ? QStringLiteral("ControlTab") : QStringLiteral("DataChartTab"));

  // A window without charts (descriptive statistics) shows its grid alone.
  // The charts of a control chart window are stacked; the several charts of
  // an analysis (a fitted line and its residual plots, main effects and
  // interaction) have axes of their own and take a tab each.
  const bool tabbed = !control && window.charts.size() > 1;
  auto* split = window.charts.empty() || tabbed ? nullptr : new QSplitter(Qt::Vertical);
  for (const shell::ChartSeries& chart : window.charts) {
    auto* view = new ChartView(chart, [this](const std::string& name, long number) {
      return commands::PointInformation(record_, name, number);
    });
    for (const shell::ChartPresentation& look : record_.presentation)
      if (look.chart == chart.name) view->SetPresentation(look);
    view->installEventFilter(this);
    if (split) split->addWidget(view);
    else tabs_->addTab(view, QString::fromStdString(chart.title.empty() ? chart.name : chart.title));
    charts_.push_back(view);
  }
  stacked_ = split && charts_.size() > 1;
  if (stacked_) {
    AlignCharts();
    // The left margins follow the tick labels, so after each layout the
    // narrower ones are raised to the widest. Margins only grow, so this
    // settles after one pass.
    for (ChartView* chart : charts_) {
      connect(chart, &QCustomPlot::afterLayout, this, [this] {
        int left = 0;
        for (ChartView* each : charts_) left = std::max(left, each->axisRect()->margins().left());
        for (ChartView* each : charts_) {
          if (each->axisRect()->minimumMargins().left() >= left) continue;
          each->axisRect()->setMinimumMargins(QMargins(left, 0, 0, 0));
          each->replot(QCustomPlot::rpQueuedReplot);
        }
      });
    }
  }
  if (split) tabs_->addTab(split, control ? QStringLiteral("Control Chart") : QStringLiteral("Chart"));

  grid_ = new QTableView;
  grid_->setObjectName(QStringLiteral("DataView"));
  grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  // A window without a grid shows an empty one.
  static const shell::ResultTable kNoGrid;
  grid_->setModel(new ResultGridModel(record_.table ? *record_.table : kNoGrid, grid_));
  if (record_.table) {
    const shell::ResultTable& table = *record_.table;
    if (!table.HasHeading()) grid_->horizontalHeader()->hide();
    if (table.background) {
      QPalette palette = grid_->palette();
      palette.setColor(QPalette::Base, ToColor(*table.background));
      grid_->setPalette(palette);
    }
    // Rows keep one height, so scrolling a long grid never measures rows;
    // columns are fitted to the first rows the user sees.
    grid_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
    grid_->horizontalHeader()->setResizeContentsPrecision(200);
    grid_->resizeColumnsToContents();
  }
  tabs_->addTab(grid_, QStringLiteral("Data"));

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  if (OffersGivenLimits()) {
    const QString key = QString::fromStdString(window.commandKey);
    given_limits_ = new QPushButton(QStringLiteral("Given limits..."));
    given_limits_->setObjectName(QStringLiteral("GivenLimits"));
    given_limits_->setToolTip(QStringLiteral("Draw the chart again with control limits you give"));
    connect(given_limits_, &QPushButton::clicked, this, [this, key] { emit givenLimitsRequested(key); });
    // The button sits in the tab bar's corner, so it takes no room from the
    // charts.
    tabs_->setCornerWidget(given_limits_, Qt::TopRightCorner);
    for (ChartView* chart : charts_) {
      auto* action = new QAction(QStringLiteral("Given Control Limits..."), chart);
      action->setObjectName(QStringLiteral("miChartGivenLimits"));
      connect(action, &QAction::triggered, this, [this, key] { emit givenLimitsRequested(key); });
      auto* rules = new QAction(QStringLiteral("Rule Settings..."), chart);
      rules->setObjectName(QStringLiteral("miChartRuleSettings"));
      connect(rules, &QAction::triggered, this, [this] { emit ruleSettingsRequested(); });
      chart->setContextMenuPolicy(Qt::ActionsContextMenu);
      chart->addAction(action);
      chart->addAction(rules);
    }
  }
  layout->addWidget(tabs_);
  resize(720, control && charts_.size() > 1 ? 620 : 480);
}

void ResultWindowWidget::AlignCharts() {
  if (!stacked_) return;
  // The right margins (limit labels) are fixed, so each takes the widest;
  // the left ones are found again after the next layout.
  int right = 0;
  for (ChartView* chart : charts_) right = std::max(right, chart->LabelMargin());
  for (ChartView* chart : charts_) {
    chart->axisRect()->setMinimumMargins(QMargins());
    chart->replot(QCustomPlot::rpQueuedReplot);
    if (right == 0 || chart->yAxis2->visible()) continue;
    chart->axisRect()->setAutoMargins(QCP::msLeft | QCP::msTop | QCP::msBottom);
    chart->axisRect()->setMargins(QMargins(0, 0, right, 0));
  }
  std::vector<ChartView*> free;
  for (ChartView* chart : charts_)
    if (!chart->Presentation().x.fixedRange) free.push_back(chart);
  if (free.size() < 2) return;
  QCPRange shared = free.front()->xAxis->range();
  for (ChartView* chart : free) shared.expand(chart->xAxis->range());
  for (ChartView* chart : free) {
    chart->xAxis->setRange(shared);
    chart->RememberView();
    chart->replot(QCustomPlot::rpQueuedReplot);
  }
}

void ResultWindowWidget::SetPresentation(const shell::ChartPresentation& look) {
  auto& looks = record_.presentation;
  const auto same_chart = [&look](const shell::ChartPresentation& each) { return each.chart == look.chart; };
  looks.erase(std::remove_if(looks.begin(), looks.end(), same_chart), looks.end());
  if (look != shell::PlainPresentation(look.chart)) looks.push_back(look);
  for (ChartView* chart : charts_)
    if (chart->objectName().toStdString() == look.chart) chart->SetPresentation(look);
  AlignCharts();
  emit presentationChanged();
}

bool ResultWindowWidget::OffersGivenLimits() const {
  return commands::OffersGivenLimits(record_);
}

ChartView* ResultWindowWidget::ActiveChart() const {
  if (active_) return active_;
  return charts_.empty() ? nullptr : charts_.front();
}

bool ResultWindowWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    for (ChartView* chart : charts_)
      if (chart == watched) active_ = chart;
  }
  return QWidget::eventFilter(watched, event);
}

QString ResultWindowWidget::GridText() const {
  std::vector<std::vector<std::string>> cells;
  if (record_.table) {
    const shell::ResultTable& table = *record_.table;
    if (table.HasHeading()) cells.push_back(table.columns);
    for (std::size_t r = 0; r < table.RowCount(); ++r) cells.push_back(table.Row(r));
  }
  return QString::fromStdString(worksheet::FormatDelimited(cells, '\t'));
}

QString ResultWindowWidget::CellText(int row, int column) const {
  const QAbstractItemModel* model = grid_->model();
  return model ? model->index(row, column).data().toString() : QString();
}

}  // namespace orvik::gui
