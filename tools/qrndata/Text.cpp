#include "tools/qrndata/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "platform/CodePage.h"

namespace qrndata {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Twin {
  std::string_view foreign, own;
};

// clang-format off
constexpr Twin kTwins[] = {
    {"\xE3\x80\x9C", "\xEF\xBD\x9E"},  // wave dash, full-width tilde
    {"\xE2\x88\x92", "\xEF\xBC\x8D"},  // minus sign, full-width hyphen
    {"\xE2\x80\x96", "\xE2\x88\xA5"},  // double bar, parallel
    {"\xE2\x80\x94", "\xE2\x80\x95"},  // em dash, horizontal bar
    {"\xC2\xA2",     "\xEF\xBF\xA0"},  // cent
    {"\xC2\xA3",     "\xEF\xBF\xA1"},  // pound
    {"\xC2\xAC",     "\xEF\xBF\xA2"},  // not
};
// clang-format on

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::string_view OwnTwin(std::string_view character) {
  for (const Twin& twin : kTwins) {
    if (twin.foreign == character) return twin.own;
  }
  return character;
}

void NoteUnmappable(Converted& result, std::string_view what, size_t at, bool isBroken = false) {
  if (!result.IsExact() && (result.isBroken || !isBroken)) return;
  result.unmappable = what;
  result.unmappableAt = at;
  result.isBroken = isBroken;
}

void Substitute(Converted& result, OnUnmappable choice, std::string_view replacement) {
  if (choice != OnUnmappable::Skip) result.text.append(replacement);
}

std::string NameOfByte(char byte) {
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "byte 0x%02X", static_cast<uint8_t>(byte));
  return name.data();
}

Converted ToCodePageByCharacter(std::string_view utf8, OnUnmappable choice) {
  Converted result;
  for (size_t at = 0; !utf8.empty(); ++at) {
    const size_t length = CharacterLength(utf8);
    const std::string_view character = OwnTwin(utf8.substr(0, std::max<size_t>(length, 1)));
    const std::string bytes = length == 0 ? "" : qrn::Utf8ToCodePage(character);
    if (length != 0 && qrn::CodePageToUtf8(bytes) == character) {
      result.text += bytes;
    } else {
      const bool isBroken = length == 0;
      NoteUnmappable(result, isBroken ? NameOfByte(utf8[0]) : std::string(character), at, isBroken);
      Substitute(result, choice, "?");
    }
    utf8.remove_prefix(std::max<size_t>(length, 1));
  }
  return result;
}

// The code page's own U+30FB, which also stands for what is no character.
constexpr std::string_view kMiddleDot = "\x81\x45", kMiddleDotUtf8 = "\xE3\x83\xBB";

// The characters may be one or two bytes; a lead byte at the very end stands alone.
bool IsCharacter(std::string_view bytes, std::string_view utf8) {
  if (bytes.size() == 1 && qrn::IsLeadByte(static_cast<uint8_t>(bytes[0]))) return false;
  if (bytes != kMiddleDot && utf8 == kMiddleDotUtf8) return false;
  return utf8 != kReplacement && !utf8.empty() && CharacterLength(utf8) == utf8.size();
}

struct CodePageCharacter {
  std::string_view bytes;
  std::string utf8;
  bool isSound;
};

// The one that `bytes` begins with. What is broken takes no ASCII character along.
CodePageCharacter FirstCharacter(std::string_view bytes) {
  const bool isLead = qrn::IsLeadByte(static_cast<uint8_t>(bytes[0]));
  const bool isPair = bytes.size() > 1 && isLead && IsTrailByte(static_cast<uint8_t>(bytes[1]));
  CodePageCharacter character{bytes.substr(0, isPair ? 2 : 1), {}, false};
  character.utf8 = qrn::CodePageToUtf8(character.bytes);
  character.isSound = IsCharacter(character.bytes, character.utf8);
  if (isPair && !character.isSound && (bytes[1] & 0x80) == 0) character.bytes = bytes.substr(0, 1);
  return character;
}

// `take` is given each sound character and says whether it is wanted.
template <class Take>
Converted WalkCodePage(std::string_view bytes, OnUnmappable choice, std::string_view replacement,
                       Take take) {
  Converted result;
  for (size_t at = 0; !bytes.empty(); ++at) {
    const CodePageCharacter character = FirstCharacter(bytes);
    if (!character.isSound || !take(character, result.text)) {
      NoteUnmappable(result, NameOfByte(bytes[0]), at, true);
      Substitute(result, choice, replacement);
    }
    bytes.remove_prefix(character.bytes.size());
  }
  return result;
}

// Nothing that is no character looks otherwise in UTF-8, but a lead byte at the end may get lost.
bool IsSoundAsWhole(std::string_view bytes, std::string_view utf8) {
  const bool endsInLead = qrn::IsLeadByte(static_cast<uint8_t>(bytes.back()));
  return !endsInLead && !Contains(utf8, kMiddleDotUtf8) && !Contains(utf8, kReplacement);
}

bool HasNul(std::string_view text) { return text.find('\0') != std::string_view::npos; }

}  // namespace

Converted ToCodePage(std::string_view utf8, OnUnmappable choice) {
  if (IsAscii(utf8)) return {std::string(utf8), {}, 0};
  const std::string bytes = qrn::Utf8ToCodePage(utf8);
  if (qrn::CodePageToUtf8(bytes) == utf8) return {bytes, {}, 0};
  return ToCodePageByCharacter(utf8, choice);
}

bool IsTrailByte(uint8_t second) noexcept {
  return second >= 0x40 && second <= 0xFC && second != 0x7F;
}

Converted FromCodePage(std::string_view bytes, OnUnmappable choice) {
  if (!HasNul(bytes)) {
    if (IsAscii(bytes)) return {std::string(bytes), {}, 0};
    std::string whole = qrn::CodePageToUtf8(bytes);
    if (IsSoundAsWhole(bytes, whole)) return {std::move(whole), {}, 0};
  }
  return WalkCodePage(bytes, choice, kReplacement,
                      [](const CodePageCharacter& character, std::string& text) {
                        if (character.bytes[0] == '\0') return false;
                        text += character.utf8;
                        return true;
                      });
}

Converted SoundCodePage(std::string_view bytes, OnUnmappable choice, bool withoutNul) {
  const bool hasBadNul = withoutNul && HasNul(bytes);
  const bool isSound = IsAscii(bytes) || IsSoundAsWhole(bytes, qrn::CodePageToUtf8(bytes));
  if (isSound && !hasBadNul) return {std::string(bytes), {}, 0};
  return WalkCodePage(bytes, choice, "?",
                      [&](const CodePageCharacter& character, std::string& text) {
                        if (hasBadNul && character.bytes[0] == '\0') return false;
                        text += character.bytes;
                        return true;
                      });
}

std::string Show(std::string_view codePageBytes) {
  return FromCodePage(codePageBytes, OnUnmappable::Replace).text;
}

std::string JsonString(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json.append({'\\', c});
    } else if (static_cast<uint8_t>(c) < 0x20) {
      json += Printed("\\u%04x", static_cast<unsigned>(c));
    } else {
      json += c;
    }
  }
  return json + '"';
}

size_t CharacterLength(std::string_view text) noexcept {
  if (text.empty()) return 0;
  const auto byte = [&](size_t at) { return static_cast<uint8_t>(text[at]); };
  const uint8_t lead = byte(0);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                        : lead >= 0xE0 && lead < 0xF0 ? 3
                        : lead >= 0xF0 && lead < 0xF5 ? 4
                                                      : 0;
  if (length == 0 || text.size() < length) return 0;
  for (size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xC0) != 0x80) return 0;
  }
  const bool isShortest = !(lead == 0xE0 && byte(1) < 0xA0) && !(lead == 0xF0 && byte(1) < 0x90);
  const bool isScalar = !(lead == 0xED && byte(1) >= 0xA0) && !(lead == 0xF4 && byte(1) >= 0x90);
  return isShortest && isScalar ? length : 0;
}

size_t CountCharacters(std::string_view utf8) noexcept {
  size_t count = 0;
  for (; !utf8.empty(); ++count) utf8.remove_prefix(std::max<size_t>(CharacterLength(utf8), 1));
  return count;
}

std::string_view WithoutByteOrderMark(std::string_view text) noexcept {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  return text;
}

bool SameName(std::string_view left, std::string_view right) noexcept {
  return qrn::EqualIgnoringCase(left, right);
}

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

}  // namespace qrndata
