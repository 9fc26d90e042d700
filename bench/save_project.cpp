// Saves a worksheet of numeric texts as a project file, the way the window
// application saves a session, then opens it again; reports the time of
// each step, the file's size and the process's peak memory. The session also
// holds RUNS result windows (default 1), each made by a run over its own copy
// of the sheet, as the host records a command's data.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "formats/project_file.h"
#include "bench_clock.h"

using orvik::bench::PeakMemoryMiB;
using orvik::bench::SecondsSince;

int main(int argc, char** argv) {
  if (argc != 3 && argc != 4) {
    std::fprintf(stderr, "usage: %s ROWS FILE.orv [RUNS]\n", argv[0]);
    return 2;
  }
  const long rows = std::stol(argv[1]);
  const std::string path = argv[2];
  const long runs = argc == 4 ? std::stol(argv[3]) : 1;
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
  for (long i = 0; i < runs; ++i) {
    auto data = std::make_shared<const orvik::worksheet::Worksheet>(sheet);
    orvik::shell::ResultWindow window = orvik::shell::MakeControlForm("x-MR control chart", true);
    window.run = std::make_shared<const orvik::shell::CommandRun>(
        orvik::shell::CommandRun{"mnuX-MR", data, {true, 1, 1, 1, rows}, {{"ControlLimit", "ControlOpt", "1"}}});
    project.results.push_back({std::move(window), std::nullopt});
    project.order.push_back({orvik::formats::Project::Document::Kind::Result, static_cast<std::size_t>(i)});
  }

  auto start = std::chrono::steady_clock::now();
  orvik::formats::SaveProject(path, project);
  const double save_seconds = SecondsSince(start);
  start = std::chrono::steady_clock::now();
  const auto loaded = orvik::formats::LoadProject(path);
  const double load_seconds = SecondsSince(start);
  bool same = loaded.sheets.at(0).sheet.Text(rows, 10) == sheet.Text(rows, 10);
  for (const auto& result : loaded.results)
    same = same && result.window.run && result.window.run->data->Text(rows, 10) == sheet.Text(rows, 10);
  std::printf("cells: %ld x 10, and %ld result windows with a run over a copy of them\n"
              "save: %.2f s (durable on disk)\nfile: %.0f MB\nopen: %.2f s\npeak memory: %ld MiB\n%s\n",
              rows, runs, save_seconds, static_cast<double>(std::filesystem::file_size(path)) / 1e6, load_seconds,
              PeakMemoryMiB(), same ? "read back: same" : "read back: DIFFERENT");
  return same ? 0 : 1;
}
