// The rows of a file's records: what a read finds in one.
#pragma once

#include "btrieve/pages/BigEndian.h"
#include "btrieve/storage/RowReader.h"
#include "btrieve/storage/RowRules.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {

// A record found. The views are valid until the file's next read, or a write.
struct Hit {
  uint32_t position = 0;
  uint64_t version = 0;
  ByteView data;
  ByteView numbers;  // OrderNumbers::Stored
  ByteView entry;    // empty in physical order
};

// The columns of a record's row; the position is the tree's.
inline void TakeRecord(const FileSpec& spec, ByteView row, Hit& hit) {
  RowReader record(row);
  record.Skip();  // the position
  hit.version = static_cast<uint64_t>(record.TakeNumber());
  hit.numbers = record.TakeBytes();
  hit.data = record.TakeBytes();
  CheckRecord(spec, hit.data, hit.numbers);
}

// The same for row after row of one file. Most begin with the same bytes, which tell the lengths of
// all columns: those are read and checked once.
class RecordRows {
 public:
  void Forget() noexcept { size_ = SIZE_MAX; }

  void Take(const FileSpec& spec, ByteView row, Hit& hit) {
    const uint8_t* begin = row.data();
    if (row.size() != size_ || (LoadValue<uint64_t>(begin) & mask_) != head_) {
      TakeRecord(spec, row, hit);
      Learn(row, hit);
      return;
    }
    const uint8_t* version = begin + version_;
    hit.version = static_cast<uint64_t>(static_cast<int64_t>(Big64(version)) >> versionShift_);
    hit.numbers = {begin + numbers_, data_ - numbers_};
    hit.data = {begin + data_, size_ - data_};
  }

 private:
  // Rows that are short, or that hold more or less than records do, are read column by column.
  void Learn(ByteView row, const Hit& hit) noexcept {
    const size_t version = row[0];
    const auto numbers = static_cast<size_t>(hit.numbers.data() - row.data());
    const auto data = static_cast<size_t>(hit.data.data() - row.data());
    constexpr uint8_t kNull = 0;
    const bool fits = version <= sizeof head_ && row[1] == kNull &&
                      row.size() >= version + sizeof head_ && numbers > version &&
                      numbers <= version + sizeof head_ && data == numbers + hit.numbers.size() &&
                      row.size() == data + hit.data.size();
    if (!fits) return Forget();
    size_ = row.size();
    mask_ = UINT64_MAX >> (8 * (sizeof head_ - version));
    head_ = LoadValue<uint64_t>(row.data()) & mask_;
    version_ = static_cast<uint8_t>(version);
    versionShift_ = static_cast<uint8_t>(8 * (version + sizeof head_ - numbers));
    numbers_ = numbers;
    data_ = data;
  }

  size_t size_ = SIZE_MAX;  // of a whole row; the bytes of its head, as a number, are head_
  uint64_t head_ = 0;
  uint64_t mask_ = 0;
  size_t numbers_ = 0;
  size_t data_ = 0;
  uint8_t version_ = 0;
  uint8_t versionShift_ = 0;
};

}  // namespace btrieve
