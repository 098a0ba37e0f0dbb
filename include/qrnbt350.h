/* The functions that qrnbt350.ocx exports to programs without forms, by name.
 *
 * They work on one current dictionary per process: that of DbInitialize, or that of a database
 * control after an attach. Tables are named by id (place in the dictionary, from 0), fields by
 * position in the table (from 0), keys by index position: the segments of all keys count from 0,
 * and the position of a key's first segment stands for the key; -1 is no key. All calls come on one
 * thread.
 *
 * Texts that go in are code page 932 bytes with a NUL; null counts as empty. Through a null pointer
 * for a result nothing is stored. A result is 0 or a count, a positive BtrStatus (btrieve.h), or a
 * QrnCode. Functions that need a table check, in this order: -12 without a dictionary, -15 for an
 * id below 0 or above the number of tables, -3 for a closed table; an id equal to the number of
 * tables counts as a closed table. Nothing is shown here, but what is called may show messages.
 *
 * Texts that come out are, with the setting `fix_str_addr`, the module's one area, good until the
 * next call; otherwise a string of automation (BSTR) that the caller frees with SysFreeString: code
 * page 932 bytes in a wide string's room, but UTF-16 from DbGetFieldData under `v1fx_unicode` 1. On
 * failure they are null or that area, emptied, which is never freed.
 *
 * QRN_FUNCTIONS has a row for each function, X(result, name, arguments): a program that finds them
 * at run time makes its table of pointers and the search for them of these rows.
 */
#ifndef QRNBT350_H
#define QRNBT350_H

#include <stdint.h>

#include "btrieve.h"

/* Natively a function of the same name serves. */
#ifdef _WIN32
#define QRN_CALL __cdecl
#else
#define QRN_CALL
#endif

#ifdef __cplusplus
#define QRN_NOEXCEPT noexcept
extern "C" {
#else
#define QRN_NOEXCEPT
#endif

/* clang-format off */

/* The module's own codes: QrnCodeFailure and so on. */
#define QRN_CODES(X)              \
  X(Success, 0)                   \
  /* No memory, a load that failed, a key that could not be built, a text of a wrong length, a   \
     library that is not there; from a read of the current position any failure. */              \
  X(Failure, -1)                  \
  X(AlreadyOpen, -2)              /* opening, creating, renaming want a closed table */ \
  X(Refused, -2)                  /* a button's operation: a handler of SetData refused it */ \
  X(NotOpen, -3)                  \
  X(NoTable, -4)                  /* nothing has that name, -4 to -6 and -11 */ \
  X(NoField, -5)                  \
  X(NoIndex, -6)                  /* or no key buffer could be made */ \
  X(BadExOperation, -7)           /* extended operations: none of that number */ \
  X(BadCondition, -8)             \
  X(BadFieldList, -9)             \
  X(BadLockBias, -10)             /* the bias in force stays */ \
  X(NoControl, -11)               \
  X(NoDictionary, -12)            /* or no attached control where one is needed */ \
  X(BadFieldId, -13)              \
  X(BadIndexId, -14)              \
  X(BadTableId, -15)              \
  X(NoShortPath, -16)             /* the directory does not exist; for a create: is empty */ \
  X(NotStringArray, -17)          /* whole records in arrays of strings, -17 to -19 */ \
  X(StringArrayRank, -18)         \
  X(ArrayBound, -19)              \
  X(ControlHasNoDictionary, -20)  \
  X(NoDirectory, -21)             /* an empty directory to load a dictionary from */ \
  X(ArrayUnreachable, -22)        /* images in arrays of bytes, -22 to -24 */ \
  X(NotByteArray, -23)            \
  X(ByteArrayRank, -24)           \
  X(ExNoMemory, -99)

#define QRN_CODE_ROW(name, number) QrnCode##name = number,
enum QrnCode { QRN_CODES(QRN_CODE_ROW) };
#undef QRN_CODE_ROW

/* The dictionary and the settings of the next open.
 *
 * DbInitialize closes and frees the current dictionary, then loads that of `directory`; -21 for an
 * empty one, with nothing changed. Its 16-bit code goes out without sign: -1 reads 65535, -21 reads
 * 65515; take the low 16 bits as an int16_t. DbTerminate closes and frees; always 0.
 * DbSetOwnerName cuts the name to 127 bytes. `mode` is a BtrOpenMode.
 * DbGetNumOfField answers for closed tables too; DbGetDataSize and DbGetDataType give -13 for no such
 * field. DbGetVersion fills a BtrVersion. */
#define QRN_DICTIONARY_FUNCTIONS(X) \
  X(int32_t, DbInitialize, (const char* directory)) \
  X(int32_t, DbTerminate, (void)) \
  X(int32_t, DbSetOpenMode, (int16_t ignored, int16_t mode)) \
  X(int32_t, DbSetOwnerName, (int16_t ignored, const char* ownerName, int16_t mode)) \
  X(int32_t, DbGetNumOfTable, (void)) \
  X(int32_t, DbGetNumOfField, (int16_t tableId)) \
  X(int32_t, DbGetDataSize, (int16_t tableId, int16_t fieldPosition)) \
  X(int32_t, DbGetDataType, (int16_t tableId, int16_t fieldPosition)) \
  X(int32_t, DbGetVersion, (void* version))

/* Tables. An open takes directory, owner and mode from the attached control where the attach told the
 * form's window, a create wherever there is one; otherwise those of the functions above serve. */
#define QRN_TABLE_FUNCTIONS(X) \
  X(int32_t, DbOpen, (int16_t tableId)) \
  X(int32_t, DbClose, (int16_t tableId)) \
  X(int32_t, DbCreate, (int16_t tableId)) \
  X(int32_t, DbGetNumOfRecords, (int16_t tableId, int32_t* count))

/* Records. `operation` is a BtrOperation with its lock. Percentages are hundredths of a percent.
 * DbGetPosition gives -1 for any failure. `unlockType` is BtrUnlockSingle, BtrUnlockOne (the current
 * record's) or BtrUnlockAll. DbSetFieldData writes the field into the record buffer; -5 for no such
 * field. */
#define QRN_RECORD_FUNCTIONS(X) \
  X(int32_t, DbAccess, (int16_t operation, int16_t tableId, int16_t indexPosition)) \
  X(int32_t, DbGetPosition, (int16_t tableId)) \
  X(int32_t, DbGetDirect, (int16_t tableId, int32_t position, int16_t indexPosition)) \
  X(int32_t, DbGetByPercentage, (int16_t tableId, int16_t indexPosition, int16_t percentage)) \
  X(int32_t, DbFindPercentage, (int16_t tableId, int16_t indexPosition, int32_t position, \
                                uint16_t* percentage)) \
  X(int32_t, DbUnlock, (int16_t tableId, int16_t unlockType)) \
  X(int32_t, DbClearFieldBuffer, (int16_t tableId)) \
  X(int32_t, DbSetFieldData, (int16_t tableId, int16_t fieldPosition, const char* text))

/* Transactions of the process; they need no dictionary. Bias 0, 100, 200, 300 or 400, the concurrent
 * form 500 too; -10 for another. */
#define QRN_TRANSACTION_FUNCTIONS(X) \
  X(int32_t, DbBeginTransaction, (int16_t lockBias)) \
  X(int32_t, DbBeginConCurTransaction, (int16_t lockBias)) \
  X(int32_t, DbEndTransaction, (void)) \
  X(int32_t, DbAbortTransaction, (void))

/* Texts. Failures differ between the three: no dictionary gives the emptied area, but null from
 * DbGetFieldName; a bad table id null; a closed table the emptied area. No such field: an empty text. */
#define QRN_TEXT_FUNCTIONS(X) \
  X(void*, DbGetFieldData, (int16_t tableId, int16_t fieldPosition)) \
  X(void*, DbGetFieldName, (int16_t tableId, int16_t fieldPosition)) \
  X(void*, DbGetTableName, (int16_t tableId))

/* Extended operations: searches that the record manager filters. `operation` is 36 to 39 with its
 * lock; it does not position. `skipRecords` rejections and `maxRecords` records end a call. Both out
 * values are stored when a result is kept, and only then. Of a result: the bytes of a field by its
 * position in the table, in record `location` from 0 (null for no result, empty for no such record or
 * field); the record's position, -1 if there is none; DbExFree forgets it, -1 if there is none. */
#define QRN_EXTENDED_FUNCTIONS(X) \
  X(int32_t, DbExAccess, (int16_t operation, int16_t tableId, const char* searchCond, \
                          const char* fields, int16_t indexPosition, int16_t skipRecords, \
                          int16_t maxRecords, int16_t ignoreCase, int16_t* exResultId, \
                          int16_t* numOfResults)) \
  X(void*, DbExGetFieldData, (int16_t exResultId, int16_t fieldPosition, int16_t location)) \
  X(int32_t, DbExGetPosition, (int16_t exResultId, int16_t location)) \
  X(int32_t, DbExFree, (int16_t exResultId))

/* The text of the row under way, from a Format handler of a list fill, plain or extended. Always 0. */
#define QRN_ROW_FUNCTIONS(X) \
  X(int32_t, DbSetFormattedString, (const char* text)) \
  X(int32_t, DbExSetFormattedString, (const char* text))

/* Forms: attaching to the database control of that name, whose dictionary becomes the current one,
 * and the record of a table to and from the form's controls. `window` is an HWND. */
#define QRN_FORM_FUNCTIONS(X) \
  X(int32_t, DbAttachControl, (const char* name, const char* formName)) \
  X(int32_t, DbAttachControlByHwnd, (const char* name, void* window)) \
  X(int32_t, DbTransferToControl, (int16_t tableId)) \
  X(int32_t, DbTransferFromControl, (int16_t tableId)) \
  X(int32_t, DbClearControlData, (int16_t tableId))

/* Ends the process with text `id` of the module's string table, its %s and %d filled in. */
#define QRN_EXIT_FUNCTIONS(X) \
  X(void, QuorinFatalAppExit, (int id, ...))

#define QRN_FUNCTIONS(X)        \
  QRN_DICTIONARY_FUNCTIONS(X)   \
  QRN_TABLE_FUNCTIONS(X)        \
  QRN_RECORD_FUNCTIONS(X)       \
  QRN_TRANSACTION_FUNCTIONS(X)  \
  QRN_TEXT_FUNCTIONS(X)         \
  QRN_EXTENDED_FUNCTIONS(X)     \
  QRN_ROW_FUNCTIONS(X)          \
  QRN_FORM_FUNCTIONS(X)         \
  QRN_EXIT_FUNCTIONS(X)

/* clang-format on */

#define QRN_DECLARATION(result, name, arguments) result QRN_CALL name arguments QRN_NOEXCEPT;
QRN_FUNCTIONS(QRN_DECLARATION)
#undef QRN_DECLARATION

#ifdef __cplusplus
}
#endif

#endif /* QRNBT350_H */
