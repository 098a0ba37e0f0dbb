// A whole file read in every way there is, which must all give the same.
#pragma once

#include <set>

#include "Calls.h"

namespace btrieve::test {

// The records that a first and a next operation reach, as hex; a last status other than 9 stands
// among them as "status 2".
inline std::multiset<std::string> Reached(Client& client, int block, int first, int next, int key,
                                          size_t room) {
  std::multiset<std::string> records;
  const CallIn in{.room = room, .keyNumber = key};
  CallOut out = client.Call(first, block, in);
  for (; out.status == 0; out = client.Call(next, block, in)) records.insert(ToHex(out.Returned()));
  if (out.status != 9) records.insert("status " + std::to_string(out.status));
  return records;
}

// All records, by place; along each of the keys 0..keys-1, and by Stat's count, there must be the
// same. The result is empty, or says what differs.
inline std::string ReadEveryWay(Client& client, int block, int keys, size_t room,
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
