// A fixed number of texts, each its own copy or none: the cells of a grid, the formats of its
// columns. Texts are code page 932, NUL-terminated. Nothing throws and nothing reaches beyond the
// slots: an index that has none reads as empty and takes nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "grid/model/TextPool.h"
#include "platform/Memory.h"

namespace qrn {

class TextSlots {
 public:
  TextSlots() = default;
  TextSlots(const TextSlots&) = delete;
  TextSlots& operator=(const TextSlots&) = delete;
  ~TextSlots() { Clear(); }

  // Makes `count` empty slots, once. False, and no slots, without memory for them; so too below 1.
  [[nodiscard]] bool Make(int64_t count) noexcept;

  int64_t count() const noexcept { return count_; }

  // Null for an empty slot; valid until the slot is set, moved or cleared.
  const char* Get(int64_t index) const noexcept {
    return Has(index) ? slots_.get()[index] : nullptr;
  }

  // Frees the slot's text and keeps a copy of the new one, which holds no NUL; an empty text leaves
  // the slot empty. So does a lack of memory, which is the one false.
  [[nodiscard]] bool Set(int64_t index, std::string_view text) noexcept;

  // The text of `from` goes to `to`, whose own is freed; `from` is empty afterwards.
  void Move(int64_t from, int64_t to) noexcept;

  void Free(int64_t index) noexcept;  // empties one slot
  void Clear() noexcept;              // empties all

 private:
  bool Has(int64_t index) const noexcept { return index >= 0 && index < count_; }

  // Zeroed memory: of millions of slots most are never touched.
  std::unique_ptr<char*, MemoryDeleter> slots_;
  int64_t count_ = 0;
  int64_t reach_ = 0;  // the slots from here on never had a text
  TextPool pool_;      // whose texts the slots hold, each one its own
};

}  // namespace qrn
