// `status`: who works on a folder's files on a server, what they hold, how large the files are.
#include <algorithm>
#include <map>

#include "btrieve/server/ServerLayout.h"
#include "tools/qrndata/Listing.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/server/MoveOnServer.h"
#include "tools/qrndata/server/ServerAccess.h"
#include "tools/qrndata/server/Stations.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;
using What = StationLock::What;

namespace {

struct FileSize {
  std::string table;
  uint64_t records = 0;
  int64_t bytes = 0;
};

struct WhatRow {
  What what;
  Message text;
  const char* word;  // in JSON
};
constexpr WhatRow kWhats[] = {
    {What::Open, Message::LockOpen, "open"},       {What::OpenAlone, Message::LockAlone, "alone"},
    {What::Record, Message::LockRecord, "record"}, {What::File, Message::LockFile, "file"},
    {What::Value, Message::LockValue, "value"},
};

const WhatRow& RowOf(What what) { return *std::ranges::find(kWhats, what, &WhatRow::what); }

std::string WhatText(const StationLock& lock) {
  const std::string text = Say(RowOf(lock.what).text, lock.position);
  return lock.isWaiting ? Say(Message::WaitsFor, text) : text;
}

std::string Duration(int64_t seconds) {
  return Printed("%02lld:%02lld:%02lld", static_cast<long long>(seconds / 3600),
                 static_cast<long long>(seconds / 60 % 60), static_cast<long long>(seconds % 60));
}

// "[one, two]" of a text for each member.
template <class Members, class Text>
std::string JsonList(const Members& members, Text text) {
  std::string list;
  for (const auto& each : members) list += (list.empty() ? "" : ", ") + text(each);
  return "[" + list + "]";
}

class StatusReport {
 public:
  StatusReport(const StatusOptions& options, const Streams& streams)
      : streams_(streams), place_(ServerOf(options.directory)) {
    NameFiles(options.directory);
    Asking(ServerName(place_), [&] {
      const auto link = ConnectFor(place_.server);
      ReadSizes(*link);
      stations_ = StationsOn(*link, place_.schema);
    });
  }

  void WriteText() const;
  void WriteJson() const;

 private:
  void NameFiles(const fs::path& directory);
  void ReadSizes(server::ServerLink& link);
  const std::string& FileOf(const std::string& table) const;
  void ListStations() const;
  void ListLocks() const;
  void ListFiles() const;
  std::string JsonOf(const StationLock& lock) const;
  std::string JsonOf(const Station& station) const;

  const Streams& streams_;
  server::LinkFile place_;
  std::map<std::string, std::string> names_;  // of files, by table
  std::vector<FileSize> sizes_;
  std::vector<Station> stations_;
};

void StatusReport::NameFiles(const fs::path& directory) {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory, error)) {
    if (!entry.is_regular_file(error) || !IsLink(entry.path())) continue;
    const server::LinkFile link = ReadLink(entry.path());
    if (link.schema != place_.schema) continue;
    names_[link.table] = PathToUtf8(entry.path().lexically_relative(directory).generic_string());
  }
}

void StatusReport::ReadSizes(server::ServerLink& link) {
  for (const ServerTable& table : TablesOf(link, place_.schema)) {
    const server::ServerSpec spec = ReadServerSpec(link, place_.schema, table.name);
    const btrieve::Head head = ReadServerHead(link, place_.schema, spec.id, spec.file.keys.size());
    const server::Rows size = link.Ask("SELECT pg_total_relation_size($1::bigint::oid::regclass)",
                                       server::Arguments().Add(table.number));
    sizes_.push_back({table.name, head.records, size.Number(0, 0)});
  }
}

// A file that no link here leads to is told by its table.
const std::string& StatusReport::FileOf(const std::string& table) const {
  const auto found = names_.find(table);
  return found == names_.end() ? table : found->second;
}

void StatusReport::ListStations() const {
  Listing listing({{Message::HeadStation},
                   {Message::HeadProgram},
                   {Message::HeadProcess, true},
                   {Message::HeadSince},
                   {Message::HeadFiles, true}});
  for (const Station& station : stations_) {
    listing.Add({station.machine, station.program,
                 station.process == 0 ? "" : std::to_string(station.process), station.since,
                 std::to_string(station.Count(What::Open) + station.Count(What::OpenAlone))});
  }
  listing.Write(streams_.out);
}

void StatusReport::ListLocks() const {
  Listing listing({{Message::HeadFile},
                   {Message::HeadStation},
                   {Message::HeadProcess, true},
                   {Message::HeadLock},
                   {Message::HeadFor}});
  bool isEmpty = true;
  for (const Station& station : stations_) {
    for (const StationLock& lock : station.locks) {
      if (lock.what == What::Open && !lock.isWaiting) continue;
      isEmpty = false;
      listing.Add({FileOf(lock.table), station.machine, std::to_string(station.process),
                   WhatText(lock), Duration(lock.seconds)});
    }
  }
  if (isEmpty) return;
  streams_.out << '\n';
  listing.Write(streams_.out);
}

void StatusReport::ListFiles() const {
  Listing listing({{Message::HeadFile},
                   {Message::HeadTable},
                   {Message::HeadRecords, true},
                   {Message::HeadSize, true}});
  for (const FileSize& size : sizes_) {
    constexpr int64_t kKilobyte = 1024;
    listing.Add({FileOf(size.table), size.table, Grouped(size.records),
                 Grouped(static_cast<uint64_t>(size.bytes / kKilobyte)) + " KB"});
  }
  streams_.out << '\n';
  listing.Write(streams_.out);
}

void StatusReport::WriteText() const {
  streams_.out << ServerName(place_) << ": " << Counted(stations_.size(), Message::StationsCounted)
               << '\n';
  if (!stations_.empty()) ListStations();
  ListLocks();
  ListFiles();
}

std::string StatusReport::JsonOf(const StationLock& lock) const {
  std::string text = "{\"file\": " + JsonString(FileOf(lock.table)) + ", \"what\": \"" +
                     RowOf(lock.what).word + "\"";
  if (lock.what == What::Record) text += ", \"position\": " + std::to_string(lock.position);
  return text + ", \"waits\": " + (lock.isWaiting ? "true" : "false") +
         ", \"seconds\": " + std::to_string(lock.seconds) + "}";
}

std::string StatusReport::JsonOf(const Station& station) const {
  return "{\"machine\": " + JsonString(station.machine) +
         ", \"program\": " + JsonString(station.program) +
         ", \"process\": " + std::to_string(station.process) +
         ", \"since\": " + JsonString(station.since) + ", \"locks\": " +
         JsonList(station.locks, [this](const StationLock& lock) { return JsonOf(lock); }) + "}";
}

void StatusReport::WriteJson() const {
  streams_.out << "{\"server\": " << JsonString(place_.server.Text())
               << ", \"schema\": " << JsonString(place_.schema) << ",\n \"stations\": "
               << JsonList(stations_, [this](const Station& each) { return JsonOf(each); })
               << ",\n \"files\": "
               << JsonList(sizes_,
                           [this](const FileSize& size) {
                             return "{\"file\": " + JsonString(FileOf(size.table)) +
                                    ", \"table\": " + JsonString(size.table) +
                                    ", \"records\": " + std::to_string(size.records) +
                                    ", \"bytes\": " + std::to_string(size.bytes) + "}";
                           })
               << "}\n";
}

}  // namespace

ExitCode RunStatus(const StatusOptions& options, const Streams& streams) {
  const StatusReport report(options, streams);
  options.isJson ? report.WriteJson() : report.WriteText();
  return kDone;
}

}  // namespace qrndata
