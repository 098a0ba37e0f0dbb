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

// One value of the state. A raw item has type kUI4; a text with `nullText` was never set. `object`
// is the number that ObjectCodec gave, `kNoObject` for none.
struct PersistedItem {
  static constexpr size_t kNoObject = static_cast<size_t>(-1);

  VarType type = vt::kEmpty;
  uint32_t number = 0;  // kBool, kI2: the low 16 bits
  std::u16string text;
  bool nullText = false;
  size_t object = kNoObject;

  bool operator==(const PersistedItem&) const = default;
};

// Fonts and pictures stand in the stream in their own form; only the system can read it.
class ObjectCodec {
 public:
  virtual ~ObjectCodec() = default;
  // Reads an object of that class from the bytes that follow; nothing if the class is none that a
  // control persists, or its bytes are damaged.
  virtual std::optional<size_t> Read(const Guid& classId, ByteSource& source) = 0;
  // Writes class id and bytes of an object.
  virtual bool Write(size_t object, ByteSink& sink) = 0;
};

// Reads the items of a map. Nothing if the stream is newer, ends early, holds a type that no map
// writes, or a text whose byte count is odd, one, or not closed by its terminator.
// Memory stays in proportion to what the stream really holds, whatever lengths it claims.
std::optional<std::vector<PersistedItem>> ReadItems(ByteSource& source,
                                                    std::span<const PersistRow> map,
                                                    ObjectCodec& objects);

// Writes the items, one for each row of the map. False if the sink is full or an object cannot be
// written.
bool WriteItems(ByteSink& sink, std::span<const PersistRow> map,
                std::span<const PersistedItem> items, ObjectCodec& objects);

}  // namespace qrn::ole
