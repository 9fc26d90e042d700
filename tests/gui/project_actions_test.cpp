#include <sys/wait.h>
#include <unistd.h>

#include <QMdiSubWindow>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>

#include "formats/delimited_text.h"
#include "formats/project_file.h"
#include "formats/workbook_file.h"
#include "gui/main_window.h"
#include "gui/project_actions.h"
#include "gui/chart_view.h"
#include "gui/result_window_widget.h"
#include "gui/worksheet_window.h"

using namespace orvik;
using orvik::gui::MainWindow;

class ProjectActionsTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir folder_;
  std::unique_ptr<MainWindow> window_;
  std::vector<shell::MessageBox> asked_;
  std::vector<shell::MessageAnswer> answers_;  // given in order; Ok when used up
  QString chosen_file_;
  QString chosen_type_;  // the file type picked in the save dialog, if any

  QString Path(const QString& name) const { return folder_.filePath(name); }

  std::unique_ptr<MainWindow> MakeWindow() {
    auto window = std::make_unique<MainWindow>();
    window->Host().SetMessageResponder([this](const shell::MessageBox& box) {
      asked_.push_back(box);
      if (answers_.empty()) return shell::MessageAnswer::Ok;
      const shell::MessageAnswer answer = answers_.front();
      answers_.erase(answers_.begin());
      return answer;
    });
    window->SetFileChooser([this](bool, const QString&, QString* type) {
      if (!chosen_type_.isEmpty()) *type = chosen_type_;
      return chosen_file_;
    });
    window->show();
    return window;
  }

  QStringList Titles(MainWindow& window) const {
    QStringList titles;
    for (QMdiSubWindow* sub : window.Mdi()->subWindowList(QMdiArea::CreationOrder)) titles << sub->windowTitle();
    return titles;
  }

  gui::WorksheetWindow* SheetAt(MainWindow& window, int index) const {
    return qobject_cast<gui::WorksheetWindow*>(window.Mdi()->subWindowList(QMdiArea::CreationOrder).at(index)->widget());
  }

  // The look the session gives its control chart.
  static shell::ChartPresentation Restyled() {
    shell::ChartPresentation look = shell::PlainPresentation("ChartOne");
    look.title = "Means per shift";
    look.gridLines = false;
    look.series = {{shell::Rgb{0x00AA00}, 2.0, shell::LineStyle::Dot, shell::MarkerShape::Square, 8.0, {}}};
    look.limitDecimals = 2;
    return look;
  }

  // A session of two worksheets (one renamed, with header names, formats and
  // a selection) around a result window with a styled grid and a chart.
  void BuildSession(MainWindow& window) {
    gui::WorksheetWindow* first = window.NewWorksheet();
    first->Editor().SetCell(1, 1, "10.5");
    first->Editor().SetCell(2, 1, "say \"hi\",\nbye");
    first->Editor().SetCell(3, 2, "측정값");
    first->SetColumnHeaderName(1, QStringLiteral("Diameter"));
    first->SelectBlock(1, 1, 2, 2);
    first->ToggleFontStyle(gui::FontStyle::Bold);
    shell::ResultWindow result = shell::MakeControlForm("xbar-R control chart", true);
    result.table.emplace();
    result.table->columns = {"No.", "xbar"};
    result.table->AddRow({"1", "10.25"}, {shell::kBlue, shell::kWhite, true});
    result.Chart("ChartOne").series.push_back({"xbar", shell::SeriesType::Line, {1, 2}, {10.25, 10.75}, {2}, {}, false, false, false, {}});
    result.Chart("ChartOne").lines.push_back({shell::LineOrientation::Horizontal, 11.5, "UCL= 11.5", shell::kRed, true});
    window.Host().ShowResultWindow(result);
    window.ActiveResultWindow()->SetPresentation(Restyled());
    gui::WorksheetWindow* second = window.NewWorksheet();
    second->Editor().SetCell(5, 3, "7");
    second->parentWidget()->setWindowTitle(QStringLiteral("Line 2"));
    second->Sheet().SetName("Line 2");
  }

 private slots:
  void init() {
    QVERIFY(folder_.isValid());
    qputenv("ORVIK_AUTOSAVE_DIR", folder_.filePath(QStringLiteral("autosave")).toLocal8Bit());
    asked_.clear();
    answers_.clear();
    chosen_type_.clear();
    window_ = MakeWindow();
  }
  void cleanup() { window_.reset(); }

  void aSavedSessionOpensExactlyAsItWas() {
    BuildSession(*window_);
    chosen_file_ = Path(QStringLiteral("session"));  // the extension is added
    window_->ToolClick(QStringLiteral("mnuSave"));
    QVERIFY(QFileInfo::exists(Path(QStringLiteral("session.orv"))));
    QCOMPARE(window_->statusBar()->currentMessage(), QStringLiteral("Saved ") + Path(QStringLiteral("session.orv")));
    QVERIFY(!window_->Projects().IsModified());
    const formats::Project saved = window_->Projects().CurrentProject();
    QVERIFY(asked_.empty());
    window_->close();  // saved: only the exit question
    QCOMPARE(asked_.size(), std::size_t{1});
    window_.reset();

    auto reopened = MakeWindow();
    chosen_file_ = Path(QStringLiteral("session.orv"));
    reopened->ToolClick(QStringLiteral("mnuOpen"));
    QCOMPARE(Titles(*reopened), (QStringList{QStringLiteral("WorkSheet 1"), QStringLiteral("xbar-R control chart"),
                                             QStringLiteral("Line 2")}));
    const formats::Project opened = reopened->Projects().CurrentProject();
    QCOMPARE(opened.sheets.size(), saved.sheets.size());
    for (std::size_t i = 0; i < saved.sheets.size(); ++i) {
      const auto& a = opened.sheets[i].sheet;
      const auto& b = saved.sheets[i].sheet;
      QCOMPARE(a.Name(), b.Name());
      QCOMPARE(a.DataRowCnt(), b.DataRowCnt());
      for (long row = 1; row <= b.DataRowCnt(); ++row)
        for (long col = 1; col <= b.DataColCnt(); ++col) QCOMPARE(a.Text(row, col), b.Text(row, col));
      QCOMPARE(a.ColumnHeaderName(1), b.ColumnHeaderName(1));
      QCOMPARE(opened.sheets[i].formats.size(), saved.sheets[i].formats.size());
    }
    QCOMPARE(SheetAt(*reopened, 0)->Editor().Formats().At(2, 2).bold, true);
    QCOMPARE(SheetAt(*reopened, 0)->Sheet().Selection.SelBlockRow2, 2L);
    auto* result = qobject_cast<gui::ResultWindowWidget*>(
        reopened->Mdi()->subWindowList(QMdiArea::CreationOrder).at(1)->widget());
    QVERIFY(result);
    QCOMPARE(result->Record().table->TextRows(), saved.results[0].window.table->TextRows());
    QCOMPARE(result->Record().table->StyleOfRow(0).background, std::optional<shell::Rgb>(shell::kBlue));
    QCOMPARE(result->Record().charts[0].series[0].y, (std::vector<double>{10.25, 10.75}));
    QCOMPARE(result->Record().charts[0].lines[0].label, std::string("UCL= 11.5"));
    QCOMPARE(result->CellText(0, 1), QStringLiteral("10.25"));
    // The chart comes back restyled.
    QVERIFY(result->Record().presentation == std::vector<shell::ChartPresentation>{Restyled()});
    gui::ChartView* chart = result->Charts().front();
    QCOMPARE(qobject_cast<QCPTextElement*>(chart->plotLayout()->element(0, 0))->text(), QStringLiteral("Means per shift"));
    QCOMPARE(chart->graph(0)->pen().color(), QColor(0x00AA00));
    QVERIFY(!chart->yAxis->grid()->visible());

    QCOMPARE(reopened->Mdi()->activeSubWindow()->windowTitle(), QStringLiteral("Line 2"));
    QVERIFY(reopened->DocumentMenusEnabled());
    QVERIFY(!reopened->Projects().IsModified());
    // The worksheet counter came back too: the next sheet is number 3.
    QCOMPARE(reopened->NewWorksheet()->parentWidget()->windowTitle(), QStringLiteral("WorkSheet 3"));
    // Restyling a chart is a change to save.
    reopened->Projects().Save();
    QVERIFY(!reopened->Projects().IsModified());
    result->SetPresentation(shell::PlainPresentation("ChartOne"));
    QVERIFY(reopened->Projects().IsModified());
  }

  void aReopenedChartRedrawsFromItsOwnData() {
    gui::WorksheetWindow* sheet = window_->OpenDataFile(QStringLiteral(ORVIK_SOURCE_DIR "/examples/subgroups.csv"));
    QVERIFY(sheet);
    sheet->SelectBlock(1, 1, 25, 5);
    const std::string first_cell(sheet->Sheet().Text(1, 1));
    std::vector<std::string> opened;
    const auto answer = [&opened](shell::DialogModel& dialog) {  // OK as the dialog stands
      opened.push_back(dialog.Name());
      return true;
    };
    window_->Host().SetDialogResponder(answer);
    window_->ToolClick(QStringLiteral("mnuBarX-R"));
    const std::vector<std::vector<std::string>> drawn = window_->ActiveResultWindow()->Record().table->TextRows();
    chosen_file_ = Path(QStringLiteral("chart.orv"));
    window_->ToolClick(QStringLiteral("mnuSave"));
    window_->close();
    window_.reset();

    window_ = MakeWindow();
    window_->Host().SetDialogResponder(answer);
    QVERIFY(window_->Projects().OpenProject(Path(QStringLiteral("chart.orv"))));
    // The worksheet no longer holds what the chart read.
    SheetAt(*window_, 0)->Sheet().SetText(1, 1, "99");
    SheetAt(*window_, 0)->SelectBlock(3, 2, 4, 3);
    QMdiSubWindow* chart = window_->Mdi()->subWindowList(QMdiArea::CreationOrder).at(1);
    window_->Mdi()->setActiveSubWindow(chart);
    QAction* given = window_->Tool(QStringLiteral("miGivenLimits"));
    QVERIFY(given->isEnabled());
    opened.clear();
    given->trigger();
    // Drawn again from the data saved with the window: no subgroup dialog,
    // the same grid, and the new window shares that data.
    QCOMPARE(opened, (std::vector<std::string>{"ControlTwoLimit"}));
    QCOMPARE(window_->DocumentWindowCount(), 3);
    gui::ResultWindowWidget* redrawn = window_->ActiveResultWindow();
    QVERIFY(redrawn && redrawn->parentWidget() != chart);
    QCOMPARE(redrawn->Record().table->TextRows(), drawn);
    const auto* reopened = qobject_cast<gui::ResultWindowWidget*>(chart->widget());
    QVERIFY(reopened->Record().run && redrawn->Record().run);
    QCOMPARE(redrawn->Record().run->data, reopened->Record().run->data);
    QCOMPARE(std::string(redrawn->Record().run->data->Text(1, 1)), first_cell);
  }

  // The reader's refusals of damaged and foreign files are the formats
  // tests'; here the message reaches the user and nothing open changes.
  void aFileThatIsNoProjectChangesNothingOpen() {
    BuildSession(*window_);
    const QStringList before = Titles(*window_);
    const QString path = Path(QStringLiteral("data.orv"));
    std::ofstream(path.toStdString()) << "1,2\n";
    QVERIFY(!window_->Projects().OpenProject(path));
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0].title, std::string("Information"));
    QVERIFY2(asked_[0].text.find("not an Orvik project") != std::string::npos, asked_[0].text.c_str());
    QCOMPARE(Titles(*window_), before);
    QVERIFY(window_->Projects().IsModified());
  }

  void unsavedWorkIsNeverDroppedSilently() {
    window_->NewWorksheet();  // an empty sheet is no work: only the exit question
    QVERIFY(!window_->Projects().HasUnsavedWork());
    SheetAt(*window_, 0)->Editor().SetCell(1, 1, "1");
    SheetAt(*window_, 0)->Copy();
    SheetAt(*window_, 0)->SelectBlock(2, 1, 2, 1);
    SheetAt(*window_, 0)->Paste();  // an undoable edit marks the session
    QVERIFY(window_->Projects().HasUnsavedWork());

    answers_ = {shell::MessageAnswer::Cancel};
    QVERIFY(!window_->close());
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0], gui::SaveChangesQuestion(""));
    QCOMPARE(asked_[0].buttons, shell::MessageButtons::SaveDiscardCancel);

    // Discard goes on to the exit question, unchanged.
    asked_.clear();
    answers_ = {shell::MessageAnswer::Discard, shell::MessageAnswer::Cancel};
    QVERIFY(!window_->close());
    QCOMPARE(asked_.size(), std::size_t{2});
    QCOMPARE(asked_[1], gui::ExitQuestion());

    // Save without a file chosen saves nothing and keeps the program.
    asked_.clear();
    chosen_file_.clear();
    answers_ = {shell::MessageAnswer::Ok};
    QVERIFY(!window_->close());
    QCOMPARE(asked_.size(), std::size_t{1});

    // Closing the worksheet asks only the worksheet question.
    asked_.clear();
    answers_ = {shell::MessageAnswer::Cancel};
    QVERIFY(!SheetAt(*window_, 0)->parentWidget()->close());
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0], gui::CloseWorksheetQuestion("WorkSheet 1"));

    // Opening another project asks before the session is replaced.
    formats::Project other;
    other.sheets.push_back({worksheet::Worksheet("Other"), {}, std::nullopt});
    other.order = {{formats::Project::Document::Kind::Sheet, 0}};
    formats::SaveProject(Path(QStringLiteral("other.orv")).toStdString(), other);
    asked_.clear();
    answers_ = {shell::MessageAnswer::Cancel};
    QVERIFY(!window_->Projects().OpenProject(Path(QStringLiteral("other.orv"))));
    QCOMPARE(Titles(*window_), QStringList{QStringLiteral("WorkSheet 1")});
    answers_ = {shell::MessageAnswer::Discard};
    QVERIFY(window_->Projects().OpenProject(Path(QStringLiteral("other.orv"))));
    QCOMPARE(Titles(*window_), QStringList{QStringLiteral("Other")});
  }

  void autosavedWorkIsOfferedBackAfterACrash() {
    BuildSession(*window_);
    window_->Projects().Autosave();
    const QString autosave = window_->Projects().AutosavePath();
    QVERIFY(QFileInfo::exists(autosave));
    // A process that died holding an autosave: a child that has exited.
    const pid_t child = fork();
    if (child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    const QString orphan = gui::ProjectActions::AutosaveFolder() + QStringLiteral("/autosave-%1.orv").arg(child);
    QVERIFY(QFile::copy(autosave, orphan));
    const formats::Project saved = window_->Projects().CurrentProject();
    window_.reset();
    QVERIFY(!QFileInfo::exists(autosave));  // a clean end removes its own autosave

    auto restarted = MakeWindow();
    asked_.clear();
    restarted->Projects().OfferRecovery();
    QCOMPARE(asked_.size(), std::size_t{1});
    QCOMPARE(asked_[0].title, std::string("Confirmation"));
    QVERIFY(asked_[0].text.starts_with("Orvik 2.0 did not end normally last time."));
    QCOMPARE(Titles(*restarted), (QStringList{QStringLiteral("WorkSheet 1"), QStringLiteral("xbar-R control chart"),
                                              QStringLiteral("Line 2")}));
    QCOMPARE(SheetAt(*restarted, 0)->Sheet().Text(2, 1), saved.sheets[0].sheet.Text(2, 1));
    QVERIFY(restarted->Projects().HasUnsavedWork());  // recovered work still needs saving
    QVERIFY(!QFileInfo::exists(orphan));
    asked_.clear();
    restarted->Projects().OfferRecovery();  // offered once only
    QVERIFY(asked_.empty());
  }

  void importAndExportKeepTheData() {
    const std::string csv = Path(QStringLiteral("in.csv")).toStdString();
    std::ofstream(csv, std::ios::binary) << "\xEF\xBB\xBF" "Width;\"Note; long\"\r\n1,5;\"a\r\nb\"\r\n;x\r\n";
    window_->Projects().SetImportChooser([](const QString&, const std::vector<std::string>&) {
      return std::optional<gui::ImportChoice>(gui::ImportChoice{';', true, 0});
    });
    chosen_file_ = QString::fromStdString(csv);
    window_->ToolClick(QStringLiteral("mnuDataImport"));
    gui::WorksheetWindow* sheet = SheetAt(*window_, 0);
    QVERIFY(sheet);
    QCOMPARE(sheet->Sheet().ColumnHeaderName(2), std::string("Note; long"));
    QCOMPARE(sheet->Sheet().Text(1, 2), std::string_view("a\r\nb"));
    QCOMPARE(sheet->Sheet().Text(2, 2), std::string_view("x"));

    // The file type picked decides the format where the name has no
    // extension of its own.
    const std::pair<QString, QString> exports[] = {{QStringLiteral("out.xlsx"), {}},
                                                   {QStringLiteral("out.tsv"), {}},
                                                   {QStringLiteral("out.csv"), QStringLiteral("Excel workbook (*.xlsx)")},
                                                   {QStringLiteral("book"), QStringLiteral("Excel workbook (*.xlsx)")}};
    for (const auto& [name, type] : exports) {
      chosen_file_ = Path(name);
      chosen_type_ = type;
      window_->ToolClick(QStringLiteral("mnuDataExport"));
      const std::string written = (name == QLatin1String("book") ? Path(QStringLiteral("book.xlsx")) : chosen_file_).toStdString();
      worksheet::Worksheet back;
      if (written.ends_with("xlsx")) formats::ReadXlsxSheet(written, 0, true, back);
      else formats::ReadDelimitedFile(written, {formats::SeparatorForPath(written), true}, back);
      QCOMPARE(back.ColumnHeaderName(1), std::string("Width"));
      QCOMPARE(back.DataRowCnt(), 2L);
      for (long row = 1; row <= 2; ++row)
        for (long col = 1; col <= 2; ++col) QCOMPARE(back.Text(row, col), sheet->Sheet().Text(row, col));
      QCOMPARE(window_->statusBar()->currentMessage(),
               QStringLiteral("Exported WorkSheet 1 to ") + QFileInfo(QString::fromStdString(written)).absoluteFilePath());
    }
  }

  void theDatabaseImportPicksATableOrWritesItsCancelLine() {
    window_->ToolClick(QStringLiteral("mnuNew"));
    chosen_file_.clear();
    window_->ToolClick(QStringLiteral("mnuDB"));
    QVERIFY(window_->Host().Log().Text().ends_with("\r\nCancel Database Connection"));

    formats::Project project;  // any SQLite file will do: a project is one
    project.sheets.push_back({worksheet::Worksheet("S"), {}, std::nullopt});
    project.order = {{formats::Project::Document::Kind::Sheet, 0}};
    chosen_file_ = Path(QStringLiteral("p.orv"));
    formats::SaveProject(chosen_file_.toStdString(), project);
    std::vector<std::string> offered;
    window_->Projects().SetTablePicker([&offered](const std::vector<std::string>& tables) {
      offered = tables;
      return std::optional<std::string>("sheets");
    });
    window_->ToolClick(QStringLiteral("mnuDB"));
    QVERIFY(std::find(offered.begin(), offered.end(), "sheets") != offered.end());
    gui::WorksheetWindow* imported = SheetAt(*window_, 1);
    QCOMPARE(imported->parentWidget()->windowTitle(), QStringLiteral("WorkSheet 2"));
    QCOMPARE(imported->Sheet().ColumnHeaderName(2), std::string("name"));
    QCOMPARE(imported->Sheet().Text(1, 2), std::string_view("S"));
    window_->Projects().SetTablePicker([](const std::vector<std::string>&) { return std::optional<std::string>(); });
    window_->ToolClick(QStringLiteral("mnuDB"));
    QCOMPARE(window_->DocumentWindowCount(), 2);
    QVERIFY(window_->Host().Log().Text().ends_with("\r\nCancel Database Connection"));
  }
};

QTEST_MAIN(ProjectActionsTest)
#include "project_actions_test.moc"
