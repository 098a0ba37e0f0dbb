// One line on a terminal that says how far long work has come, how fast, and how long it will take.
#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>

#include "tools/qrndata/Messages.h"

namespace qrndata {

class Progress {
 public:
  // Without a terminal (null) nothing is ever written. `label` is UTF-8. `total` and the `done` of
  // Update count anything that grows evenly (bytes of a file, records); 0 means unknown.
  Progress(std::ostream* terminal, std::string label, uint64_t total);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();  // takes the line away

  // Cheap: the line is drawn ten times a second at most.
  void Update(uint64_t done, uint64_t rows);

  // The line's text, for tests:
  // "Orders  [#########...........]  45 %  12,345 rows  230,000 rows/s  00:12 left".
  std::string Line(uint64_t done, uint64_t rows, double seconds) const;

 private:
  using Clock = std::chrono::steady_clock;

  std::ostream* terminal_;
  std::string label_;
  uint64_t total_;
  Clock::time_point begun_ = Clock::now();
  Clock::time_point nextDraw_ = begun_;
  bool isDrawn_ = false;
};

// "1,234,567".
std::string Grouped(uint64_t number);

// "1 row", "0 rows", "1,234 rows": `what` has a text for one and, behind a bar, for others, or one
// for all.
std::string Counted(uint64_t number, Message what);

}  // namespace qrndata
