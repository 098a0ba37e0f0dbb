// What the first page of a version 5 file says, checked as far as the page itself can show.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "btrieve/keys/Entry.h"
#include "btrieve/keys/KeySpec.h"

namespace btrieve::legacy {

// How a key stands in the file.
struct OldKey {
  uint32_t root = 0;    // page
  uint32_t values = 0;  // different ones
  uint16_t keyLength = 0;
  uint16_t entryLength = 0;
  uint16_t mostEntries = 0;  // in a page
  uint16_t pointers = 0;     // offset in the slot, in a key with duplicates
  bool duplicates = false;
};

struct OldHead {
  FileSpec spec;
  std::vector<OldKey> keys;  // in the order of spec.keys
  bool isOwned = false;
  uint16_t slotLength = 0;
  uint16_t neverUsed = 0;  // bytes at the end of the last data page
  uint32_t firstDeleted = 0;
  uint32_t records = 0;
  uint32_t lastDataPage = 0;
  uint32_t pages = 0;
};

// Bytes that these two look at.
inline constexpr size_t kOldStart = 10;
// Whether a file that begins so is to be read by ReadHead, and no other way.
bool IsOldFile(ByteView start) noexcept;
// Whether it may be one of another version.
bool IsLikeOldFile(ByteView start) noexcept;

// Positions are told from everything else by staying below this.
inline constexpr uint64_t kLargestOldFile = uint64_t{1} << 31;
inline constexpr const char* kTooLargeOldFile = "a version 5 file of more than 2 GiB";

// Takes the whole file's bytes. Throws Damage: 30 for what is no version 5 file or has what is not
// read, 2 for a page that contradicts itself or the file's size. With `faults` a wrong size is
// listed there, and the pages are those that the file has whole.
OldHead ReadHead(ByteView file, std::vector<std::string>* faults = nullptr);

}  // namespace btrieve::legacy
