// Stands between clients and a server of this machine and hands on what they say, later if it is
// told so, with what is to become of the server's answers on the way.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <thread>

#include "Bytes.h"
#include "tests/support/Pinned.h"

namespace btrieve::test {

// What becomes of the answers on one connection.
class Answers {
 public:
  virtual ~Answers() = default;
  // Appends to `passed` what the client is to hear once the server has said `said`. False: the
  // connection ends with that.
  virtual bool Take(std::span<const uint8_t> said, Bytes& passed) = 0;
  // It speaks by itself: Take is called with nothing whenever the client has heard everything.
  virtual bool GoesOn() const { return false; }
  // How much later the client hears what was taken last.
  virtual std::chrono::microseconds Wait() const { return {}; }
};

class Proxy : qrn::test::Pinned {
 public:
  using Make = std::function<std::unique_ptr<Answers>()>;

  // To the server at that port of this machine. Every answer comes `delay` later than it would;
  // without `make` it comes as it is.
  Proxy(int serverPort, std::chrono::microseconds delay, Make make = {});
  ~Proxy();

  int Port() const { return port_; }
  // How often a client has said something after it was answered, or first of all.
  uint64_t RoundTrips() const { return roundTrips_; }

 private:
  class Connection;

  void Run();
  void Accept();

  int serverPort_;
  std::chrono::microseconds delay_;
  Make make_;
  int listener_ = -1;
  int port_ = 0;
  std::vector<std::unique_ptr<Connection>> connections_;
  std::atomic<uint64_t> roundTrips_ = 0;
  std::atomic<bool> stops_ = false;
  std::thread thread_;
};

}  // namespace btrieve::test
