#include <algorithm>
#include <array>
#include <unordered_map>

#include "lexbase.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

using RowReader = int(LEXBASE_CALL*)(void*);

struct LibraryCode {
  int code;
  const char* meaning;
};

constexpr LibraryCode kLibraryCodes[] = {
    {LexbaseAlreadyOpen, "another dictionary is being read"},
    {LexbaseBadDirectory, "the directory's name is empty or longer than 254 bytes"},
    {LexbaseNotADictionary, "a dictionary file is of another kind"},
    {LexbaseFailed, "not enough memory"},
};

std::string CodeText(int code) {
  for (const LibraryCode& row : kLibraryCodes) {
    if (row.code == code) return row.meaning;
  }
  return StatusText(static_cast<Status>(code));
}

// The reading that the dictionary library has under way.
class Reading {
 public:
  explicit Reading(const std::filesystem::path& directory) : name_(PathToUtf8(directory)) {
    RequireCode(DDFOpen(BtrievePath(directory).c_str(), 0));
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() { DDFClose(); }

  template <class Take>
  void ForEach(RowReader read, Take take) {
    std::array<uint8_t, LexbaseFileRowReserve> row{};
    int code = 0;
    while ((code = read(row.data())) == 0) take(row);
    if (code != LexbaseEndOfFile) RequireCode(code);
  }

 private:
  void RequireCode(int code) const {
    if (code != 0) throw Failure(kSystem, name_ + ": no readable dictionary: " + CodeText(code));
  }

  std::string name_;
};

using RowBytes = std::array<uint8_t, LexbaseFileRowReserve>;

int Number(const RowBytes& row, size_t offset) { return row[offset] | row[offset + 1] << 8; }

std::string Name(const RowBytes& row, size_t offset, size_t width) {
  std::string name(reinterpret_cast<const char*>(&row[offset]), width);
  name.erase(std::find(name.begin(), name.end(), '\0'), name.end());
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

class DictionaryBuilder {
 public:
  explicit DictionaryBuilder(Dictionary& dictionary) : dictionary_(dictionary) {}

  void TakeTable(const RowBytes& row) {
    if (row[86] == kOwnTable) return;
    Table table;
    table.id = Number(row, 0);
    table.name = Name(row, 2, kMaxNameLength);
    table.location = Name(row, 22, kMaxLocationLength);
    table.flags = row[86];
    slots_.emplace(table.id, dictionary_.tables.size());
    dictionary_.tables.push_back(std::move(table));
  }

  void TakeField(const RowBytes& row) {
    const std::string name = Name(row, 4, kMaxNameLength);
    const bool isOwn = row[6] == '$';
    if (isOwn || row[24] == qrn::kConstraintName) return;
    Table* table = Find(Number(row, 2), "field " + Quoted(name));
    if (table == nullptr) return;
    qrn::DbFieldInfo field = MakeField(name, row[24], Number(row, 27));
    field.FieldId = Number(row, 0);
    field.FileId = table->id;
    field.Offset = Number(row, 25);
    field.Decimals = row[29];
    field.Flags = static_cast<uint16_t>(Number(row, 30));
    if (field.Type == qrn::kIndexName) {
      indexNames_.push_back(field);
    } else {
      table->fields.push_back(field);
    }
  }

  // The n-th run of segments is key n, whatever number the row carries: so forms count.
  void TakeSegment(const RowBytes& row) {
    if (Number(row, 0) < kFirstUserTable) return;
    Table* table = Find(Number(row, 0), "a key segment");
    if (table == nullptr) return;
    const bool beginsKey =
        table->keys.empty() || (table->keys.back().segments.back().flags & kIndexContinues) == 0;
    if (beginsKey) table->keys.emplace_back();
    Segment segment;
    segment.fieldId = Number(row, 2);
    segment.flags = static_cast<uint16_t>(Number(row, 8));
    table->keys.back().segments.push_back(segment);
    NoteNumbers(*table, row, segment);
  }

  // Index names stand among the fields, before the keys are known.
  void NameKeys() {
    for (const qrn::DbFieldInfo& name : indexNames_) {
      Table* table = Find(name.FileId, {});
      const auto number = static_cast<size_t>(name.Offset);
      if (number < table->keys.size()) {
        table->keys[number].name = name.Name;
      } else {
        Note(*table, "the index name " + Quoted(name.Name) + " is for key " +
                         std::to_string(number) + ", which does not exist");
      }
    }
  }

 private:
  Table* Find(int id, const std::string& what) {
    const auto slot = slots_.find(id);
    if (slot != slots_.end()) return &dictionary_.tables[slot->second];
    if (id >= kFirstUserTable) {
      dictionary_.oddities.push_back(what + " belongs to table id " + std::to_string(id) +
                                     ", which does not exist");
    }
    return nullptr;
  }

  void Note(const Table& table, const std::string& text) {
    dictionary_.oddities.push_back("table " + Quoted(table.name) + ": " + text);
  }

  void NoteNumbers(const Table& table, const RowBytes& row, const Segment& segment) {
    const auto number = static_cast<int>(table.keys.size()) - 1;
    const auto part = static_cast<int>(table.keys.back().segments.size()) - 1;
    if (Number(row, 4) != number || Number(row, 6) != part) {
      Note(table, "key " + std::to_string(number) + ", segment " + std::to_string(part) +
                      " is numbered " + std::to_string(Number(row, 4)) + ", segment " +
                      std::to_string(Number(row, 6)));
    }
    if (FindField(table, segment.fieldId) == nullptr) {
      Note(table, "key " + std::to_string(number) + " uses field id " +
                      std::to_string(segment.fieldId) + ", which the table does not have");
    }
  }

  Dictionary& dictionary_;
  std::unordered_map<int, size_t> slots_;
  std::vector<qrn::DbFieldInfo> indexNames_;
};

}  // namespace

const Table& Dictionary::Find(std::string_view name) const {
  const Converted bytes = ToCodePage(name, OnUnmappable::Error);
  std::string all;
  for (const Table& table : tables) {
    if (bytes.IsExact() && table.name == bytes.text) return table;
    all.append(all.empty() ? "" : ", ").append(Show(table.name));
  }
  throw Failure(kBadInput, PathToUtf8(directory) + ": there is no table \"" + std::string(name) +
                               "\"; there are: " + all);
}

Dictionary ReadDictionary(const std::filesystem::path& directory) {
  Dictionary dictionary;
  dictionary.directory = directory;
  DictionaryBuilder builder(dictionary);
  Reading reading(directory);
  reading.ForEach(&DDFReadFile, [&](const RowBytes& row) { builder.TakeTable(row); });
  reading.ForEach(&DDFReadField, [&](const RowBytes& row) { builder.TakeField(row); });
  reading.ForEach(&DDFReadIndex, [&](const RowBytes& row) { builder.TakeSegment(row); });
  builder.NameKeys();
  return dictionary;
}

}  // namespace qrndata
