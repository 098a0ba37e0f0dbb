/* Pages of a connection's main file, as its open transaction sees them, in SQLite's own cache, and
** what SQLite does not tell of its log. */
#ifndef BTRIEVE_SQLITE_PAGES_H
#define BTRIEVE_SQLITE_PAGES_H

#include <sqlite3.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A transaction must be open, and the page be released before it ends and before anything is
** written. `bytes` holds a whole page; it may be read until the release. Result codes are SQLite's;
** after one that is not SQLITE_OK there is nothing to release. */
int sqlite_page_get(sqlite3* connection, unsigned number, void** page, const unsigned char** bytes);
void sqlite_page_release(void* page);

/* Given by the layer below: puts a page's checksum at its end, in files that keep so many bytes
 *free
 ** there. */
enum { kSealSize = 8 };
void sqlite_seal_page(void* page, unsigned number);
/* Whether the open transaction reads from the log: not when all of it was in the file already. */
int sqlite_reads_log(sqlite3* connection);

#ifdef __cplusplus
}
#endif

#endif
