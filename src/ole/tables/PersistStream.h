// A control's persisted state as a stream of bytes: a version, then one item for each row of its
// map, nothing between them. docs/persisted-state.md shows the layout with an example.
//
// Reading takes nothing on trust: the bytes may be cut, damaged or made to do harm.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ole/tables/Members.h"

namespace qrn::ole {

inline constexpr uint32_t kStreamVersion = 0x0E00;  // written always; newer ones are not read

// Where the bytes come from and go to.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  // Reads up to `bytes` bytes; the result is how many came, fewer only at the end.
  virtual size_t Read(void* into, size_t bytes) = 0;
};
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  // False if not all could be written.
  virtual bool Write(const void* from, size_t bytes) = 0;
};

// Classes of the objects that a control persists: the system's font and picture.
inline constexpr Guid kFontClass = MakeGuid("0BE35203-8F91-11CE-9DE3-00AA004BB851");
inline constexpr Guid kPictureClass = MakeGuid("0BE35204-8F91-11CE-9DE3-00AA004BB851");

// One value of the state. A raw item has type kUI4; a text with `nullText` was never set. An object
// is its class and the bytes it persists itself as; the class is all zero for no object.
struct PersistedItem {
  VarType type = vt::kEmpty;
  uint32_t number = 0;  // kBool, kI2: the low 16 bits
  std::u16string text;
  bool nullText = false;
  Guid classId;
  std::vector<uint8_t> object;

  bool operator==(const PersistedItem&) const = default;
};

// Reads the items of a map. Nothing if the stream is newer, ends early, or holds a type or a class
// that no map writes, a text whose byte count is odd or not closed by its terminator, or an object
// whose own lengths do not add up, down to the sizes inside a picture. No object is made from it,
// so nothing in it can be run. Memory stays in proportion to what the stream really holds, whatever
// lengths it claims.
std::optional<std::vector<PersistedItem>> ReadItems(ByteSource& source,
                                                    std::span<const PersistRow> map);

// Writes the items, one for each row of the map. False if the sink is full or an item's type is
// none of a map's.
bool WriteItems(ByteSink& sink, std::span<const PersistRow> map,
                std::span<const PersistedItem> items);

}  // namespace qrn::ole
