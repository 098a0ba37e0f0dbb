// Several processes with several files of People.h, for tests of how they wait for each other.
//
// A word is PROCESS[FILE]:VERB[ID][+BIAS]: "a1:eq2+300" has process a read the record with id 2 of
// file 1 with a multiple lock.
//   eq2 next   Get Equal, Get Next along the id       ins7  Insert of a record with that id
//   upd2 del   Update to that id, Delete              insx7 Insert Extended of one
//   ext        Get Next Extended, the current record  stat  Stat
//   unlock     all multiple locks                     begin cbegin end abort
#pragma once

#include <chrono>

#include "clients/People.h"
#include "clients/Remote.h"

namespace btrieve::test {

class Together {
 public:
  // Every file has the records 1 to 5 and is open in every process.
  Together(int processes, int files);

  OtherProcess& Process(char name) { return *processes_.at(static_cast<size_t>(name - 'a')); }
  // The statuses of the words, done one after the other.
  std::string Run(const std::string& words);
  // Starts a word, and does not wait for its answer.
  void Begin(const std::string& word);
  // Starts one word after the other, each late enough to be the last that has begun.
  void BeginInTurn(const std::vector<std::string>& words);
  // The status of the word that the process has begun.
  Status Finish(char process) { return Process(process).Finish().status; }
  // Gives up whatever the process holds.
  void Release(char process);

 private:
  struct Word;

  Folder folder_;
  int files_;
  std::vector<std::unique_ptr<OtherProcess>> processes_;
};

// Time since it was made.
class Stopwatch {
 public:
  double Seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace btrieve::test
