// Dictionaries through the engine's reading of them, over the dictionary library that this program
// carries in itself.
#include <unordered_map>

#include "core/DictionaryRows.h"
#include "lexbase.h"
#include "platform/LexbaseCalls.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Names.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace {

struct LibraryCode {
  int code;
  Message meaning;
};

constexpr LibraryCode kLibraryCodes[] = {
    {LexbaseAlreadyOpen, Message::DictionaryBusy},
    {LexbaseBadDirectory, Message::DirectoryNameBad},
    {LexbaseNotADictionary, Message::OtherDictionaryKind},
    {LexbaseFailed, Message::NoMemory},
};

std::string CodeText(int code, const std::filesystem::path& directory) {
  if (HasLinks(directory)) {
    const std::string fault = WhyNotReached(ServerOf(directory), static_cast<Status>(code));
    if (!fault.empty()) return fault;
  }
  for (const LibraryCode& row : kLibraryCodes) {
    if (row.code == code) return Say(row.meaning);
  }
  return StatusText(static_cast<Status>(code));
}

// While it lives the engine reads with the library in this program.
class OwnLibrary {
 public:
  OwnLibrary() : before_(qrn::ReplaceLexbase(&kFunctions)) {}
  OwnLibrary(const OwnLibrary&) = delete;
  OwnLibrary& operator=(const OwnLibrary&) = delete;
  ~OwnLibrary() { qrn::ReplaceLexbase(before_); }

 private:
  static constexpr qrn::LexbaseFunctions kFunctions = {&::DDFOpen, &::DDFClose, &::DDFReadFile,
                                                       &::DDFReadField, &::DDFReadIndex};

  const qrn::LexbaseFunctions* before_;
};

class DictionaryBuilder {
 public:
  explicit DictionaryBuilder(Dictionary& dictionary) : dictionary_(dictionary) {}

  void TakeTable(const qrn::FileRow& row) {
    if (row.flags == qrn::kRowOfDictionaryItself) return;
    Table table;
    table.id = Unsigned(row.fileId);
    table.name = row.name;
    table.location = row.location;
    table.flags = row.flags;
    slots_.emplace(table.id, dictionary_.tables.size());
    dictionary_.tables.push_back(std::move(table));
  }

  void TakeField(const qrn::FieldRow& row) {
    if (row.NamesDictionaryField() || row.type == qrn::kConstraintName) return;
    Table* table = Find(Unsigned(row.fileId), Say(Message::TheField, Quoted(row.name)));
    if (table == nullptr) return;
    qrn::DbFieldInfo field = MakeField(row.name, row.type, Unsigned(row.size));
    field.FieldId = Unsigned(row.fieldId);
    field.FileId = table->id;
    field.Offset = Unsigned(row.offset);
    field.Decimals = row.decimals;
    field.Flags = row.flags;
    if (field.Type == qrn::kIndexName) {
      indexNames_.push_back(field);
    } else {
      table->fields.push_back(field);
    }
  }

  // The n-th run of segments is key n, whatever number the row carries: so forms count.
  void TakeSegment(const qrn::IndexRow& row) {
    const int id = Unsigned(row.fileId);
    if (id < kFirstUserTable) return;
    Table* table = Find(id, Say(Message::AKeySegment));
    if (table == nullptr) return;
    NoteParts(*table, row.part);
    const bool beginsKey =
        table->keys.empty() || (table->keys.back().segments.back().flags & kIndexContinues) == 0;
    if (beginsKey) table->keys.emplace_back();
    table->keys.back().segments.push_back({Unsigned(row.fieldId), row.flags});
    NoteNumbers(*table, row, table->keys.back().segments.back());
  }

  // Index names stand among the fields, before the keys are known.
  void NameKeys() {
    for (const qrn::DbFieldInfo& name : indexNames_) {
      Table* table = Find(name.FileId, {});
      const auto number = static_cast<size_t>(name.Offset);
      if (number < table->keys.size()) {
        table->keys[number].name = name.Name;
      } else {
        Note(*table, Say(Message::IndexNameAstray, Quoted(name.Name), number));
      }
    }
  }

 private:
  // Ids, offsets and sizes have all 16 bits here.
  static int Unsigned(int32_t word) { return static_cast<uint16_t>(word); }

  Table* Find(int id, const std::string& what) {
    const auto slot = slots_.find(id);
    if (slot != slots_.end()) return &dictionary_.tables[slot->second];
    if (id >= kFirstUserTable) {
      dictionary_.oddities.push_back(Say(Message::TableIdAstray, what, id));
    }
    return nullptr;
  }

  void Note(const Table& table, const std::string& text) {
    dictionary_.oddities.push_back(Say(Message::OfTable, Quoted(table.name), text));
  }

  // Dictionaries of the nineties count from 1 and have no flag for a key that goes on: there a
  // higher part does.
  void NoteParts(Table& table, int part) {
    if (table.keys.empty()) countsFromOne_ = true;
    countsFromOne_ = countsFromOne_ && part > 0;
    const bool goesOn = countsFromOne_ && !table.keys.empty() && part == lastPart_ + 1;
    if (goesOn) table.keys.back().segments.back().flags |= kIndexContinues;
    lastPart_ = part;
  }

  void NoteNumbers(const Table& table, const qrn::IndexRow& row, const Segment& segment) {
    const auto number = static_cast<int>(table.keys.size()) - 1;
    const auto part = static_cast<int>(table.keys.back().segments.size()) - 1;
    const int first = countsFromOne_ ? 1 : 0;
    if (row.keyNumber != number + first || row.part != part + first) {
      Note(table, Say(Message::NumberedOtherwise, number, part, Unsigned(row.keyNumber),
                      Unsigned(row.part)));
    }
    if (FindField(table, segment.fieldId) == nullptr) {
      Note(table, Say(Message::KeyFieldAstray, number, segment.fieldId));
    }
  }

  Dictionary& dictionary_;
  std::unordered_map<int, size_t> slots_;
  std::vector<qrn::DbFieldInfo> indexNames_;
  bool countsFromOne_ = false;  // keys and parts of the table at hand
  int lastPart_ = 0;
};

}  // namespace

const Table& Dictionary::Find(std::string_view name) const {
  Names names;
  for (const Table& table : tables) names.push_back(table.name);
  if (const auto found = FindName(names, name)) return tables[*found];
  std::string all;
  for (const Table& table : tables) {
    all.append(all.empty() ? "" : ", ").append(Show(table.name));
  }
  throw Failure(kBadInput, Say(Message::NoSuchTable, PathToUtf8(directory), name,
                               DidYouMean(names, name), all));
}

Dictionary ReadDictionary(const std::filesystem::path& directory) {
  Dictionary dictionary;
  dictionary.directory = directory;
  DictionaryBuilder builder(dictionary);
  const auto require = [&](int32_t code) {
    if (code == 0) return;
    throw Failure(kSystem,
                  Say(Message::NoDictionary, PathToUtf8(directory), CodeText(code, directory)));
  };
  const OwnLibrary library;
  qrn::DictionaryReading reading;
  require(reading.Open(BtrievePath(directory).c_str()));
  const auto feed = [&](auto readRow, auto take) {
    require(qrn::ForEachRow(readRow, [&](const auto& row) {
      (builder.*take)(row);
      return qrn::kNextRow;
    }));
  };
  feed(&qrn::ReadFileRow, &DictionaryBuilder::TakeTable);
  feed(&qrn::ReadFieldRow, &DictionaryBuilder::TakeField);
  feed(&qrn::ReadIndexRow, &DictionaryBuilder::TakeSegment);
  builder.NameKeys();
  return dictionary;
}

}  // namespace qrndata
