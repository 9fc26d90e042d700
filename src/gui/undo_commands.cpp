#include "gui/undo_commands.h"

namespace orvik::gui {

EditCellsCommand::EditCellsCommand(worksheet::SheetEditor& editor, std::vector<worksheet::CellEdit> edits,
                                   const QString& text)
    : editor_(editor), edits_(std::move(edits)) {
  setText(text);
}

void EditCellsCommand::redo() { editor_.Apply(edits_); }

void EditCellsCommand::undo() {
  // Backwards, so that a cell edited twice ends with its first text.
  std::vector<worksheet::CellEdit> reversed(edits_.rbegin(), edits_.rend());
  editor_.Apply(reversed, true);
}

RowColumnCommand::RowColumnCommand(worksheet::SheetEditor& editor, Edit edit, long at, long count)
    : editor_(editor), edit_(edit), at_(at), count_(count) {
  switch (edit) {
    case Edit::InsertRows: setText(QStringLiteral("Insert Row")); break;
    case Edit::InsertColumns: setText(QStringLiteral("Insert Column")); break;
    case Edit::DeleteRows: setText(QStringLiteral("Delete Row")); break;
    case Edit::DeleteColumns: setText(QStringLiteral("Delete Column")); break;
  }
}

void RowColumnCommand::redo() {
  formats_before_ = editor_.Formats().Runs();
  switch (edit_) {
    case Edit::InsertRows: editor_.InsertRows(at_, count_); break;
    case Edit::InsertColumns: editor_.InsertColumns(at_, count_); break;
    case Edit::DeleteRows: removed_ = editor_.DeleteRows(at_, count_); break;
    case Edit::DeleteColumns:
      removed_headers_.clear();
      for (long col = at_; col < at_ + count_; ++col)
        removed_headers_.push_back(editor_.Sheet().ColumnHeaderName(col));
      removed_ = editor_.DeleteColumns(at_, count_);
      break;
  }
}

void RowColumnCommand::undo() {
  switch (edit_) {
    case Edit::InsertRows: editor_.DeleteRows(at_, count_); break;
    case Edit::InsertColumns: editor_.DeleteColumns(at_, count_); break;
    case Edit::DeleteRows:
      editor_.InsertRows(at_, count_);
      editor_.Apply(removed_, true);
      break;
    case Edit::DeleteColumns:
      editor_.InsertColumns(at_, count_);
      for (std::size_t i = 0; i < removed_headers_.size(); ++i)
        if (!removed_headers_[i].empty()) editor_.SetColumnHeader(at_ + static_cast<long>(i), removed_headers_[i]);
      editor_.Apply(removed_, true);
      break;
  }
  editor_.SetFormatRuns(formats_before_);
}

FormatCommand::FormatCommand(worksheet::SheetEditor& editor, const worksheet::CellBlock& block,
                             const worksheet::FormatChange& change, const QString& text)
    : editor_(editor), block_(block), change_(change) {
  setText(text);
}

void FormatCommand::redo() {
  before_ = editor_.Formats().Runs();
  editor_.ApplyFormat(block_, change_);
}

void FormatCommand::undo() { editor_.SetFormatRuns(before_); }

HeaderNameCommand::HeaderNameCommand(worksheet::SheetEditor& editor, long col, std::string name)
    : editor_(editor), col_(col), before_(editor.Sheet().ColumnHeaderName(col)), after_(std::move(name)) {
  setText(QStringLiteral("Column Header Name"));
}

void HeaderNameCommand::redo() { editor_.SetColumnHeader(col_, after_); }

void HeaderNameCommand::undo() { editor_.SetColumnHeader(col_, before_); }

}  // namespace orvik::gui
