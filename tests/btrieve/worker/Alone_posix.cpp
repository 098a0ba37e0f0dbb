#include "../kit/Calls.h"
#include "Alone.h"
#include "Lines.h"
#include "SelfKill.h"
#include "btrieve/system/HostFile.h"

namespace btrieve::test {
namespace {

bool TellSync(const std::string& path) {
  if (path.ends_with("-wal")) Say('S');
  return true;
}

}  // namespace

int ReadForEver(const std::vector<std::string>& arguments) {
  ThisProcess process;
  Status status = process.Call(kOpen, 0, {.key = PathKey(arguments.at(0))}).status;
  int operation = kGetFirst;
  for (bool told = false; status == kOk || status == kEndOfFile;) {
    status = process.Call(operation, 0, {.room = 64}).status;
    operation = status == kOk ? kGetNext : kGetFirst;
    if (!told) Say('.');
    told = true;
  }
  Say('E');
  return 1;
}

// The client is never destroyed: that would close the file.
int InsertAndEnd(const std::vector<std::string>& arguments) {
  static auto* const process = new ThisProcess;
  process->Call(kOpen, 0, {.key = PathKey(arguments.at(0))});
  SetSyncHook(TellSync);
  const CallIn in{.data = Hex(arguments.at(1))};
  Say(process->Call(kInsert, 0, in).status == kOk ? '.' : 'E');
  return 0;
}

int InsertAndHalt(const std::vector<std::string>& arguments) {
  ThisProcess process;
  process.Call(kOpen, 0, {.key = PathKey(arguments.at(0))});
  HaltAt(static_cast<uint32_t>(std::stoul(arguments.at(1))));
  const CallIn in{.data = Hex(arguments.at(2))};
  Say(process.Call(kInsert, 0, in).status == kOk ? '.' : 'E');
  HaltAt(0);
  return 0;
}

}  // namespace btrieve::test
