// The one process-wide engine context, first argument of every routine of the core. Database
// controls and the flat interface share it, so a lock bias or extended mode set anywhere holds
// everywhere. One thread: nothing here is guarded.
#pragma once

#include <cstdint>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrn {

struct DbEngine {
  explicit DbEngine(QuorinSettings& settings);

  QuorinSettings& Settings;
  char ExMode[4] = "UC";          // signature of extended requests
  uint16_t LockBias = 0;          // 0, 100, 200, 300 or 400; added to plain record calls
  char FieldText[4097] = {};      // text of the last field read by number or name
  char FormattedText[1024] = {};  // row text that a Format handler stored during a list fill
  uint8_t NullKeyValue = 0;       // setting null_key
  uint16_t FileFlag = 130;        // setting file_flag
};

// The process's own objects, built at first use (the module builds them when it is loaded).
QuorinSettings& TheSettings();
DbEngine& TheEngine();

// Makes `settings`, loaded already and alive to the end of the process, the process's own: the
// control registry is the same object. Only before the first use of the two above.
void UseSettings(QuorinSettings& settings) noexcept;

// Where a Format handler's row text goes: set by each row of a plain fill and left there after it,
// null before the first.
extern char* FormattedTarget;

}  // namespace qrn
