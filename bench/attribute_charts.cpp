// Times the p, p' and u charts on SAMPLES samples (default 1,000,000) of
// different sizes, run as orvik-cli runs them: sizes from 80 to 120 units
// in column A, binomial counts of nonconforming units (p = 0.1) in column B.
// The sheet is built before the clock starts, so each figure is the
// command's own time from the selected block to the finished result window
// with its stepped limits, codes and grid.
#include <chrono>
#include <cstdio>
#include <random>
#include <string>

#include "bench_clock.h"
#include "cli/cli_host.h"
#include "commands/command_registry.h"

namespace {

orvik::worksheet::Worksheet MakeSheet(long samples, bool fractional_sizes) {
  orvik::worksheet::Worksheet sheet("WorkSheet 1");
  std::mt19937_64 random(42);
  std::uniform_int_distribution<int> size(80, 120);
  for (long row = 1; row <= samples; ++row) {
    const int n = size(random);
    // Cloth inspected in half square metres for the u chart.
    const std::string size_text = fractional_sizes ? std::to_string(n / 10) + (n % 2 ? ".5" : "") : std::to_string(n);
    const int count = std::binomial_distribution<int>(n, 0.1)(random);
    sheet.SetText(row, 1, size_text);
    sheet.SetText(row, 2, std::to_string(count));
  }
  sheet.Selection = {true, 1, 2, 1, samples};
  return sheet;
}

void Time(const char* label, const char* key, const orvik::worksheet::Worksheet& sheet,
          std::vector<orvik::cli::DialogSetting> settings) {
  orvik::cli::CliHost host(sheet, std::move(settings), {});
  const auto start = std::chrono::steady_clock::now();
  orvik::commands::FindCommand(key)->run(host);
  const double seconds = orvik::bench::SecondsSince(start);
  std::printf("%-34s %.3f s (%zu windows, %zu messages, peak %ld MiB)\n", label, seconds, host.Windows().size(),
              host.Messages().size(), orvik::bench::PeakMemoryMiB());
}

}  // namespace

int main(int argc, char** argv) {
  const long samples = argc > 1 ? std::stol(argv[1]) : 1'000'000;
  std::printf("%ld samples of 80 to 120 units\n", samples);
  const auto units = MakeSheet(samples, false);
  Time("p chart, stepped limits", "mnuP", units, {});
  Time("p chart, average-size limits", "mnuP", units, {{"PSubForm", "LimitAverage", "1"}});
  Time("Laney p' chart, stepped limits", "mnuP", units, {{"PSubForm", "Laney", "1"}});
  Time("u chart, stepped limits", "mnuU", MakeSheet(samples, true), {});
  return 0;
}
