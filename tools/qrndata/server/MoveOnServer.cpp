#include "tools/qrndata/server/MoveOnServer.h"

#include <algorithm>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/server/ServerRanges.h"
#include "btrieve/system/Status.h"
#include "tools/qrndata/server/OwnSchema.h"
#include "tools/qrndata/server/Views.h"

namespace qrndata {

namespace server = btrieve::server;
using btrieve::ViewOf;
using server::Arguments;
using server::Rows;
using server::ServerLink;
using server::TableName;

namespace {

constexpr char kFiles[] = "btrieve_files";
constexpr char kMarkWord[] = "moved ";
// Of a file's locks, that which stations share for as long as they have it open.
constexpr char kOpenLock[] = "-2";

std::string TextAt(const Rows& rows, int row, int column) {
  return btrieve::TextOf(rows.Bytes(row, column));
}

std::string Listed(const std::string& schema, const std::vector<ServerTable>& tables) {
  std::string list;
  for (const ServerTable& table : tables) {
    list += (list.empty() ? "" : ", ") + TableName(schema, table.name);
  }
  return list;
}

bool IsLockedAlone(ServerLink& link, int64_t number) {
  const Rows rows = link.Ask(std::string("SELECT CASE WHEN pg_try_advisory_xact_lock($1::bigint::"
                                         "oid::integer, ") +
                                 kOpenLock + ") THEN 1::bigint ELSE 0::bigint END",
                             Arguments().Add(number));
  return rows.Number(0, 0) == 1;
}

void AddHolders(ServerLink& link, int64_t number, std::vector<std::string>& stations) {
  const Rows rows = link.Ask(
      std::string("SELECT DISTINCT a.application_name FROM pg_locks l JOIN pg_stat_activity a "
                  "USING (pid) WHERE l.locktype = 'advisory' AND l.objsubid = 2 AND l.classid = "
                  "$1::bigint::oid AND l.objid::integer = ") +
          kOpenLock + " AND l.granted AND l.pid <> pg_backend_pid()",
      Arguments().Add(number));
  for (int row = 0; row < rows.Count(); ++row) {
    const std::string name = TextAt(rows, row, 0);
    if (std::ranges::find(stations, name) == stations.end()) stations.push_back(name);
  }
}

bool HasFiles(ServerLink& link, const std::string& schema) {
  return link.Ask("SELECT count(*) FROM " + TableName(schema, kFiles)).Number(0, 0) != 0;
}

}  // namespace

void HoldMark(ServerLink& link, const std::string& mark) {
  link.Ask("SELECT pg_advisory_xact_lock(hashtextextended(convert_from($1::bytea, 'UTF8'), 0))",
           Arguments().Add(ViewOf(mark)));
}

void LeaveMark(ServerLink& link, const MoveRecord& move) {
  link.Run("COMMENT ON TABLE " + TableName(move.place.schema, kFiles) + " IS '" + kMarkWord +
           move.mark + "'");
}

int64_t RelationNumber(ServerLink& link, const std::string& schema, const std::string& table) {
  const std::string name = TableName(schema, table);
  const Rows rows =
      link.Ask("SELECT coalesce(to_regclass(convert_from($1::bytea, 'UTF8'))::oid::bigint, 0)",
               Arguments().Add(ViewOf(name)));
  return rows.Number(0, 0);
}

// The type of arrays that every table has gives way to a table that wants its name.
bool IsNameTaken(ServerLink& link, const std::string& schema, const std::string& name) {
  const std::string whole = TableName(schema, name);
  const Rows rows = link.Ask(
      "SELECT count(*) FROM convert_from($1::bytea, 'UTF8') n WHERE to_regclass(n) IS NOT NULL OR "
      "EXISTS(SELECT FROM pg_type WHERE oid = to_regtype(n) AND typcategory <> 'A')",
      Arguments().Add(ViewOf(whole)));
  return rows.Number(0, 0) != 0;
}

std::vector<std::string> KeptTables(ServerLink& link, const std::string& schema) {
  return TextsOf(
      link.Ask("SELECT c.relname FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
               "WHERE n.nspname = $1 AND c.relkind = 'r' AND (SELECT count(*) FROM pg_attribute a "
               "WHERE a.attrelid = c.oid AND (a.attnum, a.attname) IN ((1, 'pos'), (2, 'ver'), (3, "
               "'num'), (4, 'data'))) = 4 AND c.relname NOT IN (SELECT name FROM " +
                   TableName(schema, kFiles) + ") ORDER BY c.relname",
               Arguments().Add(ViewOf(schema))));
}

int64_t FilesTableOf(ServerLink& link, const std::string& schema) {
  return RelationNumber(link, schema, kFiles);
}

bool WasMade(ServerLink& link, const MoveRecord& move) {
  const server::ServerTransaction held(server::ServerLink::To(move.place.server));
  HoldMark(link, move.mark);
  const int64_t table = FilesTableOf(link, move.place.schema);
  if (move.way == MoveRecord::Way::There) {
    const Rows rows = link.Ask("SELECT coalesce(obj_description($1::bigint::oid, 'pg_class'), '')",
                               Arguments().Add(table));
    return TextAt(rows, 0, 0) == kMarkWord + move.mark;
  }
  if (table != move.filesTable) return true;
  return link.Ask(
                 "SELECT 1::bigint FROM " + TableName(move.place.schema, kFiles) + " WHERE id = $1",
                 Arguments().Add(move.firstFile))
             .Count() == 0;
}

std::vector<ServerTable> TablesOf(ServerLink& link, const std::string& schema) {
  std::vector<ServerTable> tables;
  if (FilesTableOf(link, schema) == 0) return tables;
  const Rows rows = link.Ask(
      "SELECT f.name, f.id, c.oid::bigint FROM " + TableName(schema, kFiles) +
          " f JOIN pg_class c ON c.relname = f.name JOIN pg_namespace n ON n.oid = c.relnamespace "
          "AND n.nspname = $1 ORDER BY f.name",
      Arguments().Add(ViewOf(schema)));
  for (int row = 0; row < rows.Count(); ++row) {
    tables.push_back({TextAt(rows, row, 0), rows.Number(row, 1), rows.Number(row, 2)});
  }
  return tables;
}

std::vector<std::string> HoldTables(ServerLink& link, const std::string& schema,
                                    const std::vector<ServerTable>& tables) {
  std::vector<std::string> stations;
  bool isFree = true;
  for (const ServerTable& table : tables) {
    if (IsLockedAlone(link, table.number)) continue;
    isFree = false;
    AddHolders(link, table.number, stations);
  }
  if (!isFree && stations.empty()) throw btrieve::Failure{btrieve::kFileInUse};
  if (isFree) link.Run("LOCK TABLE " + Listed(schema, tables) + " IN ACCESS EXCLUSIVE MODE");
  return stations;
}

void GiveUpTables(ServerLink& link, const std::string& schema,
                  const std::vector<ServerTable>& tables, bool keep) {
  for (const ServerTable& table : tables) {
    server::DropAllRanges(link, schema, table.id);
    link.Ask("DELETE FROM " + TableName(schema, kFiles) + " WHERE id = $1",
             Arguments().Add(table.id));
  }
  if (keep) return;
  Unpublish(link, schema);
  link.Run("DROP TABLE " + Listed(schema, tables));
  if (HasFiles(link, schema)) return;
  server::DropServerSchema(link, schema);
  DropOwnSchema(link, schema);
}

}  // namespace qrndata
