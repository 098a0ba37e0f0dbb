#include "tools/qrndata/server/Views.h"

#include "btrieve/server/ServerLayout.h"
#include "tools/qrndata/server/MoveOnServer.h"
#include "tools/qrndata/server/OwnSchema.h"
#include "tools/qrndata/server/ViewFunctions.h"

namespace qrndata {

using btrieve::ViewOf;
using btrieve::server::Arguments;
using btrieve::server::Quoted;
using btrieve::server::Rows;
using btrieve::server::ServerLink;

std::string ViewSchema(const std::string& schema) {
  constexpr size_t kLongestName = 63;
  constexpr char kTail[] = "_view";
  return schema.substr(0, kLongestName - (sizeof kTail - 1)) + kTail;
}

std::vector<std::string> TextsOf(const Rows& rows) {
  std::vector<std::string> texts(static_cast<size_t>(rows.Count()));
  for (int row = 0; row < rows.Count(); ++row) {
    texts[static_cast<size_t>(row)] = btrieve::TextOf(rows.Bytes(row, 0));
  }
  return texts;
}

std::vector<std::string> OurViews(ServerLink& link, const std::string& viewSchema) {
  const Rows rows = link.Ask(
      std::string(
          "SELECT '\"' || replace(c.relname::text, '\"', '\"\"') || '\"' FROM pg_class c "
          "JOIN pg_namespace n ON n.oid = c.relnamespace WHERE n.nspname = $1 AND c.relkind "
          "= 'v' AND obj_description(c.oid, 'pg_class') = '") +
          kOurView + "'",
      Arguments().Add(ViewOf(viewSchema)));
  return TextsOf(rows);
}

void Unpublish(ServerLink& link, const std::string& schema) {
  const std::string views = ViewSchema(schema);
  const std::string drop = "DROP VIEW " + Quoted(views) + ".";
  for (const std::string& name : OurViews(link, views)) link.Run(drop + name);
  if (RelationNumber(link, views, kCharacters) != 0) TryToRun(link, DropViewFunctions(views));
  DropOwnSchema(link, views);
}

}  // namespace qrndata
