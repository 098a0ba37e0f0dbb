/* Lists the tables of a dictionary directory, and of each data file what the record manager tells
 * of it: through lexbase and BTRCALL alone, without the module.
 *
 *   tables DIRECTORY
 *
 * Names are printed as they stand in the dictionary, in code page 932. */
#include <stdio.h>
#include <string.h>

#include "btrieve.h"
#include "lexbase.h"

#ifdef _WIN32
static const char kSeparator = '\\';
#else
static const char kSeparator = '/';
#endif

/* A row in the room that a read may ask for. */
union FileRow {
  LexbaseFileRow row;
  char room[LexbaseFileRowReserve];
};

/* The length of a blank-padded text without its padding. */
static int Length(const char* text, int width) {
  while (width > 0 && text[width - 1] == ' ') --width;
  return width;
}

/* What Stat tells of the file at `path`; a BtrStatus. */
static int16_t ReadStat(char* path, BtrFileSpec* head) {
  char block[BtrPositionBlockSize] = {0}, key[BtrKeyBufferSize] = {0};
  char reply[4096] = {0};
  uint32_t length = 0;
  int16_t status =
      BTRCALL(BtrOpOpen, block, NULL, &length, path, (uint8_t)(strlen(path) + 1), BtrModeReadOnly);
  if (status != BtrStatusOk) return status;
  length = sizeof reply;
  status = BTRCALL(BtrOpStat, block, reply, &length, key, 0, 0);
  if (status == BtrStatusOk) memcpy(head, reply, sizeof *head);
  length = 0;
  BTRCALL(BtrOpClose, block, NULL, &length, NULL, 0, 0);
  return status;
}

static void PrintTable(const char* directory, const LexbaseFileRow* row) {
  char path[BtrLongestPath + 1];
  BtrFileSpec head = {0};
  int16_t status;
  snprintf(path, sizeof path, "%s%c%.*s", directory, kSeparator,
           Length(row->location, LexbaseLocationSize), row->location);
  status = ReadStat(path, &head);
  printf("%.*s: ", Length(row->name, LexbaseNameSize), row->name);
  if (status != BtrStatusOk) {
    printf("status %d\n", status);
    return;
  }
  printf("%u records of %u bytes%s, %u keys\n", (unsigned)head.recordCount, head.recordLength,
         (head.flags & BtrFileVariable) != 0 ? " and more" : "", head.keyCount);
}

int main(int argc, char** argv) {
  union FileRow read;
  int32_t code;
  if (argc != 2) {
    fprintf(stderr, "usage: tables DIRECTORY\n");
    return 2;
  }
  code = DDFOpen(argv[1], 0);
  if (code != LexbaseSuccess) {
    printf("there is no dictionary to read: %d\n", (int)code);
    return 1;
  }
  while ((code = DDFReadFile(&read)) == LexbaseSuccess) {
    if ((read.row.flags & LexbaseFileOwn) == 0) PrintTable(argv[1], &read.row);
  }
  DDFClose();
  return code == LexbaseEndOfFile ? 0 : 1;
}
