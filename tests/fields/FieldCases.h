// Verbs for tables of field cases: bytes stand as hex, text as UTF-8.
#pragma once

#include "core/DbTypes.h"
#include "fields/FieldText.h"
#include "fields/QuorinSettings.h"
#include "platform/MessageBox.h"
#include "tests/support/Test.h"

namespace qrn {

using Bytes = std::vector<uint8_t>;

// "05 1C" and so on; blanks may stand anywhere between the pairs.
inline Bytes FromHex(std::string_view hex) {
  Bytes bytes;
  std::string digits;
  for (const char c : hex) {
    if (c != ' ') digits += c;
    if (digits.size() != 2) continue;
    bytes.push_back(static_cast<uint8_t>(std::stoi(digits, nullptr, 16)));
    digits.clear();
  }
  return bytes;
}
inline std::string ToHex(std::span<const uint8_t> bytes) {
  std::string hex;
  for (const uint8_t byte : bytes) {
    char pair[4];
    std::snprintf(pair, sizeof pair, "%02X", byte);
    if (!hex.empty()) hex += ' ';
    hex += pair;
  }
  return hex;
}

inline DbFieldInfo Field(int32_t type, int32_t size, int32_t decimals = 0) {
  DbFieldInfo field{};
  field.Type = type;
  field.Size = size;
  field.Decimals = decimals;
  return field;
}

// The text that `hex` reads as, where the record ends with these bytes.
inline std::string ReadAs(const QuorinSettings& settings, const DbFieldInfo& field,
                          std::string_view hex) {
  const Bytes record = FromHex(hex);
  std::vector<char> text(2048, '#');
  GetFieldText(settings, text, record.data(), field, record);
  return CodePageToUtf8(text.data());
}

inline Bytes Written(const QuorinSettings& settings, const DbFieldInfo& field,
                     const std::string& text, size_t room, uint8_t fill) {
  constexpr size_t kBehind = 32;
  Bytes record(room + kBehind, fill);
  SetFieldText(settings, std::span(record).first(room), text.c_str(), field);
  const auto untouched =
      std::count(record.begin() + static_cast<ptrdiff_t>(room), record.end(), fill);
  EXPECT_EQ(untouched, static_cast<ptrdiff_t>(kBehind)) << "written behind the buffer";
  record.resize(room);
  return record;
}

// What writing `text` (UTF-8) changes in a record of `room` bytes, as hex: a byte that keeps what
// it held shows as "..", and such bytes at the end are left out. A byte changed behind them fails
// the test.
inline std::string WrittenAs(const QuorinSettings& settings, const DbFieldInfo& field,
                             std::string_view text, size_t room = 64) {
  const std::string bytes = Utf8ToCodePage(text);
  const Bytes first = Written(settings, field, bytes, room, 0xEE);
  const Bytes second = Written(settings, field, bytes, room, 0x11);
  size_t end = room;
  while (end != 0 && first[end - 1] == 0xEE && second[end - 1] == 0x11) --end;
  std::string hex = ToHex(std::span(first).first(end));
  for (size_t i = 0; i < end; ++i) {
    if (first[i] == 0xEE && second[i] == 0x11) hex.replace(i * 3, 2, "..");
  }
  return hex;
}

// One case of either direction: read tables go from `hex` to `text`, write tables back.
struct FieldCase {
  const char* name;
  int32_t type, size, decimals;
  const char *hex, *text;
};

inline void ExpectReads(std::span<const FieldCase> cases, const QuorinSettings& settings = {}) {
  for (const FieldCase& row : cases) {
    EXPECT_EQ(ReadAs(settings, Field(row.type, row.size, row.decimals), row.hex), row.text)
        << row.name;
  }
}
inline void ExpectWrites(std::span<const FieldCase> cases, const QuorinSettings& settings = {}) {
  for (const FieldCase& row : cases) {
    EXPECT_EQ(WrittenAs(settings, Field(row.type, row.size, row.decimals), row.text), row.hex)
        << row.name;
  }
}

// Message boxes and beeps since the object was made.
class Watch : test::Pinned {
 public:
  Watch() {
    boxes_.clear();
    beeps_ = 0;
    ReplaceShowBox([](const char* text, unsigned flags) {
      char head[16];
      std::snprintf(head, sizeof head, "[%x ", flags);
      boxes_ += head + CodePageToUtf8(text) + "]";
      return 7;
    });
    ReplaceBeep([](unsigned kind) { beeps_ += kind == kBeepWarning; });
  }
  ~Watch() {
    ReplaceShowBox(nullptr);
    ReplaceBeep(nullptr);
  }

  // The boxes' texts in UTF-8, each with its flags in hex: "[2000 VE011 ...]".
  std::string Boxes() const { return boxes_; }
  int Beeps() const { return beeps_; }

 private:
  static inline std::string boxes_;
  static inline int beeps_ = 0;
};

}  // namespace qrn
