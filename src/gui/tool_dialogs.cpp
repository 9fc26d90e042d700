#include "gui/tool_dialogs.h"

#include <QCalendarWidget>
#include <QSpinBox>
#include <QDesktopServices>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/worksheet_window.h"

// The user guide is compiled into the library as a resource; a static
// library must register its resources itself.
static void RegisterHelpResource() { Q_INIT_RESOURCE(help); }

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

PictureSizeDialog::PictureSizeDialog(const PictureSize& initial, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("PictureSize"));
  setWindowTitle(QStringLiteral("Picture Size"));
  const auto spin = [](const QString& name, int low, int high, int value, const QString& suffix) {
    auto* box = new QSpinBox;
    box->setObjectName(name);
    box->setRange(low, high);
    box->setValue(value);
    box->setSuffix(suffix);
    return box;
  };
  width_ = spin(QStringLiteral("PictureWidth"), 16, 20000, initial.width, QStringLiteral(" px"));
  height_ = spin(QStringLiteral("PictureHeight"), 16, 20000, initial.height, QStringLiteral(" px"));
  dpi_ = spin(QStringLiteral("PictureResolution"), 24, 2400, initial.dpi, QStringLiteral(" dpi"));
  keep_ = new QCheckBox(QStringLiteral("Keep proportions"));
  keep_->setChecked(true);
  ratio_ = initial.width > 0 && initial.height > 0 ? initial.height / double(initial.width) : 1.0;
  connect(width_, &QSpinBox::valueChanged, this, [this](int width) {
    if (keep_->isChecked()) height_->setValue(qRound(width * ratio_));
  });
  connect(keep_, &QCheckBox::toggled, this, [this](bool keep) {
    if (keep) ratio_ = height_->value() / double(width_->value());
  });
  auto* form = new QFormLayout(this);
  form->addRow(QStringLiteral("Width:"), width_);
  form->addRow(QStringLiteral("Height:"), height_);
  form->addRow(keep_);
  form->addRow(QStringLiteral("Resolution:"), dpi_);
  form->addRow(new QLabel(QStringLiteral("Texts and lines keep their size in inches: a higher resolution\n"
                                         "with more pixels gives a sharper picture.")));
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
  form->addRow(box);
}

PictureSize PictureSizeDialog::Size() const { return {width_->value(), height_->value(), dpi_->value()}; }

QDialog* MakeInformation(QWidget* parent) {
  auto* dialog = new QDialog(parent);
  dialog->setObjectName(QStringLiteral("Information"));
  dialog->setWindowTitle(QStringLiteral("Information"));
  auto* layout = new QVBoxLayout(dialog);
  auto* name = new QLabel(QStringLiteral("<h2>Orvik 2.0</h2>"));
  auto* about = new QLabel(QStringLiteral("Statistical process control and industrial statistics."));
  const QString build = QStringLiteral("Built %1 with %2, Qt %3 (running on Qt %4).")
                            .arg(QStringLiteral(__DATE__),
#if defined(__clang__)
                                 QStringLiteral("Clang " __clang_version__),
#elif defined(__GNUC__)
                                 QStringLiteral("GCC " __VERSION__),
#else
                                 QStringLiteral("a C++20 compiler"),
#endif
                                 QStringLiteral(QT_VERSION_STR), QString::fromLatin1(qVersion()));
  auto* libraries = new QLabel(QStringLiteral(
      "<p>%1</p><p><b>Libraries used</b></p><table cellspacing=4>"
      "<tr><td>Qt %2 (Widgets, Print Support, SVG)</td><td>LGPL 3.0</td></tr>"
      "<tr><td>QCustomPlot %3</td><td>GPL 3.0</td></tr>"
      "<tr><td>SQLite</td><td>Public domain</td></tr>"
      "<tr><td>libzip</td><td>BSD 3-Clause</td></tr>"
      "<tr><td>Expat</td><td>MIT</td></tr>"
      "<tr><td>libxlsxwriter</td><td>BSD 2-Clause</td></tr>"
      "<tr><td>FreeXL</td><td>MPL 1.1, GPL 2.0 or LGPL 2.1</td></tr>"
      "<tr><td>mdbtools (when installed)</td><td>LGPL 2.0</td></tr>"
      "</table>")
                                   .arg(build.toHtmlEscaped(), QStringLiteral(QT_VERSION_STR),
                                        QStringLiteral(QCUSTOMPLOT_VERSION_STR)));
  libraries->setObjectName(QStringLiteral("Libraries"));
  libraries->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(name);
  layout->addWidget(about);
  layout->addWidget(libraries);
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(box, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  layout->addWidget(box);
  return dialog;
}

namespace {

// Markdown headings carry no anchors; each gets one named after its text,
// as the guide's contents link to them ("Run rules" as "#run-rules").
void NameHeadings(QTextDocument* document) {
  static const QRegularExpression other(QStringLiteral("[^a-z0-9-]"));
  for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0) continue;
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    QTextCharFormat anchor;
    anchor.setAnchor(true);
    anchor.setAnchorNames({block.text().toLower().replace(QLatin1Char(' '), QLatin1Char('-')).remove(other)});
    cursor.mergeCharFormat(anchor);
  }
}

}  // namespace

QDialog* MakeHelpContents(QWidget* parent) {
  RegisterHelpResource();
  auto* dialog = new QDialog(parent, Qt::Window);
  dialog->setObjectName(QStringLiteral("HelpContents"));
  dialog->setWindowTitle(QStringLiteral("Orvik 2.0 Help"));
  auto* browser = new QTextBrowser;
  browser->setObjectName(QStringLiteral("HelpText"));
  // Links within the guide scroll to their heading; others open outside.
  browser->setOpenLinks(false);
  QObject::connect(browser, &QTextBrowser::anchorClicked, browser, [browser](const QUrl& url) {
    if (url.hasFragment()) browser->scrollToAnchor(url.fragment());
    else QDesktopServices::openUrl(url);
  });
  QObject::connect(browser, &QTextBrowser::sourceChanged, browser, [browser] { NameHeadings(browser->document()); });
  browser->setSource(QUrl(QStringLiteral("qrc:/help/user_guide.md")), QTextDocument::MarkdownResource);
  auto* home = new QPushButton(QStringLiteral("Contents"));
  auto* close = new QPushButton(QStringLiteral("Close"));
  QObject::connect(home, &QPushButton::clicked, browser, [browser] { browser->verticalScrollBar()->setValue(0); });
  QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(home);
  buttons->addStretch();
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(dialog);
  layout->addLayout(buttons);
  layout->addWidget(browser);
  dialog->resize(760, 640);
  return dialog;
}

}  // namespace orvik::gui
