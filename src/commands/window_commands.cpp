#include "commands/window_commands.h"

namespace orvik::commands {

namespace {

// A window command; `built` is false while the window application lacks its
// work (its tools stay disabled).
shell::CommandDeclaration Window(std::string_view key, std::string_view menu, std::string_view submenu,
                                 std::string_view caption, bool built = true) {
  return {.key = key,
          .menu = menu,
          .submenu = submenu,
          .caption = caption,
          .scope = shell::CommandScope::Window,
          .windowBuilt = built};
}

}  // namespace

std::vector<shell::CommandDeclaration> WorksheetWindowCommands() {
  return {
      Window("mnuNew", "mnuFile", "", "&New WorkSheet"),
      Window("mnuOpen", "mnuFile", "", "&Open Project..."),
      Window("mnuSave", "mnuFile", "", "&Save Project"),
      Window("mnuSaveAs", "mnuFile", "", "Save Project &As..."),
      Window("mnuPrint", "mnuFile", "", "&Print..."),
      Window("mnuWorkSheetPrint", "mnuFile", "", "Print WorkSheet"),
      Window("mnuExit", "mnuFile", "", "E&xit"),
      Window("mnuDataImport", "mnuFile", "", "&Import Data..."),
      Window("mnuDataExport", "mnuFile", "", "&Export Data..."),
      Window("mnuDB", "mnuFile", "", "&Database Connection..."),
      Window("mnuCut", "mnuEdit", "", "Cu&t"),
      Window("mnuCopy", "mnuEdit", "", "&Copy"),
      Window("mnuPaste", "mnuEdit", "", "&Paste"),
      Window("mnuChartDataCopy", "mnuEdit", "", "Copy Result &Data"),
      Window("mnuGraphSave", "mnuEdit", "", "Save &Graph As Picture..."),
      Window("mnuDel", "mnuEdit", "", "C&lear"),
      Window("mnuSelectAll", "mnuEdit", "", "Select &All"),
      Window("mnuInsertRow", "mnuEdit", "Insert/Delete", "Insert &Row"),
      Window("mnuInsertCol", "mnuEdit", "Insert/Delete", "Insert C&olumn"),
      Window("mnuDelRow", "mnuEdit", "Insert/Delete", "Delete Ro&w"),
      Window("mnuDelCol", "mnuEdit", "Insert/Delete", "Delete Col&umn"),
      Window("mnuFind", "mnuEdit", "", "&Find..."),
      Window("mnuFindNext", "mnuEdit", "", "Find &Next"),
      Window("mnuReplace", "mnuEdit", "", "R&eplace..."),
      Window("mnuSort", "mnuTool", "", "&Sort..."),
      Window("mnuCellType", "mnuTool", "", "&Cell Type...", false),
      Window("mnuWorkSheetName", "mnuTool", "", "&Rename WorkSheet..."),
      Window("mnuSheetHeaderName", "mnuTool", "", "Column &Header Name..."),
      Window("mnuItalic", "mnuTool", "Font Style", "&Italic"),
      Window("mnuUnderline", "mnuTool", "Font Style", "&Underline"),
      Window("mnuBold", "mnuTool", "Font Style", "&Bold"),
      Window("mnuLeft", "mnuTool", "Alignment", "Align &Left"),
      Window("mnuCenter", "mnuTool", "Alignment", "Align &Center"),
      Window("mnuRight", "mnuTool", "Alignment", "Align &Right"),
      Window("mnuStandardToolbar", "mnuView", "", "&Standard Toolbar"),
      Window("mnuFormatToolbar", "mnuView", "", "&Format Toolbar"),
      Window("mnuStatusBar", "mnuView", "", "Status &Bar"),
      Window("mnuSession", "mnuView", "", "S&ession Window"),
      Window("mnuTileH", "mnuWindow", "", "Tile &Horizontally"),
      Window("mnuTileV", "mnuWindow", "", "Tile &Vertically"),
      Window("mnuCascade", "mnuWindow", "", "&Cascade"),
      Window("mnuArrangeIcons", "mnuWindow", "", "&Arrange Icons"),
  };
}

std::vector<shell::CommandDeclaration> ChartWindowCommands() {
  return {
      Window("mnuChartProperty", "mnuGraph", "", "Chart &Properties..."),
      Window("mnuChartPrint", "mnuGraph", "", "Print C&hart..."),
  };
}

std::vector<shell::CommandDeclaration> AccessoryWindowCommands() {
  return {
      Window("mnuCal", "mnuTool", "", "Calc&ulator"),
      Window("mnuMemo", "mnuTool", "", "&Memo"),
      Window("mnuDate", "mnuTool", "", "Calen&dar"),
      Window("mnuInformation", "mnuHelp", "", "&About Orvik 2.0"),
      Window("mnuContents", "mnuHelp", "", "&Contents"),
  };
}

}  // namespace orvik::commands
