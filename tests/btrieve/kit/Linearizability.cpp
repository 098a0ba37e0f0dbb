#include "Linearizability.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

namespace btrieve::test {
namespace {

constexpr size_t kNone = std::numeric_limits<size_t>::max();

// A call or an answer in the list of those that are not yet in the row. A step of unknown outcome
// has no answer.
struct Event {
  size_t step;
  bool isCall;
  int64_t time;
  size_t before = kNone;
  size_t after = kNone;
};

// Calls come before answers of the same time: such steps overlap.
bool Earlier(const Event& a, const Event& b) {
  if (a.time != b.time) return a.time < b.time;
  return a.isCall && !b.isCall;
}

class Search {
 public:
  Search(const std::vector<HistoryStep>& history, std::vector<Value> registers)
      : history_(history), registers_(std::move(registers)), done_(history.size() / 64 + 1) {
    MakeList();
  }

  Verdict Run();

 private:
  struct Choice {
    size_t call;
    std::vector<Value> registers;  // before it
  };

  void MakeList();
  void Lift(size_t event);
  void PutBack(size_t event);
  bool Perform(const HistoryStep& step, std::vector<Value>& registers) const;
  bool Choose(size_t call);
  size_t TakeBack();
  std::string Place() const;
  void Mark(size_t step) { done_[step / 64] ^= uint64_t{1} << (step % 64); }

  const std::vector<HistoryStep>& history_;
  std::vector<Value> registers_;
  std::vector<uint64_t> done_;  // a bit a step
  std::vector<Event> events_;
  std::vector<size_t> answers_;  // the event of each step's answer
  size_t first_ = kNone;
  size_t certain_ = 0;  // steps left that must come into the row
  std::vector<Choice> row_;
  std::unordered_set<std::string> seen_;
};

void Search::MakeList() {
  for (size_t step = 0; step < history_.size(); ++step) {
    events_.push_back({step, true, history_[step].called});
    if (history_[step].outcome == HistoryStep::Unknown) continue;
    events_.push_back({step, false, history_[step].answered});
    ++certain_;
  }
  std::ranges::stable_sort(events_, Earlier);
  answers_.assign(history_.size(), kNone);
  for (size_t i = 0; i < events_.size(); ++i) {
    if (i > 0) events_[i].before = i - 1;
    if (i + 1 < events_.size()) events_[i].after = i + 1;
    if (!events_[i].isCall) answers_[events_[i].step] = i;
  }
  if (!events_.empty()) first_ = 0;
}

void Search::Lift(size_t event) {
  if (event == kNone) return;
  const Event& lifted = events_[event];
  (lifted.before == kNone ? first_ : events_[lifted.before].after) = lifted.after;
  if (lifted.after != kNone) events_[lifted.after].before = lifted.before;
}

// In the reverse order of the lifting.
void Search::PutBack(size_t event) {
  if (event == kNone) return;
  const Event& lifted = events_[event];
  (lifted.before == kNone ? first_ : events_[lifted.before].after) = event;
  if (lifted.after != kNone) events_[lifted.after].before = event;
}

bool Search::Perform(const HistoryStep& step, std::vector<Value>& registers) const {
  for (const Action& action : step.actions) {
    Value& held = registers[action.reg];
    if (action.kind == Action::Set) {
      held = action.value;
    } else if ((held == action.value) != (action.kind == Action::Is)) {
      return false;
    }
  }
  if (step.outcome == HistoryStep::SeenOnly) registers = registers_;
  return true;
}

std::string Search::Place() const {
  std::string place(reinterpret_cast<const char*>(done_.data()), done_.size() * sizeof done_[0]);
  place.append(reinterpret_cast<const char*>(registers_.data()),
               registers_.size() * sizeof registers_[0]);
  return place;
}

// The step goes next into the row, unless it cannot or the search has been there before.
bool Search::Choose(size_t call) {
  const size_t step = events_[call].step;
  std::vector<Value> registers = registers_;
  if (!Perform(history_[step], registers)) return false;
  registers.swap(registers_);
  Mark(step);
  if (!seen_.insert(Place()).second) {
    Mark(step);
    registers.swap(registers_);
    return false;
  }
  row_.push_back({call, std::move(registers)});
  Lift(call);
  Lift(answers_[step]);
  if (answers_[step] != kNone) --certain_;
  return true;
}

size_t Search::TakeBack() {
  const size_t call = row_.back().call;
  const size_t step = events_[call].step;
  registers_ = std::move(row_.back().registers);
  row_.pop_back();
  Mark(step);
  if (answers_[step] != kNone) ++certain_;
  PutBack(answers_[step]);
  PutBack(call);
  return call;
}

// Any step called before the first answer that is left may come next.
Verdict Search::Run() {
  Verdict verdict;
  size_t at = first_;
  while (certain_ > 0) {
    if (at != kNone && events_[at].isCall) {
      at = Choose(at) ? first_ : events_[at].after;
      continue;
    }
    if (row_.size() >= verdict.longest && at != kNone) {
      verdict.longest = row_.size();
      verdict.misfit = events_[at].step;
    }
    if (row_.empty()) return verdict;
    at = events_[TakeBack()].after;
  }
  verdict.linearizable = true;
  verdict.longest = row_.size();
  return verdict;
}

}  // namespace

Verdict Judge(const std::vector<HistoryStep>& history, std::vector<Value> registers) {
  return Search(history, std::move(registers)).Run();
}

std::string StepText(const HistoryStep& step) {
  constexpr const char* kSigns[] = {"==", "!=", ":="};
  constexpr const char* kOutcomes[] = {"", " seen only", " unknown"};
  std::string text = "[" + std::to_string(step.called) + "," + std::to_string(step.answered) + "]";
  for (const Action& action : step.actions) {
    text += " r" + std::to_string(action.reg) + kSigns[action.kind] + std::to_string(action.value);
  }
  return text + kOutcomes[step.outcome];
}

}  // namespace btrieve::test
