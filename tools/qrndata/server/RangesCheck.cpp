#include "tools/qrndata/server/RangesCheck.h"

#include "btrieve/server/ServerLayout.h"
#include "btrieve/server/ServerRanges.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace server = btrieve::server;

Faults CheckRanges(const std::filesystem::path& path) {
  if (!IsLink(path)) return {};
  const server::LinkFile link = ReadLink(path);
  const uint64_t wrong = Asking(PathToUtf8(path), [&] {
    const auto connection = ConnectFor(link.server);
    const server::ServerSpec spec = server::ReadServerSpec(*connection, link.schema, link.table);
    return server::CountWrongRanges(*connection, {link.schema, link.table, spec.id}, spec.keyIds);
  });
  if (wrong == 0) return {};
  return {Counted(wrong, Message::RangesWrong)};
}

}  // namespace qrndata
