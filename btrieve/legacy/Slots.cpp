#include "btrieve/legacy/Slots.h"

#include <algorithm>

#include "btrieve/legacy/Damage.h"

namespace btrieve::legacy {

Slots::Slots(const Pages& pages, const OldHead& head, std::vector<std::string>* faults)
    : pages_(pages), head_(head), faults_(faults), shares_(pages.Count()) {
  TakePages();
  TakeDeleted();
  if (!listIsWhole_) LeaveOutZeros();
  CollectRecords();
}

void Slots::Fault(const std::string& text) {
  if (!faults_) ThrowDamage(text);
  faults_->push_back(text);
}

// Of the last data page only a part has ever been used; all others are full.
uint16_t Slots::InUse(uint32_t page) {
  const uint16_t room = pages_.Size() - inpage::kDataHead;
  const uint16_t all = room / head_.slotLength;
  if (page != head_.lastDataPage) return all;
  const uint16_t used = (room - head_.neverUsed) / head_.slotLength;
  const bool isExact = used == all || room - used * head_.slotLength == head_.neverUsed;
  if (!isExact) Fault("page 0: the last data page is not used up to the end of a record");
  return used;
}

void Slots::TakePage(uint32_t page) {
  if (!pages_.IsItself(page)) {
    return Fault("page " + std::to_string(page) + " bears another number");
  }
  const uint16_t slots = InUse(page);
  shares_[page] = {Count(), slots};
  isDeleted_.resize(isDeleted_.size() + slots);
}

void Slots::TakePages() {
  for (uint32_t page = 1; page < pages_.Count(); ++page) {
    if (pages_.IsData(page)) TakePage(page);
  }
}

uint32_t Slots::NumberOf(uint32_t address) const noexcept {
  const uint32_t page = address / pages_.Size();
  const uint32_t within = address % pages_.Size();
  if (page >= shares_.size() || within < inpage::kDataHead) return kNone;
  const uint32_t slot = (within - inpage::kDataHead) / head_.slotLength;
  const bool begins = (within - inpage::kDataHead) % head_.slotLength == 0;
  return begins && slot < shares_[page].slots ? shares_[page].first + slot : kNone;
}

// False behind the last one that can be told.
bool Slots::TakeDeleted(uint32_t address) {
  const uint32_t number = NumberOf(address);
  if (number != kNone && !isDeleted_[number]) {
    isDeleted_[number] = true;
    return true;
  }
  listIsWhole_ = false;
  Fault("the list of deleted records leads to " + std::to_string(address) +
        (number == kNone ? ", where no record can be" : " twice"));
  return false;
}

void Slots::TakeDeleted() {
  uint32_t address = head_.firstDeleted;
  while (address != kNone && TakeDeleted(address)) address = LoadHighLow(pages_.At(address));
}

// Where the list is broken, a slot that is zeros behind the link is taken for a deleted one.
void Slots::LeaveOutZeros() {
  for (uint32_t page = 1; page < shares_.size(); ++page) {
    for (uint32_t slot = 0; slot < shares_[page].slots; ++slot) {
      const uint8_t* at =
          pages_.At(page * pages_.Size() + inpage::kDataHead + slot * head_.slotLength);
      const bool isZeros = std::all_of(at + kDeletedLink, at + head_.slotLength,
                                       [](uint8_t byte) { return byte == 0; });
      if (isZeros) isDeleted_[shares_[page].first + slot] = true;
    }
  }
}

void Slots::CollectRecords() {
  for (uint32_t page = 1; page < shares_.size(); ++page) {
    for (uint32_t slot = 0; slot < shares_[page].slots; ++slot) {
      if (isDeleted_[shares_[page].first + slot]) continue;
      records_.push_back(page * pages_.Size() + static_cast<uint32_t>(inpage::kDataHead) +
                         slot * head_.slotLength);
    }
  }
  if (records_.size() != head_.records) {
    Fault("the data pages have " + std::to_string(records_.size()) + " records, page 0 says " +
          std::to_string(head_.records));
  }
}

}  // namespace btrieve::legacy
