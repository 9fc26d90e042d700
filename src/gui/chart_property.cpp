#include "gui/chart_property.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>
#include <cmath>
#include <limits>

#include "gui/chart_view.h"
#include "gui/result_window_widget.h"

namespace orvik::gui {

namespace {

QColor ToColor(shell::Rgb rgb) {
  return QColor((rgb.value >> 16) & 0xFF, (rgb.value >> 8) & 0xFF, rgb.value & 0xFF);
}

shell::Rgb ToRgb(const QColor& color) { return shell::Rgb{static_cast<std::uint32_t>(color.rgb() & 0xFFFFFF)}; }

const std::pair<shell::LineStyle, const char*> kLineStyles[] = {{shell::LineStyle::Solid, "Solid"},
                                                                {shell::LineStyle::Dash, "Dash"},
                                                                {shell::LineStyle::Dot, "Dot"},
                                                                {shell::LineStyle::DashDot, "Dash Dot"},
                                                                {shell::LineStyle::None, "None"}};
const std::pair<shell::MarkerShape, const char*> kMarkers[] = {
    {shell::MarkerShape::Circle, "Circle"}, {shell::MarkerShape::Disc, "Disc"},
    {shell::MarkerShape::Square, "Square"}, {shell::MarkerShape::Diamond, "Diamond"},
    {shell::MarkerShape::Triangle, "Triangle"}, {shell::MarkerShape::Cross, "Cross"},
    {shell::MarkerShape::Plus, "Plus"},     {shell::MarkerShape::Star, "Star"},
    {shell::MarkerShape::None, "None"}};
const char* const kLegendPlaces[] = {"Automatic", "Hidden", "Top right", "Top left", "Bottom right", "Bottom left",
                                     "Below the plot"};

template <typename Enum, std::size_t N>
QComboBox* ChoiceBox(const QString& name, const std::pair<Enum, const char*> (&choices)[N]) {
  auto* box = new QComboBox;
  box->setObjectName(name);
  for (const auto& [value, text] : choices) box->addItem(QString::fromLatin1(text), static_cast<int>(value));
  return box;
}

void Select(QComboBox* box, int value) { box->setCurrentIndex(std::max(0, box->findData(value))); }

QSpinBox* SizeBox(const QString& name, int value) {
  auto* box = new QSpinBox;
  box->setObjectName(name);
  box->setRange(4, 200);
  box->setSuffix(QStringLiteral(" px"));
  box->setValue(value);
  return box;
}

// Decimals from 0 to 15, or -1 shown as `automatic`.
QSpinBox* DecimalsBox(const QString& name, int value, const QString& automatic) {
  auto* box = new QSpinBox;
  box->setObjectName(name);
  box->setRange(-1, 15);
  box->setSpecialValueText(automatic);
  box->setValue(value);
  return box;
}

QDoubleSpinBox* NumberBox(const QString& name, double value) {
  auto* box = new QDoubleSpinBox;
  box->setObjectName(name);
  box->setRange(-1e12, 1e12);
  box->setDecimals(6);
  box->setValue(value);
  return box;
}

}  // namespace

ChartProperty::ChartProperty(ResultWindowWidget& window, ChartView& chart, QWidget* parent)
    : QDialog(parent), window_(window), chart_(chart), original_(chart.Presentation()) {
  original_.chart = chart.Description().name;
  setObjectName(QStringLiteral("ChartProperty"));
  setWindowTitle(QStringLiteral("Chart Property"));
  choose_color_ = [this](const QColor& initial) { return QColorDialog::getColor(initial, this); };
  auto* tabs = new QTabWidget;
  tabs->addTab(MakeChartPage(), QStringLiteral("Chart"));
  tabs->addTab(MakeAxesPage(), QStringLiteral("Axes"));
  tabs->addTab(MakeSeriesPage(), QStringLiteral("Series"));
  tabs->addTab(MakeLimitsPage(), QStringLiteral("Limit Lines"));
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
  connect(box, &QDialogButtonBox::accepted, this, [this] {
    Apply();
    accept();
  });
  connect(box, &QDialogButtonBox::rejected, this, &ChartProperty::reject);
  connect(box->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &ChartProperty::Apply);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs);
  layout->addWidget(box);
}

QWidget* ChartProperty::MakeChartPage() {
  const shell::ChartPresentation& look = chart_.Presentation();
  title_ = new QLineEdit(QString::fromStdString(look.title.value_or(chart_.Description().title)));
  title_->setObjectName(QStringLiteral("Title"));
  font_ = new QFontComboBox;
  font_->setObjectName(QStringLiteral("Font"));
  font_->setCurrentFont(ChartFont(12, false, QString::fromStdString(look.fontFamily)));
  initial_family_ = font_->currentFont().family();
  title_size_ = SizeBox(QStringLiteral("TitleSize"), look.titleSize);
  axis_title_size_ = SizeBox(QStringLiteral("AxisTitleSize"), look.axisTitleSize);
  tick_size_ = SizeBox(QStringLiteral("TickLabelSize"), look.tickLabelSize);
  grid_ = new QCheckBox(QStringLiteral("Grid lines"));
  grid_->setObjectName(QStringLiteral("GridLines"));
  grid_->setChecked(look.gridLines);
  legend_ = new QComboBox;
  legend_->setObjectName(QStringLiteral("Legend"));
  for (const char* place : kLegendPlaces) legend_->addItem(QString::fromLatin1(place));
  legend_->setCurrentIndex(static_cast<int>(look.legend));
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  form->addRow(QStringLiteral("Title:"), title_);
  form->addRow(QStringLiteral("Font:"), font_);
  form->addRow(QStringLiteral("Title size:"), title_size_);
  form->addRow(QStringLiteral("Axis title size:"), axis_title_size_);
  form->addRow(QStringLiteral("Tick label size:"), tick_size_);
  form->addRow(QStringLiteral("Legend:"), legend_);
  form->addRow(grid_);
  return page;
}

QWidget* ChartProperty::MakeAxisBox(const QString& name, const QString& title, const shell::AxisPresentation& look,
                                    const QCPAxis& axis, AxisControls& c) {
  c.title = new QLineEdit(title);
  c.title->setObjectName(name + QStringLiteral("Title"));
  c.automatic = new QCheckBox(QStringLiteral("Automatic range"));
  c.automatic->setObjectName(name + QStringLiteral("Automatic"));
  c.automatic->setChecked(!look.fixedRange);
  // A fixed range starts from the range shown.
  c.minimum = NumberBox(name + QStringLiteral("Minimum"), look.fixedRange ? look.minimum : axis.range().lower);
  c.maximum = NumberBox(name + QStringLiteral("Maximum"), look.fixedRange ? look.maximum : axis.range().upper);
  c.log = new QCheckBox(QStringLiteral("Logarithmic scale"));
  c.log->setObjectName(name + QStringLiteral("Log"));
  c.log->setChecked(look.logScale);
  c.log->setToolTip(QStringLiteral("Drawn while the axis range is positive"));
  c.decimals = DecimalsBox(name + QStringLiteral("Decimals"), look.decimals, QStringLiteral("Automatic"));
  const auto enable = [c] {
    c.minimum->setEnabled(!c.automatic->isChecked());
    c.maximum->setEnabled(!c.automatic->isChecked());
    // A log scale needs positive values.
    c.log->setEnabled(c.automatic->isChecked() || c.minimum->value() > 0);
  };
  connect(c.automatic, &QCheckBox::toggled, this, enable);
  connect(c.minimum, &QDoubleSpinBox::valueChanged, this, enable);
  enable();
  auto* box = new QGroupBox(name == QLatin1String("X") ? QStringLiteral("X axis") : QStringLiteral("Y axis"));
  auto* form = new QFormLayout(box);
  form->addRow(QStringLiteral("Title:"), c.title);
  form->addRow(c.automatic);
  form->addRow(QStringLiteral("Minimum:"), c.minimum);
  form->addRow(QStringLiteral("Maximum:"), c.maximum);
  form->addRow(c.log);
  form->addRow(QStringLiteral("Tick label decimals:"), c.decimals);
  return box;
}

QWidget* ChartProperty::MakeAxesPage() {
  const shell::ChartPresentation& look = chart_.Presentation();
  const shell::ChartSeries& own = chart_.Description();
  auto* page = new QWidget;
  auto* layout = new QHBoxLayout(page);
  layout->addWidget(MakeAxisBox(QStringLiteral("X"), QString::fromStdString(look.x.title.value_or(own.xTitle)), look.x,
                                *chart_.xAxis, x_));
  layout->addWidget(MakeAxisBox(QStringLiteral("Y"), QString::fromStdString(look.y.title.value_or(own.yTitle)), look.y,
                                *chart_.yAxis, y_));
  return page;
}

void ChartProperty::Paint(QPushButton* button, const QColor& color) {
  QPixmap swatch(28, 14);
  swatch.fill(color.isValid() ? color : QColor(Qt::transparent));
  button->setIcon(QIcon(swatch));
  button->setText(color.isValid() ? color.name() : QStringLiteral("As drawn"));
}

QPushButton* ChartProperty::ColorButton(const QString& name, QColor* color) {
  auto* button = new QPushButton;
  button->setObjectName(name);
  Paint(button, *color);
  connect(button, &QPushButton::clicked, this, [this, button, color] {
    const QColor chosen = choose_color_(color->isValid() ? *color : QColor(Qt::red));
    if (!chosen.isValid()) return;
    *color = chosen;
    Paint(button, chosen);
  });
  return button;
}

QWidget* ChartProperty::MakeSeriesPage() {
  const shell::ChartSeries& own = chart_.Description();
  series_ = new QComboBox;
  series_->setObjectName(QStringLiteral("Series"));
  for (std::size_t i = 0; i < own.series.size(); ++i) {
    const std::string& name = own.series[i].name;
    series_->addItem(name.empty() ? QStringLiteral("Series %1").arg(i + 1) : QString::fromStdString(name));
    styles_.push_back(chart_.SeriesStyle(i));
  }
  line_color_button_ = ColorButton(QStringLiteral("LineColor"), &line_color_);
  line_width_ = new QDoubleSpinBox;
  line_width_->setObjectName(QStringLiteral("LineWidth"));
  line_width_->setRange(0.5, 20);
  line_width_->setSingleStep(0.5);
  line_style_ = ChoiceBox(QStringLiteral("LineStyle"), kLineStyles);
  marker_ = ChoiceBox(QStringLiteral("Marker"), kMarkers);
  marker_size_ = new QDoubleSpinBox;
  marker_size_->setObjectName(QStringLiteral("MarkerSize"));
  marker_size_->setRange(1, 40);
  marker_color_button_ = ColorButton(QStringLiteral("MarkerColor"), &marker_color_);
  // Markers keep the line's colour until they are given their own.
  connect(line_color_button_, &QPushButton::clicked, this, [this] {
    if (!marker_follows_line_) return;
    marker_color_ = line_color_;
    Paint(marker_color_button_, marker_color_);
  });
  connect(marker_color_button_, &QPushButton::clicked, this, [this] { marker_follows_line_ = marker_color_ == line_color_; });
  connect(series_, &QComboBox::currentIndexChanged, this, [this](int index) {
    StoreSeries();
    ShowSeries(index);
  });
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  form->addRow(QStringLiteral("Series:"), series_);
  form->addRow(QStringLiteral("Line colour:"), line_color_button_);
  form->addRow(QStringLiteral("Line width:"), line_width_);
  form->addRow(QStringLiteral("Line style:"), line_style_);
  form->addRow(QStringLiteral("Marker:"), marker_);
  form->addRow(QStringLiteral("Marker size:"), marker_size_);
  form->addRow(QStringLiteral("Marker colour:"), marker_color_button_);
  page->setEnabled(!styles_.empty());
  ShowSeries(styles_.empty() ? -1 : 0);
  return page;
}

void ChartProperty::ShowSeries(int index) {
  shown_series_ = index;
  if (index < 0 || index >= static_cast<int>(styles_.size())) return;
  const shell::SeriesPresentation& style = styles_[static_cast<std::size_t>(index)];
  line_color_ = ToColor(*style.lineColor);
  Paint(line_color_button_, line_color_);
  line_width_->setValue(*style.lineWidth);
  Select(line_style_, static_cast<int>(*style.lineStyle));
  Select(marker_, static_cast<int>(*style.marker));
  marker_size_->setValue(*style.markerSize);
  marker_color_ = ToColor(*style.markerColor);
  Paint(marker_color_button_, marker_color_);
  marker_follows_line_ = style.markerColor == style.lineColor;
}

void ChartProperty::StoreSeries() {
  if (shown_series_ < 0 || shown_series_ >= static_cast<int>(styles_.size())) return;
  styles_[static_cast<std::size_t>(shown_series_)] = ShownSeries();
}

shell::SeriesPresentation ChartProperty::ShownSeries() const {
  shell::SeriesPresentation style;
  style.lineColor = ToRgb(line_color_);
  style.lineWidth = line_width_->value();
  style.lineStyle = static_cast<shell::LineStyle>(line_style_->currentData().toInt());
  style.marker = static_cast<shell::MarkerShape>(marker_->currentData().toInt());
  style.markerSize = marker_size_->value();
  style.markerColor = ToRgb(marker_color_);
  return style;
}

QWidget* ChartProperty::MakeLimitsPage() {
  const shell::ChartPresentation& look = chart_.Presentation();
  if (look.limitColor) limit_color_ = ToColor(*look.limitColor);
  limit_color_button_ = ColorButton(QStringLiteral("LimitColor"), &limit_color_);
  limit_style_ = new QComboBox;
  limit_style_->setObjectName(QStringLiteral("LimitStyle"));
  limit_style_->addItem(QStringLiteral("As drawn"), -1);
  for (const auto& [value, text] : kLineStyles) limit_style_->addItem(QString::fromLatin1(text), static_cast<int>(value));
  Select(limit_style_, look.limitStyle ? static_cast<int>(*look.limitStyle) : -1);
  limit_decimals_ = DecimalsBox(QStringLiteral("LimitDecimals"), look.limitDecimals, QStringLiteral("As calculated"));
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  form->addRow(QStringLiteral("Colour:"), limit_color_button_);
  form->addRow(QStringLiteral("Style:"), limit_style_);
  form->addRow(QStringLiteral("Label decimals:"), limit_decimals_);
  page->setEnabled(!chart_.Description().lines.empty());
  return page;
}

shell::AxisPresentation ChartProperty::AxisLook(const AxisControls& c, const std::string& own_title) const {
  shell::AxisPresentation axis;
  if (c.title->text().toStdString() != own_title) axis.title = c.title->text().toStdString();
  axis.fixedRange = !c.automatic->isChecked();
  if (axis.fixedRange) {
    axis.minimum = c.minimum->value();
    axis.maximum = c.maximum->value();
  }
  axis.logScale = c.log->isChecked();
  axis.decimals = c.decimals->value();
  return axis;
}

shell::ChartPresentation ChartProperty::Current() const {
  const shell::ChartSeries& own = chart_.Description();
  shell::ChartPresentation look;
  look.chart = own.name;
  if (title_->text().toStdString() != own.title) look.title = title_->text().toStdString();
  look.x = AxisLook(x_, own.xTitle);
  look.y = AxisLook(y_, own.yTitle);
  // The font box shows the nearest installed font; untouched, it keeps the
  // chart's own choice.
  look.fontFamily = font_->currentFont().family() == initial_family_ ? original_.fontFamily
                                                                      : font_->currentFont().family().toStdString();
  look.titleSize = title_size_->value();
  look.axisTitleSize = axis_title_size_->value();
  look.tickLabelSize = tick_size_->value();
  look.gridLines = grid_->isChecked();
  look.legend = static_cast<shell::LegendPlace>(legend_->currentIndex());
  // The series page's edits, field by field where they leave the analysis's
  // own style; series that keep it are left out at the end.
  std::vector<shell::SeriesPresentation> styles = styles_;
  if (shown_series_ >= 0 && shown_series_ < static_cast<int>(styles.size()))
    styles[static_cast<std::size_t>(shown_series_)] = ShownSeries();
  for (std::size_t i = 0; i < styles.size(); ++i) {
    const shell::SeriesPresentation own_style = DefaultSeriesStyle(own, i);
    shell::SeriesPresentation style;
    const shell::SeriesPresentation& chosen = styles[i];
    if (chosen.lineColor != own_style.lineColor) style.lineColor = chosen.lineColor;
    if (chosen.lineWidth != own_style.lineWidth) style.lineWidth = chosen.lineWidth;
    if (chosen.lineStyle != own_style.lineStyle) style.lineStyle = chosen.lineStyle;
    if (chosen.marker != own_style.marker) style.marker = chosen.marker;
    if (chosen.markerSize != own_style.markerSize) style.markerSize = chosen.markerSize;
    if (chosen.markerColor != chosen.lineColor) style.markerColor = chosen.markerColor;
    look.series.push_back(style);
  }
  while (!look.series.empty() && look.series.back() == shell::SeriesPresentation{}) look.series.pop_back();
  if (limit_color_.isValid()) look.limitColor = ToRgb(limit_color_);
  if (const int style = limit_style_->currentData().toInt(); style >= 0)
    look.limitStyle = static_cast<shell::LineStyle>(style);
  look.limitDecimals = limit_decimals_->value();
  return look;
}

void ChartProperty::Apply() { window_.SetPresentation(Current()); }

void ChartProperty::reject() {
  if (chart_.Presentation() != original_) window_.SetPresentation(original_);
  QDialog::reject();
}

}  // namespace orvik::gui
