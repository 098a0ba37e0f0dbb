// Work over two files that two processes can both foresee: each step follows from a seed, its
// number and the state before it. The worker does the steps, the test knows what must stand in the
// files after any number of them.
#pragma once

#include <array>
#include <map>

#include "Calls.h"

namespace btrieve::test {

// Value by id, of both files.
using PlanState = std::array<std::map<int32_t, int32_t>, 2>;

struct PlanOperation {
  int file;
  Op operation;  // insert, update, delete
  int32_t id;
  int32_t value;
};

struct PlanStep {
  int begin = 0;  // 19, 1019, or 0: the one operation stands alone
  std::vector<PlanOperation> operations;
};

PlanStep PlanOf(uint32_t seed, uint32_t number, const PlanState& state);
void ApplyStep(const PlanStep& step, PlanState& state);

// 24 bytes; keys: id (unique), value (duplicates), value descending with id (unique), text.
Bytes PlanBlock();

// The files by calls: paths are opened as blocks 0 and 1. False when a status is not 0.
bool OpenPlanFiles(Client& client, const std::vector<std::string>& paths);
bool PerformStep(Client& client, const PlanStep& step);
// Makes the files here and does the first `steps` of the plan. False when a status is not 0.
bool BeginPlan(const std::vector<std::string>& paths, uint32_t seed, uint32_t steps,
               PlanState& state);
// Reads both files along every key and by place; an empty text means that all agree.
std::string ReadPlanFiles(Client& client, PlanState& state);

}  // namespace btrieve::test
