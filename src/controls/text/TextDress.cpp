#include "controls/text/TextDress.h"

#include <algorithm>
#include <utility>

#include "controls/text/CharacterMask.h"
#include "fields/RightAlign.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

std::string Cut(std::string text) {
  text.resize(CutAtCharacter(text, kDressedTextSize));
  return text;
}

std::string Formatted(const TextDress& dress, const std::string& text) {
  if (!dress.format) return text;
  auto formatted = dress.format(text);
  return formatted ? Cut(std::move(*formatted)) : text;
}

}  // namespace

std::string AlignRight(std::string text, size_t width) {
  if (width == 0) return text;
  text.resize(std::max(text.size(), width) + 1, '\0');
  RightAlignToWidth(text, width);
  text.resize(width);
  return text;
}

std::string TextDress::OfProperty(const std::string& text) const {
  std::string formatted = Formatted(*this, text);
  return RightAligned() ? AlignRight(std::move(formatted), width) : formatted;
}

std::string TextDress::OfField(const std::string& text) const {
  return text.empty() ? text : OfProperty(text);
}

std::optional<std::string> TextDress::OfTyping(const std::string& shown, char16_t character) const {
  if (!EveryChar() || !format) return std::nullopt;
  std::string text = Cut(shown);
  if (character != kBackspace) {
    text += Utf16ToCodePage({&character, 1});
  } else if (!text.empty()) {
    // Half a character is none.
    text.resize(CutAtCharacter(text, text.size() - 1));
  }
  auto formatted = format(text);
  if (!formatted || formatted->empty()) return std::nullopt;
  return AlignRight(Cut(std::move(*formatted)), width);
}

}  // namespace qrn
