#include "tools/qrndata/convert/FileConversion.h"

#include <algorithm>
#include <system_error>

#include "btrieve/files/AsideFile.h"
#include "btrieve/files/RecordWriter.h"
#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/system/HostFile.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/RecordScan.h"
#include "tools/qrndata/convert/DuplicateNumbers.h"
#include "tools/qrndata/convert/TodaysSpec.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;
using btrieve::Hit;
using btrieve::kPhysicalSlot;
using btrieve::legacy::OldFile;

constexpr uint32_t kTogether = 20000;  // records in a write transaction

// The records of an old file, written by place.
class TodaysFile {
 public:
  TodaysFile(OldFile& old, const std::string& path, Progress& progress, Conversion& conversion)
      : old_(old),
        numbers_(old),
        progress_(progress),
        conversion_(conversion),
        file_(path, {}),
        writer_(file_, true) {
    file_.Base().Open(path);
  }

  void Write() {
    const uint32_t total = old_.Total(kPhysicalSlot);
    for (uint32_t from = 0; from < total; from += kTogether) {
      WriteFrom(from, std::min(total, from + kTogether));
    }
    if (!file_.MakeAllStable()) throw btrieve::Failure{file_.SyncFault()};
    file_.Base().Close();
  }

 private:
  void WriteFrom(uint32_t rank, uint32_t end) {
    file_.Base().BeginWrite();
    for (; rank < end; ++rank) WriteRecord(rank);
    file_.Base().SetNextPosition(end + 1);
    file_.Base().CommitWrite();
    file_.Base().CarryLogOver();
  }

  void WriteRecord(uint32_t rank) {
    Hit hit;
    old_.Read(kPhysicalSlot, rank, hit);
    progress_.Update(rank, rank);
    if (conversion_.isSalvage && IsTaken(hit)) {
      conversion_.left.push_back(hit.position);
      return;
    }
    writer_.Fill({rank + 1, false, numbers_.Of(rank).Stored(), hit.data});
    ++conversion_.records;
  }

  bool IsTaken(const Hit& hit) {
    btrieve::WritePlan plan;
    writer_.PlanInsert(hit.data, 1, plan);
    return writer_.FindTaken(plan) != btrieve::kOk;
  }

  OldFile& old_;
  DuplicateNumbers numbers_;
  Progress& progress_;
  Conversion& conversion_;
  btrieve::DataFile file_;
  btrieve::RecordWriter writer_;
};

std::string OrderName(int slot) {
  return slot == kPhysicalSlot ? Say(Message::ByPlace) : Say(Message::AlongKey, slot);
}

// Compares one order; the first difference ends it.
class OrderComparison {
 public:
  OrderComparison(OldFile& old, BtrFile& file, Progress& progress, Conversion& conversion)
      : old_(old), file_(file), progress_(progress), conversion_(conversion) {}

  void Compare(int slot) {
    const auto key = slot == kPhysicalSlot
                         ? kNoKey
                         : static_cast<int8_t>(old_.Spec().keys[static_cast<size_t>(slot)].number);
    RecordScan scan(file_, key);
    for (uint32_t rank = 0; rank < old_.Total(slot); ++rank) {
      ++done_;
      progress_.Update(done_, done_);
      Hit hit;
      old_.Read(slot, rank, hit);
      if (IsLeft(hit.position)) continue;
      if (!scan.Next()) return Differs(slot, rank, Message::RecordMissing);
      if (!btrieve::BytesEqual(scan.Record(), hit.data))
        return Differs(slot, rank, Message::RecordDiffers);
    }
    if (scan.Next()) conversion_.differences.push_back(Say(Message::MoreRecords, OrderName(slot)));
  }

 private:
  bool IsLeft(uint32_t position) const {
    return std::binary_search(conversion_.left.begin(), conversion_.left.end(), position);
  }
  void Differs(int slot, uint32_t rank, Message what) {
    conversion_.differences.push_back(Say(what, OrderName(slot), Grouped(rank + 1)));
  }

  OldFile& old_;
  BtrFile& file_;
  Progress& progress_;
  Conversion& conversion_;
  uint64_t done_ = conversion_.records;
};

}  // namespace

uint64_t WorkOf(const OldFile& old) {
  uint64_t work = 2 * uint64_t{old.Total(kPhysicalSlot)};
  for (size_t slot = 0; slot < old.Spec().keys.size(); ++slot) {
    work += old.Total(static_cast<int>(slot));
  }
  return work;
}

void WriteTodays(OldFile& old, const fs::path& path, Progress& progress,
                 Conversion& conversion) try {
  if (!btrieve::RegisterCheckedVfs()) throw btrieve::Failure{btrieve::kNoCacheBuffer};
  btrieve::AsideFile aside(BtrievePath(path));
  btrieve::Storage::Create(aside.Path(), TodaysSpec(old.Spec(), conversion.notes));
  TodaysFile(old, aside.Path(), progress, conversion).Write();
  Require(aside.PlaceAsNew(), PathToUtf8(path));
} catch (const btrieve::Failure& failure) {
  Require(failure.status, PathToUtf8(path));
}

void Compare(OldFile& old, const fs::path& path, Progress& progress, Conversion& conversion) {
  BtrFile file(path, Access::ReadOnly);
  OrderComparison comparison(old, file, progress, conversion);
  comparison.Compare(kPhysicalSlot);
  for (size_t slot = 0; slot < old.Spec().keys.size(); ++slot) {
    if (old.IsKeyWhole(static_cast<int>(slot))) comparison.Compare(static_cast<int>(slot));
  }
}

}  // namespace qrndata
