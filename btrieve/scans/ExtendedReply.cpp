// Writing the reply of an extended read; splitting the data of an Insert Extended.
#include <algorithm>

#include "btrieve/scans/ExtendedRequest.h"
#include "btrieve/system/ByteReader.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

constexpr size_t kRecordHead = 6;            // u16 length, u32 position
constexpr size_t kLongestPart = UINT16_MAX;  // of a record, that its length can tell

}  // namespace

ReplyWriter::ReplyWriter(std::span<uint8_t> out, std::span<const ExtractField> fields) noexcept
    : out_(out), fields_(fields) {}

Status ReplyWriter::Add(uint32_t position, const uint8_t* record, size_t length) noexcept {
  size_t extracted = 0;
  for (size_t i = 0; i < fields_.size(); ++i) {
    const ExtractField& field = fields_[i];
    if (field.offset >= length) return kFieldOffset;
    const bool cut = field.offset + size_t{field.length} > length;
    if (cut && i + 1 < fields_.size()) return kFieldOffset;
    extracted += cut ? length - field.offset : field.length;
  }
  if (extracted > kLongestPart || kRecordHead + extracted > out_.size() - used_) {
    return kDataBufferLength;
  }
  uint8_t* at = out_.data() + used_;
  StoreValue<uint16_t>(at, static_cast<uint16_t>(extracted));
  StoreValue<uint32_t>(at + 2, position);
  at += kRecordHead;
  for (const ExtractField& field : fields_) {
    const size_t bytes = std::min<size_t>(field.length, length - field.offset);
    std::memcpy(at, record + field.offset, bytes);
    at += bytes;
  }
  used_ += kRecordHead + extracted;
  ++count_;
  return kOk;
}

uint32_t ReplyWriter::Finish() noexcept {
  StoreValue<uint16_t>(out_.data(), count_);
  return static_cast<uint32_t>(used_);
}

Status ParseInsertExtended(std::span<const uint8_t> data,
                           std::vector<std::span<const uint8_t>>& images) {
  images.clear();
  ByteReader reader(data);
  const uint16_t count = reader.Take<uint16_t>();
  for (size_t i = 0; i < count && !reader.Failed(); ++i) {
    const uint16_t length = reader.Take<uint16_t>();
    images.push_back(reader.TakeBytes(length));
  }
  const bool whole = !reader.Failed() && reader.Rest().empty();
  return whole && count > 0 ? kOk : kInsertDescriptor;
}

}  // namespace btrieve
