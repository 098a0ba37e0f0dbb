#include "extended/ExExchange.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "extended/ExMemoryFailure.h"
#include "extended/ExReply.h"
#include "platform/BtrCall.h"

namespace qrn {

std::optional<ExExchange> ExExchange::Make(ExRequest request) {
  const uint64_t size = request.BufferSize();
  void* buffer = size <= std::numeric_limits<uint32_t>::max() ? AllocateZeroed(size) : nullptr;
  if (buffer == nullptr) {
    ReportExMemoryFailure();
    return std::nullopt;
  }
  return ExExchange(std::move(request), static_cast<uint8_t*>(buffer));
}

Status ExExchange::Call(uint16_t operation, DbTableInfo& table, const ExKey& key) {
  const std::span<uint8_t> buffer(buffer_.get(), BufferSize());
  request_.LayInto(buffer);
  uint32_t length = BufferSize();
  const Status status =
      BtrCall(operation, table.PosBlock, buffer.data(), &length, key.bytes, key.length, key.number);
  const bool replied = BringsRecords(status) && !request_.StandsIn(buffer);
  replySize_ = replied ? std::min<size_t>(length, buffer.size()) : 0;
  return status;
}

}  // namespace qrn
