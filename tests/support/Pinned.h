// For objects that stay where they were made: neither copied nor moved.
#pragma once

namespace qrn::test {

class Pinned {
 public:
  Pinned(const Pinned&) = delete;
  Pinned& operator=(const Pinned&) = delete;

 protected:
  Pinned() = default;
};

}  // namespace qrn::test
