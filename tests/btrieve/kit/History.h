// The history of several processes' calls on registers, put together from what each has told.
#pragma once

#include "Registers.h"

namespace btrieve::test {

// One process's part.
class Testimony {
 public:
  // A line of CalledText or AnsweredText. False for any other line.
  bool Hear(const std::string& line);
  // The process has gone; a call without an answer may have been carried out or not, a transaction
  // that had not come to its End must not.
  void HearDeath();
  uint32_t Calls() const { return calls_; }

 private:
  friend class History;

  void Answer(Status status, Value seen, int64_t time);
  void AnswerAlone(const std::vector<Action>& actions, bool locks, int64_t time);
  void Join(const std::vector<Action>& actions);
  void EndTransaction(HistoryStep::Outcome outcome, int64_t time);
  bool BelongsToTransaction(uint32_t reg, Status status) const;

  struct Told {
    HistoryStep step;
    bool locks;  // it kept out, or waited for, transactions that had not ended
  };
  std::vector<Told> steps_;
  ToldCall call_;
  bool waiting_ = false;
  int64_t called_ = 0;
  int64_t lastTime_ = 0;
  uint32_t calls_ = 0;
  char transaction_ = 0;  // how it was begun
  HistoryStep whole_;     // what the transaction has seen and done
  uint32_t held_ = 0;     // registers that nobody else can change before its end, a bit each
};

class History {
 public:
  void Add(const Testimony& testimony);
  // A step of everybody's.
  void Add(const HistoryStep& step);

  // Each register by itself: reads without locks too see a register's values in one order. Then
  // whole transactions, and single operations, as far as they take locks. Empty, or the history of
  // which no order can be found.
  std::string Faults(const std::vector<Value>& before) const;

 private:
  std::vector<HistoryStep> all_;
  std::vector<HistoryStep> locking_;
};

}  // namespace btrieve::test
