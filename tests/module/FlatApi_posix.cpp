#include "FlatApi.h"
#include "core/DbEngine.h"
#include "core/FlatState.h"
#include "platform/Bstr.h"
#include "platform/CodePage.h"
#include "platform/Utf.h"

namespace qrn::test {
namespace {

const FlatApi kLinkedIn = {&::DbInitialize,
                           &::DbTerminate,
                           &::DbSetOpenMode,
                           &::DbSetOwnerName,
                           &::DbGetNumOfTable,
                           &::DbGetNumOfField,
                           &::DbGetDataSize,
                           &::DbGetDataType,
                           &::DbGetVersion,
                           &::DbOpen,
                           &::DbClose,
                           &::DbCreate,
                           &::DbGetNumOfRecords,
                           &::DbAccess,
                           &::DbGetPosition,
                           &::DbGetDirect,
                           &::DbGetByPercentage,
                           &::DbFindPercentage,
                           &::DbUnlock,
                           &::DbClearFieldBuffer,
                           &::DbSetFieldData,
                           &::DbBeginTransaction,
                           &::DbBeginConCurTransaction,
                           &::DbEndTransaction,
                           &::DbAbortTransaction,
                           &::DbGetFieldData,
                           &::DbGetFieldName,
                           &::DbGetTableName,
                           &::DbSetFormattedString};

template <class Read>
std::string Take(void* text, Read read) {
  std::string result = read(static_cast<char16_t*>(text));
  FreeBstr(static_cast<char16_t*>(text));
  return result;
}

}  // namespace

const FlatApi& FreshFlatApi(const TextSettings& settings) {
  ::DbTerminate();
  TheFlatState() = DbFlatState{};
  TheSettings().fix_str_addr = settings.fixedArea;
  TheSettings().v1fx_unicode = settings.unicode;
  return kLinkedIn;
}

std::string TakeUnits(void* text) {
  return Take(text, [](const char16_t* units) {
    return Utf16ToUtf8({units, BstrByteLength(units) / 2});
  });
}

std::string TakeBytes(void* text) {
  return Take(text, [](const char16_t* units) {
    return std::string(reinterpret_cast<const char*>(units), BstrByteLength(units));
  });
}

}  // namespace qrn::test
