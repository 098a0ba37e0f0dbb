// Calls and their answers as bytes, for a client in another process.
#pragma once

#include <optional>

#include "Calls.h"

namespace btrieve::test {

struct RemoteCall {
  int operation = 0;
  int block = 0;
  CallIn in;
};

Bytes ToWire(const RemoteCall& call);
Bytes ToWire(const CallOut& out);
RemoteCall CallFromWire(const Bytes& bytes);
CallOut OutFromWire(const Bytes& bytes);

// Whole messages over a file descriptor; reading gives nothing once the other side is gone.
bool SendMessage(int descriptor, const Bytes& message);
std::optional<Bytes> ReceiveMessage(int descriptor);

}  // namespace btrieve::test
