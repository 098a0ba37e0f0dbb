#include "btrieve/legacy/KeyRow.h"

#include <string>

#include "btrieve/legacy/Damage.h"

namespace btrieve::legacy {
namespace {

// Levels of a tree. A file of 2 GiB whose pages had two children each would have fewer.
constexpr int kMostLevels = 32;

class KeyReader {
 public:
  KeyReader(const Pages& pages, const OldHead& head, const Slots& slots, size_t key,
            const KeyOrder& order, std::vector<bool>& taken)
      : pages_(pages),
        key_(head.keys[key]),
        number_(key),
        slots_(slots),
        order_(order),
        taken_(taken) {
    row_.ranks.assign(slots.Count(), kNone);
  }

  KeyRow Read() {
    TakePage(key_.root, 1);
    if (values_ != key_.values) {
      Fault("has " + std::to_string(values_) + " values, page 0 says " +
            std::to_string(key_.values));
    }
    CheckAllAreThere();
    return std::move(row_);
  }

 private:
  [[noreturn]] void Fault(const std::string& text) const {
    ThrowDamage("key " + std::to_string(number_) + " " + text);
  }
  [[noreturn]] void FaultAt(uint32_t address, const char* text) const {
    Fault("leads to " + std::to_string(address) + ", " + text);
  }

  void TakePage(uint32_t number, int level) {
    const ByteView index = pages_.Index(number);
    if (level > kMostLevels) Fault("has too many levels");
    if (taken_[number]) Fault("leads to page " + std::to_string(number) + " again");
    taken_[number] = true;
    const uint16_t entries = LoadValue<uint16_t>(&index[inpage::kEntries]);
    if (entries > key_.mostEntries) {
      Fault("has too many entries on page " + std::to_string(number));
    }
    const uint32_t rightMost = LoadHighLow(&index[inpage::kRightMost]);
    const uint8_t* entry = &index[inpage::kIndexHead];
    for (uint16_t left = entries; left > 0; --left, entry += key_.entryLength) {
      TakeChild(LoadHighLow(entry), rightMost == kNone, level);
      TakeEntry(entry + kEntryChild);
    }
    TakeChild(rightMost, rightMost == kNone, level);
  }

  void TakeChild(uint32_t child, bool isLeaf, int level) {
    if (isLeaf != (child == kNone)) Fault("has a page that is a leaf in part");
    if (!isLeaf) TakePage(child, level + 1);
  }

  // From the key's bytes on.
  void TakeEntry(const uint8_t* entry) {
    Entry value;
    order_.OrderKey(entry, value.Data());
    value.SetSize(order_.OrderedSize());
    if (values_ != 0 && !BytesLess(last_.View(), value.View())) {
      Fault("has values in another order than its type's");
    }
    last_ = value;
    ++values_;
    entry += key_.keyLength;
    const uint32_t first = LoadHighLow(entry);
    if (!key_.duplicates) return TakeRecord(first);
    TakeChain(first, LoadHighLow(entry + kEntryRecord));
  }

  // From the first record of a value to the last one. A record met twice ends it.
  void TakeChain(uint32_t first, uint32_t last) {
    uint32_t previous = kNone;
    for (uint32_t address = first; address != kNone;) {
      TakeRecord(address);
      const uint8_t* pointers = pages_.At(address) + key_.pointers;
      if (LoadHighLow(pointers) != previous) FaultAt(address, "whose duplicate before it differs");
      previous = address;
      address = LoadHighLow(pointers + kPointerToNext);
    }
    if (previous != last) Fault("has a value whose last record is another one");
  }

  void TakeRecord(uint32_t address) {
    const uint32_t number = slots_.NumberOf(address);
    if (number == kNone) FaultAt(address, "where no record can be");
    if (!slots_.HoldsRecord(number)) FaultAt(address, "a deleted record");
    if (row_.ranks[number] != kNone) FaultAt(address, "a record that it has already");
    Entry value;
    order_.OrderRecord(pages_.At(address), value.Data());
    value.SetSize(order_.OrderedSize());
    if (!(value == last_)) FaultAt(address, "a record of another value");
    row_.ranks[number] = static_cast<uint32_t>(row_.records.size());
    row_.records.push_back(address);
  }

  void CheckAllAreThere() const {
    for (const uint32_t address : slots_.Records()) {
      const bool isHere = row_.ranks[slots_.NumberOf(address)] != kNone;
      if (isHere == order_.LeavesOut(pages_.At(address))) {
        Fault((isHere ? "has the null record at " : "lacks the record at ") +
              std::to_string(address));
      }
    }
  }

  const Pages& pages_;
  const OldKey& key_;
  size_t number_;
  const Slots& slots_;
  const KeyOrder& order_;
  std::vector<bool>& taken_;
  KeyRow row_;
  Entry last_;  // value
  uint32_t values_ = 0;
};

}  // namespace

KeyRow ReadKey(const Pages& pages, const OldHead& head, const Slots& slots, size_t key,
               const KeyOrder& order, std::vector<bool>& taken) {
  return KeyReader(pages, head, slots, key, order, taken).Read();
}

}  // namespace btrieve::legacy
