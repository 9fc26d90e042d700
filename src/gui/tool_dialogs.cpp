#include "gui/tool_dialogs.h"

#include <QCalendarWidget>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/worksheet_window.h"

namespace orvik::gui {

FindWorkSheet::FindWorkSheet(std::function<WorksheetWindow*()> active_sheet, QWidget* parent)
    : QDialog(parent), active_sheet_(std::move(active_sheet)) {
  setObjectName(QStringLiteral("FindWorkSheet"));
  find_ = new QLineEdit;
  find_->setObjectName(QStringLiteral("FindText"));
  replace_ = new QLineEdit;
  replace_->setObjectName(QStringLiteral("ReplaceText"));
  match_case_ = new QCheckBox(QStringLiteral("Match case"));
  whole_cell_ = new QCheckBox(QStringLiteral("Match entire cell contents"));
  status_ = new QLabel;
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Find what:"), find_);
  form->addRow(QStringLiteral("Replace with:"), replace_);
  replace_row_ = form->labelForField(replace_);
  form->addRow(match_case_);
  form->addRow(whole_cell_);
  auto* find_next = new QPushButton(QStringLiteral("Find Next"));
  auto* replace = new QPushButton(QStringLiteral("Replace"));
  auto* replace_all = new QPushButton(QStringLiteral("Replace All"));
  auto* close = new QPushButton(QStringLiteral("Close"));
  replace_buttons_ = {replace, replace_all};
  find_next->setDefault(true);
  connect(find_next, &QPushButton::clicked, this, [this] { FindNext(); });
  connect(replace, &QPushButton::clicked, this, [this] { ReplaceOne(); });
  connect(replace_all, &QPushButton::clicked, this, [this] { ReplaceAll(); });
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  auto* buttons = new QVBoxLayout;
  for (auto* button : {find_next, replace, replace_all, close}) buttons->addWidget(button);
  buttons->addStretch();
  auto* left = new QVBoxLayout;
  left->addLayout(form);
  left->addWidget(status_);
  auto* layout = new QHBoxLayout(this);
  layout->addLayout(left);
  layout->addLayout(buttons);
  SetMode(Mode::Find);
}

void FindWorkSheet::SetMode(Mode mode) {
  const bool replacing = mode == Mode::Replace;
  setWindowTitle(replacing ? QStringLiteral("Replace") : QStringLiteral("Find"));
  replace_->setVisible(replacing);
  if (replace_row_) replace_row_->setVisible(replacing);
  for (QWidget* button : replace_buttons_) button->setVisible(replacing);
}

worksheet::FindOptions FindWorkSheet::Options() const {
  return {match_case_->isChecked(), whole_cell_->isChecked()};
}

QString FindWorkSheet::Status() const { return status_->text(); }

bool FindWorkSheet::FindNext() {
  WorksheetWindow* sheet = active_sheet_();
  if (!sheet || find_->text().isEmpty()) return false;
  const bool found = sheet->FindNext(find_->text(), Options());
  status_->setText(found ? QString() : QStringLiteral("Cannot find \"%1\".").arg(find_->text()));
  return found;
}

void FindWorkSheet::ReplaceOne() {
  WorksheetWindow* sheet = active_sheet_();
  if (!sheet || find_->text().isEmpty()) return;
  sheet->ReplaceCurrent(find_->text(), replace_->text(), Options());
}

void FindWorkSheet::ReplaceAll() {
  WorksheetWindow* sheet = active_sheet_();
  if (!sheet || find_->text().isEmpty()) return;
  const int count = sheet->ReplaceAll(find_->text(), replace_->text(), Options());
  status_->setText(QStringLiteral("%1 cell(s) replaced.").arg(count));
}

SortDialog::SortDialog(const worksheet::Worksheet& sheet, const worksheet::CellBlock& block, QWidget* parent)
    : QDialog(parent), sheet_(sheet), block_(block), region_(worksheet::SortRegion(sheet, block)) {
  setObjectName(QStringLiteral("Sort"));
  setWindowTitle(QStringLiteral("Sort"));
  auto* form = new QFormLayout(this);
  const auto range = [](const worksheet::CellBlock& b) {
    return QString::fromStdString(worksheet::ColumnLetters(b.left) + std::to_string(b.top) + ":" +
                                  worksheet::ColumnLetters(b.right) + std::to_string(b.bottom));
  };
  if (region_.left != block_.left || region_.right != block_.right) {
    form->addRow(new QLabel(QStringLiteral("The cells beside the selection hold data.")));
    whole_rows_ = new QRadioButton(QStringLiteral("Sort the whole rows of the data (%1)").arg(range(region_)));
    auto* alone = new QRadioButton(QStringLiteral("Sort the selected cells only (%1)").arg(range(block_)));
    whole_rows_->setChecked(true);
    form->addRow(whole_rows_);
    form->addRow(alone);
    connect(whole_rows_, &QRadioButton::toggled, this, [this] { FillKeys(); });
  }
  for (int level = 0; level < kLevels; ++level) {
    keys_[level] = new QComboBox;
    orders_[level] = new QComboBox;
    orders_[level]->addItems({QStringLiteral("Ascending"), QStringLiteral("Descending")});
    auto* row = new QHBoxLayout;
    row->addWidget(keys_[level], 1);
    row->addWidget(orders_[level]);
    form->addRow(level == 0 ? QStringLiteral("Sort by:") : QStringLiteral("Then by:"), row);
  }
  FillKeys();
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(box);
}

// The key lists name the columns of the block to be sorted, by header; the
// further keys start at "(none)". The first key stays on its column when
// the block widens or narrows.
void SortDialog::FillKeys() {
  const worksheet::CellBlock block = Block();
  const long keep = keys_[0]->count() > 0 ? keys_[0]->currentData().toInt() : block_.left;
  const long last = std::min(block.right, std::max(block.left, sheet_.DataColCnt()));
  for (int level = 0; level < kLevels; ++level) {
    keys_[level]->clear();
    if (level > 0) keys_[level]->addItem(QStringLiteral("(none)"), 0);
    for (long col = block.left; col <= last; ++col)
      keys_[level]->addItem(QString::fromStdString(sheet_.ColumnHeader(col)), static_cast<int>(col));
  }
  keys_[0]->setCurrentIndex(std::max(0, keys_[0]->findData(static_cast<int>(keep))));
}

worksheet::CellBlock SortDialog::Block() const { return whole_rows_ && whole_rows_->isChecked() ? region_ : block_; }

std::vector<worksheet::SortKey> SortDialog::Keys() const {
  std::vector<worksheet::SortKey> keys;
  for (int level = 0; level < kLevels; ++level)
    if (const long col = keys_[level]->currentData().toInt(); col > 0)
      keys.push_back({col, orders_[level]->currentIndex() == 0});
  return keys;
}

ChartProperty::ChartProperty(ChartView& chart, QWidget* parent) : QDialog(parent), chart_(chart) {
  setObjectName(QStringLiteral("ChartProperty"));
  setWindowTitle(QStringLiteral("Chart Property"));
  const shell::ChartSeries& description = chart.Description();
  const ChartView::Look look = chart.CurrentLook();
  color_ = look.lineColor;
  title_ = new QLineEdit(QString::fromStdString(description.title));
  x_title_ = new QLineEdit(QString::fromStdString(description.xTitle));
  y_title_ = new QLineEdit(QString::fromStdString(description.yTitle));
  line_style_ = new QComboBox;
  line_style_->addItem(QStringLiteral("Solid"), int(Qt::SolidLine));
  line_style_->addItem(QStringLiteral("Dash"), int(Qt::DashLine));
  line_style_->addItem(QStringLiteral("Dot"), int(Qt::DotLine));
  line_style_->setCurrentIndex(line_style_->findData(int(look.lineStyle)));
  point_style_ = new QComboBox;
  point_style_->addItem(QStringLiteral("Circle"), int(QCPScatterStyle::ssCircle));
  point_style_->addItem(QStringLiteral("Disc"), int(QCPScatterStyle::ssDisc));
  point_style_->addItem(QStringLiteral("Square"), int(QCPScatterStyle::ssSquare));
  point_style_->addItem(QStringLiteral("Diamond"), int(QCPScatterStyle::ssDiamond));
  point_style_->addItem(QStringLiteral("Cross"), int(QCPScatterStyle::ssCross));
  point_style_->addItem(QStringLiteral("None"), int(QCPScatterStyle::ssNone));
  point_style_->setCurrentIndex(std::max(0, point_style_->findData(int(look.pointShape))));
  grid_ = new QCheckBox(QStringLiteral("Grid lines"));
  grid_->setChecked(look.gridLines);
  auto* color = new QPushButton(QStringLiteral("Line Colour..."));
  connect(color, &QPushButton::clicked, this, [this] {
    const QColor chosen = QColorDialog::getColor(color_, this);
    if (chosen.isValid()) color_ = chosen;
  });
  auto* form = new QFormLayout(this);
  form->addRow(QStringLiteral("Title:"), title_);
  form->addRow(QStringLiteral("X axis title:"), x_title_);
  form->addRow(QStringLiteral("Y axis title:"), y_title_);
  form->addRow(QStringLiteral("Line style:"), line_style_);
  form->addRow(QStringLiteral("Point style:"), point_style_);
  form->addRow(color);
  form->addRow(grid_);
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(box, &QDialogButtonBox::accepted, this, [this] {
    Apply();
    accept();
  });
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(box);
}

void ChartProperty::Apply() {
  shell::ChartSeries description = chart_.Description();
  description.title = title_->text().toStdString();
  description.xTitle = x_title_->text().toStdString();
  description.yTitle = y_title_->text().toStdString();
  ChartView::Look look;
  look.lineColor = color_;
  look.lineStyle = static_cast<Qt::PenStyle>(line_style_->currentData().toInt());
  look.pointShape = static_cast<QCPScatterStyle::ScatterShape>(point_style_->currentData().toInt());
  look.gridLines = grid_->isChecked();
  chart_.Draw(description);
  chart_.SetLook(look);
}

QDialog* MakeCarlendar(QWidget* parent) {
  auto* dialog = new QDialog(parent);
  dialog->setObjectName(QStringLiteral("Carlendar"));
  dialog->setWindowTitle(QStringLiteral("Calendar"));
  auto* layout = new QVBoxLayout(dialog);
  auto* calendar = new QCalendarWidget;
  calendar->setGridVisible(true);
  layout->addWidget(calendar);
  auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
  QObject::connect(box, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  layout->addWidget(box);
  return dialog;
}

QDialog* MakeInformation(QWidget* parent) {
  auto* dialog = new QDialog(parent);
  dialog->setObjectName(QStringLiteral("Information"));
  dialog->setWindowTitle(QStringLiteral("Information"));
  auto* layout = new QVBoxLayout(dialog);
  auto* name = new QLabel(QStringLiteral("<h2>Orvik 2.0</h2>"));
  auto* about = new QLabel(QStringLiteral("Statistical process control and industrial statistics."));
  layout->addWidget(name);
  layout->addWidget(about);
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(box, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  layout->addWidget(box);
  return dialog;
}

}  // namespace orvik::gui
