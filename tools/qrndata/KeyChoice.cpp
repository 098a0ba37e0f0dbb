#include "tools/qrndata/KeyChoice.h"

#include <charconv>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Names.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

// The names of the keys, then of their first fields; keys without either have an empty one.
Names KeyNames(const Table& table) {
  Names names;
  for (const Key& key : table.keys) names.push_back(key.name);
  for (const Key& key : table.keys) {
    const qrn::DbFieldInfo* first = FindField(table, key.segments.front().fieldId);
    names.push_back(first == nullptr ? "" : first->Name);
  }
  return names;
}

}  // namespace

size_t ChooseKey(const Table& table, const std::string& wanted) {
  size_t number = table.keys.size();
  const char* end = wanted.data() + wanted.size();
  const auto parsed = std::from_chars(wanted.data(), end, number);
  if (parsed.ptr == end && number < table.keys.size()) return number;
  const Names names = KeyNames(table);
  if (const auto found = FindName(names, wanted)) return *found % table.keys.size();
  throw Failure(kBadInput,
                Say(Message::NoSuchKey, Quoted(table.name), wanted, DidYouMean(names, wanted)));
}

const btrieve::KeySpec& KeyInFile(const Table& table, size_t key, const btrieve::FileSpec& file,
                                  const FileMatch& match) {
  if (match.slots[key]) return file.keys[*match.slots[key]];
  throw Failure(kSystem, Say(Message::FileLacksKeyNumber, Quoted(table.name), key));
}

}  // namespace qrndata
