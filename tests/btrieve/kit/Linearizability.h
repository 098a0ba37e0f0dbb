// Whether a history of steps that overlap in time could have come from the same steps done one
// after the other, each at some moment between its call and its answer.
//
// The search is that of Wing and Gong, with Lowe's memory of the places where it has been: which
// steps were done, and what the registers held then.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace btrieve::test {

// A register holds a value; 0 stands for no record.
using Value = uint32_t;

struct Action {
  enum Kind : uint8_t {
    Is,     // the register held the value
    IsNot,  // it held another
    Set,    // now it holds the value
  };
  Kind kind;
  uint32_t reg;
  Value value;
  bool operator==(const Action&) const = default;
};

// Actions that happen at one moment, in their order; each sees those before it.
struct HistoryStep {
  enum Outcome : uint8_t {
    Done,
    SeenOnly,  // what it has set is taken back: an aborted transaction
    Unknown,   // its process died: done, at any time later, or not at all
  };
  int64_t called = 0;  // any unit; equal times overlap
  int64_t answered = 0;
  std::vector<Action> actions;
  Outcome outcome = Done;
};

struct Verdict {
  bool linearizable = false;
  // Where not: how many steps could be put in a row at most, and the one that fitted nowhere then.
  size_t longest = 0;
  size_t misfit = 0;
};

// `registers` is the state before. What the registers hold afterwards can be asked for by a last
// step that sees them all.
Verdict Judge(const std::vector<HistoryStep>& history, std::vector<Value> registers);

// "[12,40] r3==7 r3:=9 unknown"
std::string StepText(const HistoryStep& step);

}  // namespace btrieve::test
