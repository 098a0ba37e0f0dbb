// Dictionaries on disk, sound and otherwise, through the library's five functions.
#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "lexbase.h"
#include "tests/btrieve/kit/OldSite.h"
#include "tests/support/MadeDatabase.h"
#include "tests/support/TempFolder.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Paths.h"

namespace qrn::lexbase::test {
namespace {

namespace fs = std::filesystem;
using qrndata::Bytes;

constexpr char kSchema[] = R"(
[[table]]
name = "People"
id = 5
field = [
  { name = "Code", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 20 },
]
key = [ { name = "ByCode", fields = ["Code"] }, { fields = ["Name", "Code"] } ]

[[table]]
name = "Notes"
id = 9
field = [ { name = "Id", type = "AutoInc" }, { name = "Text", type = "Note", size = 400 } ]
key = [ { fields = ["Id"] } ]
)";

using Row = std::array<uint8_t, LexbaseFileRowReserve>;
using ReadFunction = int(LEXBASE_CALL*)(void*);

int Number(const Row& row, size_t at) { return row[at] | row[at + 1] << 8; }

class Lexbase : public ::testing::Test {
 public:
  Lexbase() { Build(); }
  ~Lexbase() override { DDFClose(); }

  void Build() { qrn::test::MakeDatabase(folder_.Root(), kSchema); }

  int Open() { return DDFOpen(qrndata::BtrievePath(folder_.Root()).c_str(), 0); }

  fs::path File(const char* name) const { return folder_.Root() / name; }
  std::string Read(const char* name) const {
    std::ifstream file(File(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Write(const char* name, const std::string& bytes) const {
    std::ofstream(File(name), std::ios::binary) << bytes;
  }
  void Insert(const char* name, Bytes row) const {
    qrndata::BtrFile file(File(name), qrndata::Access::ReadWrite);
    ASSERT_EQ(file.Insert(row), 0);
  }

  // All rows of one file as told by `show`, then the code that ended them.
  template <class Show>
  static std::string Rows(ReadFunction read, Show show) {
    std::string text;
    Row row{};
    int code = 0;
    for (int count = 0; (code = read(row.data())) == 0; ++count) {
      if (count > 1000) return "rows without end";
      text += show(row) + " ";
    }
    return text + "code=" + std::to_string(code);
  }

  static std::string Tables() {
    return Rows(&DDFReadFile, [](const Row& row) { return std::to_string(Number(row, 0)); });
  }
  static std::string Fields() {
    return Rows(&DDFReadField, [](const Row& row) {
      return std::to_string(Number(row, 2)) + "." + std::to_string(Number(row, 0));
    });
  }
  static std::string Segments() {
    return Rows(&DDFReadIndex, [](const Row& row) {
      std::string text;
      for (const size_t at : {0, 2, 4, 6}) {
        text += (at == 0 ? "" : ".") + std::to_string(Number(row, at));
      }
      return text;
    });
  }

  // Opens, reads all three files to their ends, closes: the first code that is no success.
  int ReadAll() {
    rows_.clear();
    const int opened = Open();
    if (opened != 0) return opened;
    int failure = 0;
    for (const ReadFunction read : {&DDFReadFile, &DDFReadField, &DDFReadIndex}) {
      int code = 0;
      for (Row row{}; (code = read(row.data())) == 0 && rows_.size() < 10000;) rows_.push_back(row);
      if (failure == 0 && code != LexbaseEndOfFile) failure = code == 0 ? -1 : code;
    }
    const int closed = DDFClose();
    return failure != 0 ? failure : closed;
  }

  qrn::test::TempFolder folder_;
  std::vector<Row> rows_;  // that the last ReadAll met
};

// Without the rows of the dictionary's own tables, the first three.
std::string UserRows(const std::string& rows) { return rows.substr(rows.find(" 5.")); }

TEST_F(Lexbase, RowsComeByTableThenFieldOrKey) {
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(Tables(), "1 2 3 5 9 code=9");
  EXPECT_EQ(UserRows(Fields()), " 5.19 5.20 5.21 9.22 9.23 code=9");
  EXPECT_EQ(UserRows(Segments()), " 5.19.0.0 5.20.1.0 5.19.1.1 9.22.0.0 code=9");
  EXPECT_EQ(DDFClose(), 0);
}

// A column added to an old table has a higher id than the younger tables' columns; a key added to
// it stands last in its file.
TEST_F(Lexbase, LaterRowsComeWithTheirTable) {
  Bytes field = {24, 0, 5, 0};
  for (const char c : std::string("Added               ")) field.push_back(static_cast<uint8_t>(c));
  field.resize(LexbaseFieldRowSize);
  Insert("field.ddf", field);
  Insert("index.ddf", {5, 0, 24, 0, 2, 0, 0, 0, 0, 1});
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(UserRows(Fields()), " 5.19 5.20 5.21 5.24 9.22 9.23 code=9");
  EXPECT_EQ(UserRows(Segments()), " 5.19.0.0 5.20.1.0 5.19.1.1 5.24.2.0 9.22.0.0 code=9");
}

TEST_F(Lexbase, ARowTakesNoMoreThanItsSize) {
  ASSERT_EQ(Open(), 0);
  const struct {
    ReadFunction read;
    size_t size;
  } cases[] = {{&DDFReadFile, LexbaseFileRowSize},
               {&DDFReadField, LexbaseFieldRowSize},
               {&DDFReadIndex, LexbaseIndexRowSize}};
  for (const auto& row : cases) {
    Row buffer;
    buffer.fill(0xEE);
    EXPECT_EQ(row.read(buffer.data()), 0);
    EXPECT_TRUE(std::all_of(buffer.begin() + static_cast<std::ptrdiff_t>(row.size), buffer.end(),
                            [](uint8_t byte) { return byte == 0xEE; }))
        << row.size;
  }
}

TEST_F(Lexbase, OneReadingAtATime) {
  Row row{};
  EXPECT_EQ(DDFReadFile(row.data()), LexbaseNotOpen);
  EXPECT_EQ(DDFReadField(row.data()), LexbaseNotOpen);
  EXPECT_EQ(DDFReadIndex(row.data()), LexbaseNotOpen);
  EXPECT_EQ(DDFClose(), LexbaseNotOpen);
  ASSERT_EQ(Open(), 0);
  EXPECT_EQ(DDFReadFile(row.data()), 0);
  EXPECT_EQ(Open(), LexbaseAlreadyOpen);
  EXPECT_EQ(Tables(), "2 3 5 9 code=9") << "the reading under way is undisturbed";
  EXPECT_EQ(DDFClose(), 0);
  EXPECT_EQ(DDFReadFile(row.data()), LexbaseNotOpen);
  ASSERT_EQ(Open(), 0) << "and a new one begins at the beginning";
  EXPECT_EQ(Tables(), "1 2 3 5 9 code=9");
}

TEST_F(Lexbase, BadArgumentsAreCodes) {
  EXPECT_EQ(DDFOpen(nullptr, 0), LexbaseBadDirectory);
  EXPECT_EQ(DDFOpen("", 0), LexbaseBadDirectory);
  EXPECT_EQ(DDFOpen(std::string(300, 'x').c_str(), 0), LexbaseBadDirectory);
  EXPECT_NE(DDFOpen((folder_.Root() / "none").string().c_str(), 0), 0);
  ASSERT_EQ(DDFOpen(qrndata::BtrievePath(folder_.Root()).c_str(), 7), 0) << "the mode says nothing";
  EXPECT_EQ(DDFReadFile(nullptr), LexbaseNoBuffer);
  EXPECT_EQ(DDFReadField(nullptr), LexbaseNoBuffer);
  EXPECT_EQ(DDFReadIndex(nullptr), LexbaseNoBuffer);
}

TEST_F(Lexbase, FilesMissingForeignOrExchangedAreCodes) {
  constexpr int kFileNotFound = 12, kNotOurs = 30;
  for (const char* name : {"file.ddf", "field.ddf", "index.ddf"}) {
    const std::string whole = Read(name);
    fs::remove(File(name));
    EXPECT_EQ(Open(), kFileNotFound) << name;
    Write(name, "a text of somebody's");
    EXPECT_EQ(Open(), kNotOurs) << name;
    Write(name, std::string(20000, '\0'));
    EXPECT_EQ(Open(), kNotOurs) << name;
    Write(name, "");
    EXPECT_GT(Open(), 0) << name;
    Write(name, Read("Notes.btr"));
    EXPECT_EQ(Open(), LexbaseNotADictionary) << name;
    Write(name, whole);
    EXPECT_EQ(ReadAll(), 0) << name;
  }
  Write("index.ddf", Read("file.ddf"));
  EXPECT_EQ(Open(), LexbaseNotADictionary);
}

TEST_F(Lexbase, AFileWithoutTheKeyOfItsOrderIsNoDictionary) {
  // Records of 10 bytes, one key where index.ddf has three.
  Bytes block = {10, 0, 0, 16, 1, 0, 0, 0, 0, 0, 0,  0, 0, 0, 0, 0,
                 1,  0, 2, 0,  3, 1, 0, 0, 0, 0, 14, 0, 0, 0, 0, 0};
  ASSERT_EQ(qrndata::BtrFile::Create(File("index.ddf"), block, true), 0);
  EXPECT_EQ(Open(), LexbaseNotADictionary);
}

TEST_F(Lexbase, TheDictionarysFilesStayClosedToNobody) {
  ASSERT_EQ(Open(), 0);
  Insert("index.ddf", {5, 0, 20, 0, 2, 0, 0, 0, 0, 1});
  EXPECT_EQ(DDFClose(), 0);
  std::error_code error;
  EXPECT_TRUE(fs::remove(File("file.ddf"), error)) << "and nothing holds them afterwards";
}

// Numbers and flags are delivered as they stand; what a row lacks comes as blanks.
TEST(LexbaseOfTheNineties, ShorterRowsAndFewerKeysAreRead) {
  const qrn::test::TempFolder folder;
  const btrieve::test::OldSite site(folder.Root());
  site.Write();
  ASSERT_EQ(DDFOpen(qrndata::BtrievePath(folder.Root()).c_str(), 0), 0);
  Row row{};
  ASSERT_EQ(DDFReadFile(row.data()), 0);
  ASSERT_EQ(DDFReadFile(row.data()), 0);
  EXPECT_EQ(std::string(row.begin() + 22, row.begin() + 34), "PEOPLE.DAT  ");
  EXPECT_EQ(std::string(row.begin() + 86, row.begin() + 98), std::string("\0          \0", 12));
  EXPECT_EQ(Lexbase::Tables(), "11 code=9");
  EXPECT_EQ(Lexbase::Fields(), "10.1 10.2 11.3 11.4 11.5 code=9");
  EXPECT_EQ(Lexbase::Segments(), "10.1.1.1 10.2.2.1 10.1.2.2 11.3.1.1 11.4.2.1 code=9");
  EXPECT_EQ(DDFClose(), 0);
  site.Write(true);
  EXPECT_EQ(DDFOpen(qrndata::BtrievePath(folder.Root()).c_str(), 0), BtrStatusOwnerInvalid);
}

#ifndef _WIN32
TEST_F(Lexbase, OlderToolsWroteNamesInCapitals) {
  for (const char* name : {"file.ddf", "field.ddf", "index.ddf"}) {
    std::string capitals = name;
    for (char& letter : capitals) letter = static_cast<char>(std::toupper(letter));
    fs::rename(File(name), File(capitals.c_str()));
  }
  EXPECT_EQ(ReadAll(), 0);
}
#endif

}  // namespace
}  // namespace qrn::lexbase::test
