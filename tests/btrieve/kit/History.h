// The history of several processes' calls on registers, put together from what each has told.
#pragma once

#include <sstream>

#include "Registers.h"

namespace btrieve::test {

inline constexpr uint32_t Bit(uint32_t reg) { return uint32_t{1} << reg; }

// What a call has seen or done when its status says so.
inline std::vector<Action> ActionsOf(const ToldCall& call, Status status, Value seen) {
  const bool read = call.verb == ToldCall::Get || call.verb == ToldCall::LockingGet;
  if (read && (status == kOk || status == kKeyNotFound)) return {{Action::Is, call.reg, seen}};
  if (status == kDuplicateKey) return {{Action::IsNot, call.reg, 0}};
  if (status == kConflict) return {{Action::IsNot, call.reg, call.old}};
  if (status != kOk) return {};
  return {{Action::Is, call.reg, call.old}, {Action::Set, call.reg, call.value}};
}

inline bool IsWrite(ToldCall::Verb verb) {
  return verb == ToldCall::Insert || verb == ToldCall::Update || verb == ToldCall::Delete;
}

inline HistoryStep Projected(const HistoryStep& step, uint32_t reg) {
  HistoryStep part = step;
  part.actions.clear();
  for (Action action : step.actions) {
    if (action.reg != reg) continue;
    action.reg = 0;
    part.actions.push_back(action);
  }
  return part;
}

inline std::string Describe(const std::vector<HistoryStep>& history, const Verdict& verdict,
                            const std::string& what) {
  std::string text = what + ": after " + std::to_string(verdict.longest) + " of " +
                     std::to_string(history.size()) + " steps this one fits nowhere:\n" +
                     StepText(history[verdict.misfit]) + "\nthe history:\n";
  for (const HistoryStep& step : history) text += StepText(step) + "\n";
  return text;
}

inline std::string FaultsOf(const std::vector<HistoryStep>& history,
                            const std::vector<Value>& before, const std::string& what) {
  const Verdict verdict = Judge(history, before);
  return verdict.linearizable ? "" : Describe(history, verdict, what);
}

// One process's part.
class Testimony {
 public:
  // A line of CalledText or AnsweredText. False for any other line.
  bool Hear(const std::string& line) {
    std::istringstream words(line);
    char kind = 0;
    int64_t time = 0;
    words >> kind >> time;
    lastTime_ = time;
    if (kind == 'c') {
      char verb = 0;
      words >> verb >> call_.reg >> call_.old >> call_.value;
      call_.verb = static_cast<ToldCall::Verb>(verb);
      called_ = time;
      waiting_ = true;
    } else if (kind == 'a' && waiting_) {
      int status = 0;
      Value seen = 0;
      words >> status >> seen;
      waiting_ = false;
      ++calls_;
      Answer(static_cast<Status>(status), seen, time);
    }
    return (kind == 'c' || kind == 'a') && !words.fail();
  }
  // The process has gone; a call without an answer may have been carried out or not, a transaction
  // that had not come to its End must not.
  void HearDeath() {
    if (transaction_ != 0) {
      const bool deciding = waiting_ && call_.verb == ToldCall::End;
      EndTransaction(deciding ? HistoryStep::Unknown : HistoryStep::SeenOnly, lastTime_);
    } else if (waiting_ && IsWrite(call_.verb)) {
      steps_.push_back({{called_, called_, ActionsOf(call_, kOk, 0), HistoryStep::Unknown}, true});
    }
    waiting_ = false;
  }
  uint32_t Calls() const { return calls_; }

 private:
  friend class History;

  void Answer(Status status, Value seen, int64_t time) {
    switch (call_.verb) {
      case ToldCall::BeginExclusive:
      case ToldCall::BeginLocking:
      case ToldCall::BeginPlain:
        transaction_ = static_cast<char>(call_.verb);
        whole_ = HistoryStep();
        whole_.called = called_;
        held_ = 0;
        return;
      case ToldCall::End:
      case ToldCall::Abort: {
        const bool kept = call_.verb == ToldCall::End && status == kOk;
        return EndTransaction(kept ? HistoryStep::Done : HistoryStep::SeenOnly, time);
      }
      default:
        break;
    }
    const std::vector<Action> actions = ActionsOf(call_, status, seen);
    if (actions.empty()) return;
    if (transaction_ == 0) {
      AnswerAlone(actions, status == kOk && call_.verb != ToldCall::Get, time);
    } else if (!BelongsToTransaction(call_.reg, status)) {
      AnswerAlone(actions, false, time);
    } else {
      Join(actions);
    }
  }
  void AnswerAlone(const std::vector<Action>& actions, bool locks, int64_t time) {
    steps_.push_back({{called_, time, actions, HistoryStep::Done}, locks});
  }
  void Join(const std::vector<Action>& actions) {
    constexpr uint32_t kWholeFile = Bit(kRegistersEach) - 1;
    const uint32_t first = call_.reg / kRegistersEach * kRegistersEach;
    held_ |= transaction_ == ToldCall::BeginExclusive ? kWholeFile << first : Bit(call_.reg);
    whole_.actions.insert(whole_.actions.end(), actions.begin(), actions.end());
  }
  void EndTransaction(HistoryStep::Outcome outcome, int64_t time) {
    whole_.answered = time;
    whole_.outcome = outcome;
    if (!whole_.actions.empty()) steps_.push_back({whole_, true});
    transaction_ = 0;
  }
  // What was seen without a lock says something about its own moment only. A write that is refused
  // for what it would do to a key or a record need not have got as far as its lock.
  bool BelongsToTransaction(uint32_t reg, Status status) const {
    if ((held_ & Bit(reg)) != 0) return true;
    if (transaction_ == ToldCall::BeginExclusive) return status == kOk || status == kKeyNotFound;
    return status == kOk && (transaction_ == ToldCall::BeginLocking || call_.verb != ToldCall::Get);
  }

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
  void Add(const Testimony& testimony) {
    for (const Testimony::Told& told : testimony.steps_) {
      all_.push_back(told.step);
      if (told.locks) locking_.push_back(told.step);
    }
  }
  // A step of everybody's.
  void Add(const HistoryStep& step) {
    all_.push_back(step);
    locking_.push_back(step);
  }

  // Each register by itself: reads without locks too see a register's values in one order. Then
  // whole transactions, and single operations, as far as they take locks. Empty, or the history of
  // which no order can be found.
  std::string Faults(const std::vector<Value>& before) const {
    std::string faults;
    for (uint32_t reg = 0; reg < before.size(); ++reg) {
      std::vector<HistoryStep> history;
      for (const HistoryStep& step : all_) {
        HistoryStep part = Projected(step, reg);
        if (!part.actions.empty()) history.push_back(std::move(part));
      }
      faults += FaultsOf(history, {before[reg]}, "register " + std::to_string(reg));
    }
    return faults + FaultsOf(locking_, before, "whole transactions");
  }

 private:
  std::vector<HistoryStep> all_;
  std::vector<HistoryStep> locking_;
};

}  // namespace btrieve::test
