// Answers the message boxes of this process as a user would, and writes down what they said.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

#include "tests/support/Pinned.h"

namespace qrn::test {

class Boxes : Pinned {
 public:
  static constexpr int kCloses = 0;  // the box's close button

  // `answer` is IDOK, IDCANCEL or kCloses.
  explicit Boxes(int answer = 1);
  ~Boxes();

  // "title|text; " of each box since the last look, as UTF-8; the title of a box without one is the
  // system's word for an error.
  std::string Take();

 private:
  void Watch();

  int answer_;
  std::mutex mutex_;
  std::string said_;
  std::atomic<bool> over_ = false;
  std::thread watcher_;
};

}  // namespace qrn::test
