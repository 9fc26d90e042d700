#pragma once

#include <QUndoCommand>
#include <string>
#include <vector>

#include "worksheet/sheet_edits.h"

namespace orvik::gui {

// Cell texts changed by typing, pasting, cutting, clearing, sorting or
// replacing: the changed cells with their texts before and after. Each
// committed cell of typing is a step of its own.
class EditCellsCommand : public QUndoCommand {
 public:
  EditCellsCommand(worksheet::SheetEditor& editor, std::vector<worksheet::CellEdit> edits, const QString& text);

  void redo() override;
  void undo() override;

 private:
  worksheet::SheetEditor& editor_;
  std::vector<worksheet::CellEdit> edits_;
};

// Inserting or deleting rows or columns at the active cell. A deletion keeps
// the removed texts, header names and formats to put them back.
class RowColumnCommand : public QUndoCommand {
 public:
  enum class Edit { InsertRows, InsertColumns, DeleteRows, DeleteColumns };

  RowColumnCommand(worksheet::SheetEditor& editor, Edit edit, long at, long count);

  void redo() override;
  void undo() override;

 private:
  worksheet::SheetEditor& editor_;
  Edit edit_;
  long at_;
  long count_;
  std::vector<worksheet::CellEdit> removed_;
  std::vector<std::string> removed_headers_;
  std::vector<worksheet::SheetFormats::Run> formats_before_;
};

// A font style, alignment or colour set on a block.
class FormatCommand : public QUndoCommand {
 public:
  FormatCommand(worksheet::SheetEditor& editor, const worksheet::CellBlock& block,
                const worksheet::FormatChange& change, const QString& text);

  void redo() override;
  void undo() override;

 private:
  worksheet::SheetEditor& editor_;
  worksheet::CellBlock block_;
  worksheet::FormatChange change_;
  std::vector<worksheet::SheetFormats::Run> before_;
};

// A column header renamed.
class HeaderNameCommand : public QUndoCommand {
 public:
  HeaderNameCommand(worksheet::SheetEditor& editor, long col, std::string name);

  void redo() override;
  void undo() override;

 private:
  worksheet::SheetEditor& editor_;
  long col_;
  std::string before_;
  std::string after_;
};

}  // namespace orvik::gui
