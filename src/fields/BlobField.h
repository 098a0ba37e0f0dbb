// A Blob's eight bytes in the record: the value's length, then its offset from the record's start
// (32 bits each, little-endian). The value itself stands behind the fixed part.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

inline constexpr size_t kBlobDescriptorSize = 8;

struct BlobDescriptor {
  int32_t length;
  int32_t offset;
};

// Bytes missing from the span count as zero.
BlobDescriptor LoadBlobDescriptor(std::span<const uint8_t> bytes) noexcept;

// Copies what of the value lies inside the record; a descriptor that points outside gives an empty
// text.
void ReadBlob(const FieldSource& field, std::span<char> outText);

}  // namespace qrn
