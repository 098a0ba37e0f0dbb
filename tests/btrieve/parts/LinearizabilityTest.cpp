// The judge of histories, by histories whose verdict is plain. A step is written "12-40 x==7 x:=9":
// its time, and what it saw or set in registers x, y, z; "aborted" takes back what it has set,
// "died" leaves open whether it ever happened. All registers begin with 0.

#include "kit/Linearizability.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

Action ActionOf(const std::string& word) {
  const std::string sign = word.substr(1, 2);
  const Action::Kind kind = sign == "==" ? Action::Is : sign == "!=" ? Action::IsNot : Action::Set;
  return {kind, static_cast<uint32_t>(word[0] - 'x'),
          static_cast<Value>(std::stoul(word.substr(3)))};
}

HistoryStep StepOf(const std::string& text) {
  std::istringstream words(text);
  HistoryStep step;
  char dash;
  words >> step.called >> dash >> step.answered;
  for (std::string word; words >> word;) {
    if (word == "aborted") {
      step.outcome = HistoryStep::SeenOnly;
    } else if (word == "died") {
      step.outcome = HistoryStep::Unknown;
    } else {
      step.actions.push_back(ActionOf(word));
    }
  }
  return step;
}

using Texts = std::vector<std::string>;

struct Case {
  const char* name;
  Texts steps;
  bool fits;
};

const Case kCases[] = {
    {"nothing", {}, true},
    {"seen while it is written", {"0-10 x:=1", "2-3 x==1"}, true},
    {"seen late, then early, by readers at once", {"0-10 x:=1", "2-8 x==1", "3-7 x==0"}, true},
    {"an end and a beginning at one time overlap", {"0-5 x:=1", "5-6 x==0"}, true},
    {"two writers in either order", {"0-10 x:=1", "0-10 x:=2", "11-12 x==1"}, true},
    {"exchanged in turn",
     {"0-10 x==0 x:=1", "0-10 x==1 x:=2", "0-10 x==2 x:=3", "11-12 x==3"},
     true},
    {"an aborted step saw its own and left nothing",
     {"0-10 x==0 x:=1 x==1 aborted", "2-3 x==0", "11-12 x==0"},
     true},
    {"died and happens later", {"0-1 x:=1 died", "2-3 x==0", "4-5 x==1"}, true},
    {"the first choice is the wrong one",
     {"0-20 x:=1", "0-20 x:=2", "0-20 y:=1", "21-22 x==1", "23-24 y==1"},
     true},
    {"lost", {"0-1 x:=1", "2-3 x==0"}, false},
    {"seen, then not yet", {"0-10 x:=1", "2-3 x==1", "4-5 x==0"}, false},
    {"seen before it was called", {"0-1 x==1", "2-3 x:=1"}, false},
    {"both exchanged the same", {"0-10 x==0 x:=1", "0-10 x==0 x:=2"}, false},
    {"refused for nothing", {"0-1 x==0", "2-3 x!=0"}, false},
    {"half a step seen", {"0-10 x:=1 y:=1", "2-3 x==1 y==0"}, false},
    {"an aborted step left something", {"0-1 x==0 x:=1 aborted", "2-3 x==1"}, false},
    {"died, happened, then not", {"0-1 x:=1 died", "2-3 x==1", "4-5 x==0"}, false},
    {"readers disagree about the order",
     {"0-20 x:=1", "0-20 y:=1", "2-3 x==1", "4-5 y==0", "2-3 y==1", "4-5 x==0"},
     false},
};

TEST(Linearizability, IsThatOneOrderExplainsAll) {
  for (const Case& row : kCases) {
    std::vector<HistoryStep> history;
    for (const std::string& text : row.steps) history.push_back(StepOf(text));
    EXPECT_EQ(Judge(history, {0, 0, 0}).linearizable, row.fits) << row.name;
  }
}

}  // namespace
}  // namespace btrieve::test
