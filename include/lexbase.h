/* The dictionary library lexbase.dll: reads the three dictionary files of one directory (file.ddf,
 * field.ddf, index.ddf) row by row. It knows no file format: everything goes through BTRCALL, so
 * any record manager that can open the files serves.
 *
 * One reading exists at a time in a process: DDFOpen begins it, DDFClose ends it. Within it the
 * three files are read independently of each other, each from its first row to its end. Calls come
 * from one thread.
 *
 * Every function returns 0 for success, 9 at the end of a file, and otherwise either the record
 * manager's own status (12 file missing, 30 no file of the record manager, 20 no record manager
 * installed, ...) or a LexbaseCode. None changes a file.
 */
#ifndef LEXBASE_H
#define LEXBASE_H

#include <stdint.h>

#include "btrieve.h"

#ifdef _WIN32
#define LEXBASE_CALL __stdcall
#else
#define LEXBASE_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* clang-format off */

/* Codes apart from every status of the record manager, but for the end of a file. */
enum LexbaseCode {
  LexbaseSuccess = 0,
  LexbaseEndOfFile = BtrStatusEndOfFile,
  LexbaseMissing = 126,          /* a caller's own: the library itself cannot be found */
  LexbaseNotOpen = 1001,         /* no reading is under way */
  LexbaseAlreadyOpen = 1002,     /* a reading is under way; it goes on undisturbed */
  LexbaseBadDirectory = 1003,    /* null, empty, or too long for the record manager's paths */
  LexbaseNotADictionary = 1004,  /* a file of another record length, or without the keys of its kind */
  LexbaseNoBuffer = 1005,        /* null buffer */
  LexbaseFailed = 1006           /* no memory */
};

/* Types of a field: LexbaseTypeString and so on. Up to UBin they are keys' types of the same
 * number, where there is one. */
#define LEXBASE_FIELD_TYPES(X)              \
  X(String, BtrTypeString)                  \
  X(Integer, BtrTypeInteger)                \
  X(Float, BtrTypeFloat)                    \
  X(Date, BtrTypeDate)                      \
  X(Time, BtrTypeTime)                      \
  X(Decimal, BtrTypeDecimal)                \
  X(Money, BtrTypeMoney)                    \
  X(Logical, BtrTypeLogical)                \
  X(Numeric, BtrTypeNumeric)                \
  X(BFloat, BtrTypeBFloat)                  \
  X(LString, BtrTypeLString)                \
  X(ZString, BtrTypeZString)                \
  X(Note, 12)                               /* text of variable length, to its NUL */ \
  X(LVar, 13)                               \
  X(UBin, BtrTypeUnsignedBinary)            \
  X(AutoInc, BtrTypeAutoIncrement)          \
  X(Bit, 16)                                /* `decimals` is the bit's number */ \
  X(NumericSTS, BtrTypeNumericSts)          \
  X(NumericSA, BtrTypeNumericSa)            \
  X(Currency, BtrTypeCurrency)              \
  X(Blob, 21)                               \
  X(WideString, BtrTypeWideString)          \
  X(WideZString, BtrTypeWideZString)        \
  X(ConstraintName, 227)                    /* names a constraint: no column */ \
  X(IndexName, 255)                         /* names a key: `offset` is its number */

#define LEXBASE_FIELD_TYPE_ROW(name, number) LexbaseType##name = number,
enum LexbaseFieldType { LEXBASE_FIELD_TYPES(LEXBASE_FIELD_TYPE_ROW) };
#undef LEXBASE_FIELD_TYPE_ROW

/* LexbaseFileRow.flags */
enum LexbaseFileFlag {
  LexbaseFileOwn = 16,           /* a table of the dictionary itself: tables 1 to 3 */
  LexbaseFileNullable = 64       /* has nullable fields */
};

/* LexbaseFieldRow.flags */
enum LexbaseFieldFlag {
  LexbaseFieldNullable = 4       /* a null-indicator byte precedes the value */
};

/* LexbaseIndexRow.flags. The others are the record manager's BtrKeyFlag of the same value. */
enum LexbaseIndexFlag {
  LexbaseIndexDuplicates = BtrKeyDuplicates,
  LexbaseIndexModifiable = BtrKeyModifiable,
  LexbaseIndexSequence = 4,      /* not BtrKeySequence */
  LexbaseIndexNullAll = BtrKeyNullAll,
  LexbaseIndexContinues = BtrKeyAnotherSegment,
  LexbaseIndexIgnoreCase = 32,   /* not BtrKeyIgnoreCase */
  LexbaseIndexDescending = BtrKeyDescending,
  LexbaseIndexNamed = 128,
  LexbaseIndexExtendedType = BtrKeyExtendedType,
  LexbaseIndexNullAny = BtrKeyNullAny
};

enum LexbaseSize {
  LexbaseNameSize = 20,
  LexbaseLocationSize = 64,
  LexbaseFirstUserTable = 4,     /* 1 to 3 are the dictionary's own tables */
  /* Bytes that a read writes, */
  LexbaseFileRowSize = 97,
  LexbaseFieldRowSize = 32,
  LexbaseIndexRowSize = 10,
  /* and bytes that a caller reserves for it. */
  LexbaseFileRowReserve = 112,
  LexbaseFieldRowReserve = 32,
  LexbaseIndexRowReserve = 16
};

/* clang-format on */

#pragma pack(push, 1)

/* Rows, little-endian and without padding. Names are blank-padded text in code page 932. */
typedef struct LexbaseFileRow {
  int16_t fileId;
  char name[LexbaseNameSize];
  char location[LexbaseLocationSize]; /* of the data file */
  uint8_t flags;                      /* LexbaseFileFlag */
  char reserved[10];
} LexbaseFileRow;

typedef struct LexbaseFieldRow {
  int16_t fieldId;
  int16_t fileId;
  char name[LexbaseNameSize];
  uint8_t type;   /* LexbaseFieldType */
  int16_t offset; /* from the start of the record, past a null-indicator byte */
  int16_t size;
  uint8_t decimals;
  uint16_t flags; /* LexbaseFieldFlag */
} LexbaseFieldRow;

typedef struct LexbaseIndexRow {
  int16_t fileId;
  int16_t fieldId;
  int16_t keyNumber; /* from 0 */
  int16_t part;      /* segment number within the key, from 0 */
  uint16_t flags;    /* LexbaseIndexFlag */
} LexbaseIndexRow;

#pragma pack(pop)

/* DDFOpen opens the three files of `directory` (bytes as the record manager takes them in a path),
 * read-only and shared. `mode` is 0; other values are taken the same. On failure nothing stays
 * open.
 *
 * DDFClose ends the reading, whatever the result: the first non-zero status of closing the files.
 *
 * The reads give the next row, into the caller's buffer of the reserved size. After 9 every further
 * call gives 9; after another failure the same row is tried again. On anything but 0 the buffer is
 * left as it was. Tables come by table id; fields by table id and within a table by field id; index
 * rows by table id, key number and segment. The dictionary's own rows are delivered like any.
 *
 * Dictionaries of the nineties are read too: their file.ddf has rows of 87 bytes (`reserved` comes
 * as blanks), their index.ddf one key. There key numbers and parts count from 1, and flags tell no
 * more than duplicates and modifiable, not that a key goes on; numbers and flags are delivered as
 * they stand. */
/* clang-format off */
#define LEXBASE_FUNCTIONS(X) \
  X(int32_t, DDFOpen, (const char* directory, int32_t mode)) \
  X(int32_t, DDFClose, (void)) \
  X(int32_t, DDFReadFile, (void* fileRow)) \
  X(int32_t, DDFReadField, (void* fieldRow)) \
  X(int32_t, DDFReadIndex, (void* indexRow))
/* clang-format on */

#define LEXBASE_DECLARATION(result, name, arguments) result LEXBASE_CALL name arguments;
LEXBASE_FUNCTIONS(LEXBASE_DECLARATION)
#undef LEXBASE_DECLARATION

#ifdef __cplusplus
}
#endif

#endif /* LEXBASE_H */
