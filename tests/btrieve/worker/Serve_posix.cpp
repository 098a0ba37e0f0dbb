#include <unistd.h>

#include "../kit/Wire.h"
#include "Serve.h"

namespace btrieve::test {

int ServeCalls(const std::vector<std::string>&) {
  ThisProcess process;
  while (const auto message = ReceiveMessage(STDIN_FILENO)) {
    const RemoteCall call = CallFromWire(*message);
    SendMessage(STDOUT_FILENO, ToWire(process.Call(call.operation, call.block, call.in)));
  }
  return 0;
}

}  // namespace btrieve::test
