// One page of SQLite's cache, held there until the end of the scope.
#pragma once

#include <cstdint>
#include <utility>

#include "btrieve/pages/Sqlite.h"

namespace btrieve {

class PageRef {
 public:
  PageRef() = default;
  PageRef(sqlite3* connection, uint32_t number);
  PageRef(PageRef&& other) noexcept
      : page_(std::exchange(other.page_, nullptr)), bytes_(other.bytes_) {}
  PageRef& operator=(PageRef&& other) noexcept {
    std::swap(page_, other.page_);
    std::swap(bytes_, other.bytes_);
    return *this;
  }
  ~PageRef();

  const uint8_t* Bytes() const noexcept { return bytes_; }

 private:
  void* page_ = nullptr;
  const uint8_t* bytes_ = nullptr;
};

}  // namespace btrieve
