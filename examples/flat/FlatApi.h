// The module's flat interface as a program sees it: qrnbt350.ocx loaded by name, each export looked
// up once. Texts go in as code page 932 bytes.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace tour {

// One line an export: result, name, arguments.
#define TOUR_EXPORTS(X)                                                                          \
  X(int32_t, DbInitialize, (const char* directory))                                              \
  X(int32_t, DbTerminate, ())                                                                    \
  X(int16_t, DbGetNumOfTable, ())                                                                \
  X(int16_t, DbGetNumOfField, (int16_t table))                                                   \
  X(void*, DbGetTableName, (int16_t table))                                                      \
  X(void*, DbGetFieldName, (int16_t table, int16_t field))                                       \
  X(int16_t, DbGetDataType, (int16_t table, int16_t field))                                      \
  X(int16_t, DbGetDataSize, (int16_t table, int16_t field))                                      \
  X(int16_t, DbOpen, (int16_t table))                                                            \
  X(int16_t, DbClose, (int16_t table))                                                           \
  X(int16_t, DbAccess, (int16_t operation, int16_t table, int16_t index))                        \
  X(void*, DbGetFieldData, (int16_t table, int16_t field))                                       \
  X(int16_t, DbSetFieldData, (int16_t table, int16_t field, const char* text))                   \
  X(int16_t, DbClearFieldBuffer, (int16_t table))                                                \
  X(int16_t, DbGetNumOfRecords, (int16_t table, int32_t * count))                                \
  X(int32_t, DbGetPosition, (int16_t table))                                                     \
  X(int16_t, DbGetDirect, (int16_t table, int32_t position, int16_t index))                      \
  X(int16_t, DbGetByPercentage, (int16_t table, int16_t index, int16_t percentage))              \
  X(int16_t, DbFindPercentage,                                                                   \
    (int16_t table, int16_t index, int32_t position, uint16_t * percentage))                     \
  X(int16_t, DbBeginTransaction, (int16_t lockBias))                                             \
  X(int16_t, DbBeginConCurTransaction, (int16_t lockBias))                                       \
  X(int16_t, DbEndTransaction, ())                                                               \
  X(int16_t, DbAbortTransaction, ())                                                             \
  X(int16_t, DbGetVersion, (void* version))                                                      \
  X(int16_t, DbExAccess,                                                                         \
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
