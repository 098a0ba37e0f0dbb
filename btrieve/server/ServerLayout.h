// How data files stand on a server, written once. A schema has one table of files,
//
//   btrieve_files   id, name (its table's), format, spec (StoreSpec), ids (the next key's to be
//                   given, then of the keys, in their order; u16 little-endian), owner (mode and
//                   name), and the counters of Head: next, records, version, updates, counts (of
//                   different values, an array in the order of the keys)
//
// whose rows change with every commit to their file, and notify its channel then. Who writes to a
// file has its row locked. Each file has a table of its name:
//
//   pos    bigint, 1..kHighestPosition, never given again
//   ver    bigint, the version that the last write has given
//   num    bytea, OrderNumbers::Stored
//   data   bytea, the record
//   k<id>  bytea, one for each key: the record's entry, null where the key leaves it out; with an
//          index in the order of bytes that allows no entry twice
//
// Beside them stand the counts of ranges (ServerRanges.h).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/server/ServerLink.h"
#include "btrieve/storage/Head.h"
#include "btrieve/storage/OwnerName.h"

namespace btrieve::server {

inline constexpr int64_t kServerFormat = 1;

// What btrieve_files tells of a file.
struct ServerSpec {
  int64_t id = 0;
  FileSpec file;
  std::vector<uint16_t> keyIds;  // by slot
  uint16_t nextKeyId = 1;        // 0xFFFF when none is left
  OwnerRecord owner;
};

// Names of the server's, to stand in SQL: schema and table are IsServerName.
std::string Quoted(const std::string& name);
// ", x" for the numbers d1, d2 ... of a WITH's g.
std::string ChangesOfCounts(size_t keys);
std::string TableName(const std::string& schema, const std::string& table);
std::string KeyColumn(uint16_t keyId);
std::string ChannelOf(int64_t fileId);

// The schema with its table of files, where they are missing.
void MakeServerSchema(ServerLink& link, const std::string& schema);
// What that has made, the schema excepted, in which others may have something.
void DropServerSchema(ServerLink& link, const std::string& schema);
// An empty file in one transaction; `id` of `spec` is not looked at, and returned. 59 where the
// schema has the table.
int64_t MakeServerFile(ServerLink& link, const std::string& schema, const std::string& table,
                       const ServerSpec& spec, const Head& head);

// 12 for a file that is not there, 30 for one of another format.
ServerSpec ReadServerSpec(ServerLink& link, const std::string& schema, const std::string& table);
void WriteServerSpec(ServerLink& link, const std::string& schema, const ServerSpec& spec,
                     const Head& head);
void WriteServerOwner(ServerLink& link, const std::string& schema, int64_t id,
                      const OwnerRecord& owner);
Head ReadServerHead(ServerLink& link, const std::string& schema, int64_t id, size_t keys);
// What a statement on btrieve_files selects of the counters, and what has come of that in a row
// from the column on.
std::string HeadColumns(size_t keys);
Head TakeHead(const Rows& rows, int column, size_t keys);
// Changes of the numbers of different values, from the column on.
void AddToCounts(Head& head, const Rows& rows, int column);
// The first key of a table's locks. 12 where there is no such table.
int32_t ObjectOf(ServerLink& link, const std::string& tableName);
std::string FilesTable(const std::string& schema);

}  // namespace btrieve::server
