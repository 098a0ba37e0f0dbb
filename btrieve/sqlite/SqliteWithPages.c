/* SQLite, and two functions more that let a page of its cache be read where it lies. They have to be
** compiled with it: what they use is not visible outside. */
#include "sqlite3.c"

#include "SqlitePages.h"

int sqlite_page_get(sqlite3* connection, unsigned number, void** page,
                    const unsigned char** bytes) {
  Btree* tree = connection->aDb[0].pBt;
  DbPage* got = 0;
  if (number == 0 || number > sqlite3BtreeLastPage(tree)) return SQLITE_CORRUPT;
  const int result = sqlite3PagerGet(sqlite3BtreePager(tree), number, &got, 0);
  if (result != SQLITE_OK) return result;
  *page = got;
  *bytes = sqlite3PagerGetData(got);
  return SQLITE_OK;
}

void sqlite_page_release(void* page) { sqlite3PagerUnrefNotNull((DbPage*)page); }
