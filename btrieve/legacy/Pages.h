// The pages of an old file, as bytes in memory: each is handed out through one check.
#pragma once

#include <cstdint>
#include <vector>

#include "btrieve/keys/Entry.h"
#include "btrieve/legacy/Layout.h"

namespace btrieve::legacy {

class Pages {
 public:
  // Whole pages; ReadHead has seen to that.
  Pages(std::vector<uint8_t> file, uint16_t pageSize) noexcept
      : file_(std::move(file)), pageSize_(pageSize) {}

  uint16_t Size() const noexcept { return pageSize_; }
  uint32_t Count() const noexcept { return static_cast<uint32_t>(file_.size() / pageSize_); }
  const uint8_t* At(uint32_t address) const noexcept { return &file_[address]; }

  // `number` is below Count(), and not 0.
  bool IsData(uint32_t number) const noexcept {
    return (LoadValue<uint16_t>(Start(number) + inpage::kUsage) & inpage::kDataBit) != 0;
  }
  // Whether the page says itself that it is this one.
  bool IsItself(uint32_t number) const noexcept {
    return LoadHighLow(Start(number) + inpage::kNumber) == number;
  }
  // A page of a key: any number may be asked for. Throws Damage (2).
  ByteView Index(uint32_t number) const;

 private:
  const uint8_t* Start(uint32_t number) const noexcept {
    return &file_[size_t{number} * pageSize_];
  }

  std::vector<uint8_t> file_;
  uint16_t pageSize_;
};

}  // namespace btrieve::legacy
