#include <algorithm>
#include <cstring>

#include "lexbase.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/DictionaryTables.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/TableFile.h"

namespace qrndata {

namespace {

// Cut or blank-padded to the row's width.
template <size_t Width>
void PutText(char (&out)[Width], std::string_view text) {
  std::fill_n(out, Width, ' ');
  std::memcpy(out, text.data(), std::min(text.size(), Width));
}

// One of the three files, open for its rows.
class OwnFile {
 public:
  OwnFile(const std::filesystem::path& directory, const Table& own, bool replace)
      : path_(directory / own.location) {
    Require(BtrFile::Create(path_, CreateBlock(own), replace), PathToUtf8(path_));
    file_.emplace(path_, Access::Exclusive);
  }

  template <class Row>
  void Insert(const Row& row) {
    const auto* begin = reinterpret_cast<const uint8_t*>(&row);
    Bytes bytes(begin, begin + sizeof row);
    Require(file_->Insert(bytes), PathToUtf8(path_));
  }

 private:
  std::filesystem::path path_;
  std::optional<BtrFile> file_;
};

class Writer {
 public:
  Writer(const std::filesystem::path& directory, bool replace)
      : files_(directory, DictionaryTables()[0], replace),
        fields_(directory, DictionaryTables()[1], replace),
        indexes_(directory, DictionaryTables()[2], replace) {}

  void Write(const Table& table) {
    LexbaseFileRow row{};
    row.fileId = static_cast<int16_t>(table.id);
    PutText(row.name, table.name);
    PutText(row.location, table.location);
    row.flags = table.flags;
    PutText(row.reserved, "");
    files_.Insert(row);
    for (const qrn::DbFieldInfo& field : table.fields) WriteField(field);
    WriteKeys(table);
  }

 private:
  void WriteField(const qrn::DbFieldInfo& field) {
    LexbaseFieldRow row{};
    row.fieldId = static_cast<int16_t>(field.FieldId);
    row.fileId = static_cast<int16_t>(field.FileId);
    PutText(row.name, field.Name);
    row.type = static_cast<uint8_t>(field.Type);
    row.offset = static_cast<int16_t>(field.Offset);
    row.size = static_cast<int16_t>(field.Size);
    row.decimals = static_cast<uint8_t>(field.Decimals);
    row.flags = field.Flags;
    fields_.Insert(row);
  }

  void WriteKeys(const Table& table) {
    int nameId = table.fields.empty() ? 0 : table.fields.back().FieldId;
    for (size_t number = 0; number < table.keys.size(); ++number) {
      const Key& key = table.keys[number];
      WriteSegments(table, key, number);
      if (key.name.empty()) continue;
      qrn::DbFieldInfo name = MakeField(key.name, qrn::kIndexName, 0);
      name.FileId = table.id;
      name.FieldId = ++nameId;
      name.Offset = static_cast<int32_t>(number);
      WriteField(name);
    }
  }

  void WriteSegments(const Table& table, const Key& key, size_t number) {
    for (size_t part = 0; part < key.segments.size(); ++part) {
      LexbaseIndexRow row{};
      row.fileId = static_cast<int16_t>(table.id);
      row.fieldId = static_cast<int16_t>(key.segments[part].fieldId);
      row.keyNumber = static_cast<int16_t>(number);
      row.part = static_cast<int16_t>(part);
      row.flags = key.segments[part].flags;
      indexes_.Insert(row);
    }
  }

  OwnFile files_, fields_, indexes_;
};

}  // namespace

void WriteDictionary(const std::filesystem::path& directory, const std::vector<Table>& tables,
                     bool replace) {
  Writer writer(directory, replace);
  Transaction transaction;
  for (const Table& own : DictionaryTables()) writer.Write(own);
  for (const Table& table : tables) writer.Write(table);
  Require(transaction.Commit(), Say(Message::TheDictionary));
}

}  // namespace qrndata
