#include "fields/WideTextFields.h"

#include <cstring>

#include "fields/LittleEndian.h"
#include "platform/CodePage.h"
#include "platform/CodePageSink.h"

namespace qrn {
namespace {

constexpr size_t kUnit = sizeof(char16_t);
constexpr size_t kPiece = 64;  // bytes of a text turned at a time: there is no allocation here

}  // namespace

void ReadWideText(const FieldSource& field, std::span<char> outText) {
  CodePageSink text(outText);
  for (size_t at = 0; at + kUnit <= field.value.size(); at += kUnit) {
    const auto unit = LoadLittle<char16_t>(field.value.subspan(at));
    if (unit == 0) break;
    text.Put(unit);
  }
  text.Finish();
}

void WriteWideText(const FieldTarget& field) {
  if (field.out.size() < kUnit) return;
  uint8_t* out = field.out.data();
  size_t room = field.out.size() / kUnit - 1;
  for (std::string_view rest = field.text; !rest.empty() && room != 0;) {
    const std::string_view piece = rest.substr(0, CutAtCharacter(rest, kPiece));
    rest.remove_prefix(piece.size());
    char16_t units[kPiece];
    const size_t count = std::min(WidenText(piece, units), room);
    std::memcpy(out, units, count * kUnit);
    out += count * kUnit;
    room -= count;
  }
  std::memset(out, 0, kUnit);
}

}  // namespace qrn
