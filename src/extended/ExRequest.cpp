#include "extended/ExRequest.h"

#include <algorithm>
#include <cstring>

#include "extended/ExReply.h"
#include "extended/WordBytes.h"

namespace qrn {
namespace {

uint16_t LengthWord(size_t length) {
  return static_cast<uint16_t>(std::min<size_t>(length, 65535));
}

}  // namespace

ExRequest::ExRequest(const char* signature, uint16_t rejectCount, const SearchCondition& condition,
                     uint16_t recordCount, const FieldList& fields)
    : header_{0, {}, rejectCount, condition.TermCount},
      body_(condition.Terms),
      replySize_((uint64_t{fields.DataSum} + kExRecordHead) * recordCount + kExReplyCount) {
  SetSignature(signature);
  AppendWord(body_, recordCount);
  AppendWord(body_, LengthWord(fields.Fields.size()));
  body_.insert(body_.end(), fields.Extractor.begin(), fields.Extractor.end());
  header_.totalLength = LengthWord(sizeof header_ + body_.size());
}

void ExRequest::SetSignature(const char* signature) {
  std::memcpy(header_.signature, signature, sizeof header_.signature);
}

uint64_t ExRequest::BufferSize() const {
  return std::max<uint64_t>(sizeof header_ + body_.size(), replySize_);
}

void ExRequest::LayInto(std::span<uint8_t> buffer) const {
  std::memcpy(buffer.data(), &header_, sizeof header_);
  std::copy(body_.begin(), body_.end(), buffer.data() + sizeof header_);
}

bool ExRequest::StandsIn(std::span<const uint8_t> buffer) const {
  return buffer.size() >= sizeof header_ &&
         std::memcmp(buffer.data(), &header_, sizeof header_) == 0;
}

}  // namespace qrn
