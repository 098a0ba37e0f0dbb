// The model of a file's specification: lookups, and taking keys out.
#include "btrieve/keys/KeySpec.h"

#include <algorithm>

namespace btrieve {

KeyType KeySegment::Type() const noexcept {
  if (Has(kExtendedType)) return static_cast<KeyType>(givenType);
  return Has(kOldBinary) ? KeyType::UnsignedBinary : KeyType::String;
}

bool KeySegment::FoldsCase() const noexcept {
  if (!Has(kCaseInsensitive) || Has(kSequence)) return false;
  const KeyTypeRow* row = FindKeyType(static_cast<uint8_t>(Type()));
  return row && row->isString;
}

size_t KeySpec::Length() const noexcept {
  size_t length = 0;
  for (const KeySegment& segment : segments) length += segment.length;
  return length;
}

const KeySpec* FileSpec::FindKey(int number) const noexcept {
  const auto key = std::find_if(keys.begin(), keys.end(), [number](const KeySpec& candidate) {
    return candidate.number == number;
  });
  return key == keys.end() ? nullptr : &*key;
}

size_t FileSpec::SegmentCount() const noexcept {
  size_t count = 0;
  for (const KeySpec& key : keys) count += key.segments.size();
  return count;
}

bool DropKey(FileSpec& file, uint8_t number, bool renumber) {
  const auto removed = std::erase_if(
      file.keys, [number](const KeySpec& candidate) { return candidate.number == number; });
  if (removed == 0) return false;
  if (renumber) {
    for (KeySpec& key : file.keys) key.number -= key.number > number;
  }
  return true;
}

}  // namespace btrieve
