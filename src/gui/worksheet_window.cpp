#include "gui/worksheet_window.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/sheet_model.h"
#include "gui/undo_commands.h"
#include "worksheet/delimited_cells.h"

namespace orvik::gui {

namespace {

std::string ToStd(const QString& text) { return text.toStdString(); }

}  // namespace

SheetView::SheetView(QWidget* parent) : QTableView(parent) {
  setObjectName(QStringLiteral("OrvikSheet"));
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setSelectionBehavior(QAbstractItemView::SelectItems);
  // Every row has the same height, so a million rows scroll without measuring.
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  horizontalHeader()->setDefaultSectionSize(80);
  setWordWrap(false);
  // Typing over a cell replaces it; F2 or a double click edits it in place.
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  connect(horizontalHeader(), &QHeaderView::sectionPressed, this, [this](int col) { anchor_ = {0, col}; });
  connect(verticalHeader(), &QHeaderView::sectionPressed, this, [this](int row) { anchor_ = {row, 0}; });
}

void SheetView::SetAnchor(GridPoint anchor) { anchor_ = anchor; }

void SheetView::mousePressEvent(QMouseEvent* event) {
  if (!(event->modifiers() & Qt::ShiftModifier)) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid()) anchor_ = {index.row(), index.column()};
  }
  QTableView::mousePressEvent(event);
}

// Enter and Tab move the caret as in a spreadsheet: down and right, back
// with Shift, whether or not a cell is being edited.
void SheetView::MoveCaret(int rows, int cols) {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  const int row = std::clamp(current.row() + rows, 0, model()->rowCount() - 1);
  const int col = std::clamp(current.column() + cols, 0, model()->columnCount() - 1);
  selectionModel()->setCurrentIndex(model()->index(row, col), QItemSelectionModel::ClearAndSelect);
  anchor_ = {row, col};
}

void SheetView::keyPressEvent(QKeyEvent* event) {
  const bool shift = event->modifiers() & Qt::ShiftModifier;
  // While a cell is edited, the editor's Enter reaches here too; the editor
  // closing moves the caret (closeEditor).
  const bool editing = state() == EditingState;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return editing ? void() : MoveCaret(shift ? -1 : 1, 0);
    case Qt::Key_Tab: return MoveCaret(0, 1);
    case Qt::Key_Backtab: return MoveCaret(0, -1);
    default: break;
  }
  QTableView::keyPressEvent(event);
  if (!shift && currentIndex().isValid()) anchor_ = {currentIndex().row(), currentIndex().column()};
}

void SheetView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
  const bool shift = QApplication::keyboardModifiers() & Qt::ShiftModifier;
  switch (hint) {
    case QAbstractItemDelegate::SubmitModelCache: return MoveCaret(shift ? -1 : 1, 0);
    case QAbstractItemDelegate::EditNextItem: return MoveCaret(0, 1);
    case QAbstractItemDelegate::EditPreviousItem: return MoveCaret(0, -1);
    default: return;
  }
}

// F2 edits in place: the caret after the text, nothing selected, where a
// typed key would replace the text.
bool SheetView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  if (!QTableView::edit(index, trigger, event)) return false;
  if (auto* line = qobject_cast<QLineEdit*>(indexWidget(index)); line && trigger == EditKeyPressed) {
    line->deselect();
    line->end(false);
  }
  return true;
}

// Ctrl+End goes to the last cell that holds data, not to the grid's corner.
QModelIndex SheetView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveEnd && (modifiers & Qt::ControlModifier) && data_end_) return data_end_();
  return QTableView::moveCursor(action, modifiers);
}

WorksheetWindow::WorksheetWindow(std::unique_ptr<worksheet::Worksheet> sheet, QWidget* parent)
    : QWidget(parent), sheet_(std::move(sheet)), editor_(*sheet_) {
  setObjectName(QStringLiteral("OrvikDoc"));
  setWindowTitle(QString::fromStdString(sheet_->Name()));
  model_ = new SheetModel(
      editor_,
      [this](long row, long col, const QString& text) {
        Push(worksheet::PlanWriteBlock(*sheet_, row, col, {{ToStd(text)}}), QStringLiteral("Typing"));
      },
      this);
  view_ = new SheetView(this);
  view_->setModel(model_);
  view_->SetDataEnd([this] {
    return model_->index(static_cast<int>(std::max(sheet_->DataRowCnt(), 1L) - 1),
                         static_cast<int>(std::max(sheet_->DataColCnt(), 1L) - 1));
  });
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
  connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { SyncSelection(); });
  connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { SyncSelection(); });
  connect(model_, &QAbstractItemModel::modelReset, this, [this] { SyncSelection(); });
  resize(760, 460);
}

WorksheetWindow::~WorksheetWindow() { editor_.SetListener(nullptr); }

void WorksheetWindow::SyncSelection() {
  const QModelIndex current = view_->currentIndex();
  if (current.isValid()) {
    sheet_->ActiveRow = current.row() + 1;
    sheet_->ActiveCol = current.column() + 1;
  }
  const QItemSelection selection = view_->selectionModel()->selection();
  std::optional<GridRange> range;
  for (const QItemSelectionRange& part : selection) {
    if (!part.isValid()) continue;
    if (!range) {
      range = GridRange{part.top(), part.left(), part.bottom(), part.right()};
    } else {
      range = GridRange{std::min<long>(range->top, part.top()), std::min<long>(range->left, part.left()),
                        std::max<long>(range->bottom, part.bottom()), std::max<long>(range->right, part.right())};
    }
  }
  sheet_->Selection = SelectionFromGrid(range, view_->Anchor(), model_->rowCount(), model_->columnCount());
}

worksheet::CellBlock WorksheetWindow::TargetBlock() const {
  if (auto block = worksheet::SelectedCells(*sheet_)) return *block;
  return {sheet_->ActiveRow, sheet_->ActiveCol, sheet_->ActiveRow, sheet_->ActiveCol};
}

void WorksheetWindow::SelectBlock(long row, long col, long row2, long col2) {
  view_->SetAnchor({row - 1, col - 1});
  const QModelIndex from = model_->index(static_cast<int>(row - 1), static_cast<int>(col - 1));
  const QModelIndex to = model_->index(static_cast<int>(row2 - 1), static_cast<int>(col2 - 1));
  view_->selectionModel()->setCurrentIndex(to, QItemSelectionModel::NoUpdate);
  view_->selectionModel()->select(QItemSelection(from, to), QItemSelectionModel::ClearAndSelect);
  // The view follows the caret to the block's far corner; show its start.
  view_->scrollTo(from);
  SyncSelection();
}

void WorksheetWindow::Push(std::vector<worksheet::CellEdit> edits, const QString& text) {
  if (edits.empty()) return;
  undo_.push(new EditCellsCommand(editor_, std::move(edits), text));
}

void WorksheetWindow::Copy() {
  worksheet::CellBlock block = TargetBlock();
  // Whole rows and columns copy only as far as the data goes.
  block.bottom = std::max(block.top, std::min(block.bottom, sheet_->DataRowCnt()));
  block.right = std::max(block.left, std::min(block.right, sheet_->DataColCnt()));
  std::vector<std::vector<std::string>> cells;
  for (long row = block.top; row <= block.bottom; ++row) {
    auto& line = cells.emplace_back();
    for (long col = block.left; col <= block.right; ++col) line.emplace_back(sheet_->Text(row, col));
  }
  QApplication::clipboard()->setText(QString::fromStdString(worksheet::FormatDelimited(cells, '\t')));
}

void WorksheetWindow::Cut() {
  Copy();
  Push(worksheet::PlanClear(*sheet_, TargetBlock()), QStringLiteral("Cut"));
}

void WorksheetWindow::Paste() {
  const auto cells = worksheet::ParseDelimited(ToStd(QApplication::clipboard()->text()), '\t');
  if (cells.empty()) return;
  const worksheet::CellBlock block = TargetBlock();
  Push(worksheet::PlanWriteBlock(*sheet_, block.top, block.left, cells), QStringLiteral("Paste"));
  std::size_t width = 0;
  for (const auto& row : cells) width = std::max(width, row.size());
  SelectBlock(block.top, block.left, block.top + static_cast<long>(cells.size()) - 1,
              block.left + static_cast<long>(std::max<std::size_t>(width, 1)) - 1);
}

void WorksheetWindow::Clear() { Push(worksheet::PlanClear(*sheet_, TargetBlock()), QStringLiteral("Clear")); }

void WorksheetWindow::SelectAll() { view_->selectAll(); }

void WorksheetWindow::EditRowsColumns(RowColumnEditKind kind) {
  using Edit = RowColumnCommand::Edit;
  Edit edit = Edit::InsertRows;
  switch (kind) {
    case RowColumnEditKind::InsertRow: edit = Edit::InsertRows; break;
    case RowColumnEditKind::InsertColumn: edit = Edit::InsertColumns; break;
    case RowColumnEditKind::DeleteRow:
      if (sheet_->MaxRows() <= 1) return;
      edit = Edit::DeleteRows;
      break;
    case RowColumnEditKind::DeleteColumn:
      if (sheet_->MaxCols() <= 1) return;
      edit = Edit::DeleteColumns;
      break;
  }
  const bool rows = edit == Edit::InsertRows || edit == Edit::DeleteRows;
  undo_.push(new RowColumnCommand(editor_, edit, rows ? sheet_->ActiveRow : sheet_->ActiveCol, 1));
}

void WorksheetWindow::Sort(const worksheet::CellBlock& block, const std::vector<worksheet::SortKey>& keys) {
  Push(worksheet::PlanSort(*sheet_, block, keys), QStringLiteral("Sort"));
}

void WorksheetWindow::ToggleFontStyle(FontStyle style) {
  const worksheet::CellFormat now = editor_.Formats().At(sheet_->ActiveRow, sheet_->ActiveCol);
  worksheet::FormatChange change;
  QString text;
  switch (style) {
    case FontStyle::Bold:
      change.bold = !now.bold;
      text = QStringLiteral("Bold");
      break;
    case FontStyle::Italic:
      change.italic = !now.italic;
      text = QStringLiteral("Italic");
      break;
    case FontStyle::Underline:
      change.underline = !now.underline;
      text = QStringLiteral("Underline");
      break;
  }
  undo_.push(new FormatCommand(editor_, TargetBlock(), change, text));
}

void WorksheetWindow::SetAlignment(worksheet::Alignment alignment) {
  worksheet::FormatChange change;
  change.alignment = alignment;
  undo_.push(new FormatCommand(editor_, TargetBlock(), change, QStringLiteral("Alignment")));
}

void WorksheetWindow::SetColor(bool background, std::uint32_t rgb) {
  worksheet::FormatChange change;
  (background ? change.background : change.foreground) = rgb;
  undo_.push(new FormatCommand(editor_, TargetBlock(), change, QStringLiteral("Color")));
}

void WorksheetWindow::SetColumnHeaderName(long col, const QString& name) {
  if (ToStd(name) == sheet_->ColumnHeaderName(col)) return;
  undo_.push(new HeaderNameCommand(editor_, col, ToStd(name)));
}

bool WorksheetWindow::FindNext(const QString& what, const worksheet::FindOptions& options) {
  const auto found = worksheet::FindCell(*sheet_, ToStd(what), sheet_->ActiveRow, sheet_->ActiveCol, options);
  if (!found) return false;
  SelectBlock(found->first, found->second, found->first, found->second);
  view_->scrollTo(view_->currentIndex());
  return true;
}

bool WorksheetWindow::ReplaceCurrent(const QString& what, const QString& with,
                                     const worksheet::FindOptions& options) {
  const std::string_view text = sheet_->Text(sheet_->ActiveRow, sheet_->ActiveCol);
  if (worksheet::CellMatches(text, ToStd(what), options)) {
    Push({{sheet_->ActiveRow, sheet_->ActiveCol, std::string(text),
           worksheet::ReplaceInCell(text, ToStd(what), ToStd(with), options)}},
         QStringLiteral("Replace"));
  }
  return FindNext(what, options);
}

int WorksheetWindow::ReplaceAll(const QString& what, const QString& with, const worksheet::FindOptions& options) {
  auto edits = worksheet::PlanReplaceAll(*sheet_, ToStd(what), ToStd(with), options);
  const int count = static_cast<int>(edits.size());
  Push(std::move(edits), QStringLiteral("Replace All"));
  return count;
}

}  // namespace orvik::gui
