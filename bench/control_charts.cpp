// Runs the x-MR and xbar-R commands on 1,000,000 values as orvik-cli does
// (worksheet, selection, dialogs answered OK, result window recorded) and
// times the run rules alone on the same number of points.
#include <chrono>
#include <cstdio>
#include <random>
#include <string>

#include "charts/control_charts.h"
#include "charts/run_rules.h"
#include "cli/cli_host.h"
#include "stats/decimal_numbers.h"

namespace {

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A sheet of `rows` x `columns` measurements around 25 with three decimals.
orvik::worksheet::Worksheet MakeSheet(long rows, long columns) {
  std::mt19937 generator(42);
  std::normal_distribution<double> normal(25.0, 0.003);
  orvik::worksheet::Worksheet sheet("WorkSheet 1");
  for (long c = 1; c <= columns; ++c)
    for (long r = 1; r <= rows; ++r) sheet.SetText(r, c, orvik::stats::FormatNumber(orvik::stats::Round(normal(generator), 3)));
  sheet.Selection = {true, 1, columns, 1, rows};
  return sheet;
}

void TimeCommand(const char* label, void (*view)(orvik::shell::Host&), long rows, long columns) {
  orvik::cli::CliHost host(MakeSheet(rows, columns), {}, {});
  const auto start = std::chrono::steady_clock::now();
  view(host);
  const double seconds = SecondsSince(start);
  const std::size_t grid_rows = host.Windows().empty() ? 0 : host.Windows()[0].table->rows.size();
  std::printf("%-8s %7ld rows x %ld: %.2f s (grid of %zu rows)\n", label, rows, columns, seconds, grid_rows);
}

}  // namespace

int main(int argc, char** argv) {
  const long values = argc > 1 ? std::stol(argv[1]) : 1'000'000;

  std::mt19937 generator(7);
  std::normal_distribution<double> normal(0.0, 1.0);
  std::vector<double> points(static_cast<std::size_t>(values));
  for (auto& v : points) v = normal(generator);
  const auto start = std::chrono::steady_clock::now();
  const auto codes = orvik::charts::OutOfControlCodes(points, {3.0, 0.0, -3.0, 2.0, -2.0});
  std::printf("rules * and A to I on %ld points: %.3f s (%zu codes)\n", values, SecondsSince(start), codes.size());

  TimeCommand("x-MR", orvik::charts::XMRView, values, 1);
  TimeCommand("xbar-R", orvik::charts::XbarRView, values / 5, 5);
  return 0;
}
