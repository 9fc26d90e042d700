// The window commands of the main window: the tool keys that need windows
// (files, clipboard, editing, formats, window arrangement, charts, tools).
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMdiSubWindow>
#include <QPrintPreviewDialog>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStatusBar>

#include "gui/chart_view.h"
#include "gui/main_window.h"

#include <QRegularExpression>
#include "gui/result_window_widget.h"
#include "gui/sheet_printer.h"
#include "gui/tool_dialogs.h"
#include "gui/worksheet_window.h"

namespace orvik::gui {

void MainWindow::CreateWindowCommands() {
  auto on_sheet = [this](auto action) {
    return [this, action] {
      if (WorksheetWindow* sheet = ActiveWorksheetWindow()) action(*sheet);
    };
  };
  auto& c = window_commands_;
  c.insert(QStringLiteral("mnuNew"), [this] { NewWorksheet(); });
  // Print prints the active window: a worksheet, or a whole result window.
  c.insert(QStringLiteral("mnuPrint"), [this] {
    if (ActiveResultWindow()) PrintActiveResultWindow();
    else PrintActiveWorksheet();
  });
  c.insert(QStringLiteral("mnuWorkSheetPrint"), [this] { PrintActiveWorksheet(); });
  c.insert(QStringLiteral("mnuExit"), [this] { close(); });
  c.insert(QStringLiteral("mnuCut"), on_sheet([](WorksheetWindow& s) { s.Cut(); }));
  c.insert(QStringLiteral("mnuCopy"), [this] {
    // On a result window the copy takes its grid.
    if (ResultWindowWidget* result = ActiveResultWindow()) {
      QApplication::clipboard()->setText(result->GridText());
    } else if (WorksheetWindow* sheet = ActiveWorksheetWindow()) {
      sheet->Copy();
    }
  });
  c.insert(QStringLiteral("mnuPaste"), on_sheet([](WorksheetWindow& s) { s.Paste(); }));
  c.insert(QStringLiteral("mnuChartDataCopy"), [this] {
    if (ResultWindowWidget* result = ActiveResultWindow()) QApplication::clipboard()->setText(result->GridText());
  });
  c.insert(QStringLiteral("mnuGraphSave"), [this] { SaveChartPicture(); });
  c.insert(QStringLiteral("mnuDel"), on_sheet([](WorksheetWindow& s) { s.Clear(); }));
  c.insert(QStringLiteral("mnuSelectAll"), on_sheet([](WorksheetWindow& s) { s.SelectAll(); }));
  for (const char* key : {"mnuInsertRow", "mnuInsertCol", "mnuDelRow", "mnuDelCol"}) {
    const RowColumnEditKind kind = *RowColumnEditForKey(key);
    c.insert(QString::fromLatin1(key), on_sheet([kind](WorksheetWindow& s) { s.EditRowsColumns(kind); }));
  }
  c.insert(QStringLiteral("mnuFind"), [this] { OpenFind(false, false); });
  c.insert(QStringLiteral("mnuFindNext"), [this] { OpenFind(false, true); });
  c.insert(QStringLiteral("mnuReplace"), [this] { OpenFind(true, false); });
  c.insert(QStringLiteral("mnuSort"), [this] { SortWorksheet(); });
  c.insert(QStringLiteral("mnuWorkSheetName"), [this] { RenameWorksheet(); });
  c.insert(QStringLiteral("mnuSheetHeaderName"), [this] { NameColumnHeader(); });
  for (const char* key : {"mnuBold", "mnuItalic", "mnuUnderline"}) {
    const FontStyle style = *FontStyleForKey(key);
    c.insert(QString::fromLatin1(key), on_sheet([style](WorksheetWindow& s) { s.ToggleFontStyle(style); }));
  }
  const std::pair<const char*, worksheet::Alignment> alignments[] = {{"mnuLeft", worksheet::Alignment::Left},
                                                                     {"mnuCenter", worksheet::Alignment::Center},
                                                                     {"mnuRight", worksheet::Alignment::Right}};
  for (const auto& [key, alignment] : alignments) {
    const worksheet::Alignment a = alignment;
    c.insert(QString::fromLatin1(key), on_sheet([a](WorksheetWindow& s) { s.SetAlignment(a); }));
  }
  // The view toggles show what they hide and keep their check marks in step,
  // from the menu and from a dispatch alike.
  auto toggle = [this](const QString& key, QWidget* widget) {
    return [this, key, widget] {
      const bool show = widget->isHidden();
      widget->setVisible(show);
      tools_.value(key)->setChecked(show);
    };
  };
  c.insert(QStringLiteral("mnuStandardToolbar"), toggle(QStringLiteral("mnuStandardToolbar"), bar_standard_));
  c.insert(QStringLiteral("mnuFormatToolbar"), toggle(QStringLiteral("mnuFormatToolbar"), bar_format_));
  c.insert(QStringLiteral("mnuStatusBar"), toggle(QStringLiteral("mnuStatusBar"), statusBar()));
  c.insert(QStringLiteral("mnuSession"), toggle(QStringLiteral("mnuSession"), session_doc_));
  c.insert(QStringLiteral("mnuTileH"), [this] { TileWindows(true); });
  c.insert(QStringLiteral("mnuTileV"), [this] { TileWindows(false); });
  c.insert(QStringLiteral("mnuCascade"), [this] { mdi_->cascadeSubWindows(); });
  c.insert(QStringLiteral("mnuArrangeIcons"), [this] { ArrangeIcons(); });
  c.insert(QStringLiteral("mnuChartProperty"), [this] { ShowChartProperty(); });
  c.insert(QStringLiteral("mnuChartPrint"), [this] { PrintActiveChart(); });
  c.insert(QStringLiteral("mnuCal"), [this] { StartCalculator(); });
  c.insert(QStringLiteral("mnuMemo"), [] {});
  c.insert(QStringLiteral("mnuDate"), [this] {
    std::unique_ptr<QDialog> dialog(MakeCarlendar(this));
    dialog->exec();
  });
  c.insert(QStringLiteral("mnuInformation"), [this] {
    std::unique_ptr<QDialog> dialog(MakeInformation(this));
    dialog->exec();
  });
  // The help window stays open beside the work.
  c.insert(QStringLiteral("mnuContents"), [this] {
    if (!help_) help_ = MakeHelpContents(this);
    help_->show();
    help_->raise();
    help_->activateWindow();
  });
}

// A file name saved without an extension of the filter's types gets the
// extension of the type chosen in the dialog (the first type when none was
// told), so the chosen type decides the file's format.
QString MainWindow::ChooseFile(bool save, const QString& filter) {
  QString chosen_type;
  QString path = file_chooser_ ? file_chooser_(save, filter, &chosen_type)
                 : save        ? QFileDialog::getSaveFileName(this, QString(), QString(), filter, &chosen_type)
                               : QFileDialog::getOpenFileName(this, QString(), QString(), filter);
  if (!save || path.isEmpty()) return path;
  static const QRegularExpression extension(QStringLiteral("\\*\\.(\\w+)"));
  const QString suffix = QFileInfo(path).suffix().toLower();
  for (auto match = extension.globalMatch(filter); match.hasNext();)
    if (match.next().captured(1) == suffix) return path;
  if (chosen_type.isEmpty()) chosen_type = filter.section(QStringLiteral(";;"), 0, 0);
  const QRegularExpressionMatch first = extension.match(chosen_type);
  return first.hasMatch() ? path + QLatin1Char('.') + first.captured(1) : path;
}

void MainWindow::ColorTool(QAction* tool) {
  WorksheetWindow* sheet = ActiveWorksheetWindow();
  if (!sheet) return;
  const bool background = tool->objectName() == QLatin1String("miBackColor");
  const QColor color = color_chooser_ ? color_chooser_(background)
                                      : QColorDialog::getColor(background ? Qt::yellow : Qt::red, this);
  if (!color.isValid()) return;
  sheet->SetColor(background, static_cast<std::uint32_t>(color.rgb() & 0xFFFFFF));
}

void MainWindow::SaveChartPicture() {
  ResultWindowWidget* result = ActiveResultWindow();
  if (!result || result->Charts().empty()) return;
  const QString path = ChooseFile(true, QStringLiteral("PNG picture (*.png);;JPEG picture (*.jpg);;BMP picture (*.bmp);;"
                                                      "SVG drawing (*.svg);;PDF document (*.pdf)"));
  if (path.isEmpty()) return;
  PictureSize size = DefaultPictureSize(result->Charts());
  if (!file_chooser_) {
    PictureSizeDialog dialog(size, this);
    if (dialog.exec() != QDialog::Accepted) return;
    size = dialog.Size();
  }
  if (!SaveCharts(result->Charts(), path, size))
    host_.ShowMessage({"Information", "The picture could not be saved to " + path.toStdString(),
                       shell::MessageIcon::Exclamation, shell::MessageButtons::Ok});
  else
    statusBar()->showMessage(QStringLiteral("Saved the picture to %1").arg(QDir::toNativeSeparators(path)), 8000);
}

void MainWindow::PrintActiveWorksheet() {
  WorksheetWindow* window = ActiveWorksheetWindow();
  if (!window) return;
  QPrinter printer(QPrinter::HighResolution);
  QPrintPreviewDialog preview(&printer, this);
  preview.setWindowTitle(QStringLiteral("Print Preview - ") + window->windowTitle());
  connect(&preview, &QPrintPreviewDialog::paintRequested, this,
          [window](QPrinter* target) { PrintWorksheet(*target, window->Sheet()); });
  preview.exec();
}

// Both go through the print preview, whose print button opens the
// platform's print dialog.
void MainWindow::PrintActiveChart() {
  ResultWindowWidget* result = ActiveResultWindow();
  if (!result || !result->ActiveChart()) return;
  const std::vector<ChartView*> chart{result->ActiveChart()};
  QPrinter printer(QPrinter::HighResolution);
  const QSize size = StackedSize(chart);
  printer.setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
  QPrintPreviewDialog preview(&printer, this);
  preview.setWindowTitle(QStringLiteral("Print Preview - ") + result->windowTitle());
  connect(&preview, &QPrintPreviewDialog::paintRequested, this,
          [chart](QPrinter* target) { PrintCharts(*target, chart); });
  preview.exec();
}

void MainWindow::PrintActiveResultWindow() {
  ResultWindowWidget* result = ActiveResultWindow();
  if (!result) return;
  QPrinter printer(QPrinter::HighResolution);
  QPrintPreviewDialog preview(&printer, this);
  preview.setWindowTitle(QStringLiteral("Print Preview - ") + result->windowTitle());
  connect(&preview, &QPrintPreviewDialog::paintRequested, this, [result](QPrinter* target) {
    PrintResultWindow(*target, result->Charts(), result->Record().table ? &*result->Record().table : nullptr);
  });
  preview.exec();
}

void MainWindow::ShowChartProperty() {
  ResultWindowWidget* result = ActiveResultWindow();
  if (!result || !result->ActiveChart()) return;
  ChartProperty dialog(*result, *result->ActiveChart(), this);
  dialog.exec();
}

void MainWindow::OpenFind(bool replace, bool next) {
  if (!find_) find_ = new FindWorkSheet([this] { return ActiveWorksheetWindow(); }, this);
  if (next && !find_->FindText()->text().isEmpty()) {
    find_->FindNext();
    return;
  }
  find_->SetMode(replace ? FindWorkSheet::Mode::Replace : FindWorkSheet::Mode::Find);
  find_->show();
  find_->raise();
  find_->activateWindow();
}

void MainWindow::RenameWorksheet() {
  WorksheetWindow* window = ActiveWorksheetWindow();
  if (!window) return;
  QInputDialog dialog(this);
  dialog.setObjectName(QStringLiteral("WorkSheetName"));
  dialog.setWindowTitle(QStringLiteral("WorkSheet Name"));
  dialog.setLabelText(QStringLiteral("WorkSheet name:"));
  dialog.setTextValue(window->windowTitle());
  if (dialog.exec() != QDialog::Accepted || dialog.textValue().trimmed().isEmpty()) return;
  window->Sheet().SetName(dialog.textValue().trimmed().toStdString());
  window->setWindowTitle(dialog.textValue().trimmed());
}

void MainWindow::NameColumnHeader() {
  WorksheetWindow* window = ActiveWorksheetWindow();
  if (!window) return;
  const worksheet::CellBlock block = window->TargetBlock();
  // Each selected column is named in turn, up to the data's last column.
  const long last = std::max(block.left, std::min(block.right, window->Sheet().DataColCnt()));
  for (long col = block.left; col <= last; ++col) {
    bool ok = false;
    const QString name = QInputDialog::getText(
        this, QStringLiteral("Column Header Name"),
        QStringLiteral("Name of column %1:").arg(QString::fromStdString(worksheet::ColumnLetters(col))),
        QLineEdit::Normal, QString::fromStdString(window->Sheet().ColumnHeaderName(col)), &ok);
    if (!ok) return;
    window->SetColumnHeaderName(col, name.trimmed());
  }
}

void MainWindow::SortWorksheet() {
  WorksheetWindow* window = ActiveWorksheetWindow();
  if (!window) return;
  SortDialog dialog(window->Sheet(), window->TargetBlock(), this);
  if (dialog.exec() == QDialog::Accepted) window->Sort(dialog.Block(), dialog.Keys());
}

void MainWindow::StartCalculator() {
  // The desktops' own calculators first, then the common stand-alone ones.
  for (const char* program : {"calc.exe", "gnome-calculator", "kcalc", "mate-calc", "io.elementary.calculator",
                              "deepin-calculator", "qalculate-qt", "qalculate-gtk", "speedcrunch", "galculator",
                              "xcalc"}) {
    const QString path = QStandardPaths::findExecutable(QString::fromLatin1(program));
    if (!path.isEmpty() && QProcess::startDetached(path, {})) return;
  }
  host_.Notify("No calculator program was found on this computer. Orvik looks for gnome-calculator, kcalc, "
               "mate-calc, qalculate, SpeedCrunch, galculator and xcalc; install one of them to use Calculator.");
}

void MainWindow::TileWindows(bool horizontally) {
  // Horizontally: one window above the other, each as wide as the frame;
  // vertically: side by side, each as tall as the frame.
  QList<QMdiSubWindow*> windows;
  for (QMdiSubWindow* sub : mdi_->subWindowList())
    if (!sub->isMinimized()) windows << sub;
  if (windows.isEmpty()) return;
  const QRect area = mdi_->viewport()->rect();
  const int count = static_cast<int>(windows.size());
  for (int i = 0; i < count; ++i) {
    windows[i]->showNormal();
    if (horizontally) {
      const int height = area.height() / count;
      windows[i]->setGeometry(0, i * height, area.width(), height);
    } else {
      const int width = area.width() / count;
      windows[i]->setGeometry(i * width, 0, width, area.height());
    }
  }
}

void MainWindow::ArrangeIcons() {
  // Minimized windows line up along the bottom edge of the frame.
  const QRect area = mdi_->viewport()->rect();
  int x = 0;
  for (QMdiSubWindow* sub : mdi_->subWindowList()) {
    if (!sub->isMinimized()) continue;
    const QSize size = sub->size();
    sub->move(x, area.height() - size.height());
    x += size.width();
  }
}

}  // namespace orvik::gui
