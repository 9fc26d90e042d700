#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "formats/project_file.h"
#include "shell/message_box.h"

class QMdiSubWindow;

namespace orvik::gui {

class MainWindow;
class WorksheetWindow;

// How the user wants a data file imported: its separator (delimited text),
// whether its first row names the columns, and which sheet of a workbook.
struct ImportChoice {
  char separator = ',';
  bool headerRow = false;
  std::size_t sheetIndex = 0;
};

// The texts of the questions that guard unsaved work.
// Before the open session is replaced or ended while it holds unsaved work;
// `project_name` is the project file's name, empty when it has none yet.
shell::MessageBox SaveChangesQuestion(const std::string& project_name);
// At start, when the last run ended without closing and left an autosave.
shell::MessageBox RecoverQuestion(const std::string& saved_at);

// The project commands of the main window: open, save and save-as of
// project files (.orv), import and export of worksheet data, the database
// import, the save question before unsaved work is dropped, and the autosave
// with its recovery after a crash. The open session is "modified" from any
// worksheet edit, rename, opened or closed window until it is saved.
class ProjectActions : public QObject {
  Q_OBJECT

 public:
  explicit ProjectActions(MainWindow& window);
  ~ProjectActions() override;

  // Puts the window commands of mnuOpen, mnuSave, mnuSaveAs, mnuDataImport,
  // mnuDataExport and mnuDB in the main window's dispatch.
  void RegisterCommands();
  // Follows a new document window for the modified state.
  void Watch(QMdiSubWindow* sub);

  // Replaces the open session by the project at `path`; a file that cannot
  // be read gives a message and changes nothing. False when nothing opened.
  bool OpenProject(const QString& path);
  // Saves the session to its project file (asking for one when it has
  // none) or to a new one; false when not saved.
  bool Save();
  bool SaveAs();
  bool SaveTo(const QString& path);
  // Imports a data file as a new worksheet with `choice`.
  WorksheetWindow* Import(const QString& path, const ImportChoice& choice);
  // Writes the active worksheet to `path` (.csv, .tsv/.txt or .xlsx).
  bool Export(const QString& path);
  // The database import of mnuDB.
  void DatabaseImport();

  // The whole open session as a project record.
  formats::Project CurrentProject() const;
  // True when the session holds work (a worksheet with data or a result
  // window) changed since it was last saved or opened.
  bool HasUnsavedWork() const;
  bool IsModified() const { return modified_; }
  const QString& ProjectPath() const { return path_; }

  // Asks the save question when unsaved work would be lost; false when the
  // user cancels or the save fails, so the caller must stop.
  bool MayDropSession();

  // The autosave: the file this process writes, the interval, and the
  // recovery offered at start for autosaves of processes that are gone.
  QString AutosavePath() const;
  void Autosave();
  void OfferRecovery();
  // The folder of autosaves: $ORVIK_AUTOSAVE_DIR, else the application's
  // local data folder.
  static QString AutosaveFolder();
  static constexpr int kAutosaveMinutes = 3;

  // Replace the dialogs (tests, scripted runs): the import options for a
  // file with its sheet names, and the table picked from a database.
  void SetImportChooser(std::function<std::optional<ImportChoice>(const QString&, const std::vector<std::string>&)> f) {
    import_chooser_ = std::move(f);
  }
  void SetTablePicker(std::function<std::optional<std::string>(const std::vector<std::string>&)> f) {
    table_picker_ = std::move(f);
  }

 private:
  void Restore(formats::Project project);
  void CloseAllDocuments();
  void MarkModified();
  void MarkSaved(const QString& path);
  void ShowFailure(const std::string& text);
  std::optional<ImportChoice> ChooseImport(const QString& path, const std::vector<std::string>& sheets);
  void ImportCommand();
  void ExportCommand();
  void ShowExported(const QString& path);
  // How long the status bar tells of a save or an export, in milliseconds.
  static constexpr int kStatusTimeout = 8000;
  void OpenCommand();

  MainWindow& window_;
  QString path_;
  bool modified_ = false;
  bool autosaved_ = true;  // nothing changed since the last autosave
  int restoring_ = 0;
  QTimer autosave_timer_;
  std::function<std::optional<ImportChoice>(const QString&, const std::vector<std::string>&)> import_chooser_;
  std::function<std::optional<std::string>(const std::vector<std::string>&)> table_picker_;
};

}  // namespace orvik::gui
