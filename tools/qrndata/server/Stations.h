// Who works on the files of a schema, as the server's locks tell it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "btrieve/server/ServerLink.h"

namespace qrndata {

struct StationLock {
  enum class What : uint8_t { Open, OpenAlone, Record, File, Value };

  std::string table;
  What what = What::Open;
  int64_t position = 0;  // of a record
  bool isWaiting = false;
  int64_t seconds = 0;  // that it waits; held: that the station has been quiet, so at least so long
};

struct Station {
  std::string machine, program;
  int64_t process = 0;  // there; 0 where it has not said
  int64_t session = 0;  // the server's process for it
  std::string since;    // "2026-01-31 09:30:00", the server's time; empty where it does not tell
  std::vector<StationLock> locks;

  size_t Count(StationLock::What what) const;
};

// All that have a file open, but for this one. Throws btrieve::Failure.
std::vector<Station> StationsOn(btrieve::server::ServerLink& link, const std::string& schema);

}  // namespace qrndata
