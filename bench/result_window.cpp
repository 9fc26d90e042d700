// Times the window application from OK to a drawn x-MR window of a
// million points: the command, the result window with its grid model and
// charts, and one full paint of it; and the memory it adds to the sheet's.
// Usage: orvik_bench_result_window SHEET.csv (one column of values)
#include <QApplication>
#include <QPixmap>
#include <chrono>
#include <cstdio>

#include "bench_clock.h"
#include "gui/main_window.h"
#include "gui/result_window_widget.h"
#include "gui/worksheet_window.h"

namespace {

// The resident memory now, in MiB.
long ResidentMiB() {
  long pages = 0, resident = 0;
  if (FILE* f = std::fopen("/proc/self/statm", "r")) {
    if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
    std::fclose(f);
  }
  return resident * 4096 / (1024 * 1024);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s SHEET.csv\n", argv[0]);
    return 2;
  }
  orvik::gui::MainWindow window;
  window.resize(1400, 900);
  window.show();
  window.Host().SetDialogResponder([](orvik::shell::DialogModel&) { return true; });
  orvik::gui::WorksheetWindow* sheet = window.OpenDataFile(QString::fromLocal8Bit(argv[1]));
  if (!sheet) return 1;
  const long rows = sheet->Sheet().DataRowCnt();
  sheet->SelectBlock(1, 1, rows, 1);
  QApplication::processEvents();
  const long before = ResidentMiB();
  const auto start = std::chrono::steady_clock::now();
  window.ToolClick(QStringLiteral("mnuX-Rs"));
  orvik::gui::ResultWindowWidget* result = window.ActiveResultWindow();
  if (!result) return 1;
  QApplication::processEvents();
  const QPixmap picture = window.grab();  // one full paint: charts and grid
  const double seconds = orvik::bench::SecondsSince(start);
  std::printf("x-MR window of %ld points: %.2f s from OK to drawn, %ld MiB more than the sheet (%ld MiB resident)\n",
              rows, seconds, ResidentMiB() - before, ResidentMiB());
  return picture.isNull() ? 1 : 0;
}
