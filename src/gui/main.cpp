// orvik: the window application of Orvik 2.0.
//
//   orvik [FILE...] [--run KEY]... [--select RANGE] [--set DIALOG.CONTROL=VALUE]... [--screenshot PNG]
//
// Each FILE opens: a project (.orv) as the session, comma- or
// tab-separated text or a workbook's first sheet as a worksheet. Without a
// screenshot run, work autosaved by a run that did not end is offered back. --select selects
// a block of the last opened worksheet in the notation of orvik-cli
// ("B2:D20", "B:D", "3:7", "all"), --run dispatches a tool key as a click
// would (several in the order given), and --screenshot saves a picture of
// the main window once the window is drawn and ends the program, answering
// every message box OK and every dialog with its --set values (as orvik-cli
// takes them) and OK. Other windows open then (a dialog of the window
// application, the help) are saved beside it as PNG-NAME.png.
#include <QApplication>
#include <QMdiSubWindow>
#include <QScreen>
#include <QTimer>
#include <set>

#include "cli/cell_range.h"
#include "commands/command_registry.h"
#include "formats/workbook_file.h"
#include "gui/main_window.h"
#include "gui/project_actions.h"
#include "gui/worksheet_window.h"
#include "shell/command_run.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Orvik"));
  QApplication::setApplicationVersion(QStringLiteral("2.0"));
  QApplication::setFont(QFont(QStringLiteral("Arial"), 9));

  QStringList files;
  QStringList run_keys;
  QString select, screenshot;
  std::vector<orvik::shell::ControlSetting> settings;  // --set DIALOG.CONTROL=VALUE, as orvik-cli takes them
  const QStringList args = QApplication::arguments();
  for (int i = 1; i < args.size(); ++i) {
    if (args[i] == QLatin1String("--run") && i + 1 < args.size()) {
      run_keys << args[++i];
    } else if (args[i] == QLatin1String("--select") && i + 1 < args.size()) {
      select = args[++i];
    } else if (args[i] == QLatin1String("--screenshot") && i + 1 < args.size()) {
      screenshot = args[++i];
    } else if (args[i] == QLatin1String("--set") && i + 1 < args.size()) {
      const std::string setting = args[++i].toStdString();
      const auto dot = setting.find('.'), equals = setting.find('=');
      if (dot == std::string::npos || equals == std::string::npos || equals < dot) {
        qWarning("orvik: --set takes DIALOG.CONTROL=VALUE, not %s", setting.c_str());
        continue;
      }
      settings.push_back({setting.substr(0, dot), setting.substr(dot + 1, equals - dot - 1), setting.substr(equals + 1)});
    } else {
      files << args[i];
    }
  }

  orvik::gui::MainWindow window;
  if (!screenshot.isEmpty()) {
    // Nobody answers during a screenshot run: boxes get OK, dialogs the
    // --set values or their defaults and OK.
    window.Host().SetMessageResponder([](const orvik::shell::MessageBox&) { return orvik::shell::MessageAnswer::Ok; });
    window.Host().SetDialogResponder([settings](orvik::shell::DialogModel& dialog) {
      for (const auto& setting : settings)
        if (setting.dialog == dialog.Name()) orvik::shell::ApplyControlSetting(dialog, setting);
      return true;
    });
  }
  window.show();
  orvik::gui::WorksheetWindow* last = nullptr;
  if (screenshot.isEmpty()) window.Projects().OfferRecovery();
  for (const QString& file : files) {
    switch (orvik::formats::DataFileKindOf(file.toStdString())) {
      case orvik::formats::DataFileKind::Project: window.Projects().OpenProject(file); break;
      case orvik::formats::DataFileKind::Delimited:
        if (auto* sheet = window.OpenDataFile(file)) last = sheet;
        break;
      default:
        if (auto* sheet = window.Projects().Import(file, {})) last = sheet;
        break;
    }
  }
  if (last && !select.isEmpty()) {
    const auto range = orvik::cli::ParseCellRange(select.toStdString());
    if (range && !orvik::worksheet::WithinGrid(*range)) {
      qWarning("orvik: the range lies beyond the grid: %s", qPrintable(select));
    } else if (range) {
      const auto& s = *range;
      const long rows = last->Sheet().MaxRows();
      const long cols = last->Sheet().MaxCols();
      const long r1 = s.SelBlockRow == -1 ? 1 : s.SelBlockRow, r2 = s.SelBlockRow2 == -1 ? rows : s.SelBlockRow2;
      const long c1 = s.SelBlockCol == -1 ? 1 : s.SelBlockCol, c2 = s.SelBlockCol2 == -1 ? cols : s.SelBlockCol2;
      if (s.IsBlockSelected) last->SelectBlock(r1, c1, r2, c2);
    } else {
      qWarning("orvik: not a cell range: %s", qPrintable(select));
    }
  }
  // As orvik-cli does, the dialogs of program-wide options named in --set
  // (given limits, rule settings) are confirmed before the commands run.
  if (!run_keys.isEmpty())
    QTimer::singleShot(0, &window, [&window, run_keys, settings] {
      std::set<std::string> done;
      for (const auto& setting : settings) {
        const orvik::shell::DialogDeclaration* entry = orvik::commands::FindDialog(setting.dialog);
        if (!done.insert(setting.dialog).second || entry == nullptr || !entry->opensBeforeCommand) continue;
        const auto dialog = entry->make();
        window.Host().RunDialog(*dialog);
      }
      for (const QString& key : run_keys) window.ToolClick(key);
    });
  if (!screenshot.isEmpty()) {
    QTimer::singleShot(1500, &window, [&window, screenshot] {
      window.grab().save(screenshot);
      for (QWidget* top : QApplication::topLevelWidgets())
        if (top != &window && top->isVisible() && !top->objectName().isEmpty())
          top->grab().save(QString(screenshot).replace(QLatin1String(".png"), QLatin1Char('-') + top->objectName() + QLatin1String(".png")));
      QApplication::exit(0);
    });
  }
  return QApplication::exec();
}
