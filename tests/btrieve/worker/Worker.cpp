// The other process of the tests: serves calls, or does work that its parent interrupts by killing
// it. The first argument names the task.
#include <algorithm>
#include <iostream>

#include "BankWork.h"
#include "HistoryWork.h"
#include "OldFolderWork.h"
#include "SelfKill.h"
#include "Work.h"
#ifndef _WIN32
#include "Alone.h"
#include "Serve.h"
#endif

namespace {

using namespace btrieve::test;

struct Task {
  std::string_view name;
  int (*run)(const std::vector<std::string>& arguments);
};

constexpr Task kTasks[] = {
    {"bank", BankWork},
    {"history", HistoryWork},
    {"oldfolder", MakeOldFolder},
    {"plan", Work},
#ifndef _WIN32
    {"read", ReadForEver},
    {"end", InsertAndEnd},
    {"halt", InsertAndHalt},
    {"serve", ServeCalls},
    {"unprivileged", ServeUnprivileged},
#endif
};

}  // namespace

int main(int argc, char** argv) {
  const std::string_view name = argc > 1 ? argv[1] : "";
  const auto* task = std::ranges::find(kTasks, name, &Task::name);
  if (task == std::end(kTasks) || !PrepareToDie()) {
    std::cerr << "btrieve_worker: no task \"" << name << "\"\n";
    return 2;
  }
  return task->run({argv + 2, argv + argc});
}
