// A version 5 file, read whole: its bytes are taken into memory once, compared with each other in
// every respect, and then only handed out. What another program does to the file afterwards is not
// seen, so that nothing read can be half of one state and half of another.
#pragma once

#include <string>
#include <vector>

#include "btrieve/legacy/KeyRow.h"
#include "btrieve/legacy/OldHead.h"
#include "btrieve/legacy/Pages.h"
#include "btrieve/legacy/Slots.h"
#include "btrieve/storage/OrderNumbers.h"
#include "btrieve/storage/Storage.h"

namespace btrieve::legacy {

class OldFile final : public ForeignFile {
 public:
  // Throws Damage: 30 for what is not read, 2 where parts of the file disagree. With `faults` what
  // disagrees is listed there as far as records can be read nevertheless, and a key that is damaged
  // has no records.
  explicit OldFile(std::vector<uint8_t> file, std::vector<std::string>* faults = nullptr);

  const FileSpec& Spec() const noexcept override { return head_.spec; }
  // The name stands there in a form that no name can be compared with.
  OwnerRecord Owner() noexcept override { return {head_.isOwned, 0, {}, false}; }
  bool IsOwned() const noexcept { return head_.isOwned; }
  Head Counts() override;
  uint64_t Total(int slot) const noexcept override { return RowOf(slot).size(); }
  uint64_t RankOf(int slot, ByteView bound) override;
  Entry EntryAt(int slot, uint64_t rank) override;
  bool Fetch(uint32_t position, Hit& hit) override;
  std::unique_ptr<ForeignWalk> Walk(int slot, bool forward, ByteView bound) override;

  // The record at `rank`, which is below the total, with its entry.
  void Read(int slot, uint32_t rank, Hit& hit);
  // Records as page 0 counts them, which only faults make another number than the total.
  uint32_t AnnouncedRecords() const noexcept { return head_.records; }
  // Only faults make it anything else.
  bool IsKeyWhole(int slot) const noexcept {
    return slots_.Count() == 0 || !rows_[slot].ranks.empty();
  }

 private:
  void ReadKeys(std::vector<std::string>* faults);
  const std::vector<uint32_t>& RowOf(int slot) const noexcept;
  void MakeEntry(int slot, uint32_t rank, Entry& entry) const noexcept;
  ByteView RecordAt(uint32_t address) const noexcept {
    return {pages_.At(address), head_.spec.recordLength};
  }

  OldHead head_;
  Pages pages_;
  Slots slots_;
  std::vector<KeyOrder> orders_;  // by key
  std::vector<KeyRow> rows_;
  Entry entry_;           // of the hit read last
  OrderNumbers numbers_;  // the same
};

}  // namespace btrieve::legacy
