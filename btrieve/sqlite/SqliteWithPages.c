/* SQLite, with what has to be compiled with it, because it uses what is not visible outside: its
** pages can be read where they lie in its cache, and pages get their checksums before they are
** written to the log, whose own sums go over them. */

/* Pages go to the log through one call of one function. Its declaration and its definition have a
** type where the call has the list of pages: in the call alone the list is prepared. */
struct PgHdr;
static struct PgHdr *PreparedForLog(struct PgHdr *pages);
#define sqlite3WalFrames(log, size, pages, count, commits, sync) \
  sqlite3WalFrames(log, size, Logged_##pages, count, commits, sync)
#define Logged_PgHdr PgHdr
#define Logged_pList PreparedForLog(pList)

#include "sqlite3.c"

#include "SqlitePages.h"

/* What stands behind the last commit belongs to a transaction that was undone or whose process has
** died. New frames over it, mixed with it by a power cut, would look like damage. */
static void CutLogBehindCommits(Wal *log) {
  const i64 end = walFrameOffset(log->hdr.mxFrame + 1, log->szPage);
  i64 size = 0;
  if (log->hdr.mxFrame == 0) return; /* it is begun anew */
  if (memcmp(&log->hdr, (const void *)walIndexHdr(log), sizeof log->hdr) != 0) {
    return; /* the frames are this transaction's own */
  }
  if (sqlite3OsFileSize(log->pWalFd, &size) != SQLITE_OK || size <= end) return;
  if (sqlite3OsTruncate(log->pWalFd, end) == SQLITE_OK) {
    sqlite3OsSync(log->pWalFd, SQLITE_SYNC_NORMAL);
  }
}

/* Other databases of the process keep no room for a checksum: theirs are left alone. */
static PgHdr *PreparedForLog(PgHdr *pages) {
  PgHdr *page;
  if (pages->pPager->nReserve != kSealSize) return pages;
  CutLogBehindCommits(pages->pPager->pWal);
  for (page = pages; page; page = page->pDirty) sqlite_seal_page(page->pData, page->pgno);
  return pages;
}

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

int sqlite_reads_log(sqlite3* connection) {
  const Pager* pager = sqlite3BtreePager(connection->aDb[0].pBt);
  return pager->pWal && pager->pWal->readLock > 0;
}
