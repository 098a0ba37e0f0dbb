// The judge of histories, by histories whose verdict is plain. A step is written "12-40 x==7 x:=9":
// its time, and what it saw or set in registers x, y, z; "aborted" takes back what it has set,
// "died" leaves open whether it ever happened. All registers begin with 0.

#include <random>

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

Verdict JudgeTexts(const Texts& texts) {
  std::vector<HistoryStep> history;
  for (const std::string& text : texts) history.push_back(StepOf(text));
  return Judge(history, {0, 0, 0});
}

struct Case {
  const char* name;
  Texts steps;
};

TEST(Linearizability, AcceptsWhatOneOrderExplains) {
  const Case cases[] = {
      {"nothing", {}},
      {"one after the other", {"0-1 x:=1", "2-3 x==1"}},
      {"seen while it is written", {"0-10 x:=1", "2-3 x==1"}},
      {"not yet seen while it is written", {"0-10 x:=1", "2-3 x==0"}},
      {"seen late, then early, by readers at once", {"0-10 x:=1", "2-8 x==1", "3-7 x==0"}},
      {"an end and a beginning at one time overlap", {"0-5 x:=1", "5-6 x==0"}},
      {"two writers in either order", {"0-10 x:=1", "0-10 x:=2", "11-12 x==1"}},
      {"exchanged in turn", {"0-10 x==0 x:=1", "0-10 x==1 x:=2", "0-10 x==2 x:=3", "11-12 x==3"}},
      {"refused for another's change", {"0-10 x==0 x:=1", "2-4 x!=0"}},
      {"both registers at once", {"0-10 x:=1 y:=1", "3-4 x==0 y==0", "5-6 x==1 y==1"}},
      {"sees what it has set itself", {"0-1 x:=1 x==1 x:=2", "2-3 x==2"}},
      {"an aborted step saw its own and left nothing",
       {"0-10 x==0 x:=1 x==1 aborted", "2-3 x==0", "11-12 x==0"}},
      {"died and happened", {"0-1 x:=1 died", "2-3 x==1"}},
      {"died and did not happen", {"0-1 x:=1 died", "2-3 x==0"}},
      {"died and happens later", {"0-1 x:=1 died", "2-3 x==0", "4-5 x==1"}},
      {"died, and what it saw never was", {"0-1 x==7 x:=1 died", "2-3 x==0"}},
      {"the first choice is the wrong one",
       {"0-20 x:=1", "0-20 x:=2", "0-20 y:=1", "21-22 x==1", "23-24 y==1"}},
  };
  for (const Case& row : cases) EXPECT_TRUE(JudgeTexts(row.steps).linearizable) << row.name;
}

TEST(Linearizability, RefusesWhatNoOrderExplains) {
  const Case cases[] = {
      {"a value from nowhere", {"0-1 x==1"}},
      {"lost", {"0-1 x:=1", "2-3 x==0"}},
      {"an old value again", {"0-1 x:=1", "2-3 x:=2", "4-5 x==1"}},
      {"seen, then not yet", {"0-10 x:=1", "2-3 x==1", "4-5 x==0"}},
      {"seen before it was called", {"0-1 x==1", "2-3 x:=1"}},
      {"both exchanged the same", {"0-10 x==0 x:=1", "0-10 x==0 x:=2"}},
      {"refused for nothing", {"0-1 x==0", "2-3 x!=0"}},
      {"half a step seen", {"0-10 x:=1 y:=1", "2-3 x==1 y==0"}},
      {"half a step left by a death", {"0-1 x:=1 y:=1 died", "2-3 x==1", "4-5 y==0"}},
      {"half a step in the wrong order",
       {"0-10 x:=1 y:=1", "0-10 x:=2 y:=2", "11-12 x==1", "13-14 y==2"}},
      {"an aborted step left something", {"0-1 x==0 x:=1 aborted", "2-3 x==1"}},
      {"an aborted step saw what never was", {"0-1 x==1 aborted"}},
      {"does not see what it has set", {"0-1 x:=1 x==0"}},
      {"died, happened, then not", {"0-1 x:=1 died", "2-3 x==1", "4-5 x==0"}},
      {"died and happened before it was called", {"0-1 x==1", "2-3 x:=1 died"}},
      {"died and happened without what it needs", {"0-1 x==7 x:=1 died", "2-3 x==1"}},
      {"readers disagree about the order",
       {"0-20 x:=1", "0-20 y:=1", "2-3 x==1", "4-5 y==0", "2-3 y==1", "4-5 x==0"}},
      {"reads skewed over two writes",
       {"0-1 x:=1 y:=1", "2-10 x==1 x:=2", "2-10 y==1 y:=2", "11-12 x==2 y==1"}},
  };
  for (const Case& row : cases) EXPECT_FALSE(JudgeTexts(row.steps).linearizable) << row.name;
}

TEST(Linearizability, NamesTheStepThatFitsNowhere) {
  const Verdict verdict = JudgeTexts({"0-1 x:=1", "2-3 x==1", "4-5 x:=2", "6-7 x==1", "8-9 x==2"});
  EXPECT_FALSE(verdict.linearizable);
  EXPECT_EQ(verdict.longest, 3u);
  EXPECT_EQ(verdict.misfit, 3u);
}

// Steps of four clients in a real order, their times then stretched at random: a good history. One
// wrong value in a step that saw something makes it a bad one.
class StretchedHistory {
 public:
  explicit StretchedHistory(uint32_t seed) : random_(seed) {
    std::vector<Value> registers = {0, 0, 0};
    std::vector<int64_t> free(4, 0);
    for (int i = 0; i < 400; ++i) Add(i, registers, free);
  }

  std::vector<HistoryStep> steps;

 private:
  void Add(int number, std::vector<Value>& registers, std::vector<int64_t>& free) {
    const int64_t moment = 10 * (number + 1);
    int64_t& since = free[random_() % free.size()];
    HistoryStep step;
    step.called = std::max<int64_t>(since, moment - static_cast<int64_t>(random_() % 60));
    step.answered = moment + static_cast<int64_t>(random_() % 60);
    since = std::max(step.answered + 1, moment + 10);
    if (step.called > moment) return;
    const uint32_t reg = random_() % 3;
    step.actions.push_back({Action::Is, reg, registers[reg]});
    if (random_() % 2 == 0) {
      registers[reg] = static_cast<Value>(number + 1);
      step.actions.push_back({Action::Set, reg, registers[reg]});
    }
    steps.push_back(step);
  }

  std::mt19937 random_;
};

TEST(Linearizability, TellsLongHistoriesApart) {
  for (uint32_t seed = 1; seed <= 20; ++seed) {
    StretchedHistory history(seed);
    ASSERT_GT(history.steps.size(), 100u);
    EXPECT_TRUE(Judge(history.steps, {0, 0, 0}).linearizable) << "seed " << seed;
    history.steps[50 + seed].actions[0].value += 1000;
    EXPECT_FALSE(Judge(history.steps, {0, 0, 0}).linearizable) << "seed " << seed;
  }
}

}  // namespace
}  // namespace btrieve::test
