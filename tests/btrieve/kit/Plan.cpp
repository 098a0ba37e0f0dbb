#include "Plan.h"

#include <random>

#include "DamagedFile.h"
#include "WholeFile.h"

namespace btrieve::test {
namespace {

constexpr size_t kPlanRecord = 24;
constexpr size_t kFewest = 10;  // records that a file is kept at
constexpr size_t kMost = 60;

Bytes PlanRecord(int32_t id, int32_t value) {
  return Number(id) + Number(value) + Padded("text " + std::to_string(value % 7), 16);
}

// A random id that the file has.
int32_t SomeId(const std::map<int32_t, int32_t>& file, std::mt19937& random) {
  auto place = file.begin();
  std::advance(place, random() % file.size());
  return place->first;
}

PlanOperation NextOperation(int file, const std::map<int32_t, int32_t>& records, int32_t freshId,
                            std::mt19937& random) {
  const auto value = static_cast<int32_t>(random() % 1000);
  const bool insert = records.size() < kFewest || (records.size() < kMost && random() % 2 == 0);
  if (insert) return {file, kInsert, freshId, value};
  return {file, random() % 2 ? kUpdate : kDelete, SomeId(records, random), value};
}

void Apply(const PlanOperation& operation, PlanState& state) {
  auto& records = state[static_cast<size_t>(operation.file)];
  if (operation.operation == kDelete) {
    records.erase(operation.id);
  } else {
    records[operation.id] = operation.value;
  }
}

bool Perform(Client& client, const PlanOperation& operation) {
  const CallIn record{.data = PlanRecord(operation.id, operation.value), .keyNumber = -1};
  if (operation.operation == kInsert) {
    return client.Call(kInsert, operation.file, record).status == 0;
  }
  const CallIn find{.room = kPlanRecord, .key = Number(operation.id)};
  if (client.Call(kGetEqual, operation.file, find).status != 0) return false;
  return client.Call(operation.operation, operation.file, record).status == 0;
}

std::string ReadPlanFile(Client& client, int file, std::map<int32_t, int32_t>& records) {
  std::multiset<std::string> found;
  const std::string differs = ReadEveryWay(client, file, 4, kPlanRecord, found);
  if (!differs.empty()) return differs;
  records.clear();
  for (const std::string& hex : found) {
    const Bytes record = Hex(hex);
    const auto id = NumberAt<int32_t>(record, 0);
    const auto value = NumberAt<int32_t>(record, 4);
    if (record != PlanRecord(id, value)) return "record " + hex;
    records[id] = value;
  }
  return "";
}

}  // namespace

PlanStep PlanOf(uint32_t seed, uint32_t number, const PlanState& state) {
  std::mt19937 random(seed * 2654435761u + number);
  random.discard(3);
  PlanStep step;
  if (random() % 3 == 0) {
    const int file = static_cast<int>(random() % 2);
    const auto& records = state[static_cast<size_t>(file)];
    step.operations = {NextOperation(file, records, static_cast<int32_t>(number * 8), random)};
    return step;
  }
  step.begin = random() % 2 ? 19 : 1019;
  PlanState later = state;
  for (int32_t i = 0; i < 6; ++i) {
    const int file = i % 2;
    step.operations.push_back(NextOperation(file, later[static_cast<size_t>(file)],
                                            static_cast<int32_t>(number * 8) + i, random));
    Apply(step.operations.back(), later);
  }
  return step;
}

void ApplyStep(const PlanStep& step, PlanState& state) {
  for (const PlanOperation& operation : step.operations) Apply(operation, state);
}

Bytes PlanBlock() {
  return CreateBlock({.recordLength = kPlanRecord},
                     {{.position = 1, .flags = 0x102, .type = 1},
                      {.position = 5, .flags = 0x103, .type = 1},
                      {.position = 5, .flags = 0x152, .type = 1},
                      {.position = 1, .flags = 0x102, .type = 1},
                      {.position = 9, .length = 16, .flags = 0x103}});
}

bool OpenPlanFiles(Client& client, const std::vector<std::string>& paths) {
  for (size_t i = 0; i < paths.size(); ++i) {
    const CallIn in{.key = PathKey(paths[i])};
    if (client.Call(kOpen, static_cast<int>(i), in).status != 0) return false;
  }
  return true;
}

bool PerformStep(Client& client, const PlanStep& step) {
  if (step.begin != 0 && client.Call(step.begin, 0, {}).status != 0) return false;
  for (const PlanOperation& operation : step.operations) {
    if (!Perform(client, operation)) return false;
  }
  return step.begin == 0 || client.Call(kEnd, 0, {}).status == 0;
}

bool BeginPlan(const std::vector<std::string>& paths, uint32_t seed, uint32_t steps,
               PlanState& state) {
  ThisProcess process;
  for (const std::string& path : paths) {
    const CallIn in{.data = PlanBlock(), .key = PathKey(path)};
    if (process.Call(kCreate, kBlocks - 1, in).status != 0) return false;
  }
  if (!OpenPlanFiles(process, paths)) return false;
  for (uint32_t number = 0; number < steps; ++number) {
    const PlanStep step = PlanOf(seed, number, state);
    if (!PerformStep(process, step)) return false;
    ApplyStep(step, state);
  }
  return true;
}

std::string ReadPlanFiles(Client& client, PlanState& state) {
  const std::string first = ReadPlanFile(client, 0, state[0]);
  return first.empty() ? ReadPlanFile(client, 1, state[1]) : first;
}

std::string Differences(const PlanState& found, const PlanState& expected) {
  std::string text;
  for (size_t file = 0; file < found.size(); ++file) {
    const auto tell = [&](const char* what, const auto& records, const auto& others) {
      for (const auto& [id, value] : records) {
        const auto other = others.find(id);
        if (other != others.end() && other->second == value) continue;
        text +=
            what + std::to_string(file) + ":" + std::to_string(id) + "=" + std::to_string(value);
      }
    };
    tell(" found ", found[file], expected[file]);
    tell(" expected ", expected[file], found[file]);
  }
  return text;
}

FileImages ImagesOf(const Folder& folder) {
  FileImages images;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Root())) {
    const std::string name = entry.path().filename().string();
    if (!name.ends_with("-shm")) images[name] = ReadBytes(entry.path().string());
  }
  return images;
}

void WriteImages(const FileImages& images, const Folder& folder) {
  for (const auto& [name, bytes] : images) WriteBytes(folder.Path(name), bytes);
}

std::string JudgeImages(const FileImages& images, const PlanState& expected) {
  const Folder folder;
  WriteImages(images, folder);
  ThisProcess process;
  if (!OpenPlanFiles(process, {folder.Path("a.dat"), folder.Path("b.dat")})) return "Open failed";
  PlanState found;
  const std::string fault = ReadPlanFiles(process, found);
  return fault.empty() ? Differences(found, expected) : fault;
}

}  // namespace btrieve::test
