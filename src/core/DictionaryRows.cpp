#include "core/DictionaryRows.h"

#include <algorithm>
#include <span>

#include "core/DictionaryLookup.h"
#include "fields/LittleEndian.h"
#include "platform/LexbaseCalls.h"

namespace qrn {
namespace {

constexpr int32_t kSegmentFlagDropped = 32;  // says that the segment is named, which nobody asks

template <size_t Size>
class RowBytes {
 public:
  void* Data() { return bytes_; }

  int32_t Short(size_t at) const { return LoadLittle<int16_t>(From(at)); }
  uint8_t Byte(size_t at) const { return bytes_[at]; }

  // A fixed-width name, its trailing blanks cut; `out` has one character more than the name.
  template <size_t OutSize>
  void Name(size_t at, char (&out)[OutSize]) const {
    std::copy_n(From(at).begin(), OutSize - 1, out);
    out[OutSize - 1] = '\0';
    DbTrimName(out, OutSize - 1);
  }

 private:
  std::span<const uint8_t> From(size_t at) const { return std::span(bytes_).subspan(at); }

  uint8_t bytes_[Size] = {};
};

}  // namespace

int32_t ReadFileRow(FileRow& row) noexcept {
  RowBytes<kFileRowSize> bytes;
  const int32_t code = DDFReadFile(bytes.Data());
  if (code != 0) return code;
  row.fileId = bytes.Short(0);
  bytes.Name(2, row.name);
  bytes.Name(22, row.location);
  row.flags = bytes.Byte(86);
  return 0;
}

int32_t ReadFieldRow(FieldRow& row) noexcept {
  RowBytes<kFieldRowSize> bytes;
  const int32_t code = DDFReadField(bytes.Data());
  if (code != 0) return code;
  row.fieldId = bytes.Short(0);
  row.fileId = bytes.Short(2);
  bytes.Name(4, row.name);
  row.type = bytes.Byte(24);
  row.offset = bytes.Short(25);
  row.size = bytes.Short(27);
  row.decimals = bytes.Byte(29);
  row.flags = static_cast<uint16_t>(bytes.Short(30));
  return 0;
}

int32_t ReadIndexRow(IndexRow& row) noexcept {
  RowBytes<kIndexRowSize> bytes;
  const int32_t code = DDFReadIndex(bytes.Data());
  if (code != 0) return code;
  row.fileId = bytes.Short(0);
  row.fieldId = bytes.Short(2);
  row.part = bytes.Short(6);
  row.flags = bytes.Short(8) & ~kSegmentFlagDropped;
  return 0;
}

DictionaryReading::~DictionaryReading() {
  if (open_) DDFClose();
}

int32_t DictionaryReading::Open(const char* directory) noexcept {
  const int32_t code = DDFOpen(directory, 0);
  open_ = code == 0;
  return code;
}

int32_t DictionaryReading::Close() noexcept {
  open_ = false;
  return DDFClose();
}

}  // namespace qrn
