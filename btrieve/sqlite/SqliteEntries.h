/* Entries put into a tree of SQLite's without a statement: one search finds where an entry belongs,
** what stands beside that place can be looked at, and the entry goes there. The tree is that of a
** table without row numbers whose primary key is its first column, bytes without a null. */
#ifndef BTRIEVE_SQLITE_ENTRIES_H
#define BTRIEVE_SQLITE_ENTRIES_H

#include <sqlite3.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A place in one tree of a connection's main file. Kept as long as the table is there and the
** connection is open; it holds pages only between a search and its end. */
typedef struct sqlite_entries sqlite_entries;

/* Where an entry stands: a cell of a page. `page` is null where there is none. */
typedef struct sqlite_cell {
  const unsigned char* page;
  unsigned cell;
} sqlite_cell;

/* `root` is the tree's first page. Null without memory. */
sqlite_entries* sqlite_entries_make(sqlite3* connection, unsigned root);
void sqlite_entries_free(sqlite_entries* entries);

/* Looks for the place of a key, within a write transaction. SQLITE_OK: no entry has the key, and
** the entries before and after it are told; their pages stay until the end. SQLITE_CONSTRAINT: one
** has it. Other codes are failures. Whatever came of it, the search has to be ended before anything
** else is read or written. */
int sqlite_entries_seek(sqlite_entries* entries, const void* key, int size, sqlite_cell* before,
                        sqlite_cell* after);
/* Puts the entry that was sought there: `row` is the whole row as SQLite stores it, its first
** column the key. After a failure the transaction can only be rolled back. */
int sqlite_entries_insert(sqlite_entries* entries, const void* row, int size);
void sqlite_entries_end(sqlite_entries* entries);

#ifdef __cplusplus
}
#endif

#endif
