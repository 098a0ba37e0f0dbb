// The flat interface: the engine for callers that host no controls, on one current dictionary per
// process. The module exports each function under its own name (design/FlatExports.cpp); natively
// they are called as they stand.
//
// Tables are named by id (slot in the dictionary, from 0), fields by position, keys by index
// position (-1: none). Results: 0 or a count, a positive Btrieve status, a negative code of
// core/ReturnCodes.h. Functions that need a table first check, in this order: -12 without a
// dictionary, -15 for an id below 0 or above the table count, -3 for a closed table. An id equal to
// the table count passes and meets an empty, closed table. Nothing is shown here; what is called
// may show messages. A null text counts as empty; through a null out pointer nothing is stored.
#pragma once

#include <cstdint>

namespace qrn::flat {

// Frame. DbInitialize closes and frees the present dictionary, then loads that of `directory`;
// -21 for an empty one, with nothing changed.
int32_t DbInitialize(const char* directory) noexcept;
int32_t DbTerminate() noexcept;
int32_t DbSetOpenMode(int32_t mode) noexcept;
int32_t DbSetOwnerName(const char* ownerName, int32_t mode) noexcept;  // cut to 127 bytes
int32_t DbGetNumOfTable() noexcept;
int32_t DbGetNumOfField(int16_t tableId) noexcept;                       // open or not
int32_t DbGetDataSize(int16_t tableId, int16_t fieldPosition) noexcept;  // -13: no such field
int32_t DbGetDataType(int16_t tableId, int16_t fieldPosition) noexcept;  // -13: no such field
int32_t DbGetVersion(void* version) noexcept;                            // 5 bytes

// Tables. An open takes directory, owner and mode from the attached control where the attach told
// the form's window, a create wherever there is one; otherwise those of the functions above serve.
int32_t DbOpen(int16_t tableId) noexcept;
int32_t DbClose(int16_t tableId) noexcept;
int32_t DbCreate(int16_t tableId) noexcept;
int32_t DbGetNumOfRecords(int16_t tableId, int32_t* count) noexcept;

// Records.
int32_t DbAccess(int16_t operation, int16_t tableId, int16_t indexPosition) noexcept;
int32_t DbGetPosition(int16_t tableId) noexcept;
int32_t DbGetDirect(int16_t tableId, int32_t position, int16_t indexPosition) noexcept;
int32_t DbGetByPercentage(int16_t tableId, int16_t indexPosition, int16_t percentage) noexcept;
int32_t DbFindPercentage(int16_t tableId, int16_t indexPosition, int32_t position,
                         uint16_t* percentage) noexcept;
int32_t DbUnlock(int16_t tableId, int16_t unlockType) noexcept;
int32_t DbClearFieldBuffer(int16_t tableId) noexcept;
int32_t DbSetFieldData(int16_t tableId, int16_t fieldPosition, const char* text) noexcept;

// Transactions need no dictionary.
int32_t DbBeginTransaction(int16_t lockBias) noexcept;
int32_t DbBeginConCurTransaction(int16_t lockBias) noexcept;
int32_t DbEndTransaction() noexcept;
int32_t DbAbortTransaction() noexcept;

// Texts. With the setting `fix_str_addr` the result is DbFlatState::ReturnText, good until the next
// call; otherwise a string of automation (platform/Bstr.h) that the caller frees: the text's bytes
// in a wide string's room, but UTF-16 from DbGetFieldData under `v1fx_unicode` 1. What failures
// give differs between the three and stays so: null, or ReturnText emptied.
void* DbGetFieldData(int16_t tableId, int16_t fieldPosition) noexcept;
void* DbGetFieldName(int16_t tableId, int16_t fieldPosition) noexcept;
void* DbGetTableName(int16_t tableId) noexcept;

// The text of the row under way in a list fill, from a Format handler. Always 0.
int32_t DbSetFormattedString(const char* text) noexcept;

}  // namespace qrn::flat
