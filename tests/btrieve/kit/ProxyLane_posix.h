// What a proxy has heard from one side and the other has yet to hear.
#pragma once

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <chrono>
#include <deque>
#include <optional>

#include "Bytes.h"

namespace btrieve::test {

class ProxyLane {
 public:
  using Clock = std::chrono::steady_clock;

  ProxyLane(int from, int to) : from_(from), to_(to) {}

  // What has come; nothing is the other side's end.
  std::optional<Bytes> Read() {
    Bytes bytes(1 << 16);
    const ssize_t size = recv(from_, bytes.data(), bytes.size(), 0);
    if (size < 0 && errno == EAGAIN) return Bytes();
    if (size <= 0) return std::nullopt;
    bytes.resize(static_cast<size_t>(size));
    return bytes;
  }
  void Put(Clock::time_point due, Bytes bytes) {
    if (bytes.empty()) return;
    held_ += bytes.size();
    chunks_.push_back({due, std::move(bytes)});
  }
  // Sends what is due; false when nobody takes it any more.
  bool Send() {
    full_ = false;
    while (!full_ && !chunks_.empty() && chunks_.front().due <= Clock::now()) {
      const Bytes& bytes = chunks_.front().bytes;
      const ssize_t size = send(to_, &bytes[sent_], bytes.size() - sent_, MSG_NOSIGNAL);
      if (size < 0 && errno != EAGAIN) return false;
      full_ = size < 0;
      if (!full_) Pass(static_cast<size_t>(size));
    }
    return true;
  }
  bool IsEmpty() const { return chunks_.empty(); }
  Clock::time_point Due() const {
    return chunks_.empty() || full_ ? Clock::time_point::max() : chunks_.front().due;
  }
  short Reads() const { return held_ < kMostHeld ? POLLIN : 0; }
  short Writes() const { return full_ ? POLLOUT : 0; }

 private:
  static constexpr size_t kMostHeld = 1 << 20;

  struct Chunk {
    Clock::time_point due;
    Bytes bytes;
  };

  void Pass(size_t size) {
    sent_ += size;
    held_ -= size;
    if (sent_ < chunks_.front().bytes.size()) return;
    chunks_.pop_front();
    sent_ = 0;
  }

  int from_;
  int to_;
  std::deque<Chunk> chunks_;
  size_t sent_ = 0;  // of the first
  size_t held_ = 0;
  bool full_ = false;  // nothing more can be sent for now
};

}  // namespace btrieve::test
