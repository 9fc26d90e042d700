#pragma once

#include <QTableView>
#include <QUndoStack>
#include <QWidget>
#include <functional>
#include <memory>

#include "gui/shell_rules.h"
#include "worksheet/sheet_edits.h"

namespace orvik::gui {

class SheetModel;

// The grid `OrvikSheet`: a table view that remembers the cell a selection
// began on (where the mouse was pressed, the row or column header pressed,
// or the caret before a Shift-extended move), which the SelBlock fields need
// and the view itself does not expose.
class SheetView : public QTableView {
  Q_OBJECT

 public:
  explicit SheetView(QWidget* parent = nullptr);

  GridPoint Anchor() const { return anchor_; }
  void SetAnchor(GridPoint anchor);
  // The last cell holding data, where Ctrl+End goes.
  void SetDataEnd(std::function<QModelIndex()> data_end) { data_end_ = std::move(data_end); }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

 private:
  void MoveCaret(int rows, int cols);

  GridPoint anchor_;
  std::function<QModelIndex()> data_end_;
};

// A worksheet window `OrvikDoc`: one core worksheet, the editor that makes
// its edits, its undo history and its grid. Every change of the grid's
// selection is written back to the worksheet's SelBlock fields and caret.
class WorksheetWindow : public QWidget {
  Q_OBJECT

 public:
  explicit WorksheetWindow(std::unique_ptr<worksheet::Worksheet> sheet, QWidget* parent = nullptr);
  ~WorksheetWindow() override;

  worksheet::Worksheet& Sheet() { return *sheet_; }
  worksheet::SheetEditor& Editor() { return editor_; }
  QUndoStack* UndoStack() { return &undo_; }
  SheetView* View() { return view_; }
  SheetModel* Model() { return model_; }
  bool HoldsData() const { return sheet_->DataRowCnt() > 0 || sheet_->DataColCnt() > 0; }

  // Clipboard and editing commands on the selected block (or the caret's cell).
  void Copy();
  void Cut();
  void Paste();
  void Clear();
  void SelectAll();
  // Inserts or deletes one row or column at the active cell.
  void EditRowsColumns(RowColumnEditKind kind);
  void Sort(const worksheet::CellBlock& block, const std::vector<worksheet::SortKey>& keys);
  // Bold, italic and underline toggle from the state of the active cell.
  void ToggleFontStyle(FontStyle style);
  void SetAlignment(worksheet::Alignment alignment);
  void SetColor(bool background, std::uint32_t rgb);
  void SetColumnHeaderName(long col, const QString& name);
  // Find and replace; they move the caret to the cell found.
  bool FindNext(const QString& what, const worksheet::FindOptions& options);
  bool ReplaceCurrent(const QString& what, const QString& with, const worksheet::FindOptions& options);
  int ReplaceAll(const QString& what, const QString& with, const worksheet::FindOptions& options);

  // The selected cells, or the active cell when nothing is selected.
  worksheet::CellBlock TargetBlock() const;
  // Selects a block as a drag from (row, col) to (row2, col2) would (1-based).
  void SelectBlock(long row, long col, long row2, long col2);

 private:
  void SyncSelection();
  void Push(std::vector<worksheet::CellEdit> edits, const QString& text);

  std::unique_ptr<worksheet::Worksheet> sheet_;
  worksheet::SheetEditor editor_;
  QUndoStack undo_;
  SheetModel* model_ = nullptr;
  SheetView* view_ = nullptr;
};

}  // namespace orvik::gui
