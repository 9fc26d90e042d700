#pragma once

// Time and memory readings shared by the benchmark programs.
#include <sys/resource.h>

#include <chrono>

namespace orvik::bench {

inline double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The process's peak resident memory so far, in MiB.
inline long PeakMemoryMiB() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;  // ru_maxrss is in KiB on Linux
}

}  // namespace orvik::bench
