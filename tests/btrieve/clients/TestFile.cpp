#include "clients/TestFile.h"

#include <gtest/gtest.h>

namespace btrieve::test {

void TestFile::Make(const Bytes& createBlock) {
  ASSERT_EQ(Create(createBlock), 0);
  ASSERT_EQ(Open(), 0);
}

Status TestFile::Create(const Bytes& block, int keyNumber) {
  return Call(kCreate, {.data = block, .key = PathKey(Path()), .keyNumber = keyNumber}, 31).status;
}

Status TestFile::Open(int mode, int block) {
  return Call(kOpen, {.key = PathKey(Path()), .keyNumber = mode}, block).status;
}

std::string TestFile::Walk(int key, size_t room) {
  std::string text;
  CallOut out = Call(kGetFirst, {.room = room, .keyNumber = key});
  for (; out.status == 0; out = Call(kGetNext, {.room = room, .keyNumber = key})) {
    text += (text.empty() ? "" : " ") + ToHex(out.Returned());
  }
  return out.status == kEndOfFile ? text : text + " #" + std::to_string(out.status);
}

std::string TestFile::Counts() {
  const CallOut stat = Call(kStat, {.room = 4096, .keyNumber = -1});
  if (stat.status != 0) return "#" + std::to_string(stat.status);
  std::string text = std::to_string(NumberAt<uint32_t>(stat.data, 6)) + " ";
  const uint8_t keys = stat.data[4];
  size_t at = 16;
  for (int key = 0; key < keys; ++key, at += 16) {
    text += (key ? "," : "") + std::to_string(NumberAt<uint32_t>(stat.data, at + 6));
    while (NumberAt<uint16_t>(stat.data, at + 4) & 0x10) at += 16;
  }
  return text;
}

}  // namespace btrieve::test
