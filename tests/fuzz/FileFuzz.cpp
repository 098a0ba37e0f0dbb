// Damaged files: bytes flipped, set or cut off before Open. Every call gives a status, walks end,
// and what is read as a record is one that was written or is refused.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

#include "tests/btrieve/kit/Calls.h"
#include "tests/btrieve/kit/Choices.h"

using namespace btrieve::test;

namespace {

constexpr size_t kSize = 40;
constexpr int kRecords = 300;

void Require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "\n%s\n", what.c_str());
  std::abort();
}

Bytes Record(int32_t id) {
  return Number(id) + Number(id % 10) + Padded("record " + std::to_string(id), kSize - 8);
}

// The bytes of a good file, made once.
const Bytes& GoodFile() {
  static const Bytes good = [] {
    const Folder folder;
    ThisProcess process;
    const Bytes block =
        CreateBlock({.recordLength = kSize},
                    {{.flags = 0x102, .type = 1}, {.position = 5, .flags = 0x103, .type = 1}});
    const Bytes path = PathKey(folder.Path("good.dat"));
    Require(process.Call(kCreate, 0, {.data = block, .key = path}).status == 0, "Create");
    Require(process.Call(kOpen, 0, {.key = path}).status == 0, "Open");
    for (int32_t id = 0; id < kRecords; ++id) {
      Require(process.Call(kInsert, 0, {.data = Record(id), .keyNumber = -1}).status == 0,
              "Insert");
    }
    process.Call(kReset, 0, {});
    std::ifstream file(folder.Path("good.dat"), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
  }();
  return good;
}

void Damage(Bytes& file, Choices& choices) {
  const auto size = static_cast<uint32_t>(file.size());
  const auto somewhere = [&] {
    // The first page holds most that can be wrong.
    const uint32_t page = choices.Chance(2) ? 0 : choices.Pick(size / 512 + 1) * 512;
    return std::min<size_t>(page + choices.Pick(choices.Chance(2) ? 100 : 4096), size - 1);
  };
  for (uint32_t changes = 1 + choices.Pick(6); changes > 0; --changes) {
    switch (choices.Pick(4)) {
      case 0:
        file[somewhere() % file.size()] ^= static_cast<uint8_t>(1 << choices.Pick(8));
        break;
      case 1:
        file[somewhere() % file.size()] = choices.Chance(2) ? 0xFF : 0;
        break;
      case 2:
        file[somewhere() % file.size()] = static_cast<uint8_t>(choices.Pick(256));
        break;
      default:
        if (choices.Chance(4)) file.resize(std::max<size_t>(1, somewhere() % file.size()));
    }
  }
}

// Every record met is one that was written. A key may lead to fewer, never round and round.
void Walk(ThisProcess& process, int first, int next, int key) {
  CallOut out = process.Call(first, 0, {.room = kSize, .keyNumber = key});
  int steps = 0;
  for (; out.status == 0; out = process.Call(next, 0, {.room = kSize, .keyNumber = key})) {
    Require(++steps <= 100000, "a walk without end");
    Require(out.data == Record(NumberAt<int32_t>(out.data, 0)), "a record nobody wrote");
  }
  Require(out.status > 0 && out.status < 176, "status " + std::to_string(out.status));
}

void Use(const std::string& path) {
  ThisProcess process;
  if (process.Call(kOpen, 0, {.key = PathKey(path)}).status != 0) return;
  process.Call(kStat, 0, {.room = 2000});
  Walk(process, kStepFirst, kStepNext, 0);
  Walk(process, kStepLast, kStepPrevious, 0);
  for (const int key : {0, 1}) {
    Walk(process, kGetFirst, kGetNext, key);
    Walk(process, kGetLast, kGetPrevious, key);
    for (const int percent : {0, 5000, 10000}) {
      process.Call(
          kGetByPercentage, 0,
          {.data = Number(static_cast<uint16_t>(percent)), .room = kSize, .keyNumber = key});
    }
  }
  for (int32_t id = kRecords; id < kRecords + 5; ++id) {
    process.Call(kInsert, 0, {.data = Record(id), .keyNumber = 0});
  }
  for (const int32_t id : {0, 7, 150, 299}) {
    if (process.Call(kGetEqual, 0, {.room = kSize, .key = Number(id)}).status != 0) continue;
    process.Call(id % 2 ? kUpdate : kDelete, 0, {.data = Record(id)});
  }
  process.Call(kBegin, 0, {});
  process.Call(kInsert, 0, {.data = Record(1000), .keyNumber = 0});
  process.Call(kEnd, 0, {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Choices choices(static_cast<uint32_t>(size), {data, size});
  Bytes file = GoodFile();
  Damage(file, choices);
  const Folder folder;
  const std::string path = folder.Path("bad.dat");
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
  Use(path);
  return 0;
}
