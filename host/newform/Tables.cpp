#include "host/newform/Tables.h"

#include <algorithm>
#include <memory>

#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "platform/CodePage.h"

namespace qrn::newform {
namespace {

constexpr char kLastControlCharacter = 0x1F;

struct FreeDictionary {
  void operator()(DbDictionary* dictionary) const noexcept { DbDictFree(dictionary); }
};
using HeldDictionary = std::unique_ptr<DbDictionary, FreeDictionary>;

// Empty for a name that a form file, whose lines are of that code page too, does not bring back.
std::string Nameable(const char* bytes) {
  const std::string utf8 = CodePageToUtf8(bytes);
  const bool hasControl = std::any_of(utf8.begin(), utf8.end(), [](char byte) {
    return static_cast<unsigned char>(byte) <= kLastControlCharacter;
  });
  return hasControl || Utf8ToCodePage(utf8) != bytes ? std::string() : utf8;
}

Field FieldOf(const DbTableInfo& table, int32_t place) {
  const DbFieldInfo& info = table.Fields[place];
  const bool found = DbFindField(table, info.Name) == place;
  return {found ? Nameable(info.Name) : std::string(), info.Type, info.Size, info.Decimals};
}

const char* GivenName(const DbTableInfo& table, int32_t keyNumber) {
  for (int32_t i = 0; i < table.NamedIndexCount; ++i) {
    if (table.NamedIndexes[i].Offset == keyNumber) return table.NamedIndexes[i].Name;
  }
  return nullptr;
}

// Its own name, else that of its first field, if it leads to the key.
std::string KeyName(const DbTableInfo& table, int32_t place) {
  const DbFieldInfo* first = DbFindFieldById(table, table.Segments[place].FieldId);
  for (const char* name : {GivenName(table, DbSegmentToKey(table, place)),
                           first ? static_cast<const char*>(first->Name) : nullptr}) {
    if (DbFindIndex(table, name) == place) return Nameable(name);
  }
  return {};
}

// A key of fields that the table does not have is left without a name.
void AddPart(const DbTableInfo& table, const DbSegmentInfo& segment, Key& key) {
  const DbFieldInfo* field = DbFindFieldById(table, segment.FieldId);
  if (field) return key.fields.push_back(static_cast<size_t>(field - table.Fields));
  key.name.clear();
}

std::vector<Key> KeysOf(const DbTableInfo& table) {
  std::vector<Key> keys;
  bool begins = true;
  for (int32_t i = 0; i < table.SegmentCount; ++i) {
    const DbSegmentInfo& segment = table.Segments[i];
    if (begins) keys.push_back({KeyName(table, i), {}, (segment.Flags & BtrKeyDuplicates) == 0});
    AddPart(table, segment, keys.back());
    begins = (segment.Flags & kSegmentContinues) == 0;
  }
  return keys;
}

Table TableOf(const DbDictionary& dictionary, const DbTableInfo& info) {
  Table table;
  if (DbFindTable(dictionary, info.Name) == &info) table.name = Nameable(info.Name);
  for (int32_t i = 0; i < info.FieldCount; ++i) table.fields.push_back(FieldOf(info, i));
  table.keys = KeysOf(info);
  return table;
}

}  // namespace

bool Table::IsVariable() const noexcept {
  return std::any_of(fields.begin(), fields.end(), [](const Field& field) {
    return field.type == kNote || field.type == kLVar || field.type == kBlob;
  });
}

bool Table::IsInKey(size_t field) const noexcept {
  return std::any_of(keys.begin(), keys.end(), [field](const Key& key) {
    return std::find(key.fields.begin(), key.fields.end(), field) != key.fields.end();
  });
}

std::optional<size_t> Dictionary::Find(std::string_view tableName) const noexcept {
  for (size_t i = 0; i < tables.size(); ++i) {
    if (!tableName.empty() && tables[i].name == tableName) return i;
  }
  return std::nullopt;
}

Dictionary ReadDictionary(const std::string& directory) {
  QuorinSettings settings;
  DbDictionary* loaded = nullptr;
  const Status status = DbDictLoad(settings, directory.c_str(), &loaded);
  const HeldDictionary held(loaded);
  if (status != 0) throw DictionaryUnreadable(status);
  Dictionary dictionary;
  for (int32_t i = 0; i < held->TableCount; ++i) {
    dictionary.tables.push_back(TableOf(*held, held->Tables[i]));
  }
  return dictionary;
}

}  // namespace qrn::newform
