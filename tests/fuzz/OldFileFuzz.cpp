// Files of an older record manager, damaged: numbers of their heads, trees and chains changed,
// pages put in each other's place, cut off. Every call gives a status and walks end. What is opened
// all the same agrees with itself: each way of reading it comes to the same records.
#include "btrieve/legacy/Damage.h"
#include "btrieve/legacy/Layout.h"
#include "btrieve/legacy/OldFile.h"
#include "tests/btrieve/kit/DamagedFile.h"
#include "tests/btrieve/kit/EveryRead.h"
#include "tests/btrieve/kit/OldFileMaker.h"
#include "tests/btrieve/kit/WholeFile.h"
#include "tests/fuzz/FuzzInput.h"

using namespace btrieve::test;
using namespace btrieve::legacy;
using namespace qrn::fuzz;

namespace {

constexpr size_t kMostRecords = 60;

class Harm {
 public:
  Harm(Bytes& file, uint16_t pageSize, Choices& choices)
      : file_(file), pageSize_(pageSize), choices_(choices) {}

  void Do() {
    for (uint32_t changes = choices_.Pick(5); changes > 0; --changes) {
      (this->*kKinds[choices_.Pick(std::size(kKinds))])();
    }
  }

 private:
  size_t SomePage() {
    const auto pages = static_cast<uint32_t>(file_.size() / pageSize_);
    return pages == 0 ? 0 : size_t{choices_.Pick(pages)} * pageSize_;
  }
  // Where four bytes may be changed, mostly where heads and first entries stand.
  size_t Somewhere() {
    const size_t at = SomePage() + choices_.Pick(choices_.Chance(2) ? 40 : pageSize_);
    return file_.size() < 4 ? 0 : std::min(at, file_.size() - 4);
  }
  uint32_t SomeNumber() {
    constexpr uint32_t kOdd[] = {0, 1, 2, kNone, 0x7FFFFFFF, 0x80000000, 0xFFFF};
    if (choices_.Chance(3)) return choices_.Of(std::span<const uint32_t>(kOdd));
    return choices_.Pick(static_cast<uint32_t>(choices_.Chance(2) ? file_.size() + 1 : 40));
  }

  void Flip() { file_[Somewhere()] ^= static_cast<uint8_t>(1 << choices_.Pick(8)); }
  void Number() { SetNumber(Somewhere()); }
  void HeadWord() {
    const size_t at = inhead::kUsage + 2 * choices_.Pick(20);
    const auto value = static_cast<uint16_t>(SomeNumber());
    if (at + 2 <= file_.size()) btrieve::StoreValue(&file_[at], value);
  }
  void Descriptor() {
    const size_t at = inhead::kDescriptors + 2 * choices_.Pick(60);
    const auto value = static_cast<uint16_t>(SomeNumber());
    if (at + 2 <= file_.size()) btrieve::StoreValue(&file_[at], value);
  }
  // A number that stands somewhere takes another's place.
  void CopyNumber() {
    const size_t from = Somewhere();
    const size_t to = Somewhere();
    if (file_.size() >= 4) std::copy_n(&file_[from], 4, &file_[to]);
  }
  void CopyPage() {
    if (file_.size() < pageSize_) return;
    const size_t from = SomePage();
    std::copy_n(file_.begin() + static_cast<ptrdiff_t>(from), pageSize_,
                file_.begin() + static_cast<ptrdiff_t>(SomePage()));
  }
  void Cut() {
    if (choices_.Chance(4)) file_.resize(1 + choices_.Pick(static_cast<uint32_t>(file_.size())));
  }

  void SetNumber(size_t at) {
    if (file_.size() >= 4) StoreHighLow(&file_[at], SomeNumber());
  }

  static constexpr void (Harm::*kKinds[])() = {
      &Harm::Flip,     &Harm::Number,     &Harm::HeadWord, &Harm::Descriptor,
      &Harm::CopyPage, &Harm::CopyNumber, &Harm::Cut};
  Bytes& file_;
  uint16_t pageSize_;
  Choices& choices_;
};

// The record length and the number of keys may have been changed, too.
void ReadEverything(ThisProcess& process, const OldFile& file) {
  const btrieve::FileSpec& spec = file.Spec();
  const auto keys = static_cast<int>(spec.keys.size());
  EveryRead reads(
      {.keys = keys, .recordLength = spec.recordLength, .wasWritten = [&](const Bytes& record) {
         return record.size() == spec.recordLength;
       }});
  const std::string fault = reads.Run(process, 0);
  Require(fault.empty(), fault);
  const bool leavesOut = std::any_of(spec.keys.begin(), spec.keys.end(), [](const auto& key) {
    return key.segments[0].Has(btrieve::kNullAllSegments | btrieve::kNullAnySegment);
  });
  std::multiset<std::string> records;
  const std::string differs =
      ReadEveryWay(process, 0, leavesOut ? 0 : keys, spec.recordLength, records);
  Require(differs.empty(), differs);
}

// What can be saved of a file never ends in another way than with a list.
void Salvage(const Bytes& bytes) {
  try {
    std::vector<std::string> faults;
    OldFile file(bytes, &faults);
    btrieve::Hit hit;
    for (uint32_t rank = 0; rank < file.Total(btrieve::kPhysicalSlot); ++rank) {
      file.Read(btrieve::kPhysicalSlot, rank, hit);
      Require(file.Fetch(hit.position, hit), "a record that is saved is not found");
    }
  } catch (const Damage& damage) {
    Require(!damage.text.empty(), "damage without words");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Choices choices(static_cast<uint32_t>(size), {data, size});
  const MakeUp makeUp = RandomOldMakeUp(choices);
  const OldShape shape = RandomOldShape(choices, makeUp.spec);
  OldFileMaker maker(makeUp.spec, shape);
  FillAtRandom(maker, choices, makeUp.spec, kMostRecords);
  Bytes file = maker.Build();
  Harm(file, shape.pageSize, choices).Do();
  Salvage(file);
  const Folder folder;
  WriteBytes(folder.Path("bad.dat"), file);
  ThisProcess process;
  if (process.Call(kOpen, 0, {.key = PathKey(folder.Path("bad.dat"))}).status != 0) return 0;
  ReadEverything(process, OldFile(file));
  return 0;
}
