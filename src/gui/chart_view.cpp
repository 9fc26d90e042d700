#include "gui/chart_view.h"

#include "gui/polar_plots.h"

#include <QPdfWriter>
#include <QToolTip>

#include <QFileInfo>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>
#include <limits>

namespace orvik::gui {

namespace {

QColor ToColor(shell::Rgb rgb) {
  return QColor((rgb.value >> 16) & 0xFF, (rgb.value >> 8) & 0xFF, rgb.value & 0xFF);
}

shell::Rgb ToRgb(const QColor& color) { return shell::Rgb{static_cast<std::uint32_t>(color.rgb() & 0xFFFFFF)}; }

Qt::PenStyle PenStyleOf(shell::LineStyle style) {
  switch (style) {
    case shell::LineStyle::Solid: return Qt::SolidLine;
    case shell::LineStyle::Dash: return Qt::DashLine;
    case shell::LineStyle::Dot: return Qt::DotLine;
    case shell::LineStyle::DashDot: return Qt::DashDotLine;
    case shell::LineStyle::None: return Qt::NoPen;
  }
  return Qt::SolidLine;
}

QCPScatterStyle::ScatterShape ShapeOf(shell::MarkerShape shape) {
  switch (shape) {
    case shell::MarkerShape::Circle: return QCPScatterStyle::ssCircle;
    case shell::MarkerShape::Disc: return QCPScatterStyle::ssDisc;
    case shell::MarkerShape::Square: return QCPScatterStyle::ssSquare;
    case shell::MarkerShape::Diamond: return QCPScatterStyle::ssDiamond;
    case shell::MarkerShape::Triangle: return QCPScatterStyle::ssTriangle;
    case shell::MarkerShape::Cross: return QCPScatterStyle::ssCross;
    case shell::MarkerShape::Plus: return QCPScatterStyle::ssPlus;
    case shell::MarkerShape::Star: return QCPScatterStyle::ssStar;
    case shell::MarkerShape::None: return QCPScatterStyle::ssNone;
  }
  return QCPScatterStyle::ssCircle;
}

bool HasBars(const shell::ChartSeries& chart) {
  return std::any_of(chart.series.begin(), chart.series.end(),
                     [](const shell::PlotSeries& series) { return series.type == shell::SeriesType::Bar; });
}

const QColor kSeriesColors[] = {QColor(0, 0, 160), QColor(0, 128, 0), QColor(160, 80, 0), QColor(120, 0, 120)};

// Points are drawn with markers only while they stay legible; beyond this
// the line alone is drawn, which keeps 100,000-point charts quick to pan.
constexpr int kMaxMarkedPoints = 2000;
// Rule letters are written beside at most this many flagged points.
constexpr int kMaxRuleLabels = 150;

// The fill of bars and boxes: the series colour washed out, so that a
// saturated colour does not drown the outlines and grid lines.
QColor FillColor(const QColor& color) {
  QColor fill = color;
  fill.setAlpha(120);
  return fill;
}

QVector<double> ToVector(const shell::NumberSeries& values) { return QVector<double>(values.begin(), values.end()); }

// The x values of a series: its own, or 1, 2, 3, ... when it has none.
QVector<double> XValues(const shell::PlotSeries& series, std::size_t count) {
  if (series.x.size() == count) return ToVector(series.x);
  QVector<double> x(static_cast<qsizetype>(count));
  for (std::size_t i = 0; i < count; ++i) x[static_cast<qsizetype>(i)] = static_cast<double>(i + 1);
  return x;
}

}  // namespace

QFont ChartFont(int pixels, bool bold, const QString& family) {
  QFont font(family.isEmpty() ? QStringLiteral("Arial") : family);
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

ChartView::ChartView(const shell::ChartSeries& chart, PointInfoSource point_info, QWidget* parent)
    : QCustomPlot(parent), point_info_(std::move(point_info)) {
  setObjectName(QString::fromStdString(chart.name));
  setInteractions(QCP::iRangeDrag | QCP::iRangeZoom | QCP::iSelectPlottables);
  setNoAntialiasingOnDrag(true);
  connect(this, &QCustomPlot::plottableClick, this,
          [this](QCPAbstractPlottable* plottable, int index, QMouseEvent* event) { OnPlottableClick(plottable, index, event); });
  setMinimumSize(300, 200);
  setMouseTracking(true);  // hovering shows point information
  // Text sized in pixels, so that a chart drawn onto a printer or a picture
  // of any resolution keeps its text in proportion to its lines.
  const QFont text = ChartFont(12);
  setFont(text);
  for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) {
    axis->setTickLabelFont(text);
    axis->setSelectedTickLabelFont(text);
    axis->setLabelFont(text);
    axis->setSelectedLabelFont(text);
  }
  legend->setFont(text);
  connect(xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, [this] { UpdateDensity(); });
  connect(this, &QCustomPlot::afterLayout, this, [this] {
    PlaceRuleLetters();
    PlaceLineLabels();
  });
  // Limit lines and their labels lie beneath the series, so that they never
  // take a click meant for a point on or near them.
  addLayer(QStringLiteral("limits"), layer(QStringLiteral("main")), QCustomPlot::limBelow);
  Draw(chart);
}

void ChartView::SetPresentation(const shell::ChartPresentation& presentation) {
  presentation_ = presentation;
  presentation_.chart = chart_.name;
  Draw(chart_);
}

shell::SeriesPresentation ChartView::SeriesStyle(std::size_t index) const {
  shell::SeriesPresentation style = index < presentation_.series.size() ? presentation_.series[index] : shell::SeriesPresentation{};
  const shell::SeriesPresentation own = DefaultSeriesStyle(chart_, index);
  if (!style.lineColor) style.lineColor = own.lineColor;
  if (!style.lineWidth) style.lineWidth = own.lineWidth;
  if (!style.lineStyle) style.lineStyle = own.lineStyle;
  if (!style.marker) style.marker = own.marker;
  if (!style.markerSize) style.markerSize = own.markerSize;
  // Markers take the line's colour unless given their own.
  if (!style.markerColor) style.markerColor = style.lineColor;
  return style;
}

shell::SeriesPresentation DefaultSeriesStyle(const shell::ChartSeries& chart, std::size_t index) {
  shell::SeriesPresentation style;
  if (index >= chart.series.size()) return style;
  const shell::PlotSeries& series = chart.series[index];
  const bool points = series.type == shell::SeriesType::Line || series.type == shell::SeriesType::Points;
  // A curve over bars is drawn thicker and without markers.
  const bool overlay = series.type == shell::SeriesType::Line && HasBars(chart) && !series.onSecondAxis;
  style.lineColor = series.color ? *series.color : ToRgb(kSeriesColors[index % std::size(kSeriesColors)]);
  style.lineWidth = overlay ? 1.8 : series.curve ? 1.6 : 1.0;
  style.lineStyle = series.dashed                             ? shell::LineStyle::Dash
                    : series.type == shell::SeriesType::Points ? shell::LineStyle::None
                                                               : shell::LineStyle::Solid;
  // Curves (fitted lines, densities) are drawn without markers.
  style.marker = points && !overlay && !series.stepped && !series.curve ? shell::MarkerShape::Circle : shell::MarkerShape::None;
  style.markerSize = series.type == shell::SeriesType::Points ? 7.0 : 5.0;
  if (!style.markerColor) style.markerColor = style.lineColor;
  return style;
}

void ChartView::RememberView() {
  home_ = {xAxis->range(), yAxis->range(), yAxis2->range()};
}

void ChartView::ResetView() {
  xAxis->setRange(home_[0]);
  yAxis->setRange(home_[1]);
  yAxis2->setRange(home_[2]);
  replot();
}

void ChartView::Draw(const shell::ChartSeries& chart) {
  chart_ = chart;
  presentation_.chart = chart.name;
  clearPlottables();
  // The bar groups of the last drawing, now empty.
  qDeleteAll(findChildren<QCPBarsGroup*>(QString(), Qt::FindDirectChildrenOnly));
  clearItems();
  series_of_.clear();
  marks_.clear();
  dense_.clear();
  rule_letters_.clear();
  line_labels_.clear();
  overlays_.clear();
  legend->setVisible(false);
  info_ = nullptr;
  // The legend goes back inside the plot before the chart is laid out again.
  if (legend_below_) {
    plotLayout()->take(legend);
    plotLayout()->simplify();
    axisRect()->insetLayout()->addElement(legend, Qt::AlignTop | Qt::AlignRight);
    legend_below_ = false;
  }
  if (plotLayout()->rowCount() > 1) {
    plotLayout()->removeAt(0);
    plotLayout()->simplify();
  }
  const shell::ChartPresentation& look = presentation_;
  const QString family = QString::fromStdString(look.fontFamily);
  const std::string title_text = look.title.value_or(chart.title);
  if (!title_text.empty()) {
    plotLayout()->insertRow(0);
    auto* title = new QCPTextElement(this, QString::fromStdString(title_text), ChartFont(look.titleSize, true, family));
    plotLayout()->addElement(0, 0, title);
  }
  xAxis->setLabel(QString::fromStdString(look.x.title.value_or(chart.xTitle)));
  yAxis->setLabel(QString::fromStdString(look.y.title.value_or(chart.yTitle)));
  yAxis2->setLabel(QString::fromStdString(chart.y2Title));
  for (QCPAxis* axis : {xAxis, yAxis, xAxis2, yAxis2}) {
    axis->setTickLabelFont(ChartFont(look.tickLabelSize, false, family));
    axis->setLabelFont(ChartFont(look.axisTitleSize, false, family));
  }
  xAxis->grid()->setVisible(look.gridLines);
  yAxis->grid()->setVisible(look.gridLines);
  // Linear while the ranges are found: a log axis would refuse ranges
  // reaching zero or below.
  xAxis->setScaleType(QCPAxis::stLinear);
  yAxis->setScaleType(QCPAxis::stLinear);
  qDeleteAll(findChildren<QCPBarsGroup*>(QString(), Qt::FindDirectChildrenOnly));
  if (DrawPolarChart(*this, chart, font())) {
    replot();
    return;
  }

  bool any_second_axis = false;
  double y_min = std::numeric_limits<double>::infinity();
  double y_max = -y_min;
  double x_min = y_min;
  double x_max = -y_min;
  auto take = [](double v, double& lo, double& hi) {
    if (!std::isfinite(v)) return;
    lo = std::min(lo, v);
    hi = std::max(hi, v);
  };
  const bool has_bars = HasBars(chart);
  // Several bar series of a graph stand side by side in each category;
  // coloured bars (a shaded area, highlighted bars) stay where they are.
  const auto bar_count = std::count_if(chart.series.begin(), chart.series.end(), [](const shell::PlotSeries& series) {
    return series.type == shell::SeriesType::Bar && !series.color;
  });
  QCPBarsGroup* bars_group = chart.seriesLegend && bar_count > 1 ? new QCPBarsGroup(this) : nullptr;
  for (std::size_t s = 0; s < chart.series.size(); ++s) {
    const shell::PlotSeries& series = chart.series[s];
    QCPAxis* value_axis = series.onSecondAxis ? yAxis2 : yAxis;
    any_second_axis |= series.onSecondAxis;
    const shell::SeriesPresentation style = SeriesStyle(s);
    const QColor color = ToColor(*style.lineColor);
    const QCPScatterStyle markers(ShapeOf(*style.marker), ToColor(*style.markerColor), *style.markerSize);
    switch (series.type) {
      case shell::SeriesType::Line:
      case shell::SeriesType::Points: {
        const QVector<double> x = XValues(series, series.y.size());
        const QVector<double> y = ToVector(series.y);
        auto* graph = addGraph(xAxis, value_axis);
        graph->setName(QString::fromStdString(series.name));
        graph->setData(x, y, true);
        const QPen pen(color, *style.lineWidth, PenStyleOf(*style.lineStyle));
        if (series.stepped) {
          // Limits that change per sample: steps centred on the samples,
          // beneath the points and deaf to clicks.
          graph->setPen(pen);
          graph->setLineStyle(QCPGraph::lsStepCenter);
          graph->setLayer(QStringLiteral("limits"));
          graph->setSelectable(QCP::stNone);
          for (double v : series.y) take(v, y_min, y_max);
          for (double v : x) take(v, x_min, x_max);
          break;
        }
        const bool line = series.type == shell::SeriesType::Line;
        if (line && has_bars && !series.onSecondAxis) {
          // A curve over bars (the normal curves of a capability study):
          // no point markers, named in the legend.
          graph->setPen(pen);
          graph->setScatterStyle(markers);
          graph->setSelectable(QCP::stNone);
          overlays_.insert(graph);
          for (double v : series.y) take(v, y_min, y_max);
          break;
        }
        graph->setPen(pen);
        graph->setLineStyle(*style.lineStyle == shell::LineStyle::None ? QCPGraph::lsNone : QCPGraph::lsLine);
        if (!line || y.size() <= kMaxMarkedPoints) graph->setScatterStyle(markers);
        series_of_.insert(graph, static_cast<int>(s));
        if (!series.marked.empty()) AddMarks(series, x, y, value_axis, s == 0);
        if (line && y.size() > kMaxMarkedPoints) dense_.push_back({graph, markers});
        if (!series.onSecondAxis)
          for (double v : series.y) take(v, y_min, y_max);
        for (double v : x) take(v, x_min, x_max);
        break;
      }
      case shell::SeriesType::Bar: {
        auto* bars = new QCPBars(xAxis, value_axis);
        bars->setName(QString::fromStdString(series.name));
        const QVector<double> x = XValues(series, series.y.size());
        bars->setData(x, ToVector(series.y), true);
        double spacing = 1.0;
        for (int i = 1; i < x.size(); ++i) spacing = std::min(spacing, std::abs(x[i] - x[i - 1]));
        bars->setWidth(spacing > 0 ? spacing * (series.x.empty() ? 0.8 : 1.0) : 0.8);
        bars->setPen(QPen(color.darker(), *style.lineWidth, PenStyleOf(*style.lineStyle)));
        bars->setBrush(FillColor(color));
        if (bars_group && !series.color) {
          bars->setWidth(0.8 / static_cast<double>(bar_count));
          bars->setBarsGroup(bars_group);
        }
        series_of_.insert(bars, static_cast<int>(s));
        if (!series.onSecondAxis) {
          for (double v : series.y) take(v, y_min, y_max);
          take(0.0, y_min, y_max);
        }
        for (double v : x) {
          take(v - spacing / 2, x_min, x_max);
          take(v + spacing / 2, x_min, x_max);
        }
        break;
      }
      case shell::SeriesType::Box: {
        auto* boxes = new QCPStatisticalBox(xAxis, value_axis);
        boxes->setName(QString::fromStdString(series.name));
        const std::size_t count = series.y.size() / 5;
        const QVector<double> x = XValues(series, count);
        for (std::size_t b = 0; b < count; ++b) {
          const double* v = series.y.data() + b * 5;
          boxes->addData(x[static_cast<qsizetype>(b)], v[0], v[1], v[2], v[3], v[4]);
          for (int k = 0; k < 5; ++k) take(v[k], y_min, y_max);
          take(x[static_cast<qsizetype>(b)] - 0.5, x_min, x_max);
          take(x[static_cast<qsizetype>(b)] + 0.5, x_min, x_max);
        }
        boxes->setPen(QPen(color, *style.lineWidth, PenStyleOf(*style.lineStyle)));
        boxes->setBrush(FillColor(color));
        series_of_.insert(boxes, static_cast<int>(s));
        break;
      }
      case shell::SeriesType::Area: {
        // A shaded area under a curve, beneath the curve and deaf to clicks.
        auto* area = addGraph(xAxis, value_axis);
        area->setName(QString::fromStdString(series.name));
        area->setData(XValues(series, series.y.size()), ToVector(series.y), true);
        area->setPen(QPen(color));
        area->setBrush(FillColor(color));
        area->setSelectable(QCP::stNone);
        area->setLayer(QStringLiteral("limits"));
        break;
      }
      case shell::SeriesType::Pie:
      case shell::SeriesType::Radar: break;  // drawn by DrawPolarChart
    }
  }

  // Labels of horizontal lines stand in a margin right of the plot, where
  // no point can hide them; a chart using the right-hand axis keeps them
  // inside, at the right end of their lines.
  int margin_labels_width = 0;
  const bool labels_in_margin = !any_second_axis;
  const auto level_label = [&](const std::string& text, double value, const QColor& color) {
    auto* label = new QCPItemText(this);
    label->setLayer(QStringLiteral("limits"));
    label->setText(QString::fromStdString(text));
    label->setColor(color);
    label->position->setTypeX(QCPItemPosition::ptAxisRectRatio);
    label->position->setTypeY(QCPItemPosition::ptPlotCoords);
    if (labels_in_margin) {
      label->position->setCoords(1.0, value);
      label->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
      label->setPadding(QMargins(4, 0, 0, 0));
      label->setClipToAxisRect(false);
      margin_labels_width =
          std::max(margin_labels_width, QFontMetrics(label->font()).horizontalAdvance(label->text()) + 12);
    } else {
      label->position->setCoords(0.99, value);
      label->setPositionAlignment(Qt::AlignRight | Qt::AlignBottom);
    }
  };
  // A text at a height alone labels a level without a line of its own (a
  // stepped limit's last step).
  for (const shell::ChartLabel& text : chart.labels)
    if (!text.x && text.y) level_label(text.text, *text.y, QColor(200, 0, 0));
  for (const shell::ChartLine& drawn : chart.lines) {
    shell::ChartLine line = drawn;
    line.label = shell::RelabelLimit(line.label, line.value, look.limitDecimals);
    const bool horizontal = line.orientation == shell::LineOrientation::Horizontal;
    auto* straight = new QCPItemStraightLine(this);
    straight->setLayer(QStringLiteral("limits"));
    QPen pen(look.limitColor ? ToColor(*look.limitColor) : line.color ? ToColor(*line.color) : QColor(200, 0, 0));
    if (look.limitStyle) pen.setStyle(PenStyleOf(*look.limitStyle));
    else if (line.dashed) pen.setStyle(Qt::DashLine);
    straight->setPen(pen);
    if (horizontal) {
      straight->point1->setCoords(0, line.value);
      straight->point2->setCoords(1, line.value);
      take(line.value, y_min, y_max);
    } else {
      straight->point1->setCoords(line.value, 0);
      straight->point2->setCoords(line.value, 1);
      take(line.value, x_min, x_max);
    }
    if (!line.label.empty() && horizontal) {
      level_label(line.label, line.value, pen.color());
    } else if (!line.label.empty()) {
      // Above the plot, over its line; PlaceLineLabels keeps them apart.
      auto* label = new QCPItemText(this);
      label->setFont(font());
      label->setLayer(QStringLiteral("limits"));
      label->setText(QString::fromStdString(line.label));
      label->setColor(pen.color());
      label->setClipToAxisRect(false);
      label->position->setTypeX(QCPItemPosition::ptAbsolute);
      label->position->setTypeY(QCPItemPosition::ptAxisRectRatio);
      label->position->setCoords(0, 0);
      label->setPositionAlignment(Qt::AlignLeft | Qt::AlignBottom);
      line_labels_.push_back({label, line.value});
    }
  }
  // Two rows of room above the plot for the line labels.
  const int label_rows_height = line_labels_.empty() ? 0 : 2 * (QFontMetrics(font()).height() + 2);

  QCP::MarginSides automatic = QCP::msAll;
  if (margin_labels_width > 0) automatic &= ~QCP::msRight;
  if (label_rows_height > 0) automatic &= ~QCP::msTop;
  axisRect()->setAutoMargins(automatic);
  axisRect()->setMargins(QMargins(0, label_rows_height + 4, margin_labels_width, 0));
  label_margin_ = margin_labels_width;

  int corner_labels = 0;
  for (const shell::ChartLabel& text : chart.labels) {
    if (!text.x && text.y) continue;  // a level's label, drawn above
    // A text at a line's place that repeats the line's own label is drawn
    // once, with the line.
    const auto repeats_line = [&](const shell::ChartLine& line) {
      return line.orientation == shell::LineOrientation::Vertical && text.x && line.value == *text.x &&
             line.label == text.text;
    };
    if (!text.y && std::any_of(chart.lines.begin(), chart.lines.end(), repeats_line)) continue;
    auto* label = new QCPItemText(this);
    label->setFont(font());
    label->setText(QString::fromStdString(text.text));
    if (text.x && text.y) {
      label->position->setCoords(*text.x, *text.y);
    } else {
      // Texts without a place stack in the top left corner of the plot.
      label->position->setType(QCPItemPosition::ptAxisRectRatio);
      label->position->setCoords(0.01, 0.02 + 0.06 * corner_labels++);
      label->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
      // On a light ground, so that a line through the corner leaves it legible.
      label->setBrush(QColor(255, 255, 255, 225));
      label->setPadding(QMargins(3, 1, 3, 1));
    }
  }

  if (!chart.categories.empty()) {
    QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
    for (std::size_t i = 0; i < chart.categories.size(); ++i)
      ticker->addTick(static_cast<double>(i + 1), QString::fromStdString(chart.categories[i]));
    xAxis->setTicker(ticker);
    take(0.5, x_min, x_max);
    take(chart.categories.size() + 0.5, x_min, x_max);
  } else {
    xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
  }

  // The ranges hold every point and every limit line with a margin.
  auto set_range = [](QCPAxis* axis, double lo, double hi, double margin_share) {
    if (!std::isfinite(lo)) return axis->setRange(0, 1);
    if (hi == lo) {
      const double pad = lo == 0 ? 1 : std::abs(lo) * 0.1;
      return axis->setRange(lo - pad, hi + pad);
    }
    const double margin = (hi - lo) * margin_share;
    axis->setRange(lo - margin, hi + margin);
  };
  set_range(xAxis, x_min, x_max, 0.03);
  set_range(yAxis, y_min, y_max, 0.08);
  // Bars stand on the axis: no margin below a zero base.
  const bool bars_on_first_axis = std::any_of(chart.series.begin(), chart.series.end(), [](const shell::PlotSeries& series) {
    return series.type == shell::SeriesType::Bar && !series.onSecondAxis;
  });
  if (bars_on_first_axis && y_min == 0.0) yAxis->setRangeLower(0.0);
  yAxis2->setVisible(any_second_axis);
  if (any_second_axis) {
    double lo = std::numeric_limits<double>::infinity(), hi = -lo;
    for (const auto& series : chart.series)
      if (series.onSecondAxis)
        for (double v : series.y) take(v, lo, hi);
    set_range(yAxis2, std::min(lo, 0.0), hi, 0.08);
    // Shares on the right-hand axis (a Pareto chart's cumulative percent)
    // start from the same base line as the bars.
    if (lo >= 0.0 && bars_on_first_axis && yAxis->range().lower == 0.0) yAxis2->setRangeLower(0.0);
  }

  ApplyAxisLook(xAxis, look.x, chart.categories.empty());
  ApplyAxisLook(yAxis, look.y, true);
  UpdateLegend();
  // A chart whose first point has information shows it on clicks; the
  // window's record decides which charts do.
  if (point_info_ && point_info_(chart.name, 1)) {
    info_ = new QCPItemText(this);
    info_->setFont(font());
    info_->position->setType(QCPItemPosition::ptAxisRectRatio);
    info_->position->setCoords(0.5, 0.0);
    info_->setPositionAlignment(Qt::AlignHCenter | Qt::AlignTop);
    info_->setColor(QColor(0, 0, 160));
    info_->setText(QString());
  }
  RememberView();
  replot();
}

// A fixed range, a logarithmic scale (only while the range is positive)
// and the tick labels' decimals, over the range the data asked for.
void ChartView::ApplyAxisLook(QCPAxis* axis, const shell::AxisPresentation& look, bool numeric_ticks) {
  if (look.fixedRange && look.minimum < look.maximum) axis->setRange(look.minimum, look.maximum);
  const bool log = look.logScale && numeric_ticks && axis->range().lower > 0;
  axis->setScaleType(log ? QCPAxis::stLogarithmic : QCPAxis::stLinear);
  if (numeric_ticks) {
    if (log) axis->setTicker(QSharedPointer<QCPAxisTickerLog>(new QCPAxisTickerLog));
    else if (axis->ticker().dynamicCast<QCPAxisTickerLog>()) axis->setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
  }
  if (look.decimals >= 0) {
    axis->setNumberFormat(QStringLiteral("f"));
    axis->setNumberPrecision(look.decimals);
  } else {
    axis->setNumberFormat(log ? QStringLiteral("eb") : QStringLiteral("gbd"));
    axis->setNumberPrecision(log ? 0 : 6);
  }
}

QString ChartView::PointInfo() const { return info_ ? info_->text() : QString(); }

QString ChartView::ShowPointInfo(long number) {
  if (!info_) return {};
  const std::optional<std::string> text = point_info_(chart_.name, number);
  if (!text) return {};
  info_->setText(QString::fromStdString(*text));
  replot();
  return info_->text();
}

void ChartView::OnPlottableClick(QCPAbstractPlottable* plottable, int index, QMouseEvent* event) {
  // Only the first series carries the numbered points; a click on a mark
  // answers for the point under it.
  if (const auto marks = marks_.find(plottable); marks != marks_.end()) {
    if (marks->first && index >= 0 && static_cast<std::size_t>(index) < marks->numbers.size())
      ShowPointInfo(marks->numbers[static_cast<std::size_t>(index)]);
  } else if (const auto found = series_of_.find(plottable); found != series_of_.end() && found.value() == 0) {
    ShowPointInfo(index + 1L);
  }
  // The pointer shows the same as on a hover, beside the point.
  if (event) {
    const QString text = PointTextAt(event->position());
    if (!text.isEmpty()) QToolTip::showText(event->globalPosition().toPoint(), text, this);
  }
}

namespace {

const QColor kRuleColor(230, 120, 0);

// "beyond a control limit", "run rules B C" or both, from a point's code.
QString DescribeCode(const QString& code) {
  QStringList parts;
  if (code.contains(QLatin1Char('*'))) parts << QStringLiteral("beyond a control limit");
  const QString rules = QString(code).remove(QLatin1Char('*')).simplified();
  if (!rules.isEmpty()) parts << (rules.size() > 1 ? QStringLiteral("run rules ") : QStringLiteral("run rule ")) + rules;
  return parts.join(QStringLiteral("; "));
}

// A mark drawn whole, or thin on a line of more points than the plot has
// room for: beyond-limit points as single red dots (they lie outside the
// band of the line), rule flags left to the zoomed-in view.
QCPScatterStyle MarkStyle(bool rule, bool whole) {
  const QColor color = rule ? kRuleColor : QColor(Qt::red);
  if (whole) return QCPScatterStyle(rule ? QCPScatterStyle::ssTriangle : QCPScatterStyle::ssSquare, color, color, 8);
  return rule ? QCPScatterStyle() : QCPScatterStyle(QCPScatterStyle::ssDisc, color, color, 3);
}

}  // namespace

// Marked points over their series: beyond a limit as red filled squares,
// flagged by run rules alone as orange triangles with the rule letters
// beside them where there is room. On a long chart the marks are thin, so
// that they do not cover the line; zooming in shows them whole.
void ChartView::AddMarks(const shell::PlotSeries& series, const QVector<double>& x, const QVector<double>& y,
                         QCPAxis* value_axis, bool first) {
  const bool dense = y.size() > kMaxMarkedPoints;
  struct Kind {
    QString name;
    QCPScatterStyle::ScatterShape shape;
    QColor color;
    QVector<double> x, y;
    MarkSet set;
  } kinds[] = {{QStringLiteral("Beyond a limit"), QCPScatterStyle::ssSquare, Qt::red, {}, {}, {}},
               {QStringLiteral("Run rule"), QCPScatterStyle::ssTriangle, kRuleColor, {}, {}, {}}};
  for (std::size_t i = 0; i < series.marked.size(); ++i) {
    const long number = series.marked[i];
    if (number < 1 || number > y.size()) continue;
    const QString code = i < series.markCodes.size() ? QString::fromStdString(series.markCodes[i]) : QStringLiteral("* ");
    Kind& kind = kinds[code.contains(QLatin1Char('*')) ? 0 : 1];
    kind.x.push_back(x[number - 1]);
    kind.y.push_back(y[number - 1]);
    kind.set.numbers.push_back(number);
    kind.set.codes.push_back(code);
  }
  for (Kind& kind : kinds) {
    if (kind.x.isEmpty()) continue;
    auto* marks = addGraph(xAxis, value_axis);
    marks->setName(kind.name);
    // Sorting by x keeps the numbers in step: they ascend with x too.
    marks->setData(kind.x, kind.y, true);
    marks->setLineStyle(QCPGraph::lsNone);
    kind.set.rule = kind.shape == QCPScatterStyle::ssTriangle;
    marks->setScatterStyle(MarkStyle(kind.set.rule, !dense));
    marks->setSelectable(QCP::stNone);
    const bool labelled = !dense && kind.shape == QCPScatterStyle::ssTriangle && kind.x.size() <= kMaxRuleLabels;
    for (int i = 0; labelled && i < kind.x.size(); ++i) {
      auto* letters = new QCPItemText(this);
      letters->setFont(ChartFont(10));
      letters->setColor(kind.color);
      letters->setText(QString(kind.set.codes[static_cast<std::size_t>(i)]).simplified());
      letters->position->setAxes(xAxis, value_axis);
      letters->position->setCoords(kind.x[i], kind.y[i]);
      letters->setPositionAlignment(Qt::AlignHCenter | Qt::AlignBottom);
      letters->setPadding(QMargins(0, 0, 0, 6));
      rule_letters_.push_back(letters);
    }
    kind.set.first = first;
    marks_.insert(marks, std::move(kind.set));
  }
}

// A small legend under the plot names the kinds of marks and the curves
// over bars, each name once; charts without either have none.
void ChartView::UpdateLegend() {
  const shell::LegendPlace place = presentation_.legend;
  if (place == shell::LegendPlace::Hidden) return;
  const bool every_series = place != shell::LegendPlace::Automatic;
  if (!every_series && marks_.isEmpty() && overlays_.isEmpty() && !chart_.seriesLegend) return;
  if (place != shell::LegendPlace::Automatic && place != shell::LegendPlace::Below) {
    // Inside the plot, in the corner chosen.
    const Qt::Alignment corner = place == shell::LegendPlace::TopLeft       ? Qt::AlignTop | Qt::AlignLeft
                                 : place == shell::LegendPlace::BottomRight ? Qt::AlignBottom | Qt::AlignRight
                                 : place == shell::LegendPlace::BottomLeft  ? Qt::AlignBottom | Qt::AlignLeft
                                                                            : Qt::AlignTop | Qt::AlignRight;
    axisRect()->insetLayout()->setInsetAlignment(0, corner);
    legend->setFont(ChartFont(10, false, QString::fromStdString(presentation_.fontFamily)));
    legend->setFillOrder(QCPLayoutGrid::foRowsFirst);
    legend->setBorderPen(QPen(Qt::gray));
  } else if (!legend_below_) {
    axisRect()->insetLayout()->take(legend);
    plotLayout()->addElement(plotLayout()->rowCount(), 0, legend);
    plotLayout()->setRowStretchFactor(plotLayout()->rowCount() - 1, 0.001);
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    legend->setFont(ChartFont(10));
    legend->setBorderPen(Qt::NoPen);
    legend->setMargins(QMargins(4, 0, 4, 2));
    legend_below_ = true;
  }
  legend->setVisible(true);
  QSet<QString> listed;
  for (int i = 0; i < legend->itemCount(); ++i) {
    auto* item = qobject_cast<QCPPlottableLegendItem*>(legend->item(i));
    if (!item) continue;
    QCPAbstractPlottable* plottable = item->plottable();
    const bool listable = every_series || chart_.seriesLegend
                              ? !plottable->name().isEmpty() && plottable->layer() != layer(QStringLiteral("limits"))
                              : marks_.contains(plottable) || overlays_.contains(plottable);
    if (!listable || listed.contains(plottable->name())) {
      legend->removeItem(i--);
      continue;
    }
    listed.insert(plottable->name());
  }
}

// Rule letters show where they have room: a label that would overlap the
// one before it is left out (its point still tells its rules on a hover).
void ChartView::PlaceRuleLetters() {
  double last_right = -std::numeric_limits<double>::infinity();
  for (QCPItemText* letters : rule_letters_) {
    const double width = QFontMetricsF(letters->font()).horizontalAdvance(letters->text());
    const double centre = letters->position->pixelPosition().x();
    const bool room = centre - width / 2 > last_right + 2;
    letters->setVisible(room);
    if (room) last_right = centre + width / 2;
  }
}

// The labels of vertical lines (specification limits, the mean) sit above
// the plot over their lines, in the lower of two rows unless a label to
// their left is in the way, and never past the chart's edges.
void ChartView::PlaceLineLabels() {
  std::vector<LineLabel> labels = line_labels_;
  std::sort(labels.begin(), labels.end(), [](const LineLabel& a, const LineLabel& b) { return a.value < b.value; });
  double row_ends[2] = {-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
  const int row_height = QFontMetrics(font()).height() + 2;
  for (const LineLabel& label : labels) {
    const double width = QFontMetricsF(label.item->font()).horizontalAdvance(label.item->text()) + 4;
    const double left = std::clamp(xAxis->coordToPixel(label.value) - width / 2, 0.0, std::max(0.0, this->width() - width));
    const int row = left > row_ends[0] + 4 ? 0 : 1;
    row_ends[row] = left + width;
    label.item->position->setCoords(left, 0);
    label.item->setPadding(QMargins(2, 0, 2, 2 + row * row_height));
  }
}

// Above kMaxMarkedPoints points in view a line shows no point markers and
// its marks shrink; fewer, zoomed in, show them whole.
void ChartView::UpdateDensity() {
  if (dense_.empty()) return;
  const QCPRange range = xAxis->range();
  qsizetype shown = 0;
  for (const auto& [graph, markers] : dense_)
    shown = std::max(shown, graph->data()->findEnd(range.upper) - graph->data()->findBegin(range.lower));
  const bool whole = shown <= kMaxMarkedPoints;
  for (const auto& [graph, markers] : dense_) graph->setScatterStyle(whole ? markers : QCPScatterStyle());
  for (auto mark = marks_.begin(); mark != marks_.end(); ++mark)
    static_cast<QCPGraph*>(mark.key())->setScatterStyle(MarkStyle(mark->rule, whole));
}

// The text of the point nearest `position` within a few pixels: a marked
// point's reason first, then the chart's point information for the first
// series, else the series' name with the point's values.
QString ChartView::PointTextAt(const QPointF& position) const {
  constexpr double kReach = 8;
  const auto index_at = [&](QCPAbstractPlottable* plottable) -> int {
    QVariant details;
    const double distance = plottable->selectTest(position, false, &details);
    if (distance < 0 || distance > kReach) return -1;
    const QCPDataSelection selection = details.value<QCPDataSelection>();
    return selection.isEmpty() ? -1 : selection.dataRange().begin();
  };
  const auto info = [this](long number) {
    const std::optional<std::string> text = point_info_ ? point_info_(chart_.name, number) : std::nullopt;
    return text ? QString::fromStdString(*text) : QString();
  };
  for (auto mark = marks_.begin(); mark != marks_.end(); ++mark) {
    const int index = index_at(mark.key());
    if (index < 0 || static_cast<std::size_t>(index) >= mark->numbers.size()) continue;
    const long number = mark->numbers[static_cast<std::size_t>(index)];
    QString text = QStringLiteral("Point %1: %2").arg(number).arg(DescribeCode(mark->codes[static_cast<std::size_t>(index)]));
    if (const QString more = mark->first ? info(number) : QString(); !more.isEmpty()) text += QLatin1Char('\n') + more;
    return text;
  }
  for (auto found = series_of_.begin(); found != series_of_.end(); ++found) {
    auto* graph = qobject_cast<QCPGraph*>(found.key());
    auto* bars = qobject_cast<QCPBars*>(found.key());
    const int index = graph || bars ? index_at(found.key()) : -1;
    if (index < 0) continue;
    if (found.value() == 0)
      if (const QString text = info(index + 1L); !text.isEmpty()) return text;
    const double x = graph ? graph->data()->at(index)->key : bars->data()->at(index)->key;
    const double y = graph ? graph->data()->at(index)->value : bars->data()->at(index)->value;
    const long at = std::lround(x);
    const auto& categories = chart_.categories;
    const QString where = bars && at >= 1 && static_cast<std::size_t>(at) <= categories.size()
                              ? QString::fromStdString(categories[static_cast<std::size_t>(at - 1)])
                              : QStringLiteral("x = %1").arg(x, 0, 'g', 6);
    return QStringLiteral("%1: %2, y = %3").arg(found.key()->name(), where).arg(y, 0, 'g', 6);
  }
  return {};
}

void ChartView::mouseMoveEvent(QMouseEvent* event) {
  QCustomPlot::mouseMoveEvent(event);
  if (event->buttons() != Qt::NoButton) return;
  const QString text = PointTextAt(event->position());
  if (text.isEmpty()) QToolTip::hideText();
  else QToolTip::showText(event->globalPosition().toPoint(), text, this);
}

void ChartView::mousePressEvent(QMouseEvent* event) {
  const bool band = event->button() == Qt::LeftButton && (event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier));
  setSelectionRectMode(band ? QCP::srmZoom : QCP::srmNone);
  QCustomPlot::mousePressEvent(event);
}

namespace {

// A chart's height in pictures and prints: as shown, 400 when not shown yet.
int PaintedHeight(const ChartView& chart) { return std::max(chart.height(), 400); }

}  // namespace

QSize StackedSize(const std::vector<ChartView*>& charts) {
  QSize size(0, 0);
  for (const ChartView* chart : charts) {
    size.setWidth(std::max({size.width(), chart->width(), 640}));
    size.rheight() += PaintedHeight(*chart);
  }
  return size;
}

void PaintCharts(QCPPainter& painter, const std::vector<ChartView*>& charts) {
  PaintCharts(painter, charts, StackedSize(charts));
}

void PaintCharts(QCPPainter& painter, const std::vector<ChartView*>& charts, QSize size) {
  // Each chart keeps its share of the stacked height.
  const QSize stacked = StackedSize(charts);
  painter.save();
  int top = 0;
  for (std::size_t i = 0; i < charts.size(); ++i) {
    const int bottom = i + 1 == charts.size() ? size.height()
                                              : top + PaintedHeight(*charts[i]) * size.height() / stacked.height();
    charts[i]->toPainter(&painter, size.width(), bottom - top);
    painter.translate(0, bottom - top);
    top = bottom;
  }
  painter.restore();
}

PictureSize DefaultPictureSize(const std::vector<ChartView*>& charts) {
  const QSize size = StackedSize(charts) * 2;
  return {size.width(), size.height(), 192};
}

bool SaveCharts(const std::vector<ChartView*>& charts, const QString& path) {
  return !charts.empty() && SaveCharts(charts, path, DefaultPictureSize(charts));
}

bool SaveCharts(const std::vector<ChartView*>& charts, const QString& path, const PictureSize& picture) {
  if (charts.empty() || picture.width < 1 || picture.height < 1 || picture.dpi < 1) return false;
  const QString suffix = QFileInfo(path).suffix().toLower();
  const double scale = picture.dpi / 96.0;
  const QSize layout(std::max(1, qRound(picture.width / scale)), std::max(1, qRound(picture.height / scale)));
  if (suffix == QLatin1String("png") || suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg") ||
      suffix == QLatin1String("bmp")) {
    QImage image(picture.width, picture.height, QImage::Format_RGB32);
    image.fill(Qt::white);
    const int dots_per_metre = qRound(picture.dpi / 0.0254);
    image.setDotsPerMeterX(dots_per_metre);
    image.setDotsPerMeterY(dots_per_metre);
    QCPPainter painter(&image);
    painter.scale(picture.width / double(layout.width()), picture.height / double(layout.height()));
    PaintCharts(painter, charts, layout);
    painter.end();
    return image.save(path, nullptr, 95);
  }
  if (suffix == QLatin1String("pdf")) {
    // One page the size of the picture, drawn as vectors.
    QPdfWriter writer(path);
    writer.setResolution(96);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setPageSize(QPageSize(QSizeF(picture.width * 72.0 / picture.dpi, picture.height * 72.0 / picture.dpi),
                                 QPageSize::Point));
    QCPPainter painter;
    if (!painter.begin(&writer)) return false;
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    PaintCharts(painter, charts, layout);
    return painter.end();
  }
  if (suffix == QLatin1String("svg")) {
    QSvgGenerator generator;
    generator.setFileName(path);
    generator.setSize(layout);
    generator.setViewBox(QRect(QPoint(0, 0), layout));
    generator.setResolution(96);
    generator.setTitle(charts.front()->objectName());
    QCPPainter painter;
    if (!painter.begin(&generator)) return false;
    PaintCharts(painter, charts, layout);
    return painter.end();
  }
  return false;
}

}  // namespace orvik::gui
