// Times and their medians, for benchmarks of every kind.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bench {

// Ends the program with a message: a benchmark whose work went wrong has no figure.
inline void Check(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "benchmark: %s\n", what);
  std::exit(2);
}

template <class Work>
double Seconds(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> times) {
  Check(!times.empty(), "nothing was measured");
  std::ranges::sort(times);
  return times[times.size() / 2];
}

// A figure's line: its verdict, its ratio beside its limit. True when the limit is kept.
inline bool Tell(const char* what, double ratio, double limit) {
  const bool good = ratio <= limit;
  std::printf("%-4s %-78s %6.2f x  (at most %.2f x)\n", good ? "ok" : "MISS", what, ratio, limit);
  return good;
}

}  // namespace bench
