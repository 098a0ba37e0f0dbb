// Writing the reply of Stat.
#include "btrieve/operations/StatReply.h"

#include <cstring>

#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

// Appends specifications of 16 bytes while they fit.
class SpecificationWriter {
 public:
  explicit SpecificationWriter(std::span<uint8_t> room) noexcept : room_(room) {}

  bool Add(const uint8_t* bytes, size_t size) noexcept {
    if (full_ || size > room_.size() - used_) {
      full_ = true;
      return false;
    }
    std::memcpy(room_.data() + used_, bytes, size);
    used_ += size;
    return true;
  }

  bool IsFull() const noexcept { return full_; }
  uint32_t Used() const noexcept { return static_cast<uint32_t>(used_); }

 private:
  std::span<uint8_t> room_;
  size_t used_ = 0;
  bool full_ = false;
};

void AddHead(SpecificationWriter& writer, const FileSpec& file, uint32_t records,
             bool details) noexcept {
  uint8_t head[kSpecificationSize] = {};
  StoreValue<uint16_t>(head, file.recordLength);
  StoreValue<uint16_t>(head + 2, file.pageSize);
  head[4] = static_cast<uint8_t>(file.keys.size());
  StoreValue<uint32_t>(head + 6, records);
  StoreValue<uint16_t>(head + 10, file.flags);
  if (details) {
    head[5] = file.version;
    head[12] = file.reservedPointers;
  }
  writer.Add(head, sizeof head);
}

void AddSegment(SpecificationWriter& writer, const KeySegment& segment, uint8_t keyNumber,
                uint32_t uniqueValues) noexcept {
  uint8_t bytes[kSpecificationSize] = {};
  StoreValue<uint16_t>(bytes, static_cast<uint16_t>(segment.offset + 1));
  StoreValue<uint16_t>(bytes + 2, segment.length);
  StoreValue<uint16_t>(bytes + 4, segment.flags);
  StoreValue<uint32_t>(bytes + 6, uniqueValues);
  bytes[10] = segment.givenType;
  bytes[11] = segment.nullValue;
  bytes[14] = keyNumber;
  bytes[15] = segment.givenSequence;
  writer.Add(bytes, sizeof bytes);
}

}  // namespace

Status WriteStat(const FileSpec& file, const StatCounts& counts, int8_t keyNumber,
                 std::span<uint8_t> room, uint32_t& length) noexcept {
  SpecificationWriter writer(room);
  AddHead(writer, file, counts.records, keyNumber == -1);
  for (size_t i = 0; i < file.keys.size(); ++i) {
    const uint32_t unique = i < counts.uniqueValues.size() ? counts.uniqueValues[i] : 0;
    for (const KeySegment& segment : file.keys[i].segments) {
      AddSegment(writer, segment, file.keys[i].number, unique);
    }
  }
  const Status status = writer.IsFull() ? kDataBufferLength : kOk;
  for (const CollatingSequence& sequence : file.sequences) {
    writer.Add(sequence.block.data(), sequence.block.size());
  }
  length = writer.Used();
  return status;
}

}  // namespace btrieve
