#include "tools/qrndata/server/OwnSchema.h"

#include "btrieve/server/ServerLayout.h"

namespace qrndata {

using btrieve::ViewOf;
using btrieve::server::Arguments;
using btrieve::server::Quoted;
using btrieve::server::Rows;
using btrieve::server::ServerLink;

namespace {

constexpr char kMark[] = "made by qrndata";

// The schema's comment, a row; none without the schema.
Rows CommentOf(ServerLink& link, const std::string& schema) {
  return link.Ask(
      "SELECT coalesce(obj_description(oid, 'pg_namespace'), '') FROM pg_namespace WHERE nspname = "
      "$1",
      Arguments().Add(ViewOf(schema)));
}

}  // namespace

void MakeOwnSchema(ServerLink& link, const std::string& schema) {
  if (CommentOf(link, schema).Count() != 0) return;
  const std::string name = Quoted(schema);
  link.Run("CREATE SCHEMA " + name + "; COMMENT ON SCHEMA " + name + " IS '" + kMark + "'");
}

void DropOwnSchema(ServerLink& link, const std::string& schema) {
  const Rows comment = CommentOf(link, schema);
  if (comment.Count() == 0 || btrieve::TextOf(comment.Bytes(0, 0)) != kMark) return;
  TryToRun(link, "DROP SCHEMA " + Quoted(schema));
}

bool TryToRun(ServerLink& link, const std::string& sql) {
  link.Run("SAVEPOINT attempt");
  try {
    link.Run(sql);
    link.Run("RELEASE SAVEPOINT attempt");
    return true;
  } catch (const btrieve::Failure&) {
    if (!link.IsAlive()) throw;
    link.Run("ROLLBACK TO SAVEPOINT attempt; RELEASE SAVEPOINT attempt");
    return false;
  }
}

bool IsServersOwn(const std::string& schema) noexcept {
  return schema == "information_schema" || schema.starts_with("pg_");
}

}  // namespace qrndata
