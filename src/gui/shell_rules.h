#pragma once

// The rules of the main window that need no widgets: worksheet naming, the
// texts of the close and exit questions, when menus are switched off, how a
// grid selection maps to the SelBlock fields. The widget classes only bind
// them.

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/message_box.h"
#include "worksheet/worksheet.h"

namespace orvik::gui {

inline constexpr const char* kMainTitle = "Orvik 2.0";

// The four edits of the insert and delete commands, chosen by the tool key.
enum class RowColumnEditKind { InsertRow, InsertColumn, DeleteRow, DeleteColumn };
// The edit of "mnuInsertRow", "mnuInsertCol", "mnuDelRow", "mnuDelCol".
std::optional<RowColumnEditKind> RowColumnEditForKey(std::string_view key);

// The three font styles toggled by "mnuBold", "mnuItalic", "mnuUnderline".
enum class FontStyle { Bold, Italic, Underline };
std::optional<FontStyle> FontStyleForKey(std::string_view key);

// The worksheet counter of the main window: starts at 0, raised for every
// new worksheet and never lowered, so a closed sheet's number is not reused.
class WorksheetCounter {
 public:
  // Raises the counter and returns the new sheet's caption, "WorkSheet N".
  std::string NextName();
  int Value() const { return value_; }
  // Sets the counter as a saved project left it; it is never lowered.
  void Restore(int value) { value_ = std::max(value_, value); }

 private:
  int value_ = 0;
};

// "WorkSheet 3 generation is completed".
std::string WorksheetMadeLine(std::string_view caption);
// "WorkSheet 3 elimination is completed".
std::string WorksheetClosedLine(std::string_view caption);

// The question before closing a worksheet window that holds data.
shell::MessageBox CloseWorksheetQuestion(std::string_view caption);
// The question before ending the program while windows are open.
shell::MessageBox ExitQuestion();

// Exit asks only when a document window (worksheet, result window, design
// sheet) is open.
bool ExitNeedsQuestion(int open_document_windows);
// Closing a worksheet switches the document menus off when it is the last
// document window; `open_document_windows` counts the closing one.
bool CloseDisablesMenus(int open_document_windows);

// The menu entries, bars and view check marks switched off when the last
// document window closes and on when a worksheet is made or opened.
const std::vector<std::string_view>& DocumentDependentNames();

// The user's selection in the grid, as the grid control reports it: the
// covered rectangle (0-based model rows and columns, inclusive), the cell
// the selection began on, and the grid's size.
struct GridRange {
  long top = 0;
  long left = 0;
  long bottom = 0;
  long right = 0;
};
struct GridPoint {
  long row = 0;
  long col = 0;
};

// The SelBlock fields for a selection: a rectangle covering every row is a
// selection of whole columns (row fields -1), one covering every column a
// selection of whole rows (column fields -1), both the whole sheet. The start
// fields take the anchor's side of the rectangle, so a block dragged right to
// left has SelBlockCol2 < SelBlockCol. Without a range nothing is selected.
worksheet::GridSelection SelectionFromGrid(const std::optional<GridRange>& range, GridPoint anchor, long grid_rows,
                                           long grid_cols);


}  // namespace orvik::gui
