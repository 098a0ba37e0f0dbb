// Every record of a file, in physical order or along a key, read in batches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/qrndata/BtrFile.h"

namespace qrndata {

class RecordScan {
 public:
  // `key` is a key number or kNoKey for physical order. The file must outlive the scan, and nobody
  // else may move its place meanwhile.
  RecordScan(BtrFile& file, int8_t key) : file_(file), key_(key) {}

  // Goes to the next record; false behind the last one. Throws Failure on any other status.
  bool Next();

  // Of the record gone to; valid until the next call.
  std::span<const uint8_t> Record() const noexcept { return record_; }
  uint32_t Position() const noexcept { return position_; }

 private:
  bool TakeFromBatch();
  bool FetchBatch();
  bool FetchOne();

  BtrFile& file_;
  int8_t key_;
  bool hasBegun_ = false;
  bool hasEnded_ = false;
  Bytes single_;
  Bytes batch_;
  size_t batchOffset_ = 0;
  size_t batchLeft_ = 0;
  std::span<const uint8_t> record_;
  uint32_t position_ = 0;
};

}  // namespace qrndata
