#include "btrieve/server/ServerLayout.h"

#include <algorithm>
#include <cstring>

#include "btrieve/server/ServerRanges.h"

namespace btrieve::server {
namespace {

constexpr char kFiles[] = "btrieve_files";

// The tables of a schema; $ stands for its name.
constexpr char kSchemaText[] =
    "CREATE SCHEMA IF NOT EXISTS $;"
    "CREATE TABLE IF NOT EXISTS $.btrieve_files("
    "  id bigint PRIMARY KEY GENERATED ALWAYS AS IDENTITY, name text NOT NULL UNIQUE,"
    "  format bigint NOT NULL, spec bytea NOT NULL, ids bytea NOT NULL, owner bytea,"
    "  next bigint NOT NULL, records bigint NOT NULL, version bigint NOT NULL,"
    "  updates bigint NOT NULL, counts bigint[] NOT NULL);"
    "CREATE OR REPLACE FUNCTION $.btrieve_notify() RETURNS trigger LANGUAGE plpgsql AS"
    " 'BEGIN PERFORM pg_catalog.pg_notify(''btrieve_'' || NEW.id, ''''); RETURN NULL; END';"
    "CREATE OR REPLACE TRIGGER btrieve_notify AFTER UPDATE ON $.btrieve_files"
    "  FOR EACH ROW EXECUTE FUNCTION $.btrieve_notify()";

std::string With(std::string text, const std::string& schema) {
  const std::string name = Quoted(schema);
  for (size_t at = text.find('$'); at != text.npos; at = text.find('$', at + name.size())) {
    text.replace(at, 1, name);
  }
  return text;
}

std::vector<uint8_t> StoreIds(const ServerSpec& spec) {
  std::vector<uint16_t> ids = {spec.nextKeyId};
  ids.insert(ids.end(), spec.keyIds.begin(), spec.keyIds.end());
  std::vector<uint8_t> bytes(2 * ids.size());
  std::memcpy(bytes.data(), ids.data(), bytes.size());
  return bytes;
}

void LoadIds(ByteView bytes, ServerSpec& spec) {
  std::vector<uint16_t> ids(1 + spec.file.keys.size());
  if (bytes.size() != 2 * ids.size()) ThrowDamaged();
  std::memcpy(ids.data(), bytes.data(), bytes.size());
  if (std::ranges::find(ids.begin() + 1, ids.end(), 0) != ids.end()) ThrowDamaged();
  spec.nextKeyId = ids.front();
  spec.keyIds.assign(ids.begin() + 1, ids.end());
}

std::string CountsText(const Head& head) {
  std::string text;
  for (const uint32_t count : head.distinct) {
    text += (text.empty() ? "" : ",") + std::to_string(count);
  }
  return "{" + text + "}";
}

uint32_t CheckedCount(int64_t stored) {
  if (stored < 0 || stored > UINT32_MAX) ThrowDamaged();
  return static_cast<uint32_t>(stored);
}

std::string StoreOwner(const OwnerRecord& owner) {
  return std::string(1, static_cast<char>(owner.mode)) + owner.name;
}

OwnerRecord LoadOwner(ByteView bytes) {
  if (bytes.empty() || bytes[0] > kHighestOwnerMode || bytes.size() > 1 + kLongOwnerNameSize) {
    ThrowDamaged();
  }
  return {true, bytes[0], TextOf(bytes.subspan(1)), true};
}

std::string TableText(const std::string& name, const std::vector<uint16_t>& keyIds) {
  std::string columns;
  std::string indexes;
  for (const uint16_t id : keyIds) {
    columns += ", " + KeyColumn(id) + " bytea";
    indexes += "; CREATE UNIQUE INDEX ON " + name + "(" + KeyColumn(id) + ")";
  }
  return "CREATE TABLE " + name +
         "(pos bigint PRIMARY KEY, ver bigint NOT NULL, num bytea NOT NULL, data bytea NOT NULL" +
         columns + ")" + indexes;
}

}  // namespace

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

std::string TableName(const std::string& schema, const std::string& table) {
  return Quoted(schema) + "." + Quoted(table);
}

std::string KeyColumn(uint16_t keyId) { return "k" + std::to_string(keyId); }

std::string ChannelOf(int64_t fileId) { return "btrieve_" + std::to_string(fileId); }

void MakeServerSchema(ServerLink& link, const std::string& schema) {
  link.Run(With(kSchemaText, schema));
  link.Run(RangesSchemaText(schema));
}

void DropServerSchema(ServerLink& link, const std::string& schema) {
  link.Run(With("DROP TABLE $.btrieve_files; DROP FUNCTION IF EXISTS $.btrieve_notify()", schema));
  link.Run(DropRangesText(schema));
}

std::string FilesTable(const std::string& schema) { return TableName(schema, kFiles); }

int64_t MakeServerFile(ServerLink& link, const std::string& schema, const std::string& table,
                       const ServerSpec& spec, const Head& head) {
  const std::vector<uint8_t> body = StoreSpec(spec.file);
  const std::vector<uint8_t> ids = StoreIds(spec);
  const std::string owner = StoreOwner(spec.owner);
  const std::string counts = CountsText(head);
  Arguments arguments;
  arguments.Add(ViewOf(table)).Add(kServerFormat).Add(ByteView(body)).Add(ByteView(ids));
  spec.owner.set ? arguments.Add(ViewOf(owner)) : arguments.AddNull();
  arguments.Add(int64_t{head.nextPosition}).Add(int64_t{head.records});
  arguments.Add(static_cast<int64_t>(head.version)).Add(int64_t{head.updateNumber});
  const Rows made = link.Ask("INSERT INTO " + FilesTable(schema) +
                                 "(name, format, spec, ids, owner, next, records, version, "
                                 "updates, counts) VALUES($1, $2, $3, $4, $5, $6, $7, $8, $9, "
                                 "$10::text::bigint[]) ON CONFLICT DO NOTHING RETURNING id",
                             arguments.Add(ViewOf(counts)));
  if (made.Count() == 0) throw Failure{kFileExists};
  const RangedFile file{schema, table, made.Number(0, 0)};
  link.Run(TableText(TableName(schema, table), spec.keyIds));
  CountRanges(link, file, spec.keyIds);
  FollowWrites(link, file, spec.keyIds);
  return file.id;
}

int32_t ObjectOf(ServerLink& link, const std::string& tableName) {
  const Rows rows =
      link.Ask("SELECT to_regclass($1::text)::oid::bigint", Arguments().Add(ViewOf(tableName)));
  if (rows.IsNull(0, 0)) throw Failure{kFileNotFound};
  return static_cast<int32_t>(rows.Number(0, 0));
}

ServerSpec ReadServerSpec(ServerLink& link, const std::string& schema, const std::string& table) {
  const Rows rows = link.Ask(
      "SELECT id, format, spec, ids, owner FROM " + FilesTable(schema) + " WHERE name = $1",
      Arguments().Add(ViewOf(table)));
  if (rows.Count() == 0) throw Failure{kFileNotFound};
  if (rows.Number(0, 1) != kServerFormat) throw Failure{kNotABtrieveFile};
  ServerSpec spec;
  spec.id = rows.Number(0, 0);
  if (!LoadSpec(rows.Bytes(0, 2), spec.file)) ThrowDamaged();
  LoadIds(rows.Bytes(0, 3), spec);
  if (!rows.IsNull(0, 4)) spec.owner = LoadOwner(rows.Bytes(0, 4));
  return spec;
}

void WriteServerSpec(ServerLink& link, const std::string& schema, const ServerSpec& spec,
                     const Head& head) {
  const std::vector<uint8_t> body = StoreSpec(spec.file);
  const std::vector<uint8_t> ids = StoreIds(spec);
  const std::string counts = CountsText(head);
  link.Ask("UPDATE " + FilesTable(schema) +
               " SET spec = $2, ids = $3, counts = $4::text::bigint[] WHERE id = $1",
           Arguments().Add(spec.id).Add(ByteView(body)).Add(ByteView(ids)).Add(ViewOf(counts)));
}

void WriteServerOwner(ServerLink& link, const std::string& schema, int64_t id,
                      const OwnerRecord& owner) {
  const std::string stored = StoreOwner(owner);
  Arguments arguments = Arguments().Add(id);
  owner.set ? arguments.Add(ViewOf(stored)) : arguments.AddNull();
  link.Ask("UPDATE " + FilesTable(schema) + " SET owner = $2 WHERE id = $1", arguments);
}

std::string ChangesOfCounts(size_t keys) {
  std::string columns;
  for (size_t slot = 1; slot <= keys; ++slot) {
    columns += ", (SELECT d" + std::to_string(slot) + " FROM g)::bigint";
  }
  return columns;
}

std::string HeadColumns(size_t keys) {
  std::string columns = "next, records, version, updates, cardinality(counts)::bigint";
  for (size_t slot = 1; slot <= keys; ++slot) columns += ", counts[" + std::to_string(slot) + "]";
  return columns;
}

Head TakeHead(const Rows& rows, int column, size_t keys) {
  Head head;
  head.nextPosition = CheckedCount(rows.Number(0, column++));
  head.records = CheckedCount(rows.Number(0, column++));
  head.version = static_cast<uint64_t>(rows.Number(0, column++));
  head.updateNumber = CheckedCount(rows.Number(0, column++));
  if (rows.Number(0, column++) != static_cast<int64_t>(keys)) ThrowDamaged();
  for (size_t slot = 0; slot < keys; ++slot) {
    head.distinct.push_back(CheckedCount(rows.Number(0, column++)));
  }
  if (!head.IsPossible()) ThrowDamaged();
  return head;
}

void AddToCounts(Head& head, const Rows& rows, int column) {
  for (uint32_t& count : head.distinct) count = CheckedCount(count + rows.Number(0, column++));
}

Head ReadServerHead(ServerLink& link, const std::string& schema, int64_t id, size_t keys) {
  const Rows rows =
      link.Ask("SELECT " + HeadColumns(keys) + " FROM " + FilesTable(schema) + " WHERE id = $1",
               Arguments().Add(id));
  if (rows.Count() == 0) throw Failure{kFileNotFound};
  return TakeHead(rows, 0, keys);
}

}  // namespace btrieve::server
