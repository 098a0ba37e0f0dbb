#include "FieldCases.h"

#include "platform/MessageBox.h"

namespace qrn {
namespace {

std::string shownBoxes;
int beeps;

int NoteBox(const char* text, unsigned flags) {
  char head[16];
  std::snprintf(head, sizeof head, "[%x ", flags);
  shownBoxes += head + CodePageToUtf8(text) + "]";
  return 7;
}

void NoteBeep(unsigned kind) {
  if (kind == kBeepWarning) ++beeps;
}

Bytes Written(const QuorinSettings& settings, const DbFieldInfo& field, const std::string& text,
              size_t room, uint8_t fill) {
  constexpr size_t kBehind = 32;
  Bytes record(room + kBehind, fill);
  SetFieldText(settings, std::span(record).first(room), text.c_str(), field);
  const auto untouched =
      std::count(record.begin() + static_cast<ptrdiff_t>(room), record.end(), fill);
  EXPECT_EQ(untouched, static_cast<ptrdiff_t>(kBehind)) << "written behind the buffer";
  record.resize(room);
  return record;
}

}  // namespace

Bytes FromHex(std::string_view hex) {
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

std::string ToHex(std::span<const uint8_t> bytes) {
  std::string hex;
  for (const uint8_t byte : bytes) {
    char pair[4];
    std::snprintf(pair, sizeof pair, "%02X", byte);
    if (!hex.empty()) hex += ' ';
    hex += pair;
  }
  return hex;
}

DbFieldInfo Field(int32_t type, int32_t size, int32_t decimals) {
  DbFieldInfo field{};
  field.Type = type;
  field.Size = size;
  field.Decimals = decimals;
  return field;
}

std::string ReadAs(const QuorinSettings& settings, const DbFieldInfo& field, std::string_view hex) {
  const Bytes record = FromHex(hex);
  std::vector<char> text(2048, '#');
  GetFieldText(settings, text, record.data(), field, record);
  return CodePageToUtf8(text.data());
}

std::string WrittenAs(const QuorinSettings& settings, const DbFieldInfo& field,
                      std::string_view text, size_t room) {
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

void ExpectReads(std::span<const FieldCase> cases, const QuorinSettings& settings) {
  for (const FieldCase& row : cases) {
    EXPECT_EQ(ReadAs(settings, Field(row.type, row.size, row.decimals), row.hex), row.text)
        << row.name;
  }
}

void ExpectWrites(std::span<const FieldCase> cases, const QuorinSettings& settings) {
  for (const FieldCase& row : cases) {
    EXPECT_EQ(WrittenAs(settings, Field(row.type, row.size, row.decimals), row.text), row.hex)
        << row.name;
  }
}

Watch::Watch() {
  shownBoxes.clear();
  beeps = 0;
  ReplaceShowBox(&NoteBox);
  ReplaceBeep(&NoteBeep);
}

Watch::~Watch() {
  ReplaceShowBox(nullptr);
  ReplaceBeep(nullptr);
}

std::string Watch::Boxes() const { return shownBoxes; }
int Watch::Beeps() const { return beeps; }

}  // namespace qrn
