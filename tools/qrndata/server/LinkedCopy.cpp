#include "tools/qrndata/server/LinkedCopy.h"

#include <algorithm>

#include "btrieve/server/Transfer.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/server/MoveWork.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;

namespace {

struct LinkedName {
  fs::path name;
  server::LinkFile link;
};

std::vector<LinkedName> TakeLinks(const fs::path& directory, std::vector<fs::path>& names) {
  std::vector<LinkedName> links;
  for (const fs::path& name : names) {
    if (IsLink(directory / name)) links.push_back({name, ReadLink(directory / name)});
  }
  std::erase_if(names, [&](const fs::path& name) { return IsLink(directory / name); });
  for (const LinkedName& each : links) {
    if (each.link.server == links.front().link.server) continue;
    throw Failure(kSystem, Say(Message::SeveralServers, PathToUtf8(directory / each.name),
                               ServerName(each.link), ServerName(links.front().link)));
  }
  return links;
}

void CopyOne(const LinkedName& file, const fs::path& target, const Streams& streams) {
  std::error_code ignored;
  fs::create_directories(target.parent_path(), ignored);
  const auto linked = OpenTable(file.link, file.link.table);
  linked->RenewCounts();
  MoveProgress progress(streams, PathToUtf8(file.name), linked->Counts().records);
  server::CopyToFile(*linked, WholePath(target), progress.NextPart());
}

}  // namespace

void CopyLinked(const fs::path& directory, std::vector<fs::path>& names, const fs::path& target,
                const Streams& streams) {
  const std::vector<LinkedName> links = TakeLinks(directory, names);
  if (links.empty()) return;
  Asking(ServerName(links.front().link), [&] {
    const auto connection = ConnectFor(links.front().link.server);
    const server::ServerTransaction moment(connection);
    connection->Run("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ, READ ONLY");
    for (const LinkedName& file : links) CopyOne(file, target / file.name, streams);
  });
}

}  // namespace qrndata
