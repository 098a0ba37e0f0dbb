// A dictionary in memory: one directory's file.ddf, field.ddf and index.ddf, read through lexbase,
// and with it the run-time state of its tables. One dictionary is one set of open tables; two
// database controls never share one.
//
// All memory of a dictionary, record buffers included, is platform/Memory.h's; DbDictFree frees it.
#pragma once

#include "core/DbEngine.h"
#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// Loads a whole dictionary; with the setting `delayed_resolve` only its tables
// (DbDictLoadTableList). Shows nothing.
//
// Results: 0, lexbase's code, or -1 for memory or more than 256 user tables. `*dictionary` is set
// as soon as the directory could be opened, and on a later failure keeps what was built: the caller
// frees it in any case. It is left alone when the directory could not be opened.
[[nodiscard]] Status DbDictLoad(QuorinSettings& settings, const char* directory,
                                DbDictionary** dictionary) noexcept;

// The deferred load: the tables alone, their fields and keys following at each table's first open
// or create. Remembers the directory in the settings; the last one answers for every dictionary.
// Shows its failures (VE028, VE029, VE812, VE001) and gives 0 or -1; `*dictionary` as above.
[[nodiscard]] Status DbDictLoadTableList(QuorinSettings& settings, const char* directory,
                                         DbDictionary** dictionary) noexcept;

// Loads the fields and keys of one table from the remembered directory. Differs from the full load
// on purpose: field flags stay 0, index names are left out, RecordLength is the sum of the sizes.
// Shows its failures (VE028, VE030, VE031, VE812, VE001) when the reading has been closed, and
// gives 0 or -1; after a failure the table counts as not loaded.
[[nodiscard]] Status DbDictLoadTable(QuorinSettings& settings, DbTableInfo& table) noexcept;

// A deep copy with every table closed, for a second control of the same directory. Tables not yet
// loaded stay so. -1 after VE001, `*copy` null, without memory.
[[nodiscard]] Status DbDictCopy(const DbDictionary& source, DbDictionary** copy) noexcept;

// Closes one table: 0, or Btrieve's status with nothing changed. On 0 the record buffer is gone.
Status DbTableClose(DbEngine& engine, DbTableInfo& table) noexcept;

// Closes every open table; a failure shows VE813 and the walk goes on. Always 0.
Status DbDictCloseAll(DbEngine& engine, DbDictionary& dictionary) noexcept;

// Frees a dictionary and all that hangs on it, closing nothing. Where the flat interface works on
// this one, it has no dictionary afterwards. -1 for null.
//
// While a message box is up, whoever showed it may be in the midst of this dictionary: it has ended
// for everybody else then, has no tables for a walk over them, and its memory goes with the next
// dictionary that is made or freed without a box. So a table stays good across a message, though
// not across an event, after which it is asked for again by its name.
Status DbDictFree(DbDictionary* dictionary) noexcept;

// Told of each dictionary that is about to be freed, its tables still there: who remembers tables
// beyond a call forgets them then.
using DictionaryWatcher = void (*)(const DbDictionary& dictionary) noexcept;

// There is one watcher; null for none.
void WatchDictionaryEnds(DictionaryWatcher watcher) noexcept;

}  // namespace qrn
