#include "tools/qrndata/RecordScan.h"

namespace qrndata {

namespace {

constexpr uint16_t kRecordsABatch = 500;
constexpr uint16_t kWholeRecord = 65535;
constexpr size_t kEntryHead = 6;  // length, position

void Put16(Bytes& bytes, uint16_t value) {
  bytes.push_back(static_cast<uint8_t>(value));
  bytes.push_back(static_cast<uint8_t>(value >> 8));
}

// Begins after the current record, takes every record whole.
Bytes BatchRequest() {
  Bytes request;
  constexpr uint16_t kLength = 16, kNoRejectLimit = 0, kNoTerms = 0, kOneField = 1;
  Put16(request, kLength);
  request.push_back('E');
  request.push_back('G');
  for (const uint16_t word : {kNoRejectLimit, kNoTerms, kRecordsABatch, kOneField, kWholeRecord}) {
    Put16(request, word);
  }
  Put16(request, 0);
  return request;
}

size_t Word(const Bytes& bytes, size_t at) { return bytes[at] | bytes[at + 1] << 8; }

}  // namespace

bool RecordScan::Next() {
  if (hasBegun_ && (TakeFromBatch() || (FetchBatch() && TakeFromBatch()))) return true;
  return FetchOne();
}

bool RecordScan::TakeFromBatch() {
  if (batchLeft_ == 0) return false;
  const size_t length = batch_.size() >= batchOffset_ + kEntryHead ? Word(batch_, batchOffset_) : 0;
  if (batch_.size() < batchOffset_ + kEntryHead + length) {
    throw Failure(kSystem,
                  file_.Name() + ": the record manager's reply to an extended read is cut short");
  }
  position_ =
      static_cast<uint32_t>(Word(batch_, batchOffset_ + 2) | Word(batch_, batchOffset_ + 4) << 16);
  record_ = std::span(batch_).subspan(batchOffset_ + kEntryHead, length);
  batchOffset_ += kEntryHead + length;
  --batchLeft_;
  return true;
}

// A batch may be empty: at the end, or before a record too long for one.
bool RecordScan::FetchBatch() {
  if (hasEnded_) return false;
  batch_ = BatchRequest();
  const Status status = file_.ReadExtended(key_ != kNoKey, key_, batch_);
  hasEnded_ = status == btrieve::kEndOfFile;
  const bool isReply = status == btrieve::kOk || hasEnded_ ||
                       status == btrieve::kDataBufferLength || status == btrieve::kRejectCount;
  if (!isReply || batch_.size() < 2) Require(status, file_.Name() + ": reading the records");
  batchLeft_ = batch_.size() < 2 ? 0 : Word(batch_, 0);
  batchOffset_ = 2;
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
  if (status != btrieve::kOk) Require(status, file_.Name() + ": reading the records");
  Require(file_.Position(position_), "reading a record's position");
  record_ = single_;
  return true;
}

}  // namespace qrndata
