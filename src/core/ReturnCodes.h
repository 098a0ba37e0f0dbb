// The system's own codes. The flat interface returns them, the database control's methods give them
// through their last argument; Btrieve's own statuses are positive and pass through unchanged.
#pragma once

#include "core/DbTypes.h"

namespace qrn {

enum ReturnCode : Status {
  kSuccess = 0,
  kFailure = -1,      // out of memory, a load, key, location, mode text or library that failed
  kAlreadyOpen = -2,  // or: the user stopped the operation
  kNotOpen = -3,
  kNoTable = -4,  // no table of that name
  kNoField = -5,  // no field of that name
  kNoIndex = -6,  // no index of that name, or no key buffer
  kBadExOperation = -7,
  kBadCondition = -8,
  kBadFieldList = -9,
  kBadLockBias = -10,
  kNoControl = -11,  // no database control of that name
  kNoDictionary = -12,
  kBadFieldId = -13,
  kBadIndexId = -14,
  kBadTableId = -15,
  kNoShortPath = -16,  // the dictionary's directory has no short path: it does not exist
  kNotStringArray = -17,
  kStringArrayRank = -18,
  kArrayBound = -19,  // the array's lower bound lies above the field count
  kControlHasNoDictionary = -20,
  kNoDirectory = -21,  // the directory is empty
  kArrayUnreachable = -22,
  kNotByteArray = -23,
  kByteArrayRank = -24,
  kExNoMemory = -99,
};

// Btrieve statuses that the system reacts to by number.
inline constexpr Status kDataBufferTooShort = 22;

}  // namespace qrn
