#include "host/form/VbTypes.h"

#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

// clang-format off
constexpr VbType kTypes[] = {
    {"Variant",  0,   "",      ""},
    {"Long",     '&', "CLng",  "CLng(0)"},
    {"Integer",  '%', "CInt",  "0"},
    {"Single",   '!', "CSng",  "CSng(0)"},
    {"Double",   '#', "CDbl",  "CDbl(0)"},
    {"Currency", '@', "CCur",  "CCur(0)"},
    {"String",   '$', "CStr",  "\"\""},
    {"Boolean",  0,   "CBool", "False"},
    {"Date",     0,   "CDate", "CDate(0)"},
    {"Byte",     0,   "CByte", "CByte(0)"},
};
// clang-format on

constexpr VbType kClass = {"Object", 0, "", "Nothing"};

}  // namespace

const VbType& TypeNamed(std::string_view name) noexcept {
  for (const VbType& type : kTypes) {
    if (SameWord(type.name, name)) return type;
  }
  return kClass;
}

const VbType& TypeMarked(char mark) noexcept {
  for (const VbType& type : kTypes) {
    if (type.mark == mark && mark != 0) return type;
  }
  return VariantType();
}

const VbType& VariantType() noexcept { return kTypes[0]; }
const VbType& LongType() noexcept { return kTypes[1]; }

}  // namespace qrn::form
