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
#include "worksheet/delimited_cells.h"
#include "worksheet/sheet_edits.h"

namespace orvik::gui {

namespace {

QColor ToColor(shell::Rgb rgb) {
  return QColor((rgb.value >> 16) & 0xFF, (rgb.value >> 8) & 0xFF, rgb.value & 0xFF);
}

bool HasHeading(const shell::ResultTable& table) {
  return std::any_of(table.columns.begin(), table.columns.end(), [](const std::string& c) { return !c.empty(); });
}

}  // namespace

ResultWindowWidget::ResultWindowWidget(const shell::ResultWindow& window, QWidget* parent)
    : QWidget(parent), record_(window) {
  const bool control = window.kind == shell::WindowKind::ControlForm;
  setObjectName(QString::fromLatin1(shell::WindowKindName(window.kind)));
  setWindowTitle(QString::fromStdString(window.title));
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(control ? QStringLiteral("ControlTab") : QStringLiteral("DataChartTab"));

  // A window without charts (descriptive statistics) shows its grid alone.
  auto* split = window.charts.empty() ? nullptr : new QSplitter(Qt::Vertical);
  for (const shell::ChartSeries& chart : window.charts) {
    auto* view = new ChartView(chart, [this](const std::string& name, long number) {
      return commands::PointInformation(record_, name, number);
    });
    view->installEventFilter(this);
    split->addWidget(view);
    charts_.push_back(view);
  }
  // Charts stacked in one window share their sample axis, so that sample k
  // stands at the same place in each.
  if (charts_.size() > 1) {
    QCPRange shared = charts_.front()->xAxis->range();
    for (ChartView* chart : charts_) shared.expand(chart->xAxis->range());
    for (ChartView* chart : charts_) chart->xAxis->setRange(shared);
    // Their plots line up as well: the right margins (limit labels) are
    // fixed, so each takes the widest; the left margins follow the tick
    // labels, so after each layout the narrower ones are raised to the
    // widest. Margins only grow, so this settles after one pass.
    int right = 0;
    for (ChartView* chart : charts_) right = std::max(right, chart->axisRect()->margins().right());
    for (ChartView* chart : charts_) {
      if (right == 0 || chart->yAxis2->visible()) continue;
      chart->axisRect()->setAutoMargins(QCP::msLeft | QCP::msTop | QCP::msBottom);
      chart->axisRect()->setMargins(QMargins(0, 0, right, 0));
    }
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

  grid_ = new QTableWidget;
  grid_->setObjectName(QStringLiteral("DataView"));
  grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  if (window.table) {
    const shell::ResultTable& table = *window.table;
    std::size_t width = table.columns.size();
    for (const auto& row : table.rows) width = std::max(width, row.size());
    grid_->setColumnCount(static_cast<int>(width));
    grid_->setRowCount(static_cast<int>(table.rows.size()));
    if (HasHeading(table)) {
      QStringList heading;
      for (const auto& column : table.columns) heading << QString::fromStdString(column);
      while (heading.size() < static_cast<qsizetype>(width)) heading << QString();
      grid_->setHorizontalHeaderLabels(heading);
    } else {
      grid_->horizontalHeader()->hide();
    }
    if (table.background) {
      QPalette palette = grid_->palette();
      palette.setColor(QPalette::Base, ToColor(*table.background));
      grid_->setPalette(palette);
    }
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
      const shell::RowStyle& style = table.StyleOfRow(r);
      for (std::size_t c = 0; c < table.rows[r].size(); ++c) {
        auto* item = new QTableWidgetItem(QString::fromStdString(table.rows[r][c]));
        if (style.background) item->setBackground(ToColor(*style.background));
        if (style.foreground) item->setForeground(ToColor(*style.foreground));
        if (style.bold) {
          QFont font = item->font();
          font.setBold(true);
          item->setFont(font);
        }
        grid_->setItem(static_cast<int>(r), static_cast<int>(c), item);
      }
    }
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
      chart->setContextMenuPolicy(Qt::ActionsContextMenu);
      chart->addAction(action);
    }
  }
  layout->addWidget(tabs_);
  resize(720, control && charts_.size() > 1 ? 620 : 480);
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
    if (HasHeading(*record_.table)) cells.push_back(record_.table->columns);
    for (const auto& row : record_.table->rows) cells.push_back(row);
  }
  return QString::fromStdString(worksheet::FormatDelimited(cells, '\t'));
}

}  // namespace orvik::gui
