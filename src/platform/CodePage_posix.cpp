// Both directions are whole tables, filled through iconv at first use: 256 KB, and a conversion is
// one look-up a character afterwards.
#include <iconv.h>

#include <algorithm>
#include <array>

#include "platform/CodePage.h"
#include "platform/CodePageSink.h"
#include "platform/Utf.h"

namespace qrn {
namespace {

constexpr char16_t kNoCharacter = 0x30FB;  // what Windows shows for bytes that are none

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // One character; the number of bytes stored, 0 where there is no counterpart.
  size_t Convert(char* from, size_t fromSize, char* to, size_t toSize) const {
    if (!IsOpen()) return 0;
    const size_t room = toSize;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &fromSize, &to, &toSize) != 0 || fromSize != 0) return 0;
    return room - toSize;
  }

 private:
  // iconv_open reports failure as -1 in a pointer's clothes.
  bool IsOpen() const { return reinterpret_cast<intptr_t>(handle_) != -1; }

  iconv_t handle_;
};

// Single bytes that the character set leaves open and Windows maps all the same.
struct SinglePair {
  uint8_t byte;
  char16_t unit;
};
constexpr SinglePair kWindowsSingles[] = {
    {0x80, 0x80}, {0xA0, 0xA0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}};

struct Tables {
  Tables() {
    FillWide();
    FillNarrow();
    for (const SinglePair& pair : kWindowsSingles) {
      wide[pair.byte] = pair.unit;
      narrow[pair.unit] = pair.byte;
    }
  }

  std::array<char16_t, 0x10000> wide{};    // index: the byte, or lead << 8 | trail; 0: none
  std::array<uint16_t, 0x10000> narrow{};  // index: the UTF-16 unit; 0: none

 private:
  void FillWide() {
    const Converter converter("UTF-16LE", "CP932");
    for (uint32_t code = 0; code < 0x10000; ++code) {
      const bool single = code < 0x100;
      if (IsLeadByte(static_cast<uint8_t>(single ? code : code >> 8)) == single) continue;
      char bytes[2] = {static_cast<char>(code >> 8), static_cast<char>(code)};
      char16_t unit = 0;
      char* out = reinterpret_cast<char*>(&unit);
      if (converter.Convert(single ? bytes + 1 : bytes, single ? 1 : 2, out, 2) == 2) {
        wide[code] = unit;
      }
    }
  }

  void FillNarrow() {
    const Converter converter("CP932", "UTF-16LE");
    for (uint32_t code = 0; code < 0x10000; ++code) {
      auto unit = static_cast<char16_t>(code);
      uint8_t bytes[2];
      const size_t size = converter.Convert(reinterpret_cast<char*>(&unit), 2,
                                            reinterpret_cast<char*>(bytes), sizeof bytes);
      if (size == 1) narrow[code] = bytes[0];
      if (size == 2) narrow[code] = static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
    }
  }
};

const Tables& TheTables() {
  static const Tables tables;
  return tables;
}

void PutUnit(const Tables& tables, char16_t unit, char*& out) {
  const uint16_t code = tables.narrow[unit];
  if (code > 0xFF) *out++ = static_cast<char>(code >> 8);
  *out++ = code == 0 && unit != 0 ? '?' : static_cast<char>(code);
}

// Takes one character off the front.
char16_t NextUnit(const Tables& tables, std::string_view& rest) {
  const auto first = static_cast<uint8_t>(rest[0]);
  if (!IsLeadByte(first)) {
    rest.remove_prefix(1);
    const char16_t unit = tables.wide[first];
    return unit != 0 || first == 0 ? unit : kNoCharacter;
  }
  const auto second = rest.size() > 1 ? static_cast<uint8_t>(rest[1]) : uint8_t{0};
  const char16_t unit = tables.wide[first << 8 | second];
  rest.remove_prefix(unit != 0 ? 2 : 1);
  return unit != 0 ? unit : kNoCharacter;
}

}  // namespace

bool IsLeadByte(uint8_t byte) noexcept {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

size_t WidenText(std::string_view bytes, std::span<char16_t> wide) noexcept {
  if (bytes.empty() || wide.size() < bytes.size()) return 0;
  size_t count = 0;
  // Most texts are plain: those need no table.
  for (; count < bytes.size() && static_cast<uint8_t>(bytes[count]) < 0x80; ++count) {
    wide[count] = static_cast<uint8_t>(bytes[count]);
  }
  bytes.remove_prefix(count);
  if (bytes.empty()) return count;
  const Tables& tables = TheTables();
  while (!bytes.empty()) wide[count++] = NextUnit(tables, bytes);
  return count;
}

std::u16string CodePageToUtf16(std::string_view bytes) {
  std::u16string wide(bytes.size(), u'\0');
  wide.resize(WidenText(bytes, wide));
  return wide;
}

std::string Utf16ToCodePage(std::u16string_view wide) {
  std::string bytes(wide.size() * 2, '\0');
  bytes.resize(NarrowUnits(wide, bytes));
  return bytes;
}

size_t NarrowUnits(std::u16string_view wide, std::span<char> out) noexcept {
  const Tables& tables = TheTables();
  char* end = out.data();
  for (const char16_t unit : wide.substr(0, out.size() / 2)) PutUnit(tables, unit, end);
  return static_cast<size_t>(end - out.data());
}

std::string Utf8ToCodePage(std::string_view utf8) { return Utf16ToCodePage(Utf8ToUtf16(utf8)); }
std::string CodePageToUtf8(std::string_view bytes) { return Utf16ToUtf8(CodePageToUtf16(bytes)); }

}  // namespace qrn
