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
  int32_t id, value;
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
// All ids of the plan stay below.
inline constexpr int32_t kBeyondPlan = 1 << 20;

// Makes the files here and does the first `steps` of the plan. False when a status is not 0.
bool BeginPlan(const std::vector<std::string>& paths, uint32_t seed, uint32_t steps,
               PlanState& state);
// Reads both files along every key and by place; an empty text means that all agree.
std::string ReadPlanFiles(Client& client, PlanState& state);
// " found 0:8=17 expected 1:9=4", or nothing.
std::string Differences(const PlanState& found, const PlanState& expected);

// A folder's files by name, without the logs' indexes: as they are found by who comes after all
// have died. The files of the plan are a.dat and b.dat.
using FileImages = std::map<std::string, Bytes>;
FileImages ImagesOf(const Folder& folder);
void WriteImages(const FileImages& images, const Folder& folder);
// Empty when opening them shows this state.
std::string JudgeImages(const FileImages& images, const PlanState& expected);

}  // namespace btrieve::test
