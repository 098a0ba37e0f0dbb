#include "extended/ExReply.h"

#include <algorithm>
#include <iterator>

#include "fields/LittleEndian.h"

namespace qrn {
namespace {

constexpr Status kStatusesWithRecords[] = {
    BtrStatusOk,          BtrStatusEndOfFile,   BtrStatusDataBufferLength,
    BtrStatusRejectCount, BtrStatusFilterLimit, BtrStatusFieldOffset};

}  // namespace

bool BringsRecords(Status status) {
  return std::find(std::begin(kStatusesWithRecords), std::end(kStatusesWithRecords), status) !=
         std::end(kStatusesWithRecords);
}

std::optional<ExReplyRecord> ReadExRecord(std::span<const uint8_t> bytes) {
  if (bytes.size() < kExRecordHead) return std::nullopt;
  const auto head = LoadLittle<BtrReplyHead>(bytes);
  if (bytes.size() - kExRecordHead < head.length) return std::nullopt;
  return ExReplyRecord{head.position, bytes.subspan(kExRecordHead, head.length)};
}

ExReplyReader::ExReplyReader(std::span<const uint8_t> reply)
    : rest_(reply.subspan(std::min(reply.size(), kExReplyCount))),
      remaining_(LoadLittle<uint16_t>(reply)) {}

std::optional<ExReplyRecord> ExReplyReader::Next() {
  if (remaining_ == 0) return std::nullopt;
  const auto record = ReadExRecord(rest_);
  if (!record) return std::nullopt;
  rest_ = rest_.subspan(kExRecordHead + record->Data.size());
  --remaining_;
  return record;
}

}  // namespace qrn
