// Where the messages of a server begin in what it says on a connection.
#pragma once

#include <span>
#include <vector>

#include "kit/Bytes.h"
#include "kit/Proxy.h"

namespace btrieve::test {

// A letter and four bytes of length, high byte first, which counts itself.
constexpr size_t kMessageHead = 5;
inline size_t MessageSize(std::span<const uint8_t> head) {
  size_t size = 0;
  for (size_t at = 1; at < kMessageHead; ++at) size = size << 8 | head[at];
  return size + 1;
}

// Hands on everything, and notes at which byte each message began.
class MarkedAnswers final : public Answers {
 public:
  explicit MarkedAnswers(std::vector<size_t>& marks) : marks_(marks) { marks_.clear(); }

  bool Take(std::span<const uint8_t> said, Bytes& passed) override {
    passed.assign(said.begin(), said.end());
    unread_.insert(unread_.end(), said.begin(), said.end());
    while (unread_.size() >= kMessageHead && unread_.size() >= MessageSize(unread_)) {
      marks_.push_back(begin_);
      const size_t size = MessageSize(unread_);
      begin_ += size;
      unread_.erase(unread_.begin(), unread_.begin() + static_cast<std::ptrdiff_t>(size));
    }
    return true;
  }

 private:
  std::vector<size_t>& marks_;
  size_t begin_ = 0;
  Bytes unread_;
};

}  // namespace btrieve::test
