#include "tools/qrndata/server/Stations.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace qrndata {

namespace server = btrieve::server;
using What = StationLock::What;

namespace {

enum Column { kSession, kName, kSince, kQuiet, kTable, kLock, kGranted, kIsAlone, kWaits };

// A file's locks, two numbers each: that of its table, and which one. Shared ones, of which only
// one tells something, are those of who has the file open.
constexpr char kLocksOf[] =
    "SELECT a.pid::bigint, a.application_name, coalesce(to_char(a.backend_start, "
    "'YYYY-MM-DD HH24:MI:SS'), ''), coalesce(extract(epoch FROM clock_timestamp() - "
    "a.state_change), 0)::bigint, c.relname::text, l.objid::integer::bigint, "
    "l.granted::integer::bigint, (l.mode = 'ExclusiveLock')::integer::bigint, "
    "coalesce(extract(epoch FROM clock_timestamp() - l.waitstart), 0)::bigint "
    "FROM pg_locks l JOIN pg_stat_activity a USING (pid) JOIN pg_class c ON c.oid = l.classid "
    "JOIN pg_namespace n ON n.oid = c.relnamespace JOIN pg_database d ON d.oid = l.database "
    "WHERE l.locktype = 'advisory' AND l.objsubid = 2 AND n.nspname = $1 AND "
    "d.datname = current_database() AND l.pid <> pg_backend_pid() "
    "ORDER BY a.backend_start, a.pid, c.relname, l.objid";

constexpr int64_t kOpenLock = -2, kFileLock = -3, kLastValueLock = -(int64_t{1} << 30);

std::optional<What> WhatOf(int64_t lock, bool isAlone) {
  if (lock == kOpenLock) return isAlone ? What::OpenAlone : What::Open;
  if (!isAlone) return std::nullopt;
  if (lock > 0) return What::Record;
  if (lock == kFileLock) return What::File;
  if (lock < kLastValueLock) return What::Value;
  return std::nullopt;
}

std::string TextAt(const server::Rows& rows, int row, int column) {
  return btrieve::TextOf(rows.Bytes(row, column));
}

// "w64btrv MACHINE PROGRAM PROCESS"; a program's name may have blanks. Others are taken whole.
void TakeName(const std::string& name, Station& station) {
  constexpr std::string_view kOurs = "w64btrv ";
  const size_t machine = kOurs.size();
  const size_t program = name.find(' ', std::min(machine, name.size()));
  const size_t process = name.rfind(' ');
  if (!name.starts_with(kOurs) || program == name.npos || process <= program) {
    station.program = name;
    return;
  }
  station.machine = name.substr(machine, program - machine);
  station.program = name.substr(program + 1, process - program - 1);
  std::from_chars(name.data() + process + 1, name.data() + name.size(), station.process);
}

}  // namespace

size_t Station::Count(What what) const {
  return static_cast<size_t>(
      std::ranges::count_if(locks, [&](const StationLock& lock) { return lock.what == what; }));
}

std::vector<Station> StationsOn(server::ServerLink& link, const std::string& schema) {
  const server::Rows rows = link.Ask(kLocksOf, server::Arguments().Add(btrieve::ViewOf(schema)));
  std::vector<Station> stations;
  for (int row = 0; row < rows.Count(); ++row) {
    const int64_t session = rows.Number(row, kSession);
    if (stations.empty() || stations.back().session != session) {
      stations.emplace_back();
      stations.back().session = session;
      stations.back().since = TextAt(rows, row, kSince);
      TakeName(TextAt(rows, row, kName), stations.back());
    }
    const int64_t lock = rows.Number(row, kLock);
    const auto what = WhatOf(lock, rows.Number(row, kIsAlone) != 0);
    if (!what) continue;
    const bool isWaiting = rows.Number(row, kGranted) == 0;
    stations.back().locks.push_back({TextAt(rows, row, kTable), *what, lock, isWaiting,
                                     rows.Number(row, isWaiting ? kWaits : kQuiet)});
  }
  return stations;
}

}  // namespace qrndata
