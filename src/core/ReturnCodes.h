// The system's own codes. The flat interface returns them, the database control's methods give them
// through their last argument; Btrieve's own statuses are positive and pass through unchanged.
#pragma once

#include "core/DbTypes.h"

namespace qrn {

enum ReturnCode : Status {
  kSuccess = 0,

  // No memory, a load that failed, a key that could not be built, a location or mode text of a
  // wrong length, a library that is not there; from a read of the current position, any failure.
  kFailure = -1,

  // Opening, creating and renaming want a closed table.
  kAlreadyOpen = -2,

  // The same code from a button's operation: a handler of `SetData` refused it.
  kRefused = -2,

  // Every operation on records; the table and what it holds stay as they are.
  kNotOpen = -3,

  // Nothing has that name. For an index also: no key buffer could be made.
  kNoTable = -4,
  kNoField = -5,
  kNoIndex = -6,
  kNoControl = -11,  // no database control

  // Extended requests: the operation, the search condition or the field list does not do, or there
  // is no memory for request and reply.
  kBadExOperation = -7,
  kBadCondition = -8,
  kBadFieldList = -9,
  kExNoMemory = -99,

  // Neither 0 nor one of the hundreds that the operation knows; the bias in force stays.
  kBadLockBias = -10,

  // There is nothing to work on: no current dictionary or no attached control (flat functions), a
  // control without a dictionary, an empty directory to load one from, a directory that does not
  // exist and so has no short path (for a create only an empty one).
  kNoDictionary = -12,
  kControlHasNoDictionary = -20,
  kNoDirectory = -21,
  kNoShortPath = -16,

  // Ids and positions out of range.
  kBadFieldId = -13,
  kBadIndexId = -14,
  kBadTableId = -15,

  // Whole records in arrays of strings: another VARIANT, not one dimension, a lower bound above the
  // field count.
  kNotStringArray = -17,
  kStringArrayRank = -18,
  kArrayBound = -19,

  // Images in arrays of bytes: no access to the data, another VARIANT, not one dimension.
  kArrayUnreachable = -22,
  kNotByteArray = -23,
  kByteArrayRank = -24,
};

// Btrieve statuses that the system reacts to by number.
inline constexpr Status kDataBufferTooShort = 22;

}  // namespace qrn
