#include "Work.h"

#include "../kit/Plan.h"
#include "Lines.h"
#include "SelfKill.h"

namespace btrieve::test {
namespace {

// 'E' where a status was not 0, else '!' when all steps are done.
char DoSteps(const std::vector<std::string>& arguments) {
  const auto number = [&](size_t i) { return static_cast<uint32_t>(std::stoul(arguments.at(i))); };
  const uint32_t seed = number(0);
  const uint32_t first = number(1);
  const uint32_t steps = number(2);
  ThisProcess process;
  PlanState state;
  if (!OpenPlanFiles(process, {arguments.at(4), arguments.at(5)}) ||
      !ReadPlanFiles(process, state).empty()) {
    return 'E';
  }
  KillAt(number(3));
  for (uint32_t i = 0; steps == 0 || i < steps; ++i) {
    const PlanStep step = PlanOf(seed, first + i, state);
    if (!PerformStep(process, step)) return 'E';
    Say('.');
    ApplyStep(step, state);
  }
  return '!';
}

}  // namespace

int Work(const std::vector<std::string>& arguments) {
  const char last = DoSteps(arguments);
  Say(last);
  return last == '!' ? 0 : 1;
}

}  // namespace btrieve::test
