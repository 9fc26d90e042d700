// Loads a CSV file into a worksheet as orvik-cli and the application do, then
// reads the whole sheet as an analysis would, and reports the time of each
// step and the process's peak memory.
#include <chrono>
#include <cstdio>
#include <string>

#include "formats/delimited_text.h"
#include "worksheet/data_selection.h"
#include "bench_clock.h"

using orvik::bench::PeakMemoryMiB;
using orvik::bench::SecondsSince;

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE.csv\n", argv[0]);
    return 2;
  }
  using orvik::worksheet::Worksheet;
  Worksheet sheet("WorkSheet 1");
  auto start = std::chrono::steady_clock::now();
  orvik::formats::ReadDelimitedFile(argv[1], sheet);
  const double load_seconds = SecondsSince(start);
  const long load_peak = PeakMemoryMiB();

  sheet.Selection = {true, -1, -1, -1, -1};  // the whole sheet
  orvik::worksheet::DataSelection selection;
  start = std::chrono::steady_clock::now();
  orvik::worksheet::ResolveBlock(&sheet, selection);
  const auto figures = orvik::worksheet::CollectNumericCells(sheet, selection);
  const double read_seconds = SecondsSince(start);

  std::printf("sheet: %ld rows x %ld columns\n", sheet.DataRowCnt(), sheet.DataColCnt());
  std::printf("load from CSV: %.2f s, peak memory after load: %ld MiB\n", load_seconds, load_peak);
  std::printf("read all %ld numbers (whole-sheet selection): %.2f s, peak memory: %ld MiB\n", figures.count,
              read_seconds, PeakMemoryMiB());
  return 0;
}
