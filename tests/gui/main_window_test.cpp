#include <QAbstractButton>
#include <QClipboard>
#include <QHeaderView>
#include <QTimer>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <QTextEdit>
#include <QToolBar>

#include "commands/command_registry.h"
#include "gui/chart_view.h"
#include "gui/history_pane.h"
#include "gui/main_window.h"
#include "gui/result_window_widget.h"
#include "gui/worksheet_window.h"

using namespace orvik;
using orvik::gui::MainWindow;

class MainWindowTest : public QObject {
  Q_OBJECT

 private:
  // The window under test answers every message box with `answer` and
  // records the boxes.
  std::unique_ptr<MainWindow> window_;
  std::vector<shell::MessageBox> asked_;
  shell::MessageAnswer answer_ = shell::MessageAnswer::Ok;

  QStringList OpenTitles() const {
    QStringList titles;
    for (QMdiSubWindow* sub : window_->Mdi()->subWindowList()) titles << sub->windowTitle();
    return titles;
  }
  QString LogText() const { return QString::fromStdString(window_->Host().Log().Text()); }
  // Opens one of the example sheets and selects a block of it.
  gui::WorksheetWindow* OpenExample(const char* file, long row, long col, long row2, long col2) {
    gui::WorksheetWindow* sheet =
        window_->OpenDataFile(QStringLiteral(ORVIK_SOURCE_DIR "/examples/") + QString::fromLatin1(file));
    if (sheet) sheet->SelectBlock(row, col, row2, col2);
    return sheet;
  }
  // Answers every dialog with OK as it stands (the xbar-R chart's subgroup
  // selection, for one).
  void AcceptDialogs() {
    window_->Host().SetDialogResponder([](shell::DialogModel&) { return true; });
  }
  static bool IsGivenLimits(const shell::DialogModel& dialog) {
    return dialog.Name() == "ControlLimit" || dialog.Name() == "ControlTwoLimit";
  }
  static QStringList LineLabels(const gui::ChartView* chart) {
    QStringList labels;
    for (const shell::ChartLine& line : chart->Description().lines) labels << QString::fromStdString(line.label);
    return labels;
  }
  bool GroupEnabled(const char* name) const {
    return window_->findChild<QMenu*>(QString::fromLatin1(name))->menuAction()->isEnabled();
  }

 private slots:
  void init() {
    window_ = std::make_unique<MainWindow>();
    asked_.clear();
    answer_ = shell::MessageAnswer::Ok;
    window_->Host().SetMessageResponder([this](const shell::MessageBox& box) {
      asked_.push_back(box);
      return answer_;
    });
    window_->show();
  }
  void cleanup() { window_.reset(); }

  void sessionPaneFollowsTheLogToItsEnd() {
    for (int i = 0; i < 200; ++i) window_->Host().Log().AppendSessionLine("line " + std::to_string(i));
    QTextEdit* view = window_->SessionView();
    QVERIFY(view->toPlainText().startsWith(QStringLiteral("Welcome to Orvik 2.0\nline 0\nline 1\n")));
    QVERIFY(view->toPlainText().endsWith(QStringLiteral("\nline 199")));
    QCOMPARE(view->verticalScrollBar()->value(), view->verticalScrollBar()->maximum());
    // Text that looks like markup stays text.
    window_->Host().Log().AppendSessionLine("<b>x</b>");
    QVERIFY(view->toPlainText().endsWith(QStringLiteral("\n<b>x</b>")));
  }

  void everyToolKeyHasOneActionInItsMenu() {
    for (const shell::CommandDeclaration& command : commands::Commands()) {
      const QString key = QString::fromLatin1(command.key.data(), command.key.size());
      const auto actions = window_->findChildren<QAction*>(key);
      QVERIFY2(actions.size() == 1, qPrintable(key));
      QWidget* holder = nullptr;
      for (QObject* object : actions.front()->associatedObjects())
        if (auto* menu = qobject_cast<QMenu*>(object)) holder = menu;
      QVERIFY2(holder, qPrintable(key));
      // The group is the menu itself or the menu holding its submenu.
      QString group = holder->objectName();
      if (group.isEmpty()) group = holder->parentWidget()->objectName();
      QCOMPARE(group, QString::fromLatin1(command.menu.data(), command.menu.size()));
      if (command.scope == shell::CommandScope::Core && command.run == nullptr)
        QVERIFY2(!actions.front()->isEnabled(), qPrintable(key));
    }
  }

  // The help window shows the guide that ships with the program, and the
  // guide names every analysis the menus offer.
  void theHelpContentsDescribeEveryAnalysis() {
    window_->ToolClick(QStringLiteral("mnuContents"));
    auto* help = window_->findChild<QTextBrowser*>(QStringLiteral("HelpText"));
    QVERIFY(help && help->isVisible());
    const QString guide = help->toPlainText();
    for (const char* heading : {"Getting started", "Run rules", "File formats", "orvik-cli"})
      QVERIFY2(guide.contains(QLatin1String(heading)), heading);
    // The contents' links lead to their sections.
    emit help->anchorClicked(QUrl(QStringLiteral("qrc:/help/user_guide.md#run-rules")));
    QVERIFY(help->verticalScrollBar()->value() > 0);
    for (const shell::CommandDeclaration& command : commands::Commands()) {
      if (command.scope != shell::CommandScope::Core || command.run == nullptr) continue;
      // "&&" shows as "&"; a single "&" marks the access key.
      const QString caption = QString::fromUtf8(command.caption.data(), command.caption.size())
                                  .replace(QStringLiteral("&&"), QStringLiteral("\x01"))
                                  .remove(QLatin1Char('&'))
                                  .replace(QLatin1Char('\x01'), QLatin1Char('&'));
      QVERIFY2(guide.contains(caption), qPrintable(caption));
    }
  }

  void dispatchRunsTheKeysCommandAndIgnoresUnknownKeys() {
    window_->ToolClick(QStringLiteral("mnuNoSuchKey"));
    window_->ToolClick(QStringLiteral("miBackColor"));  // a colour tool by key alone is no command
    QCOMPARE(window_->DocumentWindowCount(), 0);
    window_->Tool(QStringLiteral("mnuNew"))->trigger();
    QCOMPARE(OpenTitles(), QStringList{QStringLiteral("WorkSheet 1")});
    QVERIFY(LogText().endsWith(QStringLiteral("Welcome to Orvik 2.0\r\nWorkSheet 1 generation is completed")));
    // A command still to come does nothing.
    for (const shell::CommandDeclaration& command : commands::Commands())
      if (command.scope == shell::CommandScope::Core && command.run == nullptr)
        window_->ToolClick(QString::fromLatin1(command.key.data(), command.key.size()));
    QCOMPARE(window_->DocumentWindowCount(), 1);
    QVERIFY(asked_.empty());
  }

  void closedWorksheetNumbersAreNotReused() {
    window_->NewWorksheet();
    gui::WorksheetWindow* second = window_->NewWorksheet();
    window_->NewWorksheet();
    second->parentWidget()->close();  // empty: closes without asking
    QTest::qWait(0);
    QVERIFY(asked_.empty());
    window_->ToolClick(QStringLiteral("mnuNew"));
    QCOMPARE(OpenTitles(), (QStringList{"WorkSheet 1", "WorkSheet 3", "WorkSheet 4"}));
    QVERIFY(LogText().endsWith(QStringLiteral("\r\nWorkSheet 4 generation is completed")));
    // The Window menu lists them, the active one checked.
    QMenu* menu = window_->findChild<QMenu*>(QStringLiteral("mnuWindow"));
    emit menu->aboutToShow();
    emit menu->aboutToShow();  // listed once however often it opens
    QStringList listed;
    for (QAction* action : menu->actions())
      if (action->isCheckable()) listed << action->text() + (action->isChecked() ? "*" : "");
    QCOMPARE(listed, (QStringList{"&1 WorkSheet 1", "&2 WorkSheet 3", "&3 WorkSheet 4*"}));
    QCOMPARE(window_->Tool(QStringLiteral("mnuNew"))->toolTip(),
             window_->Tool(QStringLiteral("mnuNew"))->text().remove('&') + " (" +
                 QKeySequence(QKeySequence::New).toString(QKeySequence::NativeText) + ")");
  }

  void closingASheetWithDataAsksFirst() {
    gui::WorksheetWindow* sheet = window_->NewWorksheet();
    sheet->Editor().SetCell(1, 1, "5");
    const QString before = LogText();
    answer_ = shell::MessageAnswer::Cancel;
    QVERIFY(!sheet->parentWidget()->close());
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0], gui::CloseWorksheetQuestion("WorkSheet 1"));
    QCOMPARE(asked_[0].text, std::string("WorkSheet 1 include data\r\n\r Are you sure you want to close?"));
    QCOMPARE(LogText(), before);
    QCOMPARE(window_->DocumentWindowCount(), 1);
    answer_ = shell::MessageAnswer::Ok;
    QVERIFY(sheet->parentWidget()->close());
    QVERIFY(LogText().endsWith(QStringLiteral("\r\nWorkSheet 1 elimination is completed")));
  }

  void closingTheLastDocumentWindowSwitchesTheMenusOff() {
    // Nothing to work on yet: the document menus and bars are off.
    QVERIFY(!GroupEnabled("mnuAnalysis"));
    QVERIFY(!window_->findChild<QToolBar*>(QStringLiteral("barStandard"))->isEnabled());
    QVERIFY(window_->Tool(QStringLiteral("mnuNew"))->isEnabled());
    gui::WorksheetWindow* sheet = window_->NewWorksheet();
    QVERIFY(window_->windowTitle().contains(QStringLiteral("WorkSheet 1")));
    QVERIFY(GroupEnabled("mnuEdit"));
    window_->Host().ShowResultWindow(shell::MakeDataChart("Histogram"));
    sheet->parentWidget()->close();
    QTest::qWait(0);
    // A result window is still open: nothing is switched off.
    QVERIFY(window_->DocumentMenusEnabled());
    QVERIFY(GroupEnabled("mnuAnalysis"));
    window_->Mdi()->closeAllSubWindows();
    window_->NewWorksheet()->parentWidget()->close();
    QTest::qWait(0);
    QVERIFY(!window_->DocumentMenusEnabled());
    for (const char* group : {"mnuEdit", "mnuTool", "mnuGraph", "mnuAnalysis", "mnuView", "mnuWindow"})
      QVERIFY2(!GroupEnabled(group), group);
    for (const char* tool : {"mnuDataExport", "mnuPrint", "miVFormatToolbar"})
      QVERIFY2(!window_->Tool(QString::fromLatin1(tool))->isEnabled(), tool);
    QCOMPARE(window_->windowTitle(), QStringLiteral("Orvik 2.0"));
    QVERIFY(GroupEnabled("mnuFile"));
    // Making a worksheet switches them on again; unbuilt tools stay off.
    window_->NewWorksheet();
    QVERIFY(window_->Tool(QStringLiteral("mnuPrint"))->isEnabled());
    QVERIFY(!window_->Tool(QStringLiteral("mnuCellType"))->isEnabled());
  }

  void exitAsksOnlyWhileDocumentWindowsAreOpen() {
    window_->NewWorksheet();
    window_->ToolClick(QStringLiteral("mnuSession"));  // hidden by the user
    QVERIFY(window_->SessionDoc()->isHidden());
    answer_ = shell::MessageAnswer::Cancel;
    window_->ToolClick(QStringLiteral("mnuExit"));
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0], gui::ExitQuestion());
    QVERIFY(window_->isVisible());
    // Cancel docks the session pane again.
    QVERIFY(!window_->SessionDoc()->isHidden());
    QVERIFY(!window_->SessionDoc()->isFloating());
    answer_ = shell::MessageAnswer::Ok;
    QVERIFY(window_->close());
    QCOMPARE(asked_.size(), std::size_t{2});
  }

  void exitWithoutWindowsDoesNotAsk() {
    QVERIFY(window_->close());
    QVERIFY(asked_.empty());
  }

  void messageBoxesShowTheExactTitleTextIconAndButtons() {
    std::unique_ptr<QMessageBox> box(gui::MakeMessageBox(gui::ExitQuestion(), nullptr));
    QCOMPARE(box->windowTitle(), QStringLiteral("Confirmation"));
    QCOMPARE(box->text(),
             QStringLiteral("WorkSheets or Windows are still open.\r\n\rAre you sure you want to end your session?"));
    QCOMPARE(box->icon(), QMessageBox::Question);
    QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
    box.reset(gui::MakeMessageBox(shell::RefusalBox("Please, select valid data"), nullptr));
    QCOMPARE(box->windowTitle(), QStringLiteral("Confirmation Data"));
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QCOMPARE(box->standardButtons(), QMessageBox::StandardButtons(QMessageBox::Ok));
  }

  void aRealMessageBoxAnswersThroughItsButtons() {
    window_->Host().SetMessageResponder(nullptr);
    QTimer::singleShot(50, [] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      QVERIFY(box);
      QCOMPARE(box->windowTitle(), QStringLiteral("Confirmation"));
      box->button(QMessageBox::Cancel)->click();
    });
    QVERIFY(!window_->Host().Ask("Continue?"));
  }

  void colourToolsGoToTheColourProcedure() {
    gui::WorksheetWindow* sheet = window_->NewWorksheet();
    sheet->SelectBlock(1, 1, 2, 2);
    window_->SetColorChooser([](bool background) { return background ? QColor(255, 255, 0) : QColor(255, 0, 0); });
    window_->ToolClick(window_->Tool(QStringLiteral("miBackColor")));
    window_->ToolClick(window_->Tool(QStringLiteral("miForeColor")));
    QCOMPARE(sheet->Editor().Formats().At(2, 2).background, std::optional<std::uint32_t>(0xFFFF00));
    QCOMPARE(sheet->Editor().Formats().At(1, 1).foreground, std::optional<std::uint32_t>(0xFF0000));
    QVERIFY(!sheet->Editor().Formats().At(3, 3).background);
  }

  void viewTogglesShowAndHideWithTheirCheckMarks() {
    window_->NewWorksheet();
    auto* bar = window_->findChild<QToolBar*>(QStringLiteral("barFormat"));
    window_->ToolClick(QStringLiteral("mnuFormatToolbar"));
    QVERIFY(bar->isHidden());
    QVERIFY(!window_->Tool(QStringLiteral("mnuFormatToolbar"))->isChecked());
    QVERIFY(!window_->Tool(QStringLiteral("miVFormatToolbar"))->isChecked());
    window_->Tool(QStringLiteral("mnuFormatToolbar"))->trigger();
    QVERIFY(!bar->isHidden());
    QVERIFY(window_->Tool(QStringLiteral("mnuFormatToolbar"))->isChecked());
  }

  void windowCommandsActOnTheActiveWindow() {
    gui::WorksheetWindow* sheet = window_->NewWorksheet();
    sheet->Editor().SetCell(1, 1, "1");
    sheet->SelectBlock(1, 1, 1, 1);
    window_->ToolClick(QStringLiteral("mnuInsertRow"));
    QCOMPARE(sheet->Sheet().Text(2, 1), std::string_view("1"));
    window_->ToolClick(QStringLiteral("mnuBold"));
    QVERIFY(sheet->Editor().Formats().At(1, 1).bold);
    window_->ToolClick(QStringLiteral("miUndo"));  // not a dispatch key
    window_->Tool(QStringLiteral("miUndo"))->trigger();
    QVERIFY(!sheet->Editor().Formats().At(1, 1).bold);
    window_->NewWorksheet();
    window_->ToolClick(QStringLiteral("mnuTileH"));
    const auto subs = window_->Mdi()->subWindowList();
    QVERIFY(subs[0]->geometry().bottom() < subs[1]->geometry().top());
    window_->ToolClick(QStringLiteral("mnuTileV"));
    QVERIFY(subs[0]->geometry().right() < subs[1]->geometry().left());
  }

  void rightClickMenusOfferTheToolsOfWhatIsUnderTheCursor() {
    const auto names = [](QWidget* widget) {
      QStringList keys;
      for (QAction* action : widget->actions())
        if (!action->isSeparator()) keys << action->objectName();
      return keys;
    };
    gui::WorksheetWindow* sheet = OpenExample("individuals.csv", 1, 1, 40, 1);
    const QStringList cells{"mnuCut", "mnuCopy", "mnuPaste", "mnuDel", "mnuInsertRow",
                            "mnuInsertCol", "mnuDelRow", "mnuDelCol", "mnuSort"};
    QCOMPARE(names(sheet->View()), cells);
    QCOMPARE(names(sheet->View()->horizontalHeader()), cells);
    QCOMPARE(sheet->View()->verticalHeader()->contextMenuPolicy(), Qt::ActionsContextMenu);
    window_->ToolClick(QStringLiteral("mnuC"));
    gui::ChartView* chart = window_->ActiveResultWindow()->Charts().front();
    QCOMPARE(names(chart), (QStringList{"miChartGivenLimits", "miChartRuleSettings", "miCopyImage", "mnuGraphSave",
                                        "mnuChartDataCopy", "mnuChartPrint", "mnuChartProperty", "miResetView"}));
    // A zoomed chart comes back to its whole range.
    const QCPRange whole = chart->xAxis->range();
    chart->xAxis->setRange(3, 4);
    chart->findChild<QAction*>(QStringLiteral("miResetView"))->trigger();
    QCOMPARE(chart->xAxis->range(), whole);
    chart->findChild<QAction*>(QStringLiteral("miCopyImage"))->trigger();
    QVERIFY(!QApplication::clipboard()->image().isNull());
  }

  void aChartFailureShowsOnlyItsOwnMessage() {
    // Subgroups of eleven are beyond the xbar-R chart's constants: the chart
    // reports its own failure, and the window adds nothing to it.
    gui::WorksheetWindow* sheet = window_->NewWorksheet();
    for (long r = 1; r <= 3; ++r)
      for (long c = 1; c <= 11; ++c) sheet->Editor().SetCell(r, c, std::to_string(r * 11 + c));
    sheet->SelectBlock(1, 1, 3, 11);
    AcceptDialogs();
    window_->ToolClick(QStringLiteral("mnuBarX-R"));
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0].text, std::string("Fail xbar-R control chart generation"));
    QVERIFY(LogText().endsWith(QStringLiteral(
        "\r\nxbar-R control chart generation is starting\r\nCancel xbar-R control chart generation")));
    QCOMPARE(window_->DocumentWindowCount(), 1);
  }

  void aFailureNobodyReportedGetsTheCommonMessage() {
    QVERIFY(OpenExample("defects.csv", 1, 1, 25, 1));
    window_->ToolClick(QStringLiteral("mnuC"));
    QCOMPARE(window_->DocumentWindowCount(), 2);
    // A dialog that breaks down is a failure no command has told the user of.
    window_->Host().SetDialogResponder([](shell::DialogModel&) -> bool { throw std::runtime_error("broken"); });
    window_->Tool(QStringLiteral("miGivenLimits"))->trigger();
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0].text, std::string("Please, input valid data"));
    QCOMPARE(window_->DocumentWindowCount(), 2);
  }

  void ruleSettingsRedrawTheActiveControlChart() {
    QAction* rules = window_->Tool(QStringLiteral("miRuleSettings"));
    QVERIFY(window_->findChild<QMenu*>(QStringLiteral("mnuGraph"))->actions().contains(rules));
    QVERIFY(OpenExample("defects.csv", 1, 1, 25, 1));
    AcceptDialogs();
    window_->ToolClick(QStringLiteral("mnuC"));
    std::vector<std::string> opened;
    window_->Host().SetDialogResponder([&opened](shell::DialogModel& dialog) {
      opened.push_back(dialog.Name());
      dialog.Click("ProfileNelson");
      return true;
    });
    rules->trigger();
    QCOMPARE(window_->DocumentWindowCount(), 3);
    // Under the 25 counts: an empty row, the heading, "*", "Run", then
    // Nelson's rule A.
    QCOMPARE(window_->ActiveResultWindow()->CellText(29, 0),
             QStringLiteral(" A : 9 successive points are on the same side of the centerline"));
    // The chart's context menu opens the same dialog for its window.
    window_->ActiveResultWindow()->Charts().front()->actions().at(1)->trigger();
    QCOMPARE(opened, (std::vector<std::string>{"RuleSettings", "RuleSettings"}));
    QCOMPARE(window_->DocumentWindowCount(), 4);
  }

  void givenLimitsRedrawTheActiveControlChart() {
    QAction* given = window_->Tool(QStringLiteral("miGivenLimits"));
    QVERIFY(window_->findChild<QMenu*>(QStringLiteral("mnuGraph"))->actions().contains(given));
    gui::WorksheetWindow* sheet = OpenExample("subgroups.csv", 1, 1, 25, 5);
    QVERIFY(sheet);
    QVERIFY(!given->isEnabled());  // a worksheet is active
    AcceptDialogs();
    window_->ToolClick(QStringLiteral("mnuBarX-R"));
    QVERIFY(given->isEnabled());
    const QString first_mean = window_->ActiveResultWindow()->CellText(0, 0);
    const QString last_mean = window_->ActiveResultWindow()->CellText(24, 0);
    // The user goes on to select other cells and edits one the chart read.
    sheet->SelectBlock(3, 2, 4, 3);
    sheet->Sheet().SetText(1, 1, "99");

    std::vector<std::string> opened;
    window_->Host().SetDialogResponder([&opened](shell::DialogModel& dialog) {
      opened.push_back(dialog.Name());
      if (!IsGivenLimits(dialog)) return true;
      dialog.Click("ControlOpt");
      const std::pair<const char*, const char*> texts[] = {{"UCL1txt", "25.01"}, {"CL1txt", "25"},
                                                           {"LCL1txt", "24.99"}, {"UCL2txt", "0.02"},
                                                           {"CL2txt", "0.01"},   {"LCL2txt", "0"}};
      for (const auto& [box, text] : texts) dialog.Type(box, text);
      return true;
    });
    // The restyled chart keeps its look in the window drawn again.
    shell::ChartPresentation ranges = shell::PlainPresentation("ChartTwo");
    ranges.title = "Ranges";
    window_->ActiveResultWindow()->SetPresentation(ranges);
    given->trigger();
    QVERIFY(window_->ActiveResultWindow()->Record().presentation == std::vector<shell::ChartPresentation>{ranges});
    // The chart is drawn again from the window's own data and subgroup
    // choice: no subgroup dialog, the same means, whatever the sheet shows now.
    QCOMPARE(opened, (std::vector<std::string>{"ControlTwoLimit"}));
    QCOMPARE(window_->DocumentWindowCount(), 3);
    gui::ResultWindowWidget* redrawn = window_->ActiveResultWindow();
    QCOMPARE(redrawn->windowTitle(), QStringLiteral("xbar-R control chart"));
    QCOMPARE(redrawn->CellText(0, 0), first_mean);
    QCOMPARE(redrawn->CellText(24, 0), last_mean);
    // Both runs are in the History pane as orvik-cli lines.
    const QStringList history = window_->History()->Lines();
    QCOMPARE(history.size(), 2);
    QVERIFY(history[1].startsWith(QStringLiteral("orvik-cli run mnuBarX-R --sheet ")));
    QVERIFY(history[1].contains(QStringLiteral(" --select A1:E25 --set ControlTwoLimit.ControlOpt=1 ")));
    QCOMPARE(redrawn->CellText(0, 1), QStringLiteral("25.01"));
    QVERIFY(LineLabels(redrawn->Charts().at(1)).contains(QStringLiteral("CL= 0.01")));

    // The window's button and its charts' context menu open the same.
    opened.clear();
    redrawn->GivenLimitsButton()->click();
    QCOMPARE(redrawn->Charts().front()->contextMenuPolicy(), Qt::ActionsContextMenu);
    redrawn->Charts().front()->actions().front()->trigger();
    QCOMPARE(opened, (std::vector<std::string>{"ControlTwoLimit", "ControlTwoLimit"}));
    QCOMPARE(window_->DocumentWindowCount(), 5);

    // A graph window offers none.
    QVERIFY(OpenExample("individuals.csv", 1, 1, 40, 1));
    window_->ToolClick(QStringLiteral("mnuHistogram"));
    QVERIFY(!given->isEnabled());
    QVERIFY(!window_->ActiveResultWindow()->GivenLimitsButton());
  }

  // The CV chart opens its dialog and a control chart window that takes
  // given limits; the run chart a graph window that does not.
  void theCVAndRunChartsOpenTheirWindowsFromTheMenus() {
    QVERIFY(OpenExample("subgroups.csv", 1, 1, 25, 5));
    AcceptDialogs();
    window_->Tool(QStringLiteral("mnuCV"))->trigger();
    QCOMPARE(window_->ActiveResultWindow()->windowTitle(), QStringLiteral("CV control chart"));
    QVERIFY(window_->ActiveResultWindow()->OffersGivenLimits());
    window_->Tool(QStringLiteral("mnuRun"))->trigger();
    QCOMPARE(window_->ActiveResultWindow()->windowTitle(), QStringLiteral("Run chart"));
    QVERIFY(!window_->ActiveResultWindow()->OffersGivenLimits());
    QVERIFY(LogText().endsWith(QStringLiteral("CV control chart generation is completed\r\nRun chart generation is completed")));
  }

  void aControlChartWithoutItsKeyOffersNoGivenLimits() {
    window_->NewWorksheet();
    gui::ResultWindowWidget* result = window_->OpenResultWindow(shell::MakeControlForm("c control chart", false));
    QVERIFY(!result->OffersGivenLimits());
    QVERIFY(!result->GivenLimitsButton());
    QVERIFY(!window_->Tool(QStringLiteral("miGivenLimits"))->isEnabled());
  }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
