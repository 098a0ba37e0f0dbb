// The properties that every control of the extended fill has, as the control keeps them.
#pragma once

#include <cstdint>

#include "extended/FillFromExtended.h"

namespace qrn {

struct ExFillSettings {
  int16_t DbLeaveResults = 0;  // keeps the replies for the application
  int32_t DbLocks = 0;
  int32_t DbExOperation = OpGetNextEx;
  int32_t DbCompareCase = 0;
  int16_t DbSkipRecords = 100;  // records that one call may reject
  int32_t DbMaxRecords = 300;   // records in one call; the low 16 bits count
  int16_t DbResultID = 0;       // of the replies that were kept

  // A fill so set up; its kind, its key and its texts are the control's to add.
  ExFill ToFill() const {
    return {.DbExOperation = DbExOperation,
            .DbLocks = DbLocks,
            .DbCompareCase = DbCompareCase != 0,
            .DbSkipRecords = static_cast<uint16_t>(DbSkipRecords),
            .DbMaxRecords = static_cast<uint16_t>(DbMaxRecords),
            .DbLeaveResults = DbLeaveResults != 0};
  }
};

}  // namespace qrn
