// How many entries stand below one in a file on a server, without counting them all.
//
// Each order of a file, its keys and its positions, is cut into ranges, which btrieve_ranges
// counts:
//
//   file, key   whose; key 0 for positions, else the key's id
//   low         first entry that belongs there, up to the next range's; eight bytes, high byte
//   first,
//               for a position; empty in the lowest, which is always there
//   n           how many entries stand in it
//
// A place is found by adding up ranges and counting within one. A range that grows beyond two sizes
// is cut, one that becomes empty goes. The size is the larger of btrieve_range_size() and the root
// of the number of records, so that neither ranges nor what stands in one are ever many.
//
// The server keeps them by itself: every file's table has triggers with a function of the file's
// own. A transaction that writes again and again would leave an old version of a range's row with
// every write, which each following one steps over. So within transactions what comes and goes is
// only written down (btrieve_pending: file, key, entry, n), and added up before they end, or read a
// place.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "btrieve/server/ServerLink.h"

namespace btrieve::server {

// The key of an order: that of positions, beside keys by their ids.
inline constexpr uint16_t kPositionsKey = 0;

// The names are IsServerName.
struct RangedFile {
  std::string schema;
  std::string table;
  int64_t id = 0;
};

// The tables and functions of a schema.
std::string RangesSchemaText(const std::string& schema);
std::string DropRangesText(const std::string& schema);

// The server follows what is written to the table; it does not, as while a key is being filled.
// Ranges that are there must be right when it begins.
void FollowWrites(ServerLink& link, const RangedFile& file, const std::vector<uint16_t>& keyIds);
void IgnoreWrites(ServerLink& link, const RangedFile& file);
// Ranges of an order, or of all, from what stands in the table; those there were are forgotten.
void CountRanges(ServerLink& link, const RangedFile& file, uint16_t key);
void CountRanges(ServerLink& link, const RangedFile& file, const std::vector<uint16_t>& keyIds);
// Of a key that goes.
void DropRanges(ServerLink& link, const RangedFile& file, uint16_t key);
// Of a file that goes. Its table's triggers go, too.
void DropAllRanges(ServerLink& link, const std::string& schema, int64_t id);

// From here on to the end of the server's transaction changes are only written down.
Question LaterQuestion();
// Adds what has been written down of a file to its ranges.
Question FoldQuestion(const RangedFile& file);

// Statements about one order: its total; the rank of $1, a bound, of positions a number; the entry
// of rank $1.
std::string TotalText(const RangedFile& file, uint16_t key);
std::string RankText(const RangedFile& file, uint16_t key);
std::string EntryText(const RangedFile& file, uint16_t key);

// How many ranges, of all orders of the file, count otherwise than the table does.
uint64_t CountWrongRanges(ServerLink& link, const RangedFile& file,
                          const std::vector<uint16_t>& keyIds);

}  // namespace btrieve::server
