#include "gui/project_actions.h"

#include <signal.h>
#include <unistd.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QInputDialog>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QStandardPaths>
#include <QStatusBar>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include "charts/rule_settings.h"
#include "formats/database_import.h"
#include "formats/delimited_text.h"
#include "formats/workbook_file.h"
#include "gui/main_window.h"
#include "gui/result_window_widget.h"
#include "gui/worksheet_window.h"

namespace orvik::gui {

shell::MessageBox SaveChangesQuestion(const std::string& project_name) {
  const std::string text =
      project_name.empty()
          ? "The worksheets and result windows hold work that is not saved in a project file.\r\n\r"
            "Do you want to save it as a project?"
          : "The project \"" + project_name + "\" has changes that are not saved.\r\n\rDo you want to save them?";
  return {"Confirmation", text, shell::MessageIcon::Question, shell::MessageButtons::SaveDiscardCancel};
}

shell::MessageBox RecoverQuestion(const std::string& saved_at) {
  return shell::QuestionBox("Orvik 2.0 did not end normally last time. Its open work was saved automatically at " +
                            saved_at + ".\r\n\rDo you want to recover it?");
}

namespace {

std::string ToStd(const QString& text) { return text.toStdString(); }

// The import options: separator and header row for delimited text, sheet and
// header row for a workbook.
std::optional<ImportChoice> ImportDialog(QWidget* parent, const QString& path, const std::vector<std::string>& sheets,
                                         bool delimited) {
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("DataImport"));
  dialog.setWindowTitle(QStringLiteral("Import - ") + QFileInfo(path).fileName());
  auto* form = new QFormLayout(&dialog);
  auto* separator = new QComboBox(&dialog);
  auto* other = new QLineEdit(&dialog);
  other->setMaxLength(1);
  auto* sheet = new QComboBox(&dialog);
  if (delimited) {
    separator->addItem(QStringLiteral("Comma ( , )"), QChar(','));
    separator->addItem(QStringLiteral("Tab"), QChar('\t'));
    separator->addItem(QStringLiteral("Semicolon ( ; )"), QChar(';'));
    separator->addItem(QStringLiteral("Space"), QChar(' '));
    separator->addItem(QStringLiteral("Other"), QChar());
    separator->setCurrentIndex(formats::SeparatorForPath(ToStd(path)) == '\t' ? 1 : 0);
    other->setEnabled(false);
    QObject::connect(separator, &QComboBox::currentIndexChanged, other,
                     [separator, other] { other->setEnabled(separator->currentData().toChar().isNull()); });
    form->addRow(QStringLiteral("Separator:"), separator);
    form->addRow(QStringLiteral("Other separator:"), other);
  } else {
    for (const auto& name : sheets) sheet->addItem(QString::fromStdString(name));
    form->addRow(QStringLiteral("Sheet:"), sheet);
  }
  // The boxes of the other kind of file stay out of sight; left shown, they
  // would sit over the labels of the rows in use.
  if (delimited) {
    sheet->hide();
  } else {
    separator->hide();
    other->hide();
  }
  auto* header = new QCheckBox(QStringLiteral("First row holds the column names"), &dialog);
  form->addRow(header);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  form->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  ImportChoice choice;
  choice.headerRow = header->isChecked();
  choice.sheetIndex = static_cast<std::size_t>(std::max(0, sheet->currentIndex()));
  if (delimited) {
    const QChar chosen = separator->currentData().toChar();
    const QString typed = other->text();
    choice.separator = !chosen.isNull() ? chosen.toLatin1() : typed.isEmpty() ? ',' : typed.at(0).toLatin1();
  }
  return choice;
}

bool ProcessIsGone(qint64 pid) { return pid > 0 && ::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH; }

}  // namespace

ProjectActions::ProjectActions(MainWindow& window) : window_(window) {
  autosave_timer_.setInterval(kAutosaveMinutes * 60 * 1000);
  connect(&autosave_timer_, &QTimer::timeout, this, &ProjectActions::Autosave);
  autosave_timer_.start();
}

ProjectActions::~ProjectActions() {
  // A run that ends through its own close leaves no autosave behind.
  QFile::remove(AutosavePath());
}

void ProjectActions::RegisterCommands() {
  auto& commands = window_.window_commands_;
  commands.insert(QStringLiteral("mnuOpen"), [this] { OpenCommand(); });
  commands.insert(QStringLiteral("mnuSave"), [this] { Save(); });
  commands.insert(QStringLiteral("mnuSaveAs"), [this] { SaveAs(); });
  commands.insert(QStringLiteral("mnuDataImport"), [this] { ImportCommand(); });
  commands.insert(QStringLiteral("mnuDataExport"), [this] { ExportCommand(); });
  commands.insert(QStringLiteral("mnuDB"), [this] { DatabaseImport(); });
  window_.Tool(QStringLiteral("mnuSave"))->setShortcut(QKeySequence::Save);
  window_.Tool(QStringLiteral("mnuSaveAs"))->setShortcut(QKeySequence::SaveAs);
}

void ProjectActions::Watch(QMdiSubWindow* sub) {
  MarkModified();
  connect(sub, &QObject::destroyed, this, [this] { MarkModified(); });
  connect(sub, &QWidget::windowTitleChanged, this, [this] { MarkModified(); });
  if (auto* sheet = qobject_cast<WorksheetWindow*>(sub->widget()))
    connect(sheet->UndoStack(), &QUndoStack::indexChanged, this, [this] { MarkModified(); });
  if (auto* result = qobject_cast<ResultWindowWidget*>(sub->widget()))
    connect(result, &ResultWindowWidget::presentationChanged, this, [this] { MarkModified(); });
}

void ProjectActions::MarkModified() {
  if (restoring_ > 0) return;
  modified_ = true;
  autosaved_ = false;
}

void ProjectActions::MarkSaved(const QString& path) {
  path_ = path;
  modified_ = false;
  autosaved_ = true;
  QFile::remove(AutosavePath());
}

bool ProjectActions::HasUnsavedWork() const {
  if (!modified_) return false;
  for (QMdiSubWindow* sub : window_.Mdi()->subWindowList()) {
    if (qobject_cast<ResultWindowWidget*>(sub->widget())) return true;
    if (auto* sheet = qobject_cast<WorksheetWindow*>(sub->widget()); sheet && sheet->HoldsData()) return true;
  }
  return false;
}

void ProjectActions::ShowFailure(const std::string& text) {
  window_.Host().ShowMessage({"Information", text, shell::MessageIcon::Exclamation, shell::MessageButtons::Ok});
}

formats::Project ProjectActions::CurrentProject() const {
  formats::Project project;
  project.worksheetCounter = window_.counter_.Value();
  const QList<QMdiSubWindow*> subs = window_.Mdi()->subWindowList(QMdiArea::CreationOrder);
  for (QMdiSubWindow* sub : subs) {
    const QRect geometry = sub->isMinimized() || sub->isMaximized() ? sub->normalGeometry() : sub->geometry();
    const formats::WindowPlacement placement{geometry.x(),      geometry.y(),      geometry.width(),
                                             geometry.height(), sub->isMinimized(), sub->isMaximized()};
    if (auto* sheet = qobject_cast<WorksheetWindow*>(sub->widget())) {
      project.order.push_back({formats::Project::Document::Kind::Sheet, project.sheets.size()});
      project.sheets.push_back({sheet->Sheet(), sheet->Editor().Formats().Runs(), placement});
    } else if (auto* result = qobject_cast<ResultWindowWidget*>(sub->widget())) {
      project.order.push_back({formats::Project::Document::Kind::Result, project.results.size()});
      project.results.push_back({result->Record(), placement});
    } else {
      continue;
    }
    if (sub == window_.Mdi()->activeSubWindow()) project.active = project.order.size() - 1;
  }
  project.options = charts::RuleSettingStates(window_.Host().Settings().Last<charts::ChartRuleSettings>());
  return project;
}

void ProjectActions::CloseAllDocuments() {
  // The session is replaced as a whole: its windows close without the
  // per-worksheet question, which the save question has already covered.
  const bool was_exiting = window_.exiting_;
  window_.exiting_ = true;
  for (QMdiSubWindow* sub : window_.Mdi()->subWindowList()) {
    sub->close();
    delete sub;
  }
  window_.exiting_ = was_exiting;
  window_.last_sheet_ = nullptr;
}

void ProjectActions::Restore(formats::Project project) {
  ++restoring_;
  CloseAllDocuments();
  window_.counter_.Restore(project.worksheetCounter);
  // A project saved with rule settings brings them back; older files keep
  // the session's own.
  if (!project.options.empty()) charts::RestoreRuleSettings(window_.Host(), project.options);
  std::vector<QMdiSubWindow*> subs;
  bool any_sheet = false;
  for (const auto& document : project.order) {
    QWidget* widget = nullptr;
    std::optional<formats::WindowPlacement> placement;
    WorksheetWindow* sheet_window = nullptr;
    if (document.kind == formats::Project::Document::Kind::Sheet) {
      formats::ProjectSheet& entry = project.sheets[document.index];
      const worksheet::GridSelection selection = entry.sheet.Selection;
      const long active_row = entry.sheet.ActiveRow, active_col = entry.sheet.ActiveCol;
      sheet_window = new WorksheetWindow(std::make_unique<worksheet::Worksheet>(std::move(entry.sheet)));
      sheet_window->Editor().SetFormatRuns(std::move(entry.formats));
      // Put the grid's selection back; the view writes it to the sheet.
      worksheet::Worksheet& sheet = sheet_window->Sheet();
      if (selection.IsBlockSelected) {
        const long r1 = selection.SelBlockRow == -1 ? 1 : selection.SelBlockRow;
        const long r2 = selection.SelBlockRow2 == -1 ? sheet.MaxRows() : selection.SelBlockRow2;
        const long c1 = selection.SelBlockCol == -1 ? 1 : selection.SelBlockCol;
        const long c2 = selection.SelBlockCol2 == -1 ? sheet.MaxCols() : selection.SelBlockCol2;
        sheet_window->SelectBlock(r1, c1, r2, c2);
      }
      sheet.Selection = selection;
      sheet.ActiveRow = active_row;
      sheet.ActiveCol = active_col;
      widget = sheet_window;
      placement = entry.placement;
      any_sheet = true;
    } else {
      formats::ProjectResult& entry = project.results[document.index];
      widget = new ResultWindowWidget(entry.window);
      placement = entry.placement;
    }
    QMdiSubWindow* sub = window_.AddChild(widget);
    if (sheet_window) sub->setWindowTitle(QString::fromStdString(sheet_window->Sheet().Name()));
    if (placement) {
      sub->setGeometry(placement->x, placement->y, placement->width, placement->height);
      if (placement->minimized) sub->showMinimized();
      else if (placement->maximized) sub->showMaximized();
    }
    subs.push_back(sub);
  }
  if (project.active && *project.active < subs.size()) window_.Mdi()->setActiveSubWindow(subs[*project.active]);
  window_.SetDocumentMenusEnabled(any_sheet);
  --restoring_;
}

bool ProjectActions::MayDropSession() {
  if (!HasUnsavedWork()) return true;
  const std::string name = path_.isEmpty() ? std::string() : ToStd(QFileInfo(path_).fileName());
  switch (window_.Host().ShowMessage(SaveChangesQuestion(name))) {
    case shell::MessageAnswer::Ok: return Save();
    case shell::MessageAnswer::Discard: return true;
    case shell::MessageAnswer::Cancel: return false;
  }
  return false;
}

bool ProjectActions::OpenProject(const QString& path) {
  formats::Project project;
  try {
    project = formats::LoadProject(ToStd(path));
  } catch (const formats::ProjectFileError& error) {
    ShowFailure(error.what());
    return false;
  }
  if (!MayDropSession()) return false;
  Restore(std::move(project));
  MarkSaved(QFileInfo(path).absoluteFilePath());
  window_.statusBar()->showMessage(QStringLiteral("Saved %1").arg(QDir::toNativeSeparators(path_)), kStatusTimeout);
  return true;
}

bool ProjectActions::Save() { return path_.isEmpty() ? SaveAs() : SaveTo(path_); }

bool ProjectActions::SaveAs() {
  QString path = window_.ChooseFile(true, QStringLiteral("Orvik project (*.orv)"));
  if (path.isEmpty()) return false;
  if (QFileInfo(path).suffix().compare(QLatin1String("orv"), Qt::CaseInsensitive) != 0) path += QStringLiteral(".orv");
  return SaveTo(path);
}

bool ProjectActions::SaveTo(const QString& path) {
  try {
    formats::SaveProject(ToStd(path), CurrentProject());
  } catch (const formats::ProjectFileError& error) {
    ShowFailure(error.what());
    return false;
  }
  MarkSaved(QFileInfo(path).absoluteFilePath());
  window_.statusBar()->showMessage(QStringLiteral("Saved %1").arg(QDir::toNativeSeparators(path_)), kStatusTimeout);
  return true;
}

QString ProjectActions::AutosaveFolder() {
  const QByteArray folder = qgetenv("ORVIK_AUTOSAVE_DIR");
  if (!folder.isEmpty()) return QString::fromLocal8Bit(folder);
  return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/autosave");
}

QString ProjectActions::AutosavePath() const {
  return AutosaveFolder() + QStringLiteral("/autosave-%1.orv").arg(QCoreApplication::applicationPid());
}

void ProjectActions::Autosave() {
  if (autosaved_ || !HasUnsavedWork()) return;
  QDir().mkpath(AutosaveFolder());
  try {
    formats::SaveProject(ToStd(AutosavePath()), CurrentProject());
    autosaved_ = true;
  } catch (const formats::ProjectFileError& error) {
    // A failed autosave must not interrupt the user; the next one retries.
    window_.statusBar()->showMessage(QString::fromStdString(error.what()), 10000);
  }
}

void ProjectActions::OfferRecovery() {
  QDir folder(AutosaveFolder());
  QFileInfo newest;
  QStringList orphans;
  for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("autosave-*.orv")}, QDir::Files)) {
    const qint64 pid = file.completeBaseName().mid(9).toLongLong();
    if (!ProcessIsGone(pid)) continue;  // another Orvik still running
    orphans << file.absoluteFilePath();
    if (!newest.exists() || file.lastModified() > newest.lastModified()) newest = file;
  }
  if (orphans.isEmpty()) return;
  const std::string when = ToStd(newest.lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm")));
  if (window_.Host().ShowMessage(RecoverQuestion(when)) == shell::MessageAnswer::Ok) {
    try {
      Restore(formats::LoadProject(ToStd(newest.absoluteFilePath())));
      path_.clear();  // recovered work is saved where the user chooses
      modified_ = true;
      autosaved_ = false;
      Autosave();  // the recovered work is guarded again before the old files go
    } catch (const formats::ProjectFileError& error) {
      ShowFailure(error.what());
      return;  // kept, so that it can be recovered by hand
    }
  }
  for (const QString& orphan : orphans) QFile::remove(orphan);
}

void ProjectActions::OpenCommand() {
  const QString path = window_.ChooseFile(
      false, QStringLiteral("Orvik projects (*.orv);;Data files (*.csv *.tsv *.txt *.xlsx *.xls);;All files (*)"));
  if (path.isEmpty()) return;
  switch (formats::DataFileKindOf(ToStd(path))) {
    case formats::DataFileKind::Project: OpenProject(path); break;
    case formats::DataFileKind::Delimited: window_.OpenDataFile(path); break;
    case formats::DataFileKind::Xlsx:
    case formats::DataFileKind::Xls: Import(path, ImportChoice{}); break;
  }
}

std::optional<ImportChoice> ProjectActions::ChooseImport(const QString& path, const std::vector<std::string>& sheets) {
  if (import_chooser_) return import_chooser_(path, sheets);
  const bool delimited = formats::DataFileKindOf(ToStd(path)) == formats::DataFileKind::Delimited;
  return ImportDialog(&window_, path, sheets, delimited);
}

void ProjectActions::ImportCommand() {
  const QString path = window_.ChooseFile(
      false, QStringLiteral("Data files (*.csv *.tsv *.txt *.xlsx *.xls);;Excel workbooks (*.xlsx *.xls);;"
                            "Text files (*.csv *.tsv *.txt);;All files (*)"));
  if (path.isEmpty()) return;
  std::vector<std::string> sheets;
  try {
    sheets = formats::DataFileSheetNames(ToStd(path));
  } catch (const std::exception& error) {
    ShowFailure(error.what());
    return;
  }
  if (const auto choice = ChooseImport(path, sheets)) Import(path, *choice);
}

WorksheetWindow* ProjectActions::Import(const QString& path, const ImportChoice& choice) {
  auto sheet = std::make_unique<worksheet::Worksheet>();
  const std::string file = ToStd(path);
  std::vector<std::string> notices;
  try {
    switch (formats::DataFileKindOf(file)) {
      case formats::DataFileKind::Xlsx: formats::ReadXlsxSheet(file, choice.sheetIndex, choice.headerRow, *sheet); break;
      case formats::DataFileKind::Xls: formats::ReadXlsSheet(file, choice.sheetIndex, choice.headerRow, *sheet); break;
      case formats::DataFileKind::Project: {
        formats::Project project = formats::LoadProject(file);
        if (choice.sheetIndex >= project.sheets.size()) throw std::runtime_error("The project holds no such worksheet.");
        *sheet = std::move(project.sheets[choice.sheetIndex].sheet);
        break;
      }
      case formats::DataFileKind::Delimited:
        notices = formats::ReadDelimitedFile(file, {choice.separator, choice.headerRow}, *sheet);
        break;
    }
  } catch (const std::exception& error) {
    ShowFailure(error.what());
    return nullptr;
  }
  sheet->SetName(window_.counter_.NextName());
  auto* window = new WorksheetWindow(std::move(sheet));
  window->setToolTip(QFileInfo(path).absoluteFilePath());
  window_.AddChild(window);
  window_.SetDocumentMenusEnabled(true);
  for (auto& notice : notices) window_.Host().Notify(std::move(notice));
  return window;
}

void ProjectActions::ExportCommand() {
  if (!window_.ActiveWorksheetWindow()) return;
  const QString path = window_.ChooseFile(
      true, QStringLiteral("Comma-separated (*.csv);;Tab-separated (*.tsv *.txt);;Excel workbook (*.xlsx)"));
  if (!path.isEmpty()) Export(path);
}

bool ProjectActions::Export(const QString& path) {
  WorksheetWindow* window = window_.ActiveWorksheetWindow();
  if (!window) return false;
  const std::string file = ToStd(path);
  const worksheet::Worksheet& sheet = window->Sheet();
  try {
    if (formats::DataFileKindOf(file) == formats::DataFileKind::Xlsx) {
      formats::WriteXlsx(file, {&sheet}, true);
      ShowExported(path);
      return true;
    }
    // Written beside the target and renamed when complete, so a failed
    // export never leaves half a file in place of an older one.
    const std::string temporary = file + ".saving";
    {
      std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
      formats::WriteDelimitedText(out, sheet, {formats::SeparatorForPath(file), true});
      out.flush();
      if (!out) {
        std::filesystem::remove(temporary);
        throw std::runtime_error("The worksheet could not be saved to " + file);
      }
    }
    std::filesystem::rename(temporary, file);
  } catch (const std::exception& error) {
    ShowFailure(error.what());
    return false;
  }
  ShowExported(path);
  return true;
}

void ProjectActions::ShowExported(const QString& path) {
  const QString sheet = window_.ActiveWorksheetWindow() ? window_.ActiveWorksheetWindow()->windowTitle() : QString();
  window_.statusBar()->showMessage(
      QStringLiteral("Exported %1 to %2").arg(sheet, QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath())),
      kStatusTimeout);
}

void ProjectActions::DatabaseImport() {
  const auto cancel = [this] { window_.Host().Log().AppendSessionLine("Cancel Database Connection"); };
  const QString filter = formats::CanReadAccess()
                             ? QStringLiteral("Databases (*.db *.sqlite *.sqlite3 *.mdb *.accdb);;All files (*)")
                             : QStringLiteral("SQLite databases (*.db *.sqlite *.sqlite3);;All files (*)");
  const QString path = window_.ChooseFile(false, filter);
  if (path.isEmpty()) return cancel();
  std::vector<std::string> tables;
  try {
    tables = formats::DatabaseTables(ToStd(path));
  } catch (const std::exception& error) {
    ShowFailure(error.what());
    return cancel();
  }
  if (tables.empty()) {
    ShowFailure("The database \"" + ToStd(path) + "\" holds no tables.");
    return cancel();
  }
  std::optional<std::string> table;
  if (table_picker_) {
    table = table_picker_(tables);
  } else {
    QStringList names;
    for (const auto& name : tables) names << QString::fromStdString(name);
    bool ok = false;
    const QString picked = QInputDialog::getItem(&window_, QStringLiteral("Database Connection"),
                                                 QStringLiteral("Table:"), names, 0, false, &ok);
    if (ok) table = ToStd(picked);
  }
  if (!table) return cancel();
  auto sheet = std::make_unique<worksheet::Worksheet>();
  try {
    formats::ReadDatabaseTable(ToStd(path), *table, *sheet);
  } catch (const std::exception& error) {
    ShowFailure(error.what());
    return cancel();
  }
  sheet->SetName(window_.counter_.NextName());
  window_.AddChild(new WorksheetWindow(std::move(sheet)));
  window_.SetDocumentMenusEnabled(true);
}

}  // namespace orvik::gui
