// The module's flat interface as a program sees it: qrnbt350.ocx loaded by name, each export looked
// up once. Texts go in as code page 932 bytes.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace tour {

// One line an export: result, name, arguments. Ids and positions of keys are 16 bits wide, results
// 32: 0 or a count, a positive status of the record manager, a negative code of the module's own.
// DbInitialize alone loses the sign of its 16-bit code: it fails as 65535 where -1 is meant, as
// 65515 where -21 is.
#define TOUR_EXPORTS(X)                                                                          \
  X(int32_t, DbInitialize, (const char* directory))                                              \
  X(int32_t, DbTerminate, ())                                                                    \
  X(int32_t, DbGetNumOfTable, ())                                                                \
  X(int32_t, DbGetNumOfField, (int16_t table))                                                   \
  X(void*, DbGetTableName, (int16_t table))                                                      \
  X(void*, DbGetFieldName, (int16_t table, int16_t field))                                       \
  X(int32_t, DbGetDataType, (int16_t table, int16_t field))                                      \
  X(int32_t, DbGetDataSize, (int16_t table, int16_t field))                                      \
  X(int32_t, DbOpen, (int16_t table))                                                            \
  X(int32_t, DbClose, (int16_t table))                                                           \
  X(int32_t, DbAccess, (int16_t operation, int16_t table, int16_t index))                        \
  X(void*, DbGetFieldData, (int16_t table, int16_t field))                                       \
  X(int32_t, DbSetFieldData, (int16_t table, int16_t field, const char* text))                   \
  X(int32_t, DbClearFieldBuffer, (int16_t table))                                                \
  X(int32_t, DbGetNumOfRecords, (int16_t table, int32_t * count))                                \
  X(int32_t, DbGetPosition, (int16_t table))                                                     \
  X(int32_t, DbGetDirect, (int16_t table, int32_t position, int16_t index))                      \
  X(int32_t, DbGetByPercentage, (int16_t table, int16_t index, int16_t percentage))              \
  X(int32_t, DbFindPercentage,                                                                   \
    (int16_t table, int16_t index, int32_t position, uint16_t * percentage))                     \
  X(int32_t, DbBeginTransaction, (int16_t lockBias))                                             \
  X(int32_t, DbBeginConCurTransaction, (int16_t lockBias))                                       \
  X(int32_t, DbEndTransaction, ())                                                               \
  X(int32_t, DbAbortTransaction, ())                                                             \
  X(int32_t, DbGetVersion, (void* version))                                                      \
  X(int32_t, DbExAccess,                                                                         \
    (int16_t operation, int16_t table, const char* condition, const char* fields, int16_t index, \
     int16_t skip, int16_t records, int16_t ignoreCase, int16_t* result, int16_t* count))        \
  X(void*, DbExGetFieldData, (int16_t result, int16_t field, int16_t record))                    \
  X(int32_t, DbExFree, (int16_t result))

struct FlatApi {
#define TOUR_POINTER(result, name, arguments) result(WINAPI* name) arguments = nullptr;
  TOUR_EXPORTS(TOUR_POINTER)
#undef TOUR_POINTER

  // Ends the program with a sentence when the module or one of its exports is missing.
  FlatApi();
};

// UTF-8 to the module's code page and back; the strings that the module gives are freed here.
std::string ToCodePage(const std::string& utf8);
std::string FromCodePage(const std::string& bytes);
std::string TakeByteText(void* text);  // names: bytes in a string of automation
std::string TakeWideText(void* text);  // field data: UTF-16

}  // namespace tour
