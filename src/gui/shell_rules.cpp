#include "gui/shell_rules.h"

namespace orvik::gui {

std::optional<RowColumnEditKind> RowColumnEditForKey(std::string_view key) {
  if (key == "mnuInsertRow") return RowColumnEditKind::InsertRow;
  if (key == "mnuInsertCol") return RowColumnEditKind::InsertColumn;
  if (key == "mnuDelRow") return RowColumnEditKind::DeleteRow;
  if (key == "mnuDelCol") return RowColumnEditKind::DeleteColumn;
  return std::nullopt;
}

std::optional<FontStyle> FontStyleForKey(std::string_view key) {
  if (key == "mnuBold") return FontStyle::Bold;
  if (key == "mnuItalic") return FontStyle::Italic;
  if (key == "mnuUnderline") return FontStyle::Underline;
  return std::nullopt;
}

std::string WorksheetCounter::NextName() {
  ++value_;
  return "WorkSheet " + std::to_string(value_);
}

std::string WorksheetMadeLine(std::string_view caption) {
  return std::string(caption) + " generation is completed";
}

std::string WorksheetClosedLine(std::string_view caption) {
  return std::string(caption) + " elimination is completed";
}

shell::MessageBox CloseWorksheetQuestion(std::string_view caption) {
  return shell::QuestionBox(std::string(caption) + " include data" + "\r\n" + "\r" +
                            " Are you sure you want to close?");
}

shell::MessageBox ExitQuestion() {
  return shell::QuestionBox(std::string("WorkSheets or Windows are still open.") + "\r\n" + "\r" +
                            "Are you sure you want to end your session?");
}

bool ExitNeedsQuestion(int open_document_windows) { return open_document_windows > 0; }

bool CloseDisablesMenus(int open_document_windows) { return open_document_windows == 1; }

const std::vector<std::string_view>& DocumentDependentNames() {
  static const std::vector<std::string_view> names = {
      "mnuSave",  "mnuSaveAs", "mnuDataImport", "mnuDataExport", "mnuPrint",          "barStandard",
      "barFormat", "miVStandardToolbar", "miVFormatToolbar", "mnuEdit", "mnuTool", "mnuGraph",
      "mnuAnalysis", "mnuView", "mnuWindow"};
  return names;
}

worksheet::GridSelection SelectionFromGrid(const std::optional<GridRange>& range, GridPoint anchor, long grid_rows,
                                           long grid_cols) {
  worksheet::GridSelection selection;
  if (!range) return selection;
  selection.IsBlockSelected = true;
  // The start is the rectangle's side the anchor lies on; an anchor outside
  // the rectangle (a selection made by the program) starts at its top left.
  auto ends = [](long first, long last, long at) {
    return at == last && first != last ? std::pair{last, first} : std::pair{first, last};
  };
  const auto [col, col2] = ends(range->left, range->right, anchor.col);
  const auto [row, row2] = ends(range->top, range->bottom, anchor.row);
  const bool all_rows = range->top == 0 && range->bottom == grid_rows - 1;
  const bool all_cols = range->left == 0 && range->right == grid_cols - 1;
  selection.SelBlockCol = all_cols ? -1 : col + 1;
  selection.SelBlockCol2 = all_cols ? -1 : col2 + 1;
  selection.SelBlockRow = all_rows ? -1 : row + 1;
  selection.SelBlockRow2 = all_rows ? -1 : row2 + 1;
  return selection;
}

}  // namespace orvik::gui
