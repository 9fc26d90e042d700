// Saves a worksheet of numeric texts as a project file, the way the window
// application saves a session, then opens it again; reports the time of
// each step, the file's size and the process's peak memory.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

#include "formats/project_file.h"
#include "bench_clock.h"

using orvik::bench::PeakMemoryMiB;
using orvik::bench::SecondsSince;

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s ROWS FILE.orv\n", argv[0]);
    return 2;
  }
  const long rows = std::stol(argv[1]);
  const std::string path = argv[2];
  orvik::formats::Project project;
  project.worksheetCounter = 1;
  project.sheets.push_back({orvik::worksheet::Worksheet("WorkSheet 1"), {}, std::nullopt});
  project.order = {{orvik::formats::Project::Document::Kind::Sheet, 0}};
  auto& sheet = project.sheets[0].sheet;
  std::mt19937 random(42);
  std::uniform_real_distribution<double> value(10.0, 15.0);
  char text[32];
  for (long row = 1; row <= rows; ++row)
    for (long col = 1; col <= 10; ++col) {
      std::snprintf(text, sizeof text, "%.6f", value(random));
      sheet.SetText(row, col, text);
    }
  sheet.ShrinkToFit();

  auto start = std::chrono::steady_clock::now();
  orvik::formats::SaveProject(path, project);
  const double save_seconds = SecondsSince(start);
  start = std::chrono::steady_clock::now();
  const auto loaded = orvik::formats::LoadProject(path);
  const double load_seconds = SecondsSince(start);
  const bool same = loaded.sheets.at(0).sheet.Text(rows, 10) == sheet.Text(rows, 10);
  std::printf("cells: %ld x 10\nsave: %.2f s (durable on disk)\nfile: %.0f MB\nopen: %.2f s\npeak memory: %ld MiB\n%s\n",
              rows, save_seconds, static_cast<double>(std::filesystem::file_size(path)) / 1e6, load_seconds,
              PeakMemoryMiB(), same ? "read back: same" : "read back: DIFFERENT");
  return same ? 0 : 1;
}
