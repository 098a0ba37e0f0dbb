#include "WholeFile.h"

namespace btrieve::test {

std::multiset<std::string> Reached(Client& client, int block, int first, int next, int key,
                                   size_t room) {
  std::multiset<std::string> records;
  const CallIn in{.room = room, .keyNumber = key};
  CallOut out = client.Call(first, block, in);
  for (; out.status == 0; out = client.Call(next, block, in)) records.insert(ToHex(out.Returned()));
  if (out.status != 9) records.insert("status " + std::to_string(out.status));
  return records;
}

std::string ReadEveryWay(Client& client, int block, int keys, size_t room,
                         std::multiset<std::string>& records) {
  records = Reached(client, block, kStepFirst, kStepNext, 0, room);
  for (int key = 0; key < keys; ++key) {
    if (Reached(client, block, kGetFirst, kGetNext, key, room) != records) {
      return "file " + std::to_string(block) + " key " + std::to_string(key) + " differs";
    }
  }
  const CallOut stat = client.Call(kStat, block, {.room = 500});
  if (stat.status != 0 || NumberAt<uint32_t>(stat.data, 6) != records.size()) {
    return "file " + std::to_string(block) + ": the count differs";
  }
  return "";
}

}  // namespace btrieve::test
