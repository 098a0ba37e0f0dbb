// What an extended read tells a walk, so that a file that is kept elsewhere can be asked for the
// whole reply at once, and need not send what would only be rejected.
#pragma once

#include <cstdint>

#include "btrieve/storage/RecordRows.h"

namespace btrieve {

class ExtendedRequest;

struct ScanDemand {
  // What records are judged by. Null: every record is to be met.
  const ExtendedRequest* request = nullptr;
  uint32_t wanted = 0;    // records that the reply still takes, as far as can be told
  uint32_t rejects = 0;   // rejections left, never 0; a walk takes off the records it passes over
  bool oneByOne = false;  // what comes with a record will not hold once the record is locked

  // Filled by the walk: of the records it has passed over before its hit the last one, if there is
  // any (position not 0). Of it only position and entry are known; what it views stays as long as
  // what the hit does.
  Hit passed = {};
};

}  // namespace btrieve
