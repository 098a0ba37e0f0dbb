#include <grp.h>
#include <unistd.h>

#include "../kit/Wire.h"
#include "Serve.h"

namespace btrieve::test {
namespace {

bool DropPrivileges() {
  constexpr uid_t kNobody = 65534;
  if (geteuid() != 0) return true;
  return setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0;
}

}  // namespace

int ServeCalls(const std::vector<std::string>&) {
  ThisProcess process;
  while (const auto message = ReceiveMessage(STDIN_FILENO)) {
    const RemoteCall call = CallFromWire(*message);
    SendMessage(STDOUT_FILENO, ToWire(process.Call(call.operation, call.block, call.in)));
  }
  return 0;
}

int ServeUnprivileged(const std::vector<std::string>& arguments) {
  return DropPrivileges() ? ServeCalls(arguments) : 1;
}

}  // namespace btrieve::test
