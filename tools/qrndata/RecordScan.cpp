#include "tools/qrndata/RecordScan.h"

#include <algorithm>

#include "btrieve.h"
#include "fields/LittleEndian.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

constexpr uint16_t kRecordsABatch = 500;
constexpr uint16_t kWholeRecord = 65535;

#pragma pack(push, 1)
// Begins after the current record, takes every record whole.
struct BatchRequest {
  BtrExtendedHead head = {sizeof(BatchRequest), {'E', 'G'}, 0, 0};
  BtrExtraction extraction = {kRecordsABatch, 1};
  BtrExtractField whole = {kWholeRecord, 0};
};
#pragma pack(pop)

Bytes RequestBytes() {
  Bytes request(sizeof(BatchRequest));
  qrn::StoreLittle(request, BatchRequest());
  return request;
}

}  // namespace

bool RecordScan::Next() {
  if (hasBegun_ && (TakeFromBatch() || (FetchBatch() && TakeFromBatch()))) return true;
  return FetchOne();
}

bool RecordScan::TakeFromBatch() {
  if (batchLeft_ == 0) return false;
  const auto rest = std::span<const uint8_t>(batch_).subspan(batchOffset_);
  const auto head = qrn::LoadLittle<BtrReplyHead>(rest);
  if (rest.size() < sizeof head + head.length) {
    throw Failure(kSystem, Say(Message::ReplyCutShort, file_.Name()));
  }
  position_ = head.position;
  record_ = rest.subspan(sizeof head, head.length);
  batchOffset_ += sizeof head + head.length;
  --batchLeft_;
  return true;
}

// A batch may be empty: at the end, or before a record too long for one.
bool RecordScan::FetchBatch() {
  if (hasEnded_) return false;
  batch_ = RequestBytes();
  const Status status = file_.ReadExtended(key_ != kNoKey, key_, batch_);
  hasEnded_ = status == btrieve::kEndOfFile;
  const bool isReply = status == btrieve::kOk || hasEnded_ ||
                       status == btrieve::kDataBufferLength || status == btrieve::kRejectCount;
  if (!isReply || batch_.size() < BtrReplyCountSize)
    Require(status, Say(Message::ReadingRecords, file_.Name()));
  batchLeft_ = qrn::LoadLittle<uint16_t>(batch_);
  batchOffset_ = std::min<size_t>(batch_.size(), BtrReplyCountSize);
  return batchLeft_ != 0;
}

bool RecordScan::FetchOne() {
  if (hasEnded_) return false;
  const bool isFirst = !hasBegun_;
  hasBegun_ = true;
  Status status = 0;
  if (key_ == kNoKey) {
    status = isFirst ? file_.StepFirst(single_) : file_.StepNext(single_);
  } else {
    status = isFirst ? file_.GetFirst(key_, single_) : file_.GetNext(key_, single_);
  }
  hasEnded_ = status == btrieve::kEndOfFile;
  if (hasEnded_) return false;
  if (status != btrieve::kOk) Require(status, Say(Message::ReadingRecords, file_.Name()));
  Require(file_.Position(position_), Say(Message::ReadingPosition));
  record_ = single_;
  return true;
}

}  // namespace qrndata
