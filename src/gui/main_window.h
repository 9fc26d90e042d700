#pragma once

#include <QAction>
#include <QDockWidget>
#include <QHash>
#include <QMainWindow>
#include <QMdiArea>
#include <QPointer>
#include <QTextEdit>
#include <QToolBar>
#include <functional>
#include <memory>
#include <vector>

#include "gui/gui_host.h"
#include "gui/shell_rules.h"
#include "shell/chart_presentation.h"
#include "worksheet/worksheet.h"

namespace orvik::gui {

class WorksheetWindow;
class ResultWindowWidget;
class FindWorkSheet;
class ProjectActions;
class HistoryPane;

// The main window `OrvikMainMDI`: the frame of every worksheet and result
// window, the session pane `SessionDoc`, the menus and toolbars whose every
// tool carries its key, and the one dispatch `ToolClick` on those keys.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  MainWindow();
  ~MainWindow() override;

  GuiHost& Host() { return host_; }
  QMdiArea* Mdi() const { return mdi_; }
  QDockWidget* SessionDoc() const { return session_doc_; }
  QTextEdit* SessionView() const { return session_view_; }

  // The tool of `key` (its object name), or null.
  QAction* Tool(const QString& key) const { return tools_.value(key); }
  // The bar's click: a colour tool goes to the colour procedure, any other
  // tool to the dispatch on its key.
  void ToolClick(QAction* tool);
  // Runs the command of `key`; an unknown key does nothing.
  void ToolClick(const QString& key);

  // mnuNew: a new empty worksheet, "WorkSheet N".
  WorksheetWindow* NewWorksheet();
  // Opens a comma- or tab-separated file as a new worksheet; a file that
  // cannot be read gives a message box and no window.
  WorksheetWindow* OpenDataFile(const QString& path);
  // Opens a design sheet `DOEDoc`: a worksheet window holding a sheet with
  // its design. It writes no session line.
  WorksheetWindow* OpenDesignSheet(worksheet::Worksheet sheet);
  // Opens a result window as a child window.
  ResultWindowWidget* OpenResultWindow(shell::ResultWindow window);
  // Opens the given-limits dialog of the control chart made by tool `key`;
  // on OK the chart is drawn again in a new result window.
  void OpenGivenLimits(const QString& key);
  // The same for result window `result`: the chart is drawn again from the
  // window's own data.
  void OpenGivenLimits(const ResultWindowWidget* result);
  // The RuleSettings dialog, for the chart of `result` or (null) for the
  // charts to come.
  void OpenRuleSettings(const ResultWindowWidget* result);
  HistoryPane* History() const { return history_; }

  // The worksheet commands act on: the active child when it is a worksheet,
  // else the worksheet that was active last.
  WorksheetWindow* ActiveWorksheetWindow() const;
  ResultWindowWidget* ActiveResultWindow() const;
  int DocumentWindowCount() const;
  // Whether the document menus, bars and file entries are on.
  bool DocumentMenusEnabled() const { return document_menus_enabled_; }
  FindWorkSheet* FindWindow() const { return find_; }
  // Project files, import, export, the save question and the autosave.
  ProjectActions& Projects() { return *project_; }

  // Replaces the colour dialog of the colour tools (tests, scripts).
  void SetColorChooser(std::function<QColor(bool background)> chooser) { color_chooser_ = std::move(chooser); }
  // Replaces the file dialogs of open, import, export and picture saving;
  // a chooser for saving may set the file type picked among the filter's.
  // With a chooser, pictures are saved at their default size unasked.
  using FileChooser = std::function<QString(bool save, const QString& filter, QString* chosen_type)>;
  void SetFileChooser(FileChooser chooser) { file_chooser_ = std::move(chooser); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  friend class ProjectActions;
  void ApplyLook();
  void CreateSessionPane();
  void CreateBars();
  void CreateWindowCommands();
  void SetDocumentMenusEnabled(bool enabled);
  // Runs a core command. A failure the command has already reported ends
  // quietly; any other run-time failure shows the common failure message.
  void RunGuarded(const std::function<void()>& body);
  // The chart menu's given-limits entry is on while a control chart is the
  // active window.
  void UpdateGivenLimitsTool();
  QMdiSubWindow* AddChild(QWidget* widget);
  void AddContextMenus(QWidget* widget);
  void ListWindowsInWindowMenu();
  void ColorTool(QAction* tool);
  QString ChooseFile(bool save, const QString& filter);
  void SaveChartPicture();
  void PrintActiveWorksheet();
  void PrintActiveChart();
  void PrintActiveResultWindow();
  void ShowChartProperty();
  void OpenFind(bool replace, bool next);
  void RenameWorksheet();
  void NameColumnHeader();
  void SortWorksheet();
  void StartCalculator();
  void ArrangeIcons();
  void TileWindows(bool horizontally);

  GuiHost host_;
  HistoryPane* history_ = nullptr;
  WorksheetCounter counter_;
  QMdiArea* mdi_ = nullptr;
  QDockWidget* session_doc_ = nullptr;
  QTextEdit* session_view_ = nullptr;
  QToolBar* bar_standard_ = nullptr;
  QToolBar* bar_format_ = nullptr;
  QHash<QString, QAction*> tools_;
  QHash<QString, QMenu*> menus_;
  QHash<QString, std::function<void()>> window_commands_;
  QPointer<WorksheetWindow> last_sheet_;
  FindWorkSheet* find_ = nullptr;
  QDialog* help_ = nullptr;
  // While a window is drawn again (given limits), the look of its charts,
  // which the new window takes over.
  std::vector<shell::ChartPresentation> carried_looks_;
  bool document_menus_enabled_ = true;
  bool exiting_ = false;
  std::function<QColor(bool)> color_chooser_;
  FileChooser file_chooser_;
  std::unique_ptr<ProjectActions> project_;
};

}  // namespace orvik::gui
