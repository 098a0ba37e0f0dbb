#include "ModelMakeUp.h"

namespace btrieve::test {
namespace {

struct TypeChoice {
  uint8_t type;
  uint8_t lengths[4];
  bool text;
};

constexpr TypeChoice kTypes[] = {
    {0, {1, 3, 3, 6}, true},    {1, {1, 2, 3, 8}, false},  {1, {4, 4, 4, 4}, false},
    {2, {4, 8, 4, 8}, false},   {3, {4, 4, 4, 4}, false},  {4, {4, 4, 4, 4}, false},
    {5, {1, 2, 4, 9}, false},   {6, {3, 3, 5, 5}, false},  {7, {1, 2, 1, 2}, false},
    {8, {1, 2, 3, 8}, false},   {9, {4, 8, 4, 8}, false},  {10, {2, 4, 4, 6}, true},
    {11, {2, 4, 4, 6}, true},   {14, {1, 2, 4, 6}, false}, {17, {2, 3, 4, 8}, false},
    {18, {1, 2, 3, 8}, false},  {19, {8, 8, 8, 8}, false}, {20, {8, 8, 8, 8}, false},
    {25, {2, 4, 6, 6}, false},  {26, {2, 4, 6, 6}, false}, {27, {16, 16, 16, 16}, false},
    {255, {1, 1, 1, 1}, false},
};

constexpr uint8_t kBytes[] = {0x00, 0x01, 'A', 'a', 'B', '0', '1',  ' ',  0x0C,
                              0x0D, '{',  '}', 'J', 'q', '-', 0x7F, 0x80, 0xFF};
constexpr uint16_t kNullFlags[] = {0, 0, 0, 0x08, 0x200};
constexpr uint16_t kCounterSize = 4;

Seg RandomSegment(Choices& choices, uint16_t shared, uint16_t from) {
  const TypeChoice& type = choices.Of(std::span<const TypeChoice>(kTypes));
  Seg segment;
  segment.type = type.type;
  segment.length = type.lengths[choices.Pick(4)];
  segment.flags = shared | 0x100;
  if (choices.Chance(3)) segment.flags |= kDescending;
  if (type.text && choices.Chance(3)) segment.flags |= kCaseInsensitive;
  if (type.text && choices.Chance(4)) {
    segment.flags = (segment.flags & ~kCaseInsensitive) | kSequence;
  }
  if (choices.Chance(12))
    segment.flags = (segment.flags & ~(kExtendedType | kSequence)) | kOldBinary;
  segment.nullValue = choices.Chance(2) ? 0 : ' ';
  segment.position = static_cast<uint16_t>(
      1 + from + choices.Pick(static_cast<uint32_t>(kModelRecord - segment.length - from + 1)));
  return segment;
}

void AddKey(Choices& choices, uint16_t from, std::vector<Seg>& segments) {
  uint16_t shared = choices.Of(std::span<const uint16_t>(kNullFlags));
  if (!choices.Chance(3)) shared |= kDuplicates;
  if (!choices.Chance(4)) shared |= kModifiable;
  if ((shared & kDuplicates) && choices.Chance(3)) shared |= kRepeating;
  const uint32_t count = choices.Chance(2) ? 1 : 1 + choices.Pick(3);
  for (uint32_t i = 0; i < count; ++i) {
    segments.push_back(RandomSegment(choices, shared, from));
    if (i + 1 < count) segments.back().flags |= kAnotherSegment;
  }
}

}  // namespace

uint8_t RandomByte(Choices& choices) { return choices.Of(std::span<const uint8_t>(kBytes)); }

MakeUp RandomMakeUp(Choices& choices) {
  std::vector<Seg> segments;
  const bool counter = choices.Chance(4);
  if (counter) segments.push_back({.flags = 0x102, .type = 15});
  const auto from = static_cast<uint16_t>(counter ? kCounterSize : 0);
  const uint32_t keys = 1 + choices.Pick(4);
  for (uint32_t i = 0; i < keys; ++i) AddKey(choices, from, segments);
  const Head head{.recordLength = kModelRecord,
                  .flags = static_cast<uint16_t>(choices.Chance(3) ? kVariableRecords : 0)};
  MakeUp makeUp;
  makeUp.createBlock = CreateBlock(head, segments, ReversingSequence());
  for (const Seg& s : segments) {
    makeUp.text += "{.position = " + std::to_string(s.position) +
                   ", .length = " + std::to_string(s.length) +
                   ", .flags = " + std::to_string(s.flags) + ", .type = " + std::to_string(s.type) +
                   ", .nullValue = " + std::to_string(s.nullValue) + "} ";
  }
  if (ParseCreateBlock(makeUp.createBlock, makeUp.spec) != kOk) makeUp.text += "refused";
  return makeUp;
}

// One byte all over, and a few others: so that whole keys are often equal, and often null.
Bytes RandomRecord(Choices& choices, const FileSpec& spec) {
  const size_t size = spec.IsVariable() ? kModelRecord + choices.Pick(40) : kModelRecord;
  Bytes record(size, RandomByte(choices));
  for (uint32_t changes = choices.Pick(6); changes > 0; --changes) {
    record[choices.Pick(static_cast<uint32_t>(size))] = RandomByte(choices);
  }
  if (spec.keys[0].IsAutoIncrement()) {
    const auto number = static_cast<int32_t>(choices.Pick(30)) - 5;
    std::memcpy(record.data(), &number, sizeof number);
  }
  return record;
}

}  // namespace btrieve::test
