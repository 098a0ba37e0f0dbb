// The request of an extended operation, laid out as the record manager reads it: BtrExtendedHead
// and what follows it (btrieve.h).
//
// The reply comes back in the same buffer, so the request is kept apart and laid in afresh before
// every call.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "btrieve.h"
#include "extended/FieldList.h"
#include "extended/SearchCond.h"

namespace qrn {

inline constexpr char kBeginWithCurrent[] = BTR_WITH_CURRENT;
inline constexpr char kBeginAfterCurrent[] = BTR_AFTER_CURRENT;

class ExRequest {
 public:
  // A request that its length word cannot tell says 65,535 there, which the record manager
  // refuses.
  ExRequest(const char* signature, uint16_t rejectCount, const SearchCondition& condition,
            uint16_t recordCount, const FieldList& fields);

  // Two characters, unchecked.
  void SetSignature(const char* signature);

  // Bytes of the buffer that holds the request and, later, the reply: whichever is larger, the
  // reply being (data of a record + 6) * records wanted + 2.
  uint64_t BufferSize() const;

  // `buffer` holds at least the request.
  void LayInto(std::span<uint8_t> buffer) const;

  // True when the buffer still begins with the request: the record manager wrote no reply.
  bool StandsIn(std::span<const uint8_t> buffer) const;

 private:
  BtrExtendedHead header_;
  std::vector<uint8_t> body_;  // everything behind the header
  uint64_t replySize_;
};

}  // namespace qrn
