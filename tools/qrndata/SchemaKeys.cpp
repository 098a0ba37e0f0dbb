// [[table.key]]: segments, attributes, index names, collating sequences.
#include <algorithm>

#include "btrieve/keys/KeyTypes.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/SchemaParts.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

constexpr size_t kMaxKeys = 119, kMaxKeyBytes = 255;

struct FlagName {
  const char* name;
  uint16_t flag;
};

constexpr FlagName kKeyFlags[] = {{"duplicates", kIndexDuplicates},
                                  {"modifiable", kIndexModifiable}};
// May stand with the key, for all its segments, or with one segment.
constexpr FlagName kSegmentFlags[] = {{"descending", kIndexDescending},
                                      {"case_insensitive", kIndexCaseInsensitive}};

template <size_t kCount>
uint16_t ReadFlags(const TomlReader& reader, const FlagName (&names)[kCount]) {
  uint16_t flags = 0;
  for (const FlagName& row : names) {
    if (reader.Flag(row.name)) flags |= row.flag;
  }
  return flags;
}

uint16_t ReadNullRule(const TomlReader& reader) {
  const auto rule = reader.Text("null");
  if (!rule) return 0;
  if (*rule == "all") return kIndexNullAll;
  if (*rule == "any") return kIndexNullAny;
  reader.Refuse("null", Say(Message::NullRuleExpected));
}

bool IsTextType(int32_t type) {
  const btrieve::KeyTypeRow* row = btrieve::FindKeyType(static_cast<uint8_t>(type));
  return row != nullptr && row->isString;
}

// What is true of a key as a whole and goes into each of its segments.
struct KeyTraits {
  uint16_t flags = 0;
  uint8_t nullValue = 0;
};

Segment ReadSegment(const TomlReader& reader, const Table& table, const std::string& utf8Name,
                    const KeyTraits& traits) {
  const std::string name = ToCodePage(utf8Name, OnUnmappable::Replace).text;
  const qrn::DbFieldInfo* field = FindField(table, name);
  if (field == nullptr) {
    reader.Refuse(Say(Message::NoFieldBeforeKey, utf8Name));
  }
  const btrieve::KeyTypeRow* type = btrieve::FindKeyType(static_cast<uint8_t>(field->Type));
  if (type == nullptr || !type->Takes(static_cast<size_t>(field->Size))) {
    reader.Refuse(
        Say(Message::CannotBeKey, Quoted(field->Name), SizedTypeName(field->Type, field->Size)));
  }
  Segment segment;
  segment.fieldId = field->FieldId;
  segment.flags = traits.flags;
  segment.nullValue = traits.nullValue;
  if ((segment.flags & kIndexCaseInsensitive) != 0 && !IsTextType(field->Type)) {
    reader.Refuse(Say(Message::CaseIsForText, Quoted(field->Name), FieldTypeName(field->Type)));
  }
  if (!IsTextType(field->Type)) segment.flags &= static_cast<uint16_t>(~kIndexSequence);
  return segment;
}

Segment ReadSegmentEntry(const TomlReader& keyReader, const Table& table, const toml::node& entry,
                         KeyTraits traits) {
  if (entry.is_string()) {
    return ReadSegment(keyReader, table, entry.as_string()->get(), traits);
  }
  if (!entry.is_table()) {
    throw BadInput(keyReader.File(), PositionOf(entry), Say(Message::KeyFieldsExpected));
  }
  const TomlReader reader(keyReader.File(), *entry.as_table(), Message::ASegment);
  reader.AllowOnly({"field", "descending", "case_insensitive", "null_value"});
  traits.flags |= ReadFlags(reader, kSegmentFlags);
  traits.nullValue =
      static_cast<uint8_t>(reader.Integer("null_value", 0, 255).value_or(traits.nullValue));
  return ReadSegment(reader, table, reader.RequiredText("field"), traits);
}

// The file as it is customary: a mark, a name of 8 bytes, 256 values.
btrieve::CollatingSequence ReadSequence(const TomlReader& reader,
                                        const std::filesystem::path& directory,
                                        const std::string& name) {
  const std::string bytes = ReadWholeFile(directory / PathFromUtf8(name));
  btrieve::CollatingSequence sequence;
  if (bytes.size() != sequence.block.size() ||
      static_cast<uint8_t>(bytes[0]) != btrieve::kSequenceMark) {
    reader.Refuse("collation", Say(Message::NoSequence, name));
  }
  std::copy(bytes.begin(), bytes.end(), sequence.block.begin());
  return sequence;
}

KeyTraits ReadTraits(const TomlReader& reader, Table& table,
                     const std::filesystem::path& directory) {
  KeyTraits traits;
  traits.flags = static_cast<uint16_t>(kIndexExtendedType | ReadFlags(reader, kKeyFlags) |
                                       ReadFlags(reader, kSegmentFlags) | ReadNullRule(reader));
  traits.nullValue = static_cast<uint8_t>(reader.Integer("null_value", 0, 255).value_or(0));
  if (const auto collation = reader.Text("collation")) {
    const auto sequence = ReadSequence(reader, directory, *collation);
    if (table.sequence && !(*table.sequence == sequence)) {
      reader.Refuse("collation", Say(Message::OneSequence));
    }
    table.sequence = sequence;
    traits.flags |= kIndexSequence;
  }
  return traits;
}

std::string ReadIndexName(const TomlReader& reader, const Table& table) {
  if (!reader.Has("name")) return {};
  std::string name = ReadSchemaName(reader, "name", kMaxNameLength);
  const bool isField =
      std::any_of(table.fields.begin(), table.fields.end(),
                  [&](const qrn::DbFieldInfo& field) { return SameName(field.Name, name); });
  const bool isKey = std::any_of(table.keys.begin(), table.keys.end(),
                                 [&](const Key& key) { return SameName(key.name, name); });
  if (isField || isKey) {
    reader.Refuse("name",
                  Say(isField ? Message::FieldHasKeyName : Message::KeyHasKeyName, Quoted(name)));
  }
  return name;
}

void MarkSegments(Key& key) {
  for (Segment& segment : key.segments) {
    if (!key.name.empty()) segment.flags |= kIndexNamed;
    if (&segment != &key.segments.back()) segment.flags |= kIndexContinues;
  }
}

Key ReadKey(const TomlReader& reader, Table& table, const std::filesystem::path& directory) {
  reader.AllowOnly({"name", "fields", "duplicates", "modifiable", "null", "null_value",
                    "descending", "case_insensitive", "collation"});
  Key key;
  key.name = ReadIndexName(reader, table);
  const KeyTraits traits = ReadTraits(reader, table, directory);
  const toml::array* entries = reader.Array("fields");
  if (entries == nullptr || entries->empty()) reader.Refuse(Say(Message::KeyNeedsFields));
  size_t length = 0;
  for (const toml::node& entry : *entries) {
    key.segments.push_back(ReadSegmentEntry(reader, table, entry, traits));
    length += static_cast<size_t>(FindField(table, key.segments.back().fieldId)->Size);
  }
  if (length > kMaxKeyBytes) {
    reader.Refuse("fields", Say(Message::KeyTooLong, length));
  }
  MarkSegments(key);
  return key;
}

}  // namespace

void ReadSchemaKeys(const TomlReader& tableReader, Table& table,
                    const std::filesystem::path& directory) {
  const toml::array* entries = tableReader.Array("key");
  if (entries == nullptr) return;
  if (entries->size() > kMaxKeys) tableReader.Refuse("key", Say(Message::TooManyKeys));
  for (const toml::node& entry : *entries) {
    if (!entry.is_table()) {
      throw BadInput(tableReader.File(), PositionOf(entry), Say(Message::TablesExpected, "key"));
    }
    table.keys.push_back(ReadKey(TomlReader(tableReader.File(), *entry.as_table(), Message::AKey),
                                 table, directory));
  }
}

}  // namespace qrndata
