#include "btrieve/server/ServerLayout.h"

#include <algorithm>
#include <cstring>

namespace btrieve::server {
namespace {

constexpr char kFiles[] = "btrieve_files";

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

// The tables of a schema; $ stands for its name.
constexpr char kSchemaText[] =
    "CREATE SCHEMA IF NOT EXISTS $;"
    "CREATE TABLE IF NOT EXISTS $.btrieve_files("
    "  id bigint PRIMARY KEY GENERATED ALWAYS AS IDENTITY, name text NOT NULL UNIQUE,"
    "  format bigint NOT NULL, spec bytea NOT NULL, ids bytea NOT NULL, owner bytea,"
    "  head bytea NOT NULL);"
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

std::vector<uint8_t> StoreIds(const std::vector<uint16_t>& ids) {
  std::vector<uint8_t> bytes(2 * ids.size());
  if (!ids.empty()) std::memcpy(bytes.data(), ids.data(), bytes.size());
  return bytes;
}

std::vector<uint16_t> LoadIds(ByteView bytes, size_t keys) {
  if (bytes.size() != 2 * keys) ThrowDamaged();
  std::vector<uint16_t> ids(keys);
  if (keys != 0) std::memcpy(ids.data(), bytes.data(), bytes.size());
  if (std::ranges::find(ids, 0) != ids.end()) ThrowDamaged();
  return ids;
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

std::string TableName(const std::string& schema, const std::string& table) {
  return Quoted(schema) + "." + Quoted(table);
}

std::string KeyColumn(uint16_t keyId) { return "k" + std::to_string(keyId); }

std::string ChannelOf(int64_t fileId) { return "btrieve_" + std::to_string(fileId); }

void MakeServerSchema(ServerLink& link, const std::string& schema) {
  link.Run(With(kSchemaText, schema));
}

int64_t MakeServerFile(ServerLink& link, const std::string& schema, const std::string& table,
                       const ServerSpec& spec, const Head& head) {
  const std::vector<uint8_t> body = StoreSpec(spec.file);
  const std::vector<uint8_t> ids = StoreIds(spec.keyIds);
  const std::string owner = StoreOwner(spec.owner);
  std::vector<uint8_t> counts;
  head.Store(counts);
  Arguments arguments;
  arguments.Add(ViewOf(table)).Add(kServerFormat).Add(ByteView(body)).Add(ByteView(ids));
  spec.owner.set ? arguments.Add(ViewOf(owner)) : arguments.AddNull();
  const Rows made = link.Ask("INSERT INTO " + TableName(schema, kFiles) +
                                 "(name, format, spec, ids, owner, head) VALUES($1, $2, $3, $4, "
                                 "$5, $6) ON CONFLICT DO NOTHING RETURNING id",
                             arguments.Add(ByteView(counts)));
  if (made.Count() == 0) throw Failure{kFileExists};
  link.Run(TableText(TableName(schema, table), spec.keyIds));
  return made.Number(0, 0);
}

ServerSpec ReadServerSpec(ServerLink& link, const std::string& schema, const std::string& table) {
  const Rows rows = link.Ask(
      "SELECT id, format, spec, ids, owner FROM " + TableName(schema, kFiles) + " WHERE name = $1",
      Arguments().Add(ViewOf(table)));
  if (rows.Count() == 0) throw Failure{kFileNotFound};
  if (rows.Number(0, 1) != kServerFormat) throw Failure{kNotABtrieveFile};
  ServerSpec spec;
  spec.id = rows.Number(0, 0);
  if (!LoadSpec(rows.Bytes(0, 2), spec.file)) ThrowDamaged();
  spec.keyIds = LoadIds(rows.Bytes(0, 3), spec.file.keys.size());
  if (!rows.IsNull(0, 4)) spec.owner = LoadOwner(rows.Bytes(0, 4));
  return spec;
}

Head ReadServerHead(ServerLink& link, const std::string& schema, int64_t id, size_t keys) {
  const Rows rows = link.Ask("SELECT head FROM " + TableName(schema, kFiles) + " WHERE id = $1",
                             Arguments().Add(id));
  Head head;
  if (rows.Count() == 0) throw Failure{kFileNotFound};
  if (!head.Load(rows.Bytes(0, 0), keys)) ThrowDamaged();
  return head;
}

void WriteServerHead(ServerLink& link, const std::string& schema, int64_t id, const Head& head) {
  std::vector<uint8_t> bytes;
  head.Store(bytes);
  link.Ask("UPDATE " + TableName(schema, kFiles) + " SET head = $2 WHERE id = $1",
           Arguments().Add(id).Add(ByteView(bytes)));
}

}  // namespace btrieve::server
