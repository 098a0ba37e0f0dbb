// The flat functions as the module exports them, for callers in C and C++ that link by name.
//
// Ids, positions, modes and biases are 16 bits wide, results 32. Texts are code page 932 bytes,
// NUL-terminated. A result is 0 or a count, a positive Btrieve status, or a negative code of
// core/ReturnCodes.h. A text result is a string of automation that the caller frees, or, with the
// setting `fix_str_addr`, the module's one area, good until the next call. All calls come on one
// thread. What each function does stands in core/FlatInterface.h.
#pragma once

#include <cstdint>

extern "C" {

// The 16-bit status goes out without its sign: of the codes of core/ReturnCodes.h, -1 reads 65535
// and -21 (an empty directory) 65515. A caller that wants the code takes the low 16 bits.
int32_t DbInitialize(const char* directory);
int32_t DbTerminate();

// The first word of these two is not looked at.
int32_t DbSetOpenMode(int16_t ignored, int16_t mode);
int32_t DbSetOwnerName(int16_t ignored, const char* ownerName, int16_t mode);

int32_t DbGetNumOfTable();
int32_t DbGetNumOfField(int16_t tableId);
int32_t DbGetDataSize(int16_t tableId, int16_t fieldPosition);
int32_t DbGetDataType(int16_t tableId, int16_t fieldPosition);
int32_t DbGetVersion(void* version);  // 5 bytes

int32_t DbOpen(int16_t tableId);
int32_t DbClose(int16_t tableId);
int32_t DbCreate(int16_t tableId);
int32_t DbGetNumOfRecords(int16_t tableId, int32_t* count);

int32_t DbAccess(int16_t operation, int16_t tableId, int16_t indexPosition);
int32_t DbGetPosition(int16_t tableId);
int32_t DbGetDirect(int16_t tableId, int32_t position, int16_t indexPosition);
int32_t DbGetByPercentage(int16_t tableId, int16_t indexPosition, int16_t percentage);
int32_t DbFindPercentage(int16_t tableId, int16_t indexPosition, int32_t position,
                         uint16_t* percentage);
int32_t DbUnlock(int16_t tableId, int16_t unlockType);
int32_t DbClearFieldBuffer(int16_t tableId);
int32_t DbSetFieldData(int16_t tableId, int16_t fieldPosition, const char* text);

int32_t DbBeginTransaction(int16_t lockBias);
int32_t DbBeginConCurTransaction(int16_t lockBias);
int32_t DbEndTransaction();
int32_t DbAbortTransaction();

void* DbGetFieldData(int16_t tableId, int16_t fieldPosition);
void* DbGetFieldName(int16_t tableId, int16_t fieldPosition);
void* DbGetTableName(int16_t tableId);

int32_t DbSetFormattedString(const char* text);

// Of forms: attaching to the database control of that name, and the record of a table to and from
// the form's controls (binding/registry/Attachment.h). `window` is an HWND.
int32_t DbAttachControl(const char* name, const char* formName);
int32_t DbAttachControlByHwnd(const char* name, void* window);
int32_t DbTransferToControl(int16_t tableId);
int32_t DbTransferFromControl(int16_t tableId);
int32_t DbClearControlData(int16_t tableId);

// For applications: message `id` of the table, with its arguments, as the process's last word.
void QuorinFatalAppExit(int id, ...);

}  // extern "C"
