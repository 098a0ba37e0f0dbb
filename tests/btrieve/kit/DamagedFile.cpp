#include "DamagedFile.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "btrieve/pages/CheckedVfs.h"

namespace btrieve::test {
namespace {

void Require(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(what);
}

Bytes MakeGoodFile() {
  const Folder folder;
  ThisProcess process;
  const Bytes block =
      CreateBlock({.recordLength = kGoodRecord},
                  {{.flags = 0x102, .type = 1}, {.position = 5, .flags = 0x103, .type = 1}});
  const Bytes path = PathKey(folder.Path("good.dat"));
  Require(process.Call(kCreate, 0, {.data = block, .key = path}).status == 0, "Create");
  Require(process.Call(kOpen, 0, {.key = path}).status == 0, "Open");
  for (int32_t id = 0; id < kGoodRecords; ++id) {
    const CallIn in{.data = GoodRecord(id), .keyNumber = -1};
    Require(process.Call(kInsert, 0, in).status == 0, "Insert");
  }
  process.Call(kReset, 0, {});
  return ReadBytes(folder.Path("good.dat"));
}

}  // namespace

Bytes GoodRecord(int32_t id) {
  return Number(id) + Number(id % 10) + Padded("record " + std::to_string(id), kGoodRecord - 8);
}

bool IsGoodRecord(const Bytes& record) {
  return record == GoodRecord(NumberAt<int32_t>(record, 0));
}

const Bytes& GoodFile() {
  static const Bytes good = MakeGoodFile();
  return good;
}

void WriteBytes(const std::string& path, const Bytes& bytes) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

Bytes ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

void RenewPageSums(Bytes& file) {
  for (size_t at = 0; at + kStoragePageSize <= file.size(); at += kStoragePageSize) {
    const uint64_t sum = PageSum(&file[at], at / kStoragePageSize + 1);
    std::memcpy(&file[at + kStoragePageSize - kPageSumSize], &sum, sizeof sum);
  }
}

}  // namespace btrieve::test
