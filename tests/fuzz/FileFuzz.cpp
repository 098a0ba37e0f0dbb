// Damaged files: bytes flipped, set or cut off, pages put in each other's place, pointers turned
// round, mostly with page checksums renewed, so that the damage gets past them. Every call gives a
// status and walks end. Where the checksums were left as they are, what is read as a record is one
// that was written; where not, it is at least as long as one.

#include "btrieve/pages/CheckedVfs.h"
#include "tests/btrieve/kit/Choices.h"
#include "tests/btrieve/kit/DamagedFile.h"
#include "tests/btrieve/kit/EveryRead.h"
#include "tests/fuzz/FuzzInput.h"

using namespace btrieve::test;
using namespace qrn::fuzz;
using btrieve::kStoragePageSize;

namespace {

class Damage {
 public:
  Damage(Bytes& file, Choices& choices) : file_(file), choices_(choices) {}

  // Whether checksums were renewed.
  bool Do() {
    for (uint32_t changes = 1 + choices_.Pick(6); changes > 0; --changes) {
      (this->*kKinds[choices_.Pick(std::size(kKinds))])();
    }
    const bool renewed = !choices_.Chance(4);
    if (renewed) RenewPageSums(file_);
    return renewed;
  }

 private:
  uint32_t Pages() const { return static_cast<uint32_t>(file_.size() / kStoragePageSize); }
  size_t SomePage() { return Pages() == 0 ? 0 : choices_.Pick(Pages()) * kStoragePageSize; }
  // Mostly where pages keep what they are made of: their heads, and the first page.
  uint8_t& Somewhere() {
    const size_t page = choices_.Chance(4) ? 0 : SomePage();
    const size_t at = page + choices_.Pick(choices_.Chance(2) ? 100 : kStoragePageSize);
    return file_[std::min(at, file_.size() - 1)];
  }

  void Flip() { Somewhere() ^= static_cast<uint8_t>(1 << choices_.Pick(8)); }
  void Fill() { Somewhere() = choices_.Chance(2) ? 0xFF : 0; }
  void Set() { Somewhere() = static_cast<uint8_t>(choices_.Pick(256)); }
  void Cut() {
    if (choices_.Chance(4)) file_.resize(1 + choices_.Pick(static_cast<uint32_t>(file_.size())));
  }
  void CopyPage() {
    if (Pages() < 2) return;
    const auto from = file_.begin() + static_cast<ptrdiff_t>(SomePage());
    std::copy_n(from, kStoragePageSize, file_.begin() + static_cast<ptrdiff_t>(SomePage()));
  }
  // A number of a page, or of a cell's place in its page, in the head of a page or behind it.
  void Point() {
    const size_t at = SomePage() + 2 * choices_.Pick(choices_.Chance(2) ? 12 : 100);
    if (at + 4 > file_.size()) return;
    file_[at] = file_[at + 1] = file_[at + 2] = 0;
    file_[at + 3] = static_cast<uint8_t>(choices_.Pick(Pages() + 2));
  }

  static constexpr void (Damage::*kKinds[])() = {&Damage::Flip, &Damage::Fill,     &Damage::Set,
                                                 &Damage::Cut,  &Damage::CopyPage, &Damage::Point};
  Bytes& file_;
  Choices& choices_;
};

void Write(ThisProcess& process) {
  for (int32_t id = kGoodRecords; id < kGoodRecords + 5; ++id) {
    process.Call(kInsert, 0, {.data = GoodRecord(id), .keyNumber = 0});
  }
  for (const int32_t id : {0, 7, 150, 299}) {
    if (process.Call(kGetEqual, 0, {.room = kGoodRecord, .key = Number(id)}).status != 0) continue;
    process.Call(id % 2 ? kUpdate : kDelete, 0, {.data = GoodRecord(id)});
  }
  process.Call(kBegin, 0, {});
  process.Call(kInsert, 0, {.data = GoodRecord(1000), .keyNumber = 0});
  process.Call(kEnd, 0, {});
}

bool IsAsLong(const Bytes& record) { return record.size() == kGoodRecord; }

void Use(const std::string& path, bool renewed) {
  ThisProcess process;
  if (process.Call(kOpen, 0, {.key = PathKey(path)}).status != 0) return;
  EveryRead reads(
      {.keys = 2, .recordLength = kGoodRecord, .wasWritten = renewed ? IsAsLong : IsGoodRecord});
  const std::string before = reads.Run(process, 0);
  Require(before.empty(), before);
  Write(process);
  const std::string after = reads.Run(process, 0);
  Require(after.empty(), after);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Choices choices(static_cast<uint32_t>(size), {data, size});
  Bytes file = GoodFile();
  const bool renewed = Damage(file, choices).Do();
  const Folder folder;
  const std::string path = folder.Path("bad.dat");
  WriteBytes(path, file);
  Use(path, renewed);
  return 0;
}
