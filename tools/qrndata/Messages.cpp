#include "tools/qrndata/Messages.h"

#include <optional>

namespace qrndata {

namespace {

constexpr qrn::TextRow<Message> kMessages[] = {
#define QRN_MESSAGE(id, japanese, english) {Message::id, japanese, english},
#include "tools/qrndata/Messages.inc"
#undef QRN_MESSAGE
};
static_assert(qrn::StandAtTheirIds(kMessages));

Language spoken = Language::English;

// What stands in the places %1, %2 ... of `pattern`, in their order; nothing for another text.
std::optional<std::vector<std::string>> WordsIn(std::string_view text, std::string_view pattern) {
  std::vector<std::string> words;
  while (true) {
    const size_t place = pattern.find('%');
    if (!text.starts_with(pattern.substr(0, place))) return std::nullopt;
    if (place == pattern.npos) break;
    text.remove_prefix(place);
    pattern.remove_prefix(place + 2);
    const std::string_view behind = pattern.substr(0, pattern.find('%'));
    const size_t end = behind.empty() ? text.size() : text.find(behind);
    if (end == text.npos) return std::nullopt;
    words.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  if (text.size() != pattern.size()) return std::nullopt;
  return words;
}

}  // namespace

void SpeakLanguage(Language language) noexcept { spoken = language; }

std::string_view TextOf(Message message, Language language) noexcept {
  return qrn::TextOf(kMessages, message, language);
}

std::string_view TextOf(Message message) noexcept { return TextOf(message, spoken); }

std::string SayWords(Message message, const std::vector<std::string>& words) {
  return qrn::WithWords(TextOf(message), words);
}

std::string Reworded(std::string_view english, std::initializer_list<Message> messages) {
  for (const Message message : messages) {
    const auto words = WordsIn(english, TextOf(message, Language::English));
    if (words) return SayWords(message, *words);
  }
  return std::string(english);
}

}  // namespace qrndata
