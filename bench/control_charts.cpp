// Times the out-of-control rules alone on 1,000,000 points, for each rule
// profile (the whole chart
// commands are timed by command_timing.cpp).
#include <chrono>
#include <cstdio>
#include <random>

#include "charts/run_rules.h"
#include "bench_clock.h"

using orvik::bench::SecondsSince;

int main(int argc, char** argv) {
  const long values = argc > 1 ? std::stol(argv[1]) : 1'000'000;

  std::mt19937 generator(7);
  std::normal_distribution<double> normal(0.0, 1.0);
  std::vector<double> points(static_cast<std::size_t>(values));
  for (auto& v : points) v = normal(generator);
  using orvik::charts::RuleSet;
  // Every test on at the longest counts the rule settings take: the time
  // must not grow with the counts.
  RuleSet longest = RuleSet::Default();
  for (auto& rule : longest.rules) rule = {true, 1000, 1000};
  const struct {
    const char* name;
    RuleSet rules;
  } profiles[] = {{"* and A to I (Default)", RuleSet::Default()},
                  {"Western Electric", RuleSet::WesternElectric()},
                  {"Nelson", RuleSet::Nelson()},
                  {"A to N at 1000 points", longest}};
  for (const auto& profile : profiles) {
    const auto start = std::chrono::steady_clock::now();
    const auto codes = orvik::charts::OutOfControlCodes(points, {3.0, 0.0, -3.0, 2.0, -2.0}, profile.rules);
    std::printf("rules %s on %ld points: %.3f s (%zu codes)\n", profile.name, values, SecondsSince(start),
                codes.size());
  }
  return 0;
}
