// The request of an extended operation, laid out as the record manager reads it (little-endian):
//
//   0     u16  total length of the request
//   2     2    signature: "UC" begins with the current record, "EG" after it
//   4     u16  reject count: records that one call may examine and reject
//   6     u16  number of terms
//   8     F    filter terms (extended/SearchCond.h)
//   8+F   u16  records wanted in one call
//   10+F  u16  number of fields
//   12+F  4    for each field: u16 length, u16 offset
//
// The reply comes back in the same buffer, so the request is kept apart and laid in afresh before
// every call.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "extended/FieldList.h"
#include "extended/SearchCond.h"

namespace qrn {

// The first 8 bytes of a request.
struct ExRequestHeader {
  uint16_t TotalLength;
  char Signature[2];
  uint16_t RejectCount;
  uint16_t TermCount;
};
static_assert(sizeof(ExRequestHeader) == 8);

inline constexpr char kBeginWithCurrent[] = "UC";
inline constexpr char kBeginAfterCurrent[] = "EG";

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
  ExRequestHeader header_;
  std::vector<uint8_t> body_;  // everything behind the header
  uint64_t replySize_;
};

}  // namespace qrn
