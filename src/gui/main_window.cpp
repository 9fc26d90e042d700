#include "gui/main_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QColorDialog>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QActionGroup>
#include <QHeaderView>
#include <QInputDialog>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QScrollBar>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTextBlock>
#include <algorithm>
#include <fstream>

#include "commands/command_registry.h"
#include "commands/result_window_actions.h"
#include "formats/delimited_text.h"
#include "gui/chart_view.h"
#include "gui/project_actions.h"
#include "gui/history_pane.h"
#include "gui/result_window_widget.h"
#include "gui/sheet_printer.h"
#include "gui/tool_dialogs.h"
#include "gui/worksheet_window.h"
#include "shell/command_failed.h"

namespace orvik::gui {

namespace {

// The menus of the bar in their order, with their captions.
const std::pair<const char*, const char*> kMenus[] = {
    {"mnuFile", "&File"},   {"mnuEdit", "&Edit"},         {"mnuView", "&View"},     {"mnuTool", "&Tool"},
    {"mnuGraph", "&Graph"}, {"mnuAnalysis", "&Analysis"}, {"mnuWindow", "&Window"}, {"mnuHelp", "&Help"}};

// The tools of the standard toolbar, with the short text their icons show.
const std::pair<const char*, const char*> kStandardBar[] = {
    {"mnuNew", "New"},   {"mnuOpen", "Open"},   {"mnuPrint", "Print"},  {nullptr, nullptr},
    {"mnuCut", "Cut"},   {"mnuCopy", "Copy"},   {"mnuPaste", "Paste"},  {nullptr, nullptr},
    {"mnuHistogram", "Hist"}, {"mnuBarX-R", "X-R"}, {"mnuPCR", "Cpk"}, {"mnuBasicStat", "Stat"}};

// Tools drawn with the desktop icon theme's pictures where it has them.
const std::pair<const char*, const char*> kThemeIcons[] = {
    {"mnuNew", "document-new"},        {"mnuOpen", "document-open"},        {"mnuSave", "document-save"},
    {"mnuSaveAs", "document-save-as"}, {"mnuPrint", "document-print"},      {"mnuCut", "edit-cut"},
    {"mnuCopy", "edit-copy"},          {"mnuPaste", "edit-paste"},          {"mnuDel", "edit-clear"},
    {"mnuFind", "edit-find"},          {"mnuReplace", "edit-find-replace"}, {"miUndo", "edit-undo"},
    {"miRedo", "edit-redo"},           {"mnuBold", "format-text-bold"},     {"mnuItalic", "format-text-italic"},
    {"mnuUnderline", "format-text-underline"}, {"mnuLeft", "format-justify-left"},
    {"mnuCenter", "format-justify-center"},    {"mnuRight", "format-justify-right"}, {"mnuExit", "application-exit"}};

// A small icon drawn from text, for tools that have no picture of their own.
QIcon TextIcon(const QString& text, const QFont& font, const QColor& color = QColor(20, 40, 110)) {
  QPixmap pixmap(28, 24);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.setFont(font);
  painter.setPen(color);
  painter.drawText(pixmap.rect(), Qt::AlignCenter, text);
  return QIcon(pixmap);
}

QFont IconFont(int size, bool bold = false, bool italic = false, bool underline = false) {
  QFont font(QStringLiteral("Arial"), size);
  font.setBold(bold);
  font.setItalic(italic);
  font.setUnderline(underline);
  return font;
}

// The blue look of the program: the menus, bars, dock title and the frame
// in shades of blue.
const char* const kNormalBlue = R"(
QMainWindow#OrvikMainMDI { background: #dbe6f4; }
QMenuBar { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #e3edfa, stop:1 #c4d8f2); }
QMenuBar::item:selected { background: #ffe8a6; }
QToolBar { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #eaf1fb, stop:1 #c9dcf3);
           border: 1px solid #9ab6de; spacing: 2px; }
QDockWidget::title { background: #bcd2ef; padding: 3px; }
QStatusBar { background: #c4d8f2; }
QTabWidget::pane { border: 1px solid #9ab6de; }
QTabBar::tab { background: #d6e4f6; border: 1px solid #9ab6de; padding: 3px 10px; }
QTabBar::tab:selected { background: #ffffff; }
QHeaderView::section { background: #dde8f7; border: 1px solid #b3c9e8; padding: 2px; }
QTableView { gridline-color: #c8d6ea; selection-background-color: #9dc0ec; selection-color: black; }
)";

}  // namespace

MainWindow::MainWindow() : host_(*this) {
  setObjectName(QStringLiteral("OrvikMainMDI"));
  setWindowTitle(QString::fromLatin1(kMainTitle));
  setWindowIcon(TextIcon(QStringLiteral("O"), IconFont(14, true), QColor(30, 80, 170)));
  // Start-up in its order: the look, the session pane docked, the log's
  // font and welcome line, then the bars.
  ApplyLook();
  mdi_ = new QMdiArea(this);
  mdi_->setBackground(QColor(171, 196, 229));
  mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setCentralWidget(mdi_);
  CreateSessionPane();
  CreateBars();
  // The History pane is shown and hidden from the View menu, like the
  // session pane.
  QAction* history = history_->toggleViewAction();
  history->setObjectName(QStringLiteral("miHistory"));
  history->setText(QStringLiteral("&History Window"));
  menus_.value(QStringLiteral("mnuView"))->addAction(history);
  CreateWindowCommands();
  ListWindowsInWindowMenu();
  project_ = std::make_unique<ProjectActions>(*this);
  project_->RegisterCommands();
  SetDocumentMenusEnabled(false);
  connect(mdi_, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* sub) {
    UpdateGivenLimitsTool();
    if (!sub) return;
    if (auto* sheet = qobject_cast<WorksheetWindow*>(sub->widget())) last_sheet_ = sheet;
    setWindowTitle(QString::fromLatin1(kMainTitle) + QStringLiteral(" - [") + sub->windowTitle() +
                   QStringLiteral("]"));
  });
  statusBar()->showMessage(QStringLiteral("Ready"));
  resize(1280, 820);
}

MainWindow::~MainWindow() {
  host_.Log().SetAppendListener(nullptr);
  exiting_ = true;
  // The children close while the window's members are already gone; their
  // activation changes must not reach it.
  disconnect(mdi_, nullptr, this, nullptr);
}

void MainWindow::ApplyLook() { setStyleSheet(QString::fromLatin1(kNormalBlue)); }

void MainWindow::CreateSessionPane() {
  session_doc_ = new QDockWidget(QStringLiteral("Session"), this);
  session_doc_->setObjectName(QStringLiteral("SessionDoc"));
  // The pane is hidden and shown by its menu tool, never closed.
  session_doc_->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  session_view_ = new QTextEdit(session_doc_);
  session_view_->setObjectName(QStringLiteral("SessionView"));
  session_view_->setReadOnly(true);
  session_doc_->setWidget(session_view_);
  addDockWidget(Qt::BottomDockWidgetArea, session_doc_);
  resizeDocks({session_doc_}, {140}, Qt::Vertical);
  // The History pane beside it; its worksheet files go to a folder of this
  // session's own.
  const QString history_folder =
      QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
          .filePath(QStringLiteral("history/") + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")) +
                    QStringLiteral("-%1").arg(QCoreApplication::applicationPid()));
  history_ = new HistoryPane(history_folder, this);
  addDockWidget(Qt::BottomDockWidgetArea, history_);
  splitDockWidget(session_doc_, history_, Qt::Horizontal);
  host_.SetRunListener([this](const shell::CommandRun& run) { history_->AddRun(run); });
  session_view_->setFont(QFont(QStringLiteral("Arial"), 10));
  session_view_->setPlainText(QString::fromStdString(host_.Log().Text()));
  host_.Log().SetAppendListener([this](std::string_view line) {
    QTextCursor cursor(session_view_->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertBlock();
    QString text = QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    cursor.insertText(text);
    session_view_->verticalScrollBar()->setValue(session_view_->verticalScrollBar()->maximum());
  });
}

void MainWindow::CreateBars() {
  QHash<QString, QHash<QString, QMenu*>> submenus;
  for (const auto& [key, caption] : kMenus) {
    QMenu* menu = menuBar()->addMenu(QString::fromLatin1(caption));
    menu->setObjectName(QString::fromLatin1(key));
    menus_.insert(QString::fromLatin1(key), menu);
  }
  for (const shell::CommandDeclaration& command : commands::Commands()) {
    const QString key = QString::fromLatin1(command.key.data(), static_cast<qsizetype>(command.key.size()));
    if (tools_.contains(key)) continue;
    const QString group = QString::fromLatin1(command.menu.data(), static_cast<qsizetype>(command.menu.size()));
    QMenu* menu = menus_.value(group);
    if (!command.submenu.empty()) {
      const QString name = QString::fromUtf8(command.submenu.data(), static_cast<qsizetype>(command.submenu.size()));
      QMenu*& sub = submenus[group][name];
      if (!sub) sub = menu->addMenu(name);
      menu = sub;
    }
    auto* action = new QAction(QString::fromUtf8(command.caption.data(), static_cast<qsizetype>(command.caption.size())), this);
    action->setObjectName(key);
    const bool unbuilt = !command.Available();
    action->setProperty("unbuilt", unbuilt);
    action->setEnabled(!unbuilt);
    connect(action, &QAction::triggered, this, [this, action] { ToolClick(action); });
    menu->addAction(action);
    if (key == QLatin1String("mnuExit") || key == QLatin1String("mnuWorkSheetPrint")) menu->addSeparator();
    tools_.insert(key, action);
  }
  for (const char* key : {"mnuStandardToolbar", "mnuFormatToolbar", "mnuStatusBar", "mnuSession"}) {
    tools_.value(QString::fromLatin1(key))->setCheckable(true);
    tools_.value(QString::fromLatin1(key))->setChecked(true);
  }
  tools_.value(QStringLiteral("mnuNew"))->setShortcut(QKeySequence::New);
  tools_.value(QStringLiteral("mnuOpen"))->setShortcut(QKeySequence::Open);
  tools_.value(QStringLiteral("mnuCut"))->setShortcut(QKeySequence::Cut);
  tools_.value(QStringLiteral("mnuCopy"))->setShortcut(QKeySequence::Copy);
  tools_.value(QStringLiteral("mnuPaste"))->setShortcut(QKeySequence::Paste);
  tools_.value(QStringLiteral("mnuDel"))->setShortcut(QKeySequence::Delete);
  tools_.value(QStringLiteral("mnuFind"))->setShortcut(QKeySequence::Find);
  tools_.value(QStringLiteral("mnuFindNext"))->setShortcut(QKeySequence::FindNext);
  tools_.value(QStringLiteral("mnuReplace"))->setShortcut(QKeySequence::Replace);
  tools_.value(QStringLiteral("mnuBold"))->setShortcut(QKeySequence::Bold);
  tools_.value(QStringLiteral("mnuItalic"))->setShortcut(QKeySequence::Italic);
  tools_.value(QStringLiteral("mnuUnderline"))->setShortcut(QKeySequence::Underline);

  // Undo and redo follow the active worksheet's history.
  QMenu* edit = menus_.value(QStringLiteral("mnuEdit"));
  auto* undo = new QAction(QStringLiteral("&Undo"), this);
  undo->setObjectName(QStringLiteral("miUndo"));
  undo->setShortcut(QKeySequence::Undo);
  auto* redo = new QAction(QStringLiteral("&Redo"), this);
  redo->setObjectName(QStringLiteral("miRedo"));
  redo->setShortcut(QKeySequence::Redo);
  connect(undo, &QAction::triggered, this, [this] {
    if (auto* sheet = ActiveWorksheetWindow()) sheet->UndoStack()->undo();
  });
  connect(redo, &QAction::triggered, this, [this] {
    if (auto* sheet = ActiveWorksheetWindow()) sheet->UndoStack()->redo();
  });
  edit->insertActions(edit->actions().value(0), {undo, redo});
  edit->insertSeparator(edit->actions().value(2));
  tools_.insert(undo->objectName(), undo);
  tools_.insert(redo->objectName(), redo);

  // Given limits act on the control chart of the active result window, so
  // the entry lives here rather than in the command table.
  QMenu* graph = menus_.value(QStringLiteral("mnuGraph"));
  auto* given = new QAction(QStringLiteral("Given Control Limits..."), this);
  given->setObjectName(QStringLiteral("miGivenLimits"));
  given->setEnabled(false);
  connect(given, &QAction::triggered, this, [this] {
    if (const ResultWindowWidget* result = ActiveResultWindow(); result && result->OffersGivenLimits())
      OpenGivenLimits(result);
  });
  graph->insertSeparator(tools_.value(QStringLiteral("mnuChartProperty")));
  graph->insertAction(tools_.value(QStringLiteral("mnuChartProperty")), given);
  // Rule settings apply to the charts to come, and to the active control
  // chart, which is drawn again with them.
  auto* rules = new QAction(QStringLiteral("Rule Settings..."), this);
  rules->setObjectName(QStringLiteral("miRuleSettings"));
  connect(rules, &QAction::triggered, this, [this] { OpenRuleSettings(ActiveResultWindow()); });
  graph->insertAction(tools_.value(QStringLiteral("mnuChartProperty")), rules);
  graph->insertSeparator(tools_.value(QStringLiteral("mnuChartProperty")));
  tools_.insert(given->objectName(), given);
  tools_.insert(rules->objectName(), rules);

  bar_standard_ = addToolBar(QStringLiteral("Standard"));
  bar_standard_->setObjectName(QStringLiteral("barStandard"));
  bar_standard_->setIconSize(QSize(28, 24));
  for (const auto& [key, text] : kStandardBar) {
    if (!key) {
      bar_standard_->addSeparator();
      continue;
    }
    QAction* action = tools_.value(QString::fromLatin1(key));
    if (action->icon().isNull()) action->setIcon(TextIcon(QString::fromLatin1(text), IconFont(8, true)));
    bar_standard_->addAction(action);
  }
  bar_format_ = addToolBar(QStringLiteral("Format"));
  bar_format_->setObjectName(QStringLiteral("barFormat"));
  bar_format_->setIconSize(QSize(28, 24));
  tools_.value(QStringLiteral("mnuBold"))->setIcon(TextIcon(QStringLiteral("B"), IconFont(13, true)));
  tools_.value(QStringLiteral("mnuItalic"))->setIcon(TextIcon(QStringLiteral("I"), IconFont(13, false, true)));
  tools_.value(QStringLiteral("mnuUnderline"))->setIcon(TextIcon(QStringLiteral("U"), IconFont(13, false, false, true)));
  tools_.value(QStringLiteral("mnuLeft"))->setIcon(TextIcon(QStringLiteral("\u2261\u2190"), IconFont(10)));
  tools_.value(QStringLiteral("mnuCenter"))->setIcon(TextIcon(QStringLiteral("\u2261"), IconFont(13)));
  tools_.value(QStringLiteral("mnuRight"))->setIcon(TextIcon(QStringLiteral("\u2192\u2261"), IconFont(10)));
  for (const char* key : {"mnuBold", "mnuItalic", "mnuUnderline", "mnuLeft", "mnuCenter", "mnuRight"})
    bar_format_->addAction(tools_.value(QString::fromLatin1(key)));
  bar_format_->addSeparator();
  // The colour tools are told apart by their category, not by a key.
  const std::pair<const char*, const char*> colors[] = {{"miForeColor", "Font Colour"}, {"miBackColor", "Fill Colour"}};
  for (const auto& [key, caption] : colors) {
    auto* action = new QAction(QString::fromLatin1(caption), this);
    action->setObjectName(QString::fromLatin1(key));
    action->setProperty("Category", QStringLiteral("Color"));
    const bool back = QLatin1String(key) == QLatin1String("miBackColor");
    action->setIcon(TextIcon(back ? QStringLiteral("\u25A7") : QStringLiteral("A"), IconFont(13, true),
                             back ? QColor(230, 160, 0) : QColor(200, 0, 0)));
    connect(action, &QAction::triggered, this, [this, action] { ToolClick(action); });
    bar_format_->addAction(action);
    tools_.insert(action->objectName(), action);
  }
  // Pictures of the desktop theme replace the drawn letters where the theme
  // has them (Adwaita when the desktop names none).
  QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
  for (const auto& [key, name] : kThemeIcons) {
    const QIcon themed = QIcon::fromTheme(QString::fromLatin1(name));
    if (QAction* action = tools_.value(QString::fromLatin1(key)); action && !themed.isNull()) action->setIcon(themed);
  }
  // Every tool tells its name and shortcut when the pointer rests on it.
  for (QAction* action : std::as_const(tools_)) {
    QString tip = action->text().remove(QLatin1Char('&'));
    if (!action->shortcut().isEmpty()) tip += QStringLiteral(" (%1)").arg(action->shortcut().toString(QKeySequence::NativeText));
    action->setToolTip(tip);
  }
  bar_standard_->toggleViewAction()->setObjectName(QStringLiteral("miVStandardToolbar"));
  bar_format_->toggleViewAction()->setObjectName(QStringLiteral("miVFormatToolbar"));
  tools_.insert(QStringLiteral("miVStandardToolbar"), bar_standard_->toggleViewAction());
  tools_.insert(QStringLiteral("miVFormatToolbar"), bar_format_->toggleViewAction());
  connect(bar_standard_->toggleViewAction(), &QAction::toggled, tools_.value(QStringLiteral("mnuStandardToolbar")),
          &QAction::setChecked);
  connect(bar_format_->toggleViewAction(), &QAction::toggled, tools_.value(QStringLiteral("mnuFormatToolbar")),
          &QAction::setChecked);
}

// The Window menu ends with the open windows, the active one checked;
// choosing one brings it to the front.
void MainWindow::ListWindowsInWindowMenu() {
  QMenu* menu = menus_.value(QStringLiteral("mnuWindow"));
  auto* listed = new QActionGroup(menu);
  connect(menu, &QMenu::aboutToShow, this, [this, menu, listed] {
    for (QAction* action : listed->actions()) {
      menu->removeAction(action);
      delete action;
    }
    const QList<QMdiSubWindow*> subs = mdi_->subWindowList(QMdiArea::CreationOrder);
    for (int i = 0; i < subs.size(); ++i) {
      QMdiSubWindow* sub = subs[i];
      auto* action = new QAction(QStringLiteral("&%1 %2").arg(i + 1).arg(sub->windowTitle()), listed);
      action->setCheckable(true);
      action->setChecked(sub == mdi_->activeSubWindow());
      connect(action, &QAction::triggered, this, [this, sub] { mdi_->setActiveSubWindow(sub); });
      if (i == 0) menu->addSeparator()->setActionGroup(listed);
      menu->addAction(action);
    }
  });
}

void MainWindow::SetDocumentMenusEnabled(bool enabled) {
  document_menus_enabled_ = enabled;
  for (std::string_view name : DocumentDependentNames()) {
    const QString key = QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
    if (QMenu* menu = menus_.value(key)) {
      menu->menuAction()->setEnabled(enabled);
    } else if (key == QLatin1String("barStandard")) {
      bar_standard_->setEnabled(enabled);
    } else if (key == QLatin1String("barFormat")) {
      bar_format_->setEnabled(enabled);
    } else if (QAction* tool = tools_.value(key)) {
      tool->setEnabled(enabled && !tool->property("unbuilt").toBool());
    }
  }
  if (!enabled) setWindowTitle(QString::fromLatin1(kMainTitle));
}

void MainWindow::ToolClick(QAction* tool) {
  if (!tool) return;
  if (tool->property("Category").toString() == QLatin1String("Color")) {
    ColorTool(tool);
    return;
  }
  ToolClick(tool->objectName());
}

void MainWindow::ToolClick(const QString& key) {
  const std::string name = key.toStdString();
  const shell::CommandDeclaration* command = commands::FindCommand(name);
  if (!command) return;
  if (command->scope == shell::CommandScope::Window) {
    if (const auto handler = window_commands_.value(key)) handler();
    return;
  }
  if (!command->run) return;
  host_.BeginRun(name);
  RunGuarded([this, command] { command->run(host_); });
  host_.EndRun();
}

void MainWindow::RunGuarded(const std::function<void()>& body) {
  try {
    body();
  } catch (const shell::CommandFailed&) {
    // The command has shown its own failure message and written its cancel
    // line; a second message would only repeat it.
  } catch (const std::exception&) {
    // An analysis that fails at run time ends with the common failure message.
    host_.Refuse("Please, input valid data");
  }
}

void MainWindow::OpenGivenLimits(const QString& key) {
  const std::string name = key.toStdString();
  RunGuarded([this, &name] { commands::OpenGivenLimits(host_, name); });
}

void MainWindow::OpenGivenLimits(const ResultWindowWidget* result) {
  // The window may close while its command runs again; the record it was
  // made from is kept for the run.
  const shell::ResultWindow record = result->Record();
  carried_looks_ = record.presentation;
  RunGuarded([this, &record] { commands::OpenGivenLimits(host_, record); });
  carried_looks_.clear();
}

void MainWindow::OpenRuleSettings(const ResultWindowWidget* result) {
  if (result == nullptr) {
    RunGuarded([this] { commands::OpenRuleSettings(host_); });
    return;
  }
  const shell::ResultWindow record = result->Record();
  RunGuarded([this, &record] { commands::OpenRuleSettings(host_, record); });
}

void MainWindow::UpdateGivenLimitsTool() {
  const ResultWindowWidget* result = ActiveResultWindow();
  tools_.value(QStringLiteral("miGivenLimits"))->setEnabled(result && result->OffersGivenLimits());
}

WorksheetWindow* MainWindow::NewWorksheet() {
  const std::string name = counter_.NextName();
  auto* window = new WorksheetWindow(std::make_unique<worksheet::Worksheet>(name));
  AddChild(window);
  SetDocumentMenusEnabled(true);
  host_.Log().AppendSessionLine(WorksheetMadeLine(name));
  return window;
}

WorksheetWindow* MainWindow::OpenDataFile(const QString& path) {
  auto sheet = std::make_unique<worksheet::Worksheet>();
  std::vector<std::string> notices;
  try {
    notices = formats::ReadDelimitedFile(path.toStdString(), *sheet);
  } catch (const std::exception& error) {
    host_.ShowMessage({"Information", error.what(), shell::MessageIcon::Exclamation, shell::MessageButtons::Ok});
    return nullptr;
  }
  sheet->ShrinkToFit();
  sheet->SetName(counter_.NextName());
  auto* window = new WorksheetWindow(std::move(sheet));
  window->setToolTip(QFileInfo(path).absoluteFilePath());
  AddChild(window);
  SetDocumentMenusEnabled(true);
  for (auto& notice : notices) host_.Notify(std::move(notice));
  return window;
}

WorksheetWindow* MainWindow::OpenDesignSheet(worksheet::Worksheet sheet) {
  auto* window = new WorksheetWindow(std::make_unique<worksheet::Worksheet>(std::move(sheet)));
  // The description beside the runs is read whole.
  window->View()->resizeColumnToContents(static_cast<int>(window->Sheet().DataColCnt()) - 1);
  AddChild(window);
  SetDocumentMenusEnabled(true);
  return window;
}

ResultWindowWidget* MainWindow::OpenResultWindow(shell::ResultWindow window) {
  if (window.presentation.empty()) window.presentation = carried_looks_;
  auto* widget = new ResultWindowWidget(std::move(window));
  connect(widget, &ResultWindowWidget::givenLimitsRequested, this, [this, widget] { OpenGivenLimits(widget); });
  connect(widget, &ResultWindowWidget::ruleSettingsRequested, this, [this, widget] { OpenRuleSettings(widget); });
  AddChild(widget);
  return widget;
}

// Right-click menus offer what the Edit and Graph menus offer for the thing
// under the cursor: cells and headers of a worksheet, charts of a result
// window.
void MainWindow::AddContextMenus(QWidget* widget) {
  const auto tools = [this](std::initializer_list<const char*> keys) {
    QList<QAction*> actions;
    for (const char* key : keys) {
      if (!key) {
        auto* separator = new QAction(this);
        separator->setSeparator(true);
        actions << separator;
      } else if (QAction* tool = Tool(QString::fromLatin1(key))) {
        actions << tool;
      }
    }
    return actions;
  };
  if (auto* sheet = qobject_cast<WorksheetWindow*>(widget)) {
    QList<QAction*> actions = tools({"mnuCut", "mnuCopy", "mnuPaste", "mnuDel", nullptr, "mnuInsertRow",
                                     "mnuInsertCol", "mnuDelRow", "mnuDelCol", nullptr, "mnuSort"});
    // A design sheet offers its analysis first.
    if (const auto& design = sheet->Sheet().Design(); design && !design->analysis.empty())
      actions = tools({design->analysis.c_str(), nullptr}) + actions;
    for (QWidget* target : {static_cast<QWidget*>(sheet->View()), static_cast<QWidget*>(sheet->View()->horizontalHeader()),
                            static_cast<QWidget*>(sheet->View()->verticalHeader())}) {
      target->setContextMenuPolicy(Qt::ActionsContextMenu);
      target->addActions(actions);
    }
  } else if (auto* result = qobject_cast<ResultWindowWidget*>(widget)) {
    for (ChartView* chart : result->Charts()) {
      auto* copy_image = new QAction(QStringLiteral("Copy Image"), chart);
      copy_image->setObjectName(QStringLiteral("miCopyImage"));
      connect(copy_image, &QAction::triggered, chart, [chart] { QApplication::clipboard()->setPixmap(chart->toPixmap()); });
      auto* reset_view = new QAction(QStringLiteral("Reset View"), chart);
      reset_view->setObjectName(QStringLiteral("miResetView"));
      connect(reset_view, &QAction::triggered, chart, &ChartView::ResetView);
      chart->setContextMenuPolicy(Qt::ActionsContextMenu);
      chart->addAction(copy_image);
      chart->addActions(tools({"mnuGraphSave", "mnuChartDataCopy", "mnuChartPrint", "mnuChartProperty"}));
      chart->addAction(reset_view);
    }
  }
}

QMdiSubWindow* MainWindow::AddChild(QWidget* widget) {
  AddContextMenus(widget);
  const QSize wanted = widget->size();
  QMdiSubWindow* sub = mdi_->addSubWindow(widget);
  sub->setAttribute(Qt::WA_DeleteOnClose);
  sub->setWindowIcon(windowIcon());
  sub->resize(wanted + QSize(8, 30));
  sub->installEventFilter(this);
  sub->show();
  // The frame places a new child at its next cascade position, which can
  // lie partly outside the visible area; pull the child fully into view,
  // smaller if the area is smaller.
  const QRect area = mdi_->viewport()->rect();
  if (!area.isEmpty()) {
    QRect frame = sub->geometry();
    frame.setSize(frame.size().boundedTo(area.size()));
    frame.moveLeft(std::clamp(frame.left(), 0, area.width() - frame.width()));
    frame.moveTop(std::clamp(frame.top(), 0, area.height() - frame.height()));
    sub->setGeometry(frame);
  }
  mdi_->setActiveSubWindow(sub);
  project_->Watch(sub);
  return sub;
}

WorksheetWindow* MainWindow::ActiveWorksheetWindow() const {
  if (QMdiSubWindow* sub = mdi_->activeSubWindow())
    if (auto* sheet = qobject_cast<WorksheetWindow*>(sub->widget())) return sheet;
  return last_sheet_.data();
}

ResultWindowWidget* MainWindow::ActiveResultWindow() const {
  QMdiSubWindow* sub = mdi_->activeSubWindow();
  return sub ? qobject_cast<ResultWindowWidget*>(sub->widget()) : nullptr;
}

int MainWindow::DocumentWindowCount() const { return static_cast<int>(mdi_->subWindowList().size()); }

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  auto* sub = qobject_cast<QMdiSubWindow*>(watched);
  if (!sub || event->type() != QEvent::Close || exiting_) return QMainWindow::eventFilter(watched, event);
  auto* sheet = qobject_cast<WorksheetWindow*>(sub->widget());
  if (!sheet) return false;
  const std::string caption = sub->windowTitle().toStdString();
  if (sheet->HoldsData()) {
    if (host_.ShowMessage(CloseWorksheetQuestion(caption)) != shell::MessageAnswer::Ok) {
      event->ignore();
      return true;
    }
    host_.Log().AppendSessionLine(WorksheetClosedLine(caption));
  }
  if (last_sheet_ == sheet) last_sheet_ = nullptr;
  // The count still holds the closing window.
  if (CloseDisablesMenus(DocumentWindowCount())) SetDocumentMenusEnabled(false);
  return false;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // Unsaved work first gets its save question; its Cancel keeps the program.
  if (!exiting_ && !project_->MayDropSession()) {
    event->ignore();
    return;
  }
  if (!exiting_ && ExitNeedsQuestion(DocumentWindowCount())) {
    if (host_.ShowMessage(ExitQuestion()) != shell::MessageAnswer::Ok) {
      event->ignore();
      // Cancel brings the session pane back to its place.
      session_doc_->setFloating(false);
      if (dockWidgetArea(session_doc_) == Qt::NoDockWidgetArea) addDockWidget(Qt::BottomDockWidgetArea, session_doc_);
      session_doc_->show();
      tools_.value(QStringLiteral("mnuSession"))->setChecked(true);
      return;
    }
  }
  exiting_ = true;
  if (find_) find_->close();
  event->accept();
}

}  // namespace orvik::gui
