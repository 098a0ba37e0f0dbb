// The other process of the tests. Serves calls over its standard input and output, or does work
// that its parent interrupts by killing it.
#include <unistd.h>

#include "../kit/Wire.h"
#include "Work.h"

using namespace btrieve::test;

namespace {

void ServeCalls() {
  ThisProcess process;
  while (const auto message = ReceiveMessage(STDIN_FILENO)) {
    const RemoteCall call = CallFromWire(*message);
    SendMessage(STDOUT_FILENO, ToWire(process.Call(call.operation, call.block, call.in)));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    ServeCalls();
  } else {
    return Work({argv + 1, argv + argc});
  }
  return 0;
}
