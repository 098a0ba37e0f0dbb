// Owner names: bytes compared exactly, padded with blanks.
#pragma once

#include <algorithm>
#include <string>

#include "btrieve/keys/Entry.h"

namespace btrieve {

inline constexpr size_t kOwnerNameSize = 8;
inline constexpr size_t kLongOwnerNameSize = 24;
inline constexpr uint8_t kReadOnlyWithoutName = 1;  // owner mode; 0 asks for the name at any access

inline constexpr uint8_t kHighestOwnerMode = 3;

// The owner name of a file, as it is stored.
struct OwnerRecord {
  bool set = false;
  uint8_t mode = 0;     // 0 needed for any access, 1 read-only without it
  std::string name;     // padded with blanks
  bool isKnown = true;  // else the name stands in the file in a form that no name is compared with
};

inline std::string TextUpToNul(ByteView bytes) {
  const auto end = std::find(bytes.begin(), bytes.end(), 0);
  return {bytes.begin(), end};
}

// Without the blanks that pad it.
inline std::string TrimmedName(const std::string& name) {
  return name.substr(0, name.find_last_not_of(' ') + 1);
}

inline bool SameOwnerName(const std::string& a, const std::string& b) {
  return TrimmedName(a) == TrimmedName(b);
}

}  // namespace btrieve
