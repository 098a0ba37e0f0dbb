// From a table of the dictionary to an open data file: file names, opening with its length check,
// creating from the dictionary, connections. Shows its own failures where a message is named; the
// caller gets the code in any case. Nothing is tried twice.
#pragma once

#include <cstdint>
#include <span>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Bytes that the path of any data file fits into with its NUL.
inline constexpr size_t kFilePathSize = 512;

// Longest text that DbSetFileName takes as a location, in bytes.
inline constexpr size_t kLocationLength = 66;

// Turns the control's open mode (_enumOpenMode) into Btrieve's; 0 for a value it does not know.
// Only the control's own open methods map; every other path sends the stored value as it stands.
int32_t DbMapOpenMode(int32_t openMode) noexcept;

// Stores the data file's path. A location with a drive letter or a UNC name stands alone; any other
// follows the directory's short path, with ".btr" added when it holds no point. Always 0: a
// directory that does not exist is taken as it stands, a path that does not fit is empty, and using
// either fails.
Status DbResolveFileName(const DbTableInfo& table, const char* directory,
                         std::span<char> outPath) noexcept;

// False when the table's location needs a directory and there is none: the file would be sought in
// the root of whatever drive is current.
bool HasPlace(const DbTableInfo& table, const char* directory) noexcept;

// Opens the table's file with Btrieve open mode `mode` (low byte) and allocates its record buffer.
// Results: 0, Btrieve's status, -16 for a directory that does not exist, -1 (VE001, or what
// DbDictLoadTable showed).
//
// On 0 the table is open, with one exception: where the file's record length differs from the
// dictionary's, VE806 shows, the result is 0, and IsOpen stays 0 while Btrieve keeps the file open.
// After a failed stat Btrieve keeps it open too. `IsVariable` is set for a file of variable-length
// records, with a buffer of 64,512 bytes or more, and never cleared.
[[nodiscard]] Status DbTableOpen(DbEngine& engine, DbTableInfo& table, const char* directory,
                                 const char* ownerName, int32_t mode) noexcept;

// Creates the data file from the dictionary's fields and keys, replacing one that is there.
// Results: 0, Btrieve's status (VE007), -1 (VE001, or what DbDictLoadTable showed).
[[nodiscard]] Status DbTableCreate(DbEngine& engine, DbTableInfo& table, const char* path) noexcept;

// The same in a directory; -16, and nothing made, where the location needs one and there is none.
[[nodiscard]] Status DbTableCreateIn(DbEngine& engine, DbTableInfo& table,
                                     const char* directory) noexcept;

// Creates the data file if it is certain that there is none, and opens the table. A failed open
// shows VE803.
[[nodiscard]] Status DbOpenOrCreate(DbEngine& engine, DbTableInfo& table, const char* directory,
                                    const char* ownerName, int32_t mode) noexcept;

// DbOpenOrCreate for every closed table in slot order. The first failure ends the walk and is the
// result.
[[nodiscard]] Status DbOpenAllTables(DbEngine& engine, DbDictionary& dictionary,
                                     const char* directory, const char* ownerName,
                                     int32_t mode) noexcept;

// Gives a closed table another location, up to its next load. -2 for an open table; -1, nothing
// changed, for more than 66 bytes.
[[nodiscard]] Status DbSetFileName(DbTableInfo& table, const char* location) noexcept;

// Closes every table of the dictionary (null for none), then ends all of the client's work at
// Btrieve: 0 or its status. The dictionary stays.
[[nodiscard]] Status DbReset(DbEngine& engine, DbDictionary* dictionary) noexcept;

// A login as its owner remembers it.
struct DbLogin {
  char Text[512] = {};
  bool LoggedIn = false;
};

// Logs in with a connection text, handed to Btrieve unread (cut to 511 bytes). The login counts as
// made whatever the status says.
[[nodiscard]] Status DbLogIn(DbLogin& login, const char* connectionText) noexcept;

// Logs out with the same text; 0 when no login was made. It counts as undone whatever the status.
[[nodiscard]] Status DbLogOut(DbLogin& login) noexcept;

}  // namespace qrn
