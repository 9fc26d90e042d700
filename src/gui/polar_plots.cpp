#include "gui/polar_plots.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace orvik::gui {

namespace {

constexpr double kPi = 3.14159265358979323846;

QColor Washed(QColor color, int alpha) {
  color.setAlpha(alpha);
  return color;
}

QString Text(const std::string& text) { return QString::fromStdString(text); }

// A text placed beside a point at `angle` (radians, clockwise from twelve
// o'clock), leaning away from the centre.
QRectF TextBeside(const QFontMetricsF& metrics, const QString& text, QPointF at, double angle) {
  const QSizeF size(metrics.horizontalAdvance(text) + 2, metrics.height());
  const double s = std::sin(angle), c = std::cos(angle);
  QPointF corner(at.x() - size.width() / 2, at.y() - size.height() / 2);
  if (s > 0.2) corner.setX(at.x());
  if (s < -0.2) corner.setX(at.x() - size.width());
  if (c > 0.2) corner.setY(at.y() - size.height());
  if (c < -0.2) corner.setY(at.y());
  return QRectF(corner, size);
}

// Moves the rectangles of one side of the chart apart vertically, keeping
// their order, so that neighbouring labels never overlap.
void Spread(std::vector<QRectF*>& side, double top, double bottom) {
  std::sort(side.begin(), side.end(), [](const QRectF* a, const QRectF* b) { return a->center().y() < b->center().y(); });
  double next = top;
  for (QRectF* r : side) {
    if (r->top() < next) r->moveTop(next);
    next = r->bottom() + 1;
  }
  double limit = bottom;
  for (auto it = side.rbegin(); it != side.rend(); ++it) {
    if ((*it)->bottom() > limit) (*it)->moveBottom(limit);
    limit = (*it)->top() - 1;
  }
}

class PolarItem : public QCPAbstractItem {
 public:
  PolarItem(QCustomPlot* plot, const shell::ChartSeries& chart, const QFont& font, std::vector<QColor> colors)
      : QCPAbstractItem(plot), chart_(chart), font_(font), colors_(std::move(colors)) {
    setClipToAxisRect(false);
    setSelectable(false);
  }
  double selectTest(const QPointF&, bool, QVariant*) const override { return -1; }

 protected:
  QRectF Area() const { return parentPlot()->axisRect()->rect(); }
  // The largest radius that leaves room for the category labels around
  // the chart: `height_room` above and below, the widest label plus
  // `width_room` left and right.
  double FittingRadius(const QFontMetricsF& metrics, double height_room, double width_room) const {
    double widest = 0;
    for (const auto& c : chart_.categories) widest = std::max(widest, metrics.horizontalAdvance(Text(c)));
    const QRectF area = Area();
    return std::max(20.0, std::min(area.height() / 2 - metrics.height() - height_room,
                                   area.width() / 2 - widest - width_room));
  }
  QColor ColorOf(std::size_t i) const { return colors_[i % colors_.size()]; }

  shell::ChartSeries chart_;
  QFont font_;
  std::vector<QColor> colors_;
};

// Slices from twelve o'clock clockwise, each labelled outside the pie with
// its category (name and percentage); a marked slice stands out.
class PieItem : public PolarItem {
 public:
  using PolarItem::PolarItem;

 protected:
  void draw(QCPPainter* painter) override {
    const shell::PlotSeries& pie = chart_.series.front();
    double total = 0.0;
    for (double v : pie.y) total += v;
    if (!(total > 0)) return;
    painter->setFont(font_);
    const QFontMetricsF metrics(font_);
    const QRectF area = Area();
    const double radius = FittingRadius(metrics, 8, 24);
    const QPointF centre = area.center();
    struct Label {
      QRectF box;
      QPointF anchor;
      QString text;
      double angle;
    };
    std::vector<Label> labels;
    double start = 0.0;  // clockwise from twelve o'clock, in radians
    for (std::size_t i = 0; i < pie.y.size(); ++i) {
      const double span = pie.y[i] / total * 2 * kPi;
      const double middle = start + span / 2;
      const bool exploded = std::find(pie.marked.begin(), pie.marked.end(), long(i + 1)) != pie.marked.end();
      const QPointF offset = exploded ? QPointF(std::sin(middle), -std::cos(middle)) * (radius * 0.08) : QPointF();
      const QRectF box(centre + offset - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
      painter->setPen(QPen(Qt::white, 1.5));
      painter->setBrush(ColorOf(i));
      // Qt measures counter-clockwise from three o'clock in sixteenths of a degree.
      painter->drawPie(box, static_cast<int>(std::lround((90.0 - start * 180 / kPi) * 16)),
                       -static_cast<int>(std::lround(span * 180 / kPi * 16)));
      if (i < chart_.categories.size() && span > 0) {
        const QPointF edge = centre + offset + QPointF(std::sin(middle), -std::cos(middle)) * radius;
        const QPointF at = centre + offset + QPointF(std::sin(middle), -std::cos(middle)) * (radius + 14);
        const QString text = Text(chart_.categories[i]);
        labels.push_back({TextBeside(metrics, text, at, middle), edge, text, middle});
      }
      start += span;
    }
    std::vector<QRectF*> left, right;
    for (Label& l : labels) (std::sin(l.angle) >= 0 ? right : left).push_back(&l.box);
    Spread(left, area.top(), area.bottom());
    Spread(right, area.top(), area.bottom());
    painter->setBrush(Qt::NoBrush);
    for (const Label& l : labels) {
      painter->setPen(QPen(QColor(120, 120, 120), 1));
      const QPointF near(std::sin(l.angle) >= 0 ? l.box.left() : l.box.right(), l.box.center().y());
      painter->drawLine(l.anchor, near);
      painter->setPen(Qt::black);
      painter->drawText(l.box, Qt::AlignCenter, l.text);
    }
  }
};

// Spokes for the categories, clockwise from twelve o'clock, scaled from 0
// at the centre to the chart's horizontal line at the outer ring; each
// series a closed polygon, named in a legend in the top left corner.
class RadarItem : public PolarItem {
 public:
  using PolarItem::PolarItem;

 protected:
  void draw(QCPPainter* painter) override {
    const std::size_t spokes = chart_.categories.size();
    if (spokes < 3) return;
    double scale = 0.0;
    for (const auto& line : chart_.lines)
      if (line.orientation == shell::LineOrientation::Horizontal) scale = line.value;
    if (!(scale > 0)) return;
    painter->setFont(font_);
    const QFontMetricsF metrics(font_);
    const QRectF area = Area();
    const double radius = FittingRadius(metrics, 10, 16);
    const QPointF centre = area.center();
    const auto point = [&](std::size_t spoke, double r) {
      const double angle = 2 * kPi * static_cast<double>(spoke) / static_cast<double>(spokes);
      return centre + QPointF(std::sin(angle), -std::cos(angle)) * r;
    };
    // Rings at fifths of the scale, with their values along the first spoke.
    painter->setBrush(Qt::NoBrush);
    for (int ring = 1; ring <= 5; ++ring) {
      QPolygonF polygon;
      for (std::size_t s = 0; s < spokes; ++s) polygon << point(s, radius * ring / 5);
      painter->setPen(QPen(QColor(200, 200, 200), 1));
      painter->drawPolygon(polygon);
      painter->setPen(QColor(110, 110, 110));
      const QPointF at = point(0, radius * ring / 5);
      painter->drawText(QPointF(at.x() + 3, at.y() + metrics.ascent() / 2),
                        QString::number(scale * ring / 5, 'g', 6));
    }
    for (std::size_t s = 0; s < spokes; ++s) {
      painter->setPen(QPen(QColor(170, 170, 170), 1));
      painter->drawLine(centre, point(s, radius));
      const double angle = 2 * kPi * static_cast<double>(s) / static_cast<double>(spokes);
      const QString text = Text(chart_.categories[s]);
      painter->setPen(Qt::black);
      painter->drawText(TextBeside(metrics, text, point(s, radius + 6), angle), Qt::AlignCenter, text);
    }
    for (std::size_t i = 0; i < chart_.series.size(); ++i) {
      const shell::PlotSeries& series = chart_.series[i];
      QPolygonF polygon;
      for (std::size_t s = 0; s < spokes && s < series.y.size(); ++s)
        polygon << point(s, radius * std::clamp(series.y[s] / scale, 0.0, 1.0));
      painter->setPen(QPen(ColorOf(i), 2));
      painter->setBrush(Washed(ColorOf(i), 50));
      painter->drawPolygon(polygon);
      painter->setBrush(ColorOf(i));
      for (const QPointF& p : polygon) painter->drawEllipse(p, 2.5, 2.5);
    }
    // The legend: a swatch and the name of each series.
    double y = area.top() + 4;
    for (std::size_t i = 0; i < chart_.series.size(); ++i) {
      painter->setPen(QPen(ColorOf(i), 2));
      painter->setBrush(Washed(ColorOf(i), 50));
      painter->drawRect(QRectF(area.left() + 6, y + 3, 12, metrics.height() - 6));
      painter->setPen(Qt::black);
      painter->drawText(QPointF(area.left() + 24, y + metrics.ascent()), Text(chart_.series[i].name));
      y += metrics.height() + 2;
    }
  }
};

}  // namespace

bool DrawPolarChart(QCustomPlot& plot, const shell::ChartSeries& chart, const QFont& font) {
  const auto is = [&](shell::SeriesType type) {
    return std::any_of(chart.series.begin(), chart.series.end(), [type](const auto& s) { return s.type == type; });
  };
  const bool pie = is(shell::SeriesType::Pie), radar = is(shell::SeriesType::Radar);
  for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) axis->setVisible(!pie && !radar);
  if (!pie && !radar) return false;
  // Ten colours that stay apart from each other (Tableau 10).
  const std::vector<QColor> colors = {QColor(0x4E79A7), QColor(0xF28E2B), QColor(0xE15759), QColor(0x76B7B2),
                                      QColor(0x59A14F), QColor(0xEDC948), QColor(0xB07AA1), QColor(0xFF9DA7),
                                      QColor(0x9C755F), QColor(0xBAB0AC)};
  if (pie) new PieItem(&plot, chart, font, colors);
  else new RadarItem(&plot, chart, font, colors);
  return true;
}

}  // namespace orvik::gui
