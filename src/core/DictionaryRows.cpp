#include "core/DictionaryRows.h"

#include <algorithm>

#include "core/DictionaryLookup.h"
#include "platform/LexbaseCalls.h"

namespace qrn {
namespace {

// What a read writes, in the room that it may ask for.
template <class Row, size_t Reserve>
union Reserved {
  uint8_t room[Reserve] = {};
  Row row;
};

// A fixed-width name, its trailing blanks cut.
template <size_t Width>
void CopyName(const char (&name)[Width], char (&out)[Width + 1]) {
  std::copy_n(name, Width, out);
  out[Width] = '\0';
  DbTrimName(out, Width);
}

}  // namespace

int32_t ReadFileRow(FileRow& row) noexcept {
  Reserved<LexbaseFileRow, LexbaseFileRowReserve> read;
  const int32_t code = DDFReadFile(read.room);
  if (code != 0) return code;
  row.fileId = read.row.fileId;
  CopyName(read.row.name, row.name);
  CopyName(read.row.location, row.location);
  row.flags = read.row.flags;
  return 0;
}

int32_t ReadFieldRow(FieldRow& row) noexcept {
  Reserved<LexbaseFieldRow, LexbaseFieldRowReserve> read;
  const int32_t code = DDFReadField(read.room);
  if (code != 0) return code;
  row.fieldId = read.row.fieldId;
  row.fileId = read.row.fileId;
  CopyName(read.row.name, row.name);
  row.type = read.row.type;
  row.offset = read.row.offset;
  row.size = read.row.size;
  row.decimals = read.row.decimals;
  row.flags = read.row.flags;
  return 0;
}

int32_t ReadIndexRow(IndexRow& row) noexcept {
  Reserved<LexbaseIndexRow, LexbaseIndexRowReserve> read;
  const int32_t code = DDFReadIndex(read.room);
  if (code != 0) return code;
  row.fileId = read.row.fileId;
  row.fieldId = read.row.fieldId;
  row.keyNumber = read.row.keyNumber;
  row.part = read.row.part;
  row.flags = read.row.flags;
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
