// Times the out-of-control rules alone on 1,000,000 points (the whole chart
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
  const auto start = std::chrono::steady_clock::now();
  const auto codes = orvik::charts::OutOfControlCodes(points, {3.0, 0.0, -3.0, 2.0, -2.0});
  std::printf("rules * and A to I on %ld points: %.3f s (%zu codes)\n", values, SecondsSince(start), codes.size());
  return 0;
}
