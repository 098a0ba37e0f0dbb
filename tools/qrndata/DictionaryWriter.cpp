#include <algorithm>
#include <cstring>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/DictionaryTables.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/TableFile.h"

namespace qrndata {

namespace {

class Row {
 public:
  explicit Row(const Table& own) : bytes_(RecordLength(own)) {}

  Row& Number(size_t offset, int64_t value, size_t width = 2) {
    for (size_t at = 0; at < width; ++at) {
      bytes_[offset + at] = static_cast<uint8_t>(value >> 8 * at);
    }
    return *this;
  }
  Row& Text(size_t offset, std::string_view text, size_t width) {
    std::fill_n(&bytes_[offset], width, uint8_t{' '});
    std::memcpy(&bytes_[offset], text.data(), std::min(text.size(), width));
    return *this;
  }
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};

// One of the three files, open for its rows.
class OwnFile {
 public:
  OwnFile(const std::filesystem::path& directory, const Table& own, bool replace)
      : own_(own), path_(directory / own.location) {
    Require(BtrFile::Create(path_, CreateBlock(own), replace), PathToUtf8(path_));
    file_.emplace(path_, Access::Exclusive);
  }

  Row NewRow() const { return Row(own_); }
  void Insert(Row& row) {
    Bytes bytes = row.Take();
    Require(file_->Insert(bytes), PathToUtf8(path_));
  }

 private:
  const Table& own_;
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
    Row row = files_.NewRow();
    row.Number(0, table.id).Text(2, table.name, kMaxNameLength);
    row.Text(22, table.location, kMaxLocationLength).Number(86, table.flags, 1).Text(87, "", 10);
    files_.Insert(row);
    for (const qrn::DbFieldInfo& field : table.fields) WriteField(field);
    WriteKeys(table);
  }

 private:
  void WriteField(const qrn::DbFieldInfo& field) {
    Row row = fields_.NewRow();
    row.Number(0, field.FieldId).Number(2, field.FileId).Text(4, field.Name, kMaxNameLength);
    row.Number(24, field.Type, 1).Number(25, field.Offset).Number(27, field.Size);
    row.Number(29, field.Decimals, 1).Number(30, field.Flags);
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
      Row row = indexes_.NewRow();
      row.Number(0, table.id).Number(2, key.segments[part].fieldId);
      row.Number(4, static_cast<int64_t>(number)).Number(6, static_cast<int64_t>(part));
      row.Number(8, key.segments[part].flags);
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
  Require(transaction.Commit(), "the dictionary");
}

}  // namespace qrndata
