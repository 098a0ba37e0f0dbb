// The records of an old file by place: which slots its data pages have, and which of them hold
// records. A slot is named by its address, the bytes from the start of the file; within this
// process also by its number, counting all slots in use from 0 in the order of their addresses.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "btrieve/legacy/OldHead.h"
#include "btrieve/legacy/Pages.h"

namespace btrieve::legacy {

class Slots {
 public:
  // Throws Damage (2) for the first disagreement found. With `faults` it goes on and lists them
  // all; it then takes every record that it can tell from a deleted one.
  Slots(const Pages& pages, const OldHead& head, std::vector<std::string>* faults = nullptr);

  // Addresses of the records, ascending.
  const std::vector<uint32_t>& Records() const noexcept { return records_; }
  uint32_t Count() const noexcept { return static_cast<uint32_t>(isDeleted_.size()); }
  // The number of the slot at an address; kNone where none begins that is in use.
  uint32_t NumberOf(uint32_t address) const noexcept;
  bool HoldsRecord(uint32_t number) const noexcept { return !isDeleted_[number]; }

 private:
  // The slots of one page: their count, and the number of the first one.
  struct Share {
    uint32_t first = 0;
    uint16_t slots = 0;
  };

  void TakePages();
  void TakePage(uint32_t page);
  uint16_t InUse(uint32_t page);
  void TakeDeleted();
  bool TakeDeleted(uint32_t address);
  void LeaveOutZeros();
  void CollectRecords();
  void Fault(const std::string& text);

  const Pages& pages_;
  const OldHead& head_;
  std::vector<std::string>* faults_;
  bool listIsWhole_ = true;
  std::vector<Share> shares_;  // by page
  std::vector<bool> isDeleted_;
  std::vector<uint32_t> records_;
};

}  // namespace btrieve::legacy
