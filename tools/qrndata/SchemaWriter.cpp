#include "tools/qrndata/SchemaWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

std::string TomlText(std::string_view utf8) {
  std::string text = "\"";
  for (const char c : utf8) {
    if (c == '"' || c == '\\') {
      text.append({'\\', c});
    } else if (static_cast<uint8_t>(c) < 0x20 || c == 0x7F) {
      std::array<char, 8> code{};
      std::snprintf(code.data(), code.size(), "\\u%04X", static_cast<unsigned>(c));
      text += code.data();
    } else {
      text += c;
    }
  }
  return text + '"';
}

std::string NamedText(std::string_view codePageName) { return TomlText(Show(codePageName)); }

std::string FieldLine(const qrn::DbFieldInfo& field, int32_t walked) {
  std::string line = "  { name = " + NamedText(field.Name) +
                     ", type = " + TomlText(FieldTypeName(field.Type)) +
                     ", size = " + std::to_string(field.Size);
  if (field.Decimals != 0) line += ", decimals = " + std::to_string(field.Decimals);
  if (IsNullable(field)) line += ", nullable = true";
  if (field.Offset != walked) line += ", offset = " + std::to_string(field.Offset);
  return line + " },\n";
}

std::string FieldLines(const Table& table) {
  std::string lines = "field = [\n";
  int32_t walked = 0;
  for (const qrn::DbFieldInfo& field : table.fields) {
    lines += FieldLine(field, walked + (IsNullable(field) ? 1 : 0));
    walked = field.Offset + field.Size;
  }
  return lines + "]\n";
}

struct FlagWord {
  uint16_t flag;
  const char* entry;
};
constexpr FlagWord kSegmentWords[] = {{kIndexDescending, ", descending = true"},
                                      {kIndexCaseInsensitive, ", case_insensitive = true"}};
constexpr FlagWord kKeyWords[] = {{kIndexDuplicates, ", duplicates = true"},
                                  {kIndexModifiable, ", modifiable = true"},
                                  {kIndexNullAll, ", null = \"all\""},
                                  {kIndexNullAny, ", null = \"any\""}};

template <size_t kCount>
std::string Words(uint16_t flags, const FlagWord (&words)[kCount]) {
  std::string text;
  for (const FlagWord& word : words) {
    if ((flags & word.flag) != 0) text += word.entry;
  }
  return text;
}

std::string SegmentText(const Table& table, const Segment& segment) {
  const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
  const std::string name = field == nullptr ? "\"\"" : NamedText(field->Name);
  std::string attributes = Words(segment.flags, kSegmentWords);
  if (segment.nullValue != 0) attributes += ", null_value = " + std::to_string(segment.nullValue);
  return attributes.empty() ? name : "{ field = " + name + attributes + " }";
}

std::string KeyLine(const Table& table, const Key& key, const std::string& collation) {
  std::string line = "  { ";
  if (!key.name.empty()) line += "name = " + NamedText(key.name) + ", ";
  line += "fields = [";
  uint16_t flags = 0;
  for (const Segment& segment : key.segments) {
    line += (&segment == &key.segments.front() ? "" : ", ") + SegmentText(table, segment);
    flags |= segment.flags;
  }
  line += "]" + Words(flags, kKeyWords);
  if ((flags & kIndexSequence) != 0) line += ", collation = " + TomlText(collation);
  return line + " },\n";
}

}  // namespace

std::string SchemaText(const std::vector<Table>& tables,
                       const std::map<int, std::string>& collations) {
  std::string text;
  for (const Table& table : tables) {
    const auto collation = collations.find(table.id);
    text += (text.empty() ? "" : "\n") + std::string("[[table]]\nname = ") + NamedText(table.name) +
            "\nid = " + std::to_string(table.id) + "\nfile = " + NamedText(table.location) +
            "\npage_size = " + std::to_string(table.pageSize) +
            "\nfile_flags = " + std::to_string(table.fileFlags) + '\n' + FieldLines(table);
    if (table.keys.empty()) continue;
    text += "key = [\n";
    for (const Key& key : table.keys) {
      text += KeyLine(table, key, collation == collations.end() ? "" : collation->second);
    }
    text += "]\n";
  }
  return text;
}

}  // namespace qrndata
