/* SQLite, with what has to be compiled with it, because it uses what is not visible outside: its
** pages can be read where they lie in its cache, entries be put into its trees, and pages get their
** checksums before they are written to the log, whose own sums go over them. */

/* Pages go to the log through one call of one function. Its declaration and its definition have a
** type where the call has the list of pages: in the call alone the list is prepared. */
struct PgHdr;
static struct PgHdr *PreparedForLog(struct PgHdr *pages);
#define sqlite3WalFrames(log, size, pages, count, commits, sync) \
  sqlite3WalFrames(log, size, Logged_##pages, count, commits, sync)
#define Logged_PgHdr PgHdr
#define Logged_pList PreparedForLog(pList)

#include "sqlite3.c"

#include "SqliteEntries.h"
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

struct sqlite_entries {
  sqlite3* connection;
  unsigned root;
  int side; /* of the place sought the cursor stands: -1 before it, +1 behind it */
  KeyInfo* order;
  UnpackedRecord* sought;
  BtCursor* cursor; /* closed while its tree is null */
};

sqlite_entries* sqlite_entries_make(sqlite3* connection, unsigned root) {
  sqlite_entries* entries = sqlite3MallocZero(sizeof *entries);
  if (!entries) return 0;
  entries->connection = connection;
  entries->root = root;
  entries->order = sqlite3KeyInfoAlloc(connection, 1, 1);
  if (entries->order) entries->sought = sqlite3VdbeAllocUnpackedRecord(entries->order);
  entries->cursor = sqlite3MallocZero(sqlite3BtreeCursorSize());
  if (sqlite3ApiExit(connection, SQLITE_OK) == SQLITE_OK && entries->sought && entries->cursor) {
    return entries;
  }
  sqlite_entries_free(entries);
  return 0;
}

void sqlite_entries_free(sqlite_entries* entries) {
  if (!entries) return;
  sqlite3DbFree(entries->connection, entries->sought);
  sqlite3KeyInfoUnref(entries->order);
  sqlite3_free(entries->cursor);
  sqlite3_free(entries);
}

/* The cell of the cursor's page, or where the page has no such cell the next one in that direction,
** which stands between the children that led to the page. */
static sqlite_cell Neighbour(const BtCursor* cursor, int cell, int forward) {
  sqlite_cell found = {0, 0};
  const MemPage* page = cursor->pPage;
  int level;
  for (level = cursor->iPage - 1; cell < 0 || cell >= (int)page->nCell; --level) {
    if (level < 0) return found;
    page = cursor->apPage[level];
    cell = (int)cursor->aiIdx[level] - (forward ? 0 : 1);
  }
  found.page = page->aData;
  found.cell = (unsigned)cell;
  return found;
}

int sqlite_entries_seek(sqlite_entries* entries, const void* key, int size, sqlite_cell* before,
                        sqlite_cell* after) {
  Btree* tree = entries->connection->aDb[0].pBt;
  BtCursor* cursor = entries->cursor;
  Mem* bytes = entries->sought->aMem;
  int result;
  int at;
  /* After some failures SQLite ends a transaction by itself. */
  if (sqlite3BtreeTxnState(tree) != SQLITE_TXN_WRITE) return SQLITE_ABORT;
  sqlite3BtreeCursorZero(cursor);
  result = sqlite3BtreeCursor(tree, entries->root, BTREE_WRCSR, entries->order, cursor);
  if (result != SQLITE_OK) return result;
  memset(bytes, 0, sizeof *bytes);
  bytes->flags = MEM_Blob;
  bytes->z = (char*)key;
  bytes->n = size;
  entries->sought->nField = 1;
  entries->sought->default_rc = 0;
  entries->sought->eqSeen = 0;
  result = sqlite3BtreeIndexMoveto(cursor, entries->sought, &entries->side);
  if (result == SQLITE_OK && entries->sought->errCode) result = entries->sought->errCode;
  if (result != SQLITE_OK) return sqlite3ApiExit(entries->connection, result);
  if (entries->side == 0) return SQLITE_CONSTRAINT;
  at = entries->side < 0 ? cursor->ix + 1 : cursor->ix;
  *before = Neighbour(cursor, at - 1, 0);
  *after = Neighbour(cursor, at, 1);
  return SQLITE_OK;
}

int sqlite_entries_insert(sqlite_entries* entries, const void* row, int size) {
  BtreePayload payload;
  memset(&payload, 0, sizeof payload);
  payload.pKey = row;
  payload.nKey = size;
  return sqlite3ApiExit(entries->connection,
                        sqlite3BtreeInsert(entries->cursor, &payload, 0, entries->side));
}

void sqlite_entries_end(sqlite_entries* entries) { sqlite3BtreeCloseCursor(entries->cursor); }
