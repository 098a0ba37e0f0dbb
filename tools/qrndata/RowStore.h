// Where the rows of an import go: taken in one by one, stored many at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/RecordImage.h"

namespace qrndata {

// Why a row was not taken.
struct Refusal {
  std::string problem;              // UTF-8; empty: the row was taken
  std::optional<size_t> fieldSlot;  // the field at fault, where it is one

  explicit operator bool() const noexcept { return !problem.empty(); }
};

// How far storing came: so many rows of the queue's front are stored, and the one behind them was
// refused, or kept anything from being stored.
struct Outcome {
  size_t stored = 0;
  Refusal refusal;
  std::optional<Failure> failure;
};

class RowStore {
 public:
  virtual ~RowStore() = default;

  // How the data file differs from the table, where it can be written all the same.
  virtual const FileMatch& Match() const noexcept = 0;

  // Checks one row and queues it: code page 932, one value a field, nothing for null (an empty
  // value where the field cannot be null). A row that is refused is not queued.
  virtual Refusal Add(FieldValues& values) = 0;
  // Whether the queue holds as much as is stored at once.
  virtual bool IsFull() const noexcept = 0;

  // Stores the queue up to a refused row, which leaves the queue, too. To be called until a call
  // comes to neither a refusal nor a failure: then the queue is empty.
  virtual Outcome Store() = 0;
  // As Store, for the last rows: what it says to be stored is on stable storage.
  virtual Outcome StoreLast() { return Store(); }

  // Nothing is stored any more. Throws Failure (kSystem) when what was is not known to be on stable
  // storage.
  virtual void Close() = 0;

  // Rows that are there whatever comes; of these, the ones whose record was there before.
  uint64_t Stored() const noexcept { return stored_; }
  uint64_t Changed() const noexcept { return changed_; }

 protected:
  uint64_t stored_ = 0, changed_ = 0;
};

}  // namespace qrndata
