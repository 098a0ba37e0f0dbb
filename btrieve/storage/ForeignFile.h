// A data file that another record manager has made. Its records and keys stand elsewhere than in
// SQLite's trees, and nobody writes them: each order is a row of records numbered from 0.
//
// What is damaged throws Failure (2). Views in a hit stay valid until the next read of the file.
#pragma once

#include <cstdint>

#include "btrieve/keys/Entry.h"
#include "btrieve/keys/KeySpec.h"

namespace btrieve {

struct Hit;

class ForeignFile {
 public:
  ForeignFile() = default;
  virtual ~ForeignFile() = default;
  ForeignFile(const ForeignFile&) = delete;
  ForeignFile& operator=(const ForeignFile&) = delete;

  virtual const FileSpec& Spec() const noexcept = 0;
  // It has an owner name in a form that no name can be compared with.
  virtual bool IsOwned() const noexcept = 0;
  virtual uint32_t DistinctValues(int slot) const noexcept = 0;

  // `slot` names a key by its place in FileSpec::keys, or the physical order.
  virtual uint32_t Total(int slot) const noexcept = 0;
  // How many stand below the bound.
  virtual uint32_t RankOf(int slot, ByteView bound) = 0;
  // The record at `rank`, which is below the total, with its entry.
  virtual void Read(int slot, uint32_t rank, Hit& hit) = 0;
  // The record at a position, with the numbers of its entries; false when there is none.
  virtual bool Fetch(uint32_t position, Hit& hit) = 0;
};

}  // namespace btrieve
