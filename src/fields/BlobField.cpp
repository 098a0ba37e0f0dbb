#include "fields/BlobField.h"

#include "fields/LittleEndian.h"
#include "fields/Sinks.h"

namespace qrn {

BlobDescriptor LoadBlobDescriptor(std::span<const uint8_t> bytes) noexcept {
  return std::bit_cast<BlobDescriptor>(LoadLittle<uint64_t>(bytes));
}

void ReadBlob(const FieldSource& field, std::span<char> outText) {
  const BlobDescriptor value = LoadBlobDescriptor(field.value);
  TextSink text(outText);
  if (value.offset < 0 || static_cast<size_t>(value.offset) > field.record.size()) return;
  const auto data =
      detail::FirstBytes(field.record.subspan(static_cast<size_t>(value.offset)), value.length);
  text.Put({reinterpret_cast<const char*>(data.data()), data.size()});
}

}  // namespace qrn
