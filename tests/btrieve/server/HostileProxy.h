// Stands between a client and the tests' server and hands on what they say, until it does harm to
// what the server says: cuts it off, turns bits, says one thing again and again.
#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

#include "kit/Choices.h"
#include "tests/support/Pinned.h"

namespace btrieve::test {

enum class Harm : uint8_t { None, Cut, Garble, Repeat };

class HostileProxy : qrn::test::Pinned {
 public:
  // To the server at that port of this machine. Harm begins behind so many bytes of its answers.
  HostileProxy(int serverPort, Harm harm, size_t behind, uint32_t seed);
  ~HostileProxy();

  int Port() const { return port_; }

 private:
  void Run();
  void Serve(int client);
  // False once the connection has come to its end.
  bool HandOn(int from, int to);
  bool HandOnHarmed(int from, int to);
  void TurnBits(uint8_t* bytes, size_t size);

  int serverPort_;
  Harm harm_;
  size_t behind_;
  Choices choices_;
  int listener_ = -1;
  int port_ = 0;
  size_t said_ = 0;
  std::atomic<bool> stops_ = false;
  std::thread thread_;
};

}  // namespace btrieve::test
