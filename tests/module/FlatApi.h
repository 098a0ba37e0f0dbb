// The flat functions by way of which the tests call them: linked in, or found in the built module.
#pragma once

#include <string>

#include "qrnbt350.h"

namespace qrn::test {

// How texts leave the module.
struct TextSettings {
  int fixedArea = 0;  // fix_str_addr
  int unicode = 1;    // v1fx_unicode
};

// The functions by their names.
struct FlatApi {
#define QRN_POINTER(result, name, arguments) decltype(&::name) name;
  QRN_FUNCTIONS(QRN_POINTER)
#undef QRN_POINTER
};

// The interface as a new process finds it, under those settings. What the former call gave is
// closed.
const FlatApi& FreshFlatApi(const TextSettings& settings);

// A string of automation, its length prefix believed: `units` as UTF-16 turned into UTF-8,
// `bytes` as they stand. Both free it.
std::string TakeUnits(void* text);
std::string TakeBytes(void* text);

}  // namespace qrn::test
