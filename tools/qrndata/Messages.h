// What the tool says, in the user's language.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/TextTable.h"

namespace qrndata {

using qrn::Language;

enum class Message : uint16_t {
#define QRN_MESSAGE(id, japanese, english) id,
#include "tools/qrndata/Messages.inc"
#undef QRN_MESSAGE
  kCount
};

// The language of the whole program: English until another is set, before anything is said.
void SpeakLanguage(Language language) noexcept;

// As the table has it, its places unfilled. UTF-8.
std::string_view TextOf(Message message) noexcept;
std::string_view TextOf(Message message, Language language) noexcept;

std::string SayWords(Message message, const std::vector<std::string>& words);

inline std::string WordOf(std::string_view text) { return std::string(text); }
template <std::integral Number>
std::string WordOf(Number number) {
  return std::to_string(number);
}

// The message with these texts (UTF-8) and numbers in its places %1, %2, ...
template <class... Words>
std::string Say(Message message, const Words&... words) {
  return SayWords(message, {WordOf(words)...});
}

// `english`, which has the form of one of `messages`, as the program says it: for texts that
// another library words. What has none of the forms stays as it is.
std::string Reworded(std::string_view english, std::initializer_list<Message> messages);

}  // namespace qrndata
