#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>

#include <QPrinter>
#include <QRadioButton>
#include <QTemporaryDir>

#include "gui/sheet_model.h"
#include "gui/sheet_printer.h"
#include "gui/tool_dialogs.h"
#include "gui/worksheet_window.h"

using namespace orvik;
using orvik::gui::WorksheetWindow;

namespace {

// Sends a mouse event with the left button held, as a drag sends it.
void SendMouse(QWidget* target, QEvent::Type type, QPoint at) {
  const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
  QMouseEvent event(type, at, target->mapToGlobal(at), button, held, Qt::NoModifier);
  QApplication::sendEvent(target, &event);
}

QPoint CellCenter(gui::SheetView* view, int row, int col) {
  return view->visualRect(view->model()->index(row, col)).center();
}

std::string Fields(const worksheet::GridSelection& s) {
  return std::to_string(s.IsBlockSelected) + " " + std::to_string(s.SelBlockCol) + " " +
         std::to_string(s.SelBlockCol2) + " " + std::to_string(s.SelBlockRow) + " " + std::to_string(s.SelBlockRow2);
}

}  // namespace

class WorksheetWindowTest : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<WorksheetWindow> window_;

  WorksheetWindow& Open(std::unique_ptr<worksheet::Worksheet> sheet = nullptr) {
    if (!sheet) sheet = std::make_unique<worksheet::Worksheet>("WorkSheet 1");
    window_ = std::make_unique<WorksheetWindow>(std::move(sheet));
    window_->resize(800, 500);
    window_->show();
    if (!QTest::qWaitForWindowExposed(window_.get())) qWarning("the worksheet window was not exposed");
    return *window_;
  }
  std::string Text(long row, long col) { return std::string(window_->Sheet().Text(row, col)); }

 private slots:
  void cleanup() { window_.reset(); }

  void dragFromRightToLeftGivesReversedFields() {
    WorksheetWindow& w = Open();
    QWidget* viewport = w.View()->viewport();
    SendMouse(viewport, QEvent::MouseButtonPress, CellCenter(w.View(), 5, 4));  // E6
    SendMouse(viewport, QEvent::MouseMove, CellCenter(w.View(), 3, 2));
    SendMouse(viewport, QEvent::MouseMove, CellCenter(w.View(), 1, 1));         // B2
    SendMouse(viewport, QEvent::MouseButtonRelease, CellCenter(w.View(), 1, 1));
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 5 2 6 2"));
    QCOMPARE(w.Sheet().ActiveRow, 2L);
    QCOMPARE(w.Sheet().ActiveCol, 2L);
    // The same block dragged the usual way.
    SendMouse(viewport, QEvent::MouseButtonPress, CellCenter(w.View(), 1, 1));
    SendMouse(viewport, QEvent::MouseMove, CellCenter(w.View(), 5, 4));
    SendMouse(viewport, QEvent::MouseButtonRelease, CellCenter(w.View(), 5, 4));
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 2 5 2 6"));
  }

  void headersAndCornerSelectWholeColumnsRowsAndSheet() {
    WorksheetWindow& w = Open();
    QHeaderView* columns = w.View()->horizontalHeader();
    const auto column_point = [&](int col) {
      return QPoint(columns->sectionViewportPosition(col) + columns->sectionSize(col) / 2, columns->height() / 2);
    };
    SendMouse(columns->viewport(), QEvent::MouseButtonPress, column_point(3));  // D
    SendMouse(columns->viewport(), QEvent::MouseMove, column_point(1));         // to B
    SendMouse(columns->viewport(), QEvent::MouseButtonRelease, column_point(1));
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 4 2 -1 -1"));

    QHeaderView* rows = w.View()->verticalHeader();
    const auto row_point = [&](int row) {
      return QPoint(rows->width() / 2, rows->sectionViewportPosition(row) + rows->sectionSize(row) / 2);
    };
    SendMouse(rows->viewport(), QEvent::MouseButtonPress, row_point(2));
    SendMouse(rows->viewport(), QEvent::MouseButtonRelease, row_point(2));
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 -1 -1 3 3"));

    QAbstractButton* corner = w.View()->findChild<QAbstractButton*>();
    QVERIFY(corner);
    corner->click();
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 -1 -1 -1 -1"));
    w.View()->clearSelection();
    QCOMPARE(w.Sheet().Selection.IsBlockSelected, false);
  }

  void shiftArrowsExtendFromTheCaret() {
    WorksheetWindow& w = Open();
    w.SelectBlock(4, 4, 4, 4);
    QTest::keyClick(w.View(), Qt::Key_Left, Qt::ShiftModifier);
    QTest::keyClick(w.View(), Qt::Key_Up, Qt::ShiftModifier);
    // Let go of Shift, or the application still holds it for the next test.
    QTest::keyRelease(w.View(), Qt::Key_Shift);
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 4 3 4 3"));
  }

  void pasteOfATabSeparatedBlockAndItsUndo() {
    WorksheetWindow& w = Open();
    w.Editor().SetCell(2, 2, "old");
    QApplication::clipboard()->setText(QStringLiteral("1\t2\r\n3\t\"a\tb\"\r\n"));
    w.SelectBlock(2, 2, 2, 2);
    w.Paste();
    QCOMPARE(Text(2, 2), std::string("1"));
    QCOMPARE(Text(3, 3), std::string("a\tb"));
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 2 3 2 3"));
    QCOMPARE(w.Model()->data(w.Model()->index(2, 2), Qt::DisplayRole).toString(), QStringLiteral("a\tb"));
    w.UndoStack()->undo();
    QCOMPARE(Text(2, 2), std::string("old"));
    QCOMPARE(w.Sheet().DataRowCnt(), 2L);
    QCOMPARE(w.Sheet().DataColCnt(), 2L);
    w.UndoStack()->redo();
    QCOMPARE(Text(3, 2), std::string("3"));
  }

  void copyAndCutGiveTabSeparatedText() {
    WorksheetWindow& w = Open();
    w.Editor().SetCell(1, 1, "x");
    w.Editor().SetCell(2, 2, "y");
    w.SelectBlock(1, 1, 2, 2);
    w.Copy();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("x\t\r\n\ty\r\n"));
    // Whole columns copy as far as the data goes, not the grid's 1000 rows.
    w.View()->selectColumn(0);
    w.Copy();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("x\r\n\r\n"));
    w.SelectBlock(2, 2, 2, 2);
    w.Cut();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("y\r\n"));
    QCOMPARE(Text(2, 2), std::string());
    w.UndoStack()->undo();
    QCOMPARE(Text(2, 2), std::string("y"));
  }

  void aColumnIsTypedWithEnterAndEachCellIsOneUndoStep() {
    WorksheetWindow& w = Open();
    w.SelectBlock(1, 1, 1, 1);
    QWidget* view = w.View();
    w.activateWindow();
    view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&w));
    // Keys go where the user's would: to the cell editor once typing opened it.
    const auto focus = [view] { return QApplication::focusWidget() ? QApplication::focusWidget() : view; };
    const auto type = [&](const char* text, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
      for (const char* c = text; *c; ++c) QTest::keyClick(focus(), *c);
      QTest::keyClick(focus(), key, modifiers);
      QApplication::processEvents();  // the editor closes as the event loop turns
    };
    type("10.2", Qt::Key_Return);
    type("11.5", Qt::Key_Enter);
    QCOMPARE(Text(1, 1) + " " + Text(2, 1), std::string("10.2 11.5"));
    QCOMPARE(w.Sheet().ActiveRow, 3L);
    type("b3", Qt::Key_Tab);  // Tab commits and moves right
    QCOMPARE(std::pair(w.Sheet().ActiveRow, w.Sheet().ActiveCol), std::pair(3L, 2L));
    type("c3", Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(w.Sheet().ActiveCol, 1L);
    QTest::keyClick(view, Qt::Key_Return, Qt::ShiftModifier);  // no edit: Shift+Enter only moves up
    QTest::keyRelease(view, Qt::Key_Shift);
    QCOMPARE(w.Sheet().ActiveRow, 2L);
    type("9", Qt::Key_Return);  // typing over a cell replaces its text
    QCOMPARE(Text(2, 1), std::string("9"));
    w.SelectBlock(1, 1, 1, 1);
    QTest::keyClick(view, Qt::Key_F2);  // F2 edits in place: the caret after the text
    type("5", Qt::Key_Return);
    QCOMPARE(Text(1, 1), std::string("10.25"));
    QCOMPARE(Text(3, 2), std::string("c3"));
    QCOMPARE(w.UndoStack()->count(), 6);
    w.UndoStack()->undo();
    QCOMPARE(Text(1, 1), std::string("10.2"));
    QTest::keyClick(view, Qt::Key_End, Qt::ControlModifier);  // the last cell holding data
    QCOMPARE(std::pair(w.Sheet().ActiveRow, w.Sheet().ActiveCol), std::pair(3L, 2L));
    // Typing past the grid's end grows it.
    w.Editor().SetCell(1001, 1, "6");
    QCOMPARE(w.Model()->rowCount(), 1001);
  }

  void clearInsertAndDeleteAtTheActiveCell() {
    WorksheetWindow& w = Open();
    for (long r = 1; r <= 3; ++r) w.Editor().SetCell(r, 1, std::to_string(r));
    w.Editor().SetCell(2, 2, "b");
    w.Sheet().SetColumnHeader(2, "Weight");
    w.SelectBlock(2, 1, 2, 1);
    w.EditRowsColumns(gui::RowColumnEditKind::DeleteRow);
    QCOMPARE(Text(2, 1), std::string("3"));
    QCOMPARE(w.Model()->rowCount(), 999);
    w.UndoStack()->undo();
    QCOMPARE(Text(2, 1), std::string("2"));
    QCOMPARE(Text(2, 2), std::string("b"));
    QCOMPARE(w.Model()->rowCount(), 1000);
    w.SelectBlock(1, 2, 1, 2);
    w.EditRowsColumns(gui::RowColumnEditKind::DeleteColumn);
    QCOMPARE(w.Sheet().ColumnHeader(2), std::string("B"));
    w.UndoStack()->undo();
    QCOMPARE(w.Sheet().ColumnHeader(2), std::string("Weight"));
    QCOMPARE(w.Model()->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Weight"));
    w.EditRowsColumns(gui::RowColumnEditKind::InsertColumn);
    QCOMPARE(Text(2, 3), std::string("b"));
    QCOMPARE(w.Model()->columnCount(), 53);
    w.SelectBlock(1, 1, 3, 1);
    w.Clear();
    QCOMPARE(w.Sheet().DataColCnt(), 3L);
    QCOMPARE(Text(3, 1), std::string());
  }

  void formatsShowInTheGridAndUndo() {
    WorksheetWindow& w = Open();
    w.Editor().SetCell(1, 1, "12");
    w.Editor().SetCell(1, 2, "text");
    QAbstractItemModel* model = w.Model();
    QCOMPARE(model->data(model->index(0, 0), Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    QCOMPARE(model->data(model->index(0, 1), Qt::TextAlignmentRole).toInt(), int(Qt::AlignLeft | Qt::AlignVCenter));
    w.View()->selectColumn(0);
    w.ToggleFontStyle(gui::FontStyle::Bold);
    w.SetAlignment(worksheet::Alignment::Center);
    QVERIFY(model->data(model->index(500, 0), Qt::FontRole).value<QFont>().bold());
    QCOMPARE(model->data(model->index(0, 0), Qt::TextAlignmentRole).toInt(), int(Qt::AlignCenter));
    QVERIFY(!model->data(model->index(0, 1), Qt::FontRole).isValid());
    w.ToggleFontStyle(gui::FontStyle::Bold);  // the active cell is bold: the toggle clears it
    QVERIFY(!model->data(model->index(0, 0), Qt::FontRole).isValid());
    w.UndoStack()->undo();
    w.UndoStack()->undo();
    QVERIFY(model->data(model->index(0, 0), Qt::FontRole).value<QFont>().bold());
    QCOMPARE(model->data(model->index(0, 0), Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
  }

  void sortFindAndReplace() {
    WorksheetWindow& w = Open();
    const char* values[] = {"30", "x", "10", "20"};
    for (long r = 1; r <= 4; ++r) {
      w.Editor().SetCell(r, 1, values[r - 1]);
      w.Editor().SetCell(r, 2, std::to_string(r));
    }
    // Sorting column A alone asks to take the rows of B along (the default).
    w.SelectBlock(1, 1, 4, 1);
    gui::SortDialog dialog(w.Sheet(), w.TargetBlock());
    QVERIFY(dialog.WholeRows() && dialog.WholeRows()->isChecked());
    QCOMPARE(dialog.KeyBox(1)->currentText(), QStringLiteral("(none)"));
    QCOMPARE(dialog.KeyBox(0)->count(), 2);
    w.Sort(dialog.Block(), dialog.Keys());
    QCOMPARE(Text(1, 1) + Text(2, 1) + Text(3, 1) + Text(4, 1), std::string("102030x"));
    QCOMPARE(Text(1, 2) + Text(4, 2), std::string("32"));
    w.UndoStack()->undo();
    QCOMPARE(Text(1, 1), std::string("30"));
    // The selected cells only, descending: column B stays.
    dialog.findChildren<QRadioButton*>().at(1)->setChecked(true);
    QCOMPARE(dialog.KeyBox(0)->count(), 1);
    dialog.OrderBox(0)->setCurrentIndex(1);
    w.Sort(dialog.Block(), dialog.Keys());
    QCOMPARE(Text(1, 1) + Text(4, 1) + Text(1, 2), std::string("30x1"));
    w.UndoStack()->undo();

    gui::FindWorkSheet find([&] { return &w; });
    find.FindText()->setText(QStringLiteral("0"));
    w.SelectBlock(1, 1, 1, 1);
    QVERIFY(find.FindNext());
    QCOMPARE(w.Sheet().ActiveRow, 3L);  // "10", after "30" in row 1
    find.ReplaceText()->setText(QStringLiteral("5"));
    find.ReplaceAll();
    QCOMPARE(Text(1, 1) + Text(3, 1) + Text(4, 1), std::string("351525"));
    QCOMPARE(find.Status(), QStringLiteral("3 cell(s) replaced."));
    find.FindText()->setText(QStringLiteral("zz"));
    QVERIFY(!find.FindNext());
    w.UndoStack()->undo();
    QCOMPARE(Text(4, 1), std::string("20"));
  }

  void printsTheDataOnPagesOfItsOwn() {
    WorksheetWindow& w = Open();
    for (long r = 1; r <= 150; ++r) w.Editor().SetCell(r, 1, std::to_string(r));
    QTemporaryDir dir;
    const auto pages = [&](const QString& name) {
      QPrinter printer;
      printer.setOutputFormat(QPrinter::PdfFormat);
      printer.setOutputFileName(dir.filePath(name));
      gui::PrintWorksheet(printer, w.Sheet());
      QFile file(dir.filePath(name));
      if (!file.open(QIODevice::ReadOnly)) return -1;
      return static_cast<int>(file.readAll().count("/Type /Page\n"));
    };
    const int short_sheet = pages(QStringLiteral("a.pdf"));
    QVERIFY(short_sheet >= 2);  // 150 rows do not fit one page
    w.Editor().SetCell(1, 30, "far right");
    QVERIFY(pages(QStringLiteral("b.pdf")) > short_sheet);
  }

  void aMillionRowsOpenScrollAndSelectQuickly() {
    auto sheet = std::make_unique<worksheet::Worksheet>("WorkSheet 1");
    for (long r = 1; r <= 1'000'000; ++r) sheet->SetText(r, 1, std::to_string(r % 977));
    QElapsedTimer timer;
    timer.start();
    WorksheetWindow& w = Open(std::move(sheet));
    QCOMPARE(w.Model()->rowCount(), 1'000'000);
    w.View()->scrollToBottom();
    QApplication::processEvents();
    w.SelectBlock(999'990, 1, 1'000'000, 1);
    w.View()->selectColumn(0);
    QApplication::processEvents();
    QCOMPARE(Fields(w.Sheet().Selection), std::string("1 1 1 -1 -1"));
    QVERIFY2(timer.elapsed() < 1500, qPrintable(QString::number(timer.elapsed())));
  }
};

QTEST_MAIN(WorksheetWindowTest)
#include "worksheet_window_test.moc"
