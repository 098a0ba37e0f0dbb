#include "FlatApi.h"
#include "core/DbEngine.h"
#include "core/FlatState.h"
#include "platform/Bstr.h"
#include "platform/CodePage.h"
#include "platform/Utf.h"

namespace qrn::test {
namespace {

// The functions of forms need the module: natively they are not linked in.
FlatApi LinkedIn() {
  FlatApi api{};
#define QRN_LINKED(result, name, arguments) api.name = &::name;
  QRN_DICTIONARY_FUNCTIONS(QRN_LINKED)
  QRN_TABLE_FUNCTIONS(QRN_LINKED)
  QRN_RECORD_FUNCTIONS(QRN_LINKED)
  QRN_TRANSACTION_FUNCTIONS(QRN_LINKED)
  QRN_TEXT_FUNCTIONS(QRN_LINKED)
#undef QRN_LINKED
  return api;
}

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
  static const FlatApi api = LinkedIn();
  return api;
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
