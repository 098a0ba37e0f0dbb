// What the fuzzers of extended operations share: a table of every kind of field, texts made of
// words that matter, messages that are only counted.
#pragma once

#include <memory>

#include "core/DbEngine.h"
#include "platform/CodePage.h"
#include "platform/MessageBox.h"
#include "tests/fuzz/FuzzInput.h"

namespace qrn::fuzz {

inline int shown = 0;  // messages since it was set to 0

inline int CountMessage(const char*, unsigned) {
  ++shown;
  return kBoxOk;
}

// One field of each type 0 to 28, of usual and unusual sizes, some of them damaged.
class Table {
 public:
  Table() {
    ReplaceShowBox(CountMessage);
    static constexpr int32_t kSizes[] = {8, 4, 2, 1, 10, 0, 255, 300, -1, 65535, 70000};
    for (int32_t type = 0; type < 29; ++type) {
      DbFieldInfo field{};
      field.Type = type;
      field.Size = kSizes[static_cast<size_t>(type * 7 % 11)];
      field.Offset = type == 20 ? -5 : info_.RecordLength;
      field.Decimals = type % 5;
      CopyText(field.Name, Utf8ToCodePage(type % 4 == 0 ? "ポソァ" + std::to_string(type)
                                                        : "f" + std::to_string(type)));
      if (field.Size > 0) info_.RecordLength += field.Size;
      fields_.push_back(field);
    }
    info_.Fields = fields_.data();
    info_.FieldCount = static_cast<int32_t>(fields_.size());
  }

  DbTableInfo& Info() { return info_; }

 private:
  std::vector<DbFieldInfo> fields_;
  DbTableInfo info_{};
};

// A text in memory of its exact size, so that a read past its end is found. With an even first
// byte the input stands for itself, otherwise each byte picks a word.
inline std::vector<char> TextOf(std::span<const uint8_t> input,
                                std::span<const char* const> words) {
  std::string text;
  const bool plain = input.empty() || input[0] % 2 == 0;
  for (const uint8_t byte : input.subspan(std::min<size_t>(input.size(), 1))) {
    if (plain) {
      text += static_cast<char>(byte);
    } else {
      text += words[byte % words.size()];
    }
  }
  text.resize(text.find('\0') == std::string::npos ? text.size() : text.find('\0'));
  return {text.c_str(), text.c_str() + text.size() + 1};
}

}  // namespace qrn::fuzz
