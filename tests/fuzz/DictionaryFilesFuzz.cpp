// Dictionaries on disk with damaged files, or with rows that were never written by a sound tool, in
// real files: read by the dictionary library and loaded by the engine through it. Every reading
// ends in a code and lets go of the files; what was loaded can be opened, read and created.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/Dictionary.h"
#include "core/Record.h"
#include "core/Table.h"
#include "lexbase.h"
#include "platform/LexbaseCalls.h"
#include "platform/MessageBox.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/MadeDatabase.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/BtrFile.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

namespace fs = std::filesystem;

constexpr const char* kFiles[] = {"file.ddf", "field.ddf", "index.ddf"};
constexpr size_t kRowSizes[] = {97, 32, 10};

constexpr char kSchema[] = R"([[table]]
name = "People"
field = [
  { name = "Code", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 20, nullable = true },
]
key = [ { name = "ByCode", fields = ["Code"] }, { fields = ["Name", "Code"], modifiable = true } ]
[[table]]
name = "Notes"
field = [ { name = "Id", type = "AutoInc" }, { name = "Text", type = "Note", size = 400 } ]
key = [ { fields = ["Id"] } ])";

// One database, built anew for each input from the bytes of a good one.
class Database {
 public:
  Database() {
    qrn::test::MakeDatabase(folder_.Root(), kSchema);
    for (const char* name : kFiles) good_.push_back(Read(name));
  }
  std::string Path() const { return folder_.Text(); }

  void Restore() {
    for (size_t i = 0; i < std::size(kFiles); ++i) Write(kFiles[i], good_[i]);
  }

  // A few bytes changed or the end cut off.
  void DamageFile(Input& input) {
    const size_t which = input.Byte() % std::size(kFiles);
    std::string bytes = good_[which];
    for (int changes = 1 + input.Byte() % 8; changes > 0; --changes) {
      bytes[input.Index(bytes.size())] = static_cast<char>(input.Byte());
    }
    if (input.Byte() % 4 == 0) bytes.resize(input.Index(bytes.size()));
    Write(kFiles[which], bytes);
  }

  // Rows of any bytes; the record manager refuses those whose keys are there already.
  void InsertRows(Input& input) {
    for (int rows = 1 + input.Byte() % 6; rows > 0; --rows) {
      const size_t which = input.Byte() % std::size(kFiles);
      qrndata::Bytes row(kRowSizes[which]);
      for (uint8_t& byte : row) byte = input.Byte();
      // Mostly of a table that there is, or may be.
      if (input.Byte() % 4 != 0) row[which == 1 ? 2 : 0] = static_cast<uint8_t>(input.Byte() % 8);
      if (input.Byte() % 4 != 0) row[which == 1 ? 3 : 1] = 0;
      qrndata::BtrFile file(folder_.Root() / kFiles[which], qrndata::Access::ReadWrite);
      (void)file.Insert(row);
    }
  }

 private:
  std::string Read(const char* name) const {
    std::ifstream file(folder_.Root() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Write(const char* name, const std::string& bytes) const {
    std::ofstream(folder_.Root() / name, std::ios::binary) << bytes;
  }

  qrn::test::TempFolder folder_;
  std::vector<std::string> good_;
};

constexpr LexbaseFunctions kLibrary = {::DDFOpen, ::DDFClose, ::DDFReadFile, ::DDFReadField,
                                       ::DDFReadIndex};

void ReadByLibrary(const std::string& directory) {
  if (::DDFOpen(directory.c_str(), 0) != 0) return;
  for (int (*read)(void*) : {&::DDFReadFile, &::DDFReadField, &::DDFReadIndex}) {
    uint8_t row[LexbaseFileRowReserve];
    int rows = 0;
    while (read(row) == 0) Require(++rows < 10000, "rows without end");
  }
  ::DDFClose();
  Require(::DDFClose() == LexbaseNotOpen, "a reading that does not end");
}

void UseTable(DbEngine& engine, DbTableInfo& table, const std::string& directory) {
  // Where a row says so, a data file lies anywhere; only those of this folder are touched.
  if (std::string_view(table.Location).find_first_of("/\\:") != std::string_view::npos) return;
  if (DbTableOpen(engine, table, directory.c_str(), "", 0) != 0 || table.IsOpen == 0) return;
  (void)DbClearRecord(engine, table);
  for (int32_t field = -1; field <= std::min(table.FieldCount, 40); ++field) {
    (void)DbReadField(engine, table, field);
    (void)DbWriteField(engine, table, field, "12");
  }
  for (int32_t key = -1; key <= table.SegmentCount; ++key) {
    (void)DbRecordCall(engine, table, 12, key);
  }
  (void)DbTableClose(engine, table);
}

void LoadByEngine(const std::string& directory, bool deferred) {
  QuorinSettings settings;
  settings.delayed_resolve = deferred;
  DbEngine engine(settings);
  DbDictionary* dictionary = nullptr;
  const Status status = DbDictLoad(settings, directory.c_str(), &dictionary);
  Require(status != 0 || dictionary != nullptr, "success without a dictionary");
  if (dictionary == nullptr) return;
  for (int32_t i = 0; i < dictionary->TableCount; ++i) {
    UseTable(engine, dictionary->Tables[i], directory);
  }
  DbDictCloseAll(engine, *dictionary);
  DbDictFree(dictionary);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Database database;
  ReplaceShowBox([](const char*, unsigned) { return kBoxOk; });
  ReplaceLexbase(&kLibrary);
  Input input(data, size);
  database.Restore();
  const uint8_t choice = input.Byte();
  try {
    if (choice % 3 != 0) database.InsertRows(input);
    if (choice % 3 != 1) database.DamageFile(input);
  } catch (const qrndata::Failure&) {
    return 0;  // The record manager did not open what it was given.
  }
  ReadByLibrary(database.Path());
  LoadByEngine(database.Path(), (choice & 0x80) != 0);
  return 0;
}
