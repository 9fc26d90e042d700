// Times one command, run as orvik-cli runs it, on a generated worksheet of
// ROWS x COLUMNS numeric texts such as "12.345678" with the whole block
// selected. The sheet is built before the clock starts: the figure is the
// command's own time (reading the cells, computing, building the result).
#include <chrono>
#include <cstdio>
#include <random>
#include <string>

#include "cli/cli_host.h"
#include "commands/command_registry.h"

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr, "usage: %s KEY ROWS COLUMNS [DIALOG.CONTROL=VALUE]...\n", argv[0]);
    return 2;
  }
  const std::string key = argv[1];
  const long rows = std::stol(argv[2]);
  const long columns = std::stol(argv[3]);
  const orvik::shell::CommandDeclaration* command = orvik::commands::FindCommand(key);
  if (command == nullptr || command->run == nullptr) {
    std::fprintf(stderr, "%s cannot be run headless\n", key.c_str());
    return 2;
  }
  std::vector<orvik::cli::DialogSetting> settings;
  for (int i = 4; i < argc; ++i) {
    const std::string setting = argv[i];
    const auto dot = setting.find('.'), equals = setting.find('=');
    settings.push_back({setting.substr(0, dot), setting.substr(dot + 1, equals - dot - 1), setting.substr(equals + 1)});
  }

  orvik::worksheet::Worksheet sheet("WorkSheet 1");
  std::mt19937_64 random(42);
  std::normal_distribution<double> value(12.5, 0.8);
  char text[32];
  for (long col = 1; col <= columns; ++col)
    for (long row = 1; row <= rows; ++row) {
      std::snprintf(text, sizeof text, "%.6f", value(random));
      sheet.SetText(row, col, text);
    }
  sheet.Selection = {true, 1, columns, 1, rows};
  orvik::cli::CliHost host(std::move(sheet), settings, {});

  const auto start = std::chrono::steady_clock::now();
  command->run(host);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf("%s on %ld x %ld values: %.3f s (%zu windows, %zu messages)\n", key.c_str(), rows, columns, seconds,
              host.Windows().size(), host.Messages().size());
  return 0;
}
