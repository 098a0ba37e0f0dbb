#include "fields/WideTextFields.h"

#include <string>

#include "fields/LittleEndian.h"
#include "fields/Sinks.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr size_t kUnit = sizeof(char16_t);

}  // namespace

void ReadWideText(const FieldSource& field, std::span<char> outText) {
  std::u16string wide;
  for (size_t at = 0; at + kUnit <= field.value.size(); at += kUnit) {
    const auto unit = LoadLittle<char16_t>(field.value.subspan(at));
    if (unit == 0) break;
    wide.push_back(unit);
  }
  CopyText(outText, Utf16ToCodePage(wide));
}

void WriteWideText(const FieldTarget& field) {
  if (field.out.size() < kUnit) return;
  std::u16string wide = CodePageToUtf16(field.text);
  wide.resize(std::min(wide.size(), field.out.size() / kUnit - 1));
  std::memcpy(field.out.data(), wide.c_str(), (wide.size() + 1) * kUnit);
}

}  // namespace qrn
