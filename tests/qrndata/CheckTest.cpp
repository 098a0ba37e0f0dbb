// Planted faults, and whether check finds them.
#include <algorithm>
#include <cstring>

#include "ToolFixture.h"
#include "btrieve.h"
#include "platform/BtrCall.h"
#include "tools/qrndata/BtrFile.h"

namespace qrndata::test {
namespace {

constexpr char kCheckSchema[] = R"([[table]]
name = "T"
field = [
  { name = "Id", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 6 },
]
key = [
  { name = "ById", fields = ["Id"] },
  { name = "ByName", fields = ["Name"], duplicates = true, modifiable = true },
])";

class Checking : public ToolTest {
 protected:
  void SetUp() override {
    Build(kCheckSchema);
    ASSERT_EQ(Import("T", "Id,Name\n1,c\n2,b\n3,b\n4,a\n").code, 0);
  }
  void TearDown() override { qrn::ReplaceBtrCall(nullptr); }

  void Plant(const char* file, Bytes row) {
    BtrFile rows(Folder() / "db" / file, Access::ReadWrite);
    ASSERT_EQ(rows.Insert(row), 0);
  }

  std::string Found() {
    const Said said = Check();
    EXPECT_EQ(said.code, 1) << said.out;
    return said.out;
  }
};

Bytes Row(std::initializer_list<int> words) {
  Bytes row;
  for (const int word : words) {
    row.push_back(static_cast<uint8_t>(word));
    row.push_back(static_cast<uint8_t>(word >> 8));
  }
  return row;
}

Bytes FieldRow(int id, int table, const char* name, uint8_t type, int offset, int size) {
  Bytes row = Row({id, table});
  std::string padded = name;
  padded.resize(20, ' ');
  row.insert(row.end(), padded.begin(), padded.end());
  row.push_back(type);
  const Bytes place = Row({offset, size});
  row.insert(row.end(), place.begin(), place.end());
  row.resize(32);
  return row;
}

TEST_F(Checking, ASoundDatabaseHasNoFaults) {
  EXPECT_EQ(Line(Check()), "code=0 out=1 table, 4 records: no faults\n");
  EXPECT_EQ(Line(Run({"check", Path("db"), "T"})), "code=0 out=1 table, 4 records: no faults\n");
  EXPECT_EQ(Run({"check", Path("db"), "U"}).code, 3);
}

struct Planted {
  const char* what;
  const char* file;
  Bytes row;
  const char* found;
};

TEST_F(Checking, FaultsOfTheDictionaryAreFound) {
  const Planted cases[] = {
      {"a field of no table", "field.ddf", FieldRow(90, 77, "Lost", 0, 0, 5),
       "dictionary: field \"Lost\" belongs to table id 77, which does not exist"},
      {"a type nobody knows", "field.ddf", FieldRow(90, 4, "Odd", 99, 10, 5),
       "T: field \"Odd\": type 99 is not known"},
      {"a size the type has not", "field.ddf", FieldRow(90, 4, "Odd", 1, 10, 3),
       "T: field \"Odd\": Integer of 3 bytes, where forms expect 1, 2, 4 or 8"},
      {"two fields in one place", "field.ddf", FieldRow(90, 4, "Over", 0, 8, 2),
       "T: field \"Over\": overlaps field \"Name\""},
      {"a gap in the record", "field.ddf", FieldRow(90, 4, "Far", 0, 20, 2),
       "T: field \"Far\": stands at offset 20, but forms write it at 10, behind the fields before "
       "it"},
      {"a record longer than the file's", "field.ddf", FieldRow(90, 4, "More", 0, 10, 2),
       "T: the record length is 10 in the file and 12 in the dictionary"},
      {"a key the file has not", "index.ddf", Row({4, 19, 2, 0, 0}),
       "T: the number of keys is 2 in the file and 3 in the dictionary"},
      {"a key over a field that is not there", "index.ddf", Row({4, 300, 2, 0, 0}),
       "dictionary: table \"T\": key 2 uses field id 300, which the table does not have"},
      {"a key number left out", "index.ddf", Row({4, 19, 7, 0, 0}),
       "dictionary: table \"T\": key 2, segment 0 is numbered 7, segment 0"},
      {"a key that goes on nowhere", "index.ddf", Row({4, 19, 2, 0, 16}),
       "T: key 2: its last segment says that another follows"},
      {"a name for no key", "field.ddf", FieldRow(90, 4, "Ghost", 255, 9, 0),
       "dictionary: table \"T\": the index name \"Ghost\" is for key 9, which does not exist"},
  };
  for (const Planted& row : cases) {
    Build(kCheckSchema);
    Plant(row.file, row.row);
    const std::string found = Found();
    EXPECT_NE(found.find(std::string(row.found) + "\n"), std::string::npos) << row.what << ":\n"
                                                                            << found;
  }
}

TEST_F(Checking, FilesMissingAndForeignAreFound) {
  std::filesystem::remove(Folder() / "db" / "T.btr");
  EXPECT_NE(Found().find("T.btr: status 12 (file not found)\n"), std::string::npos);
  Write("db/T.btr", "something else");
  EXPECT_NE(Found().find("T.btr: status 30 (not a file of the record manager)\n"),
            std::string::npos);
}

// A record manager whose key 1 is not what it should be: a scan reads its first record alone, the
// other three come in one extended reply, which is changed on its way.
enum class Lie { Swap, LeaveOut, Twice };
Lie lie = Lie::Swap;

size_t EntriesOf(const uint8_t* reply) { return reply[0] | reply[1] << 8; }

int16_t BTR_CALL Lying(uint16_t operation, void* posBlock, void* data, uint32_t* length, void* key,
                       uint8_t keyLength, int8_t keyNumber) {
  constexpr size_t kEntry = 16, kHead = 2;
  qrn::ReplaceBtrCall(nullptr);
  const int16_t status = qrn::BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  qrn::ReplaceBtrCall(&Lying);
  auto* reply = static_cast<uint8_t*>(data);
  if (operation != BtrOpGetNextExtended || keyNumber != 1 || EntriesOf(reply) != 3) return status;
  uint8_t* first = reply + kHead;
  switch (lie) {
    case Lie::Swap:
      std::swap_ranges(first, first + kEntry, first + 2 * kEntry);
      break;
    case Lie::LeaveOut:
      reply[0] = 2;
      *length -= kEntry;
      break;
    case Lie::Twice:
      std::memcpy(first + kEntry, first, kEntry);
      break;
  }
  return status;
}

TEST_F(Checking, AKeyThatDisagreesWithItsRecordsIsFound) {
  const struct {
    Lie lie;
    const char* found;
  } cases[] = {
      {Lie::Swap, "stands in the wrong place of the order\n"},
      {Lie::LeaveOut, "is not in it\n"},
      {Lie::Twice, "is in it more than once\n"},
  };
  for (const auto& row : cases) {
    lie = row.lie;
    qrn::ReplaceBtrCall(&Lying);
    const std::string found = Found();
    EXPECT_NE(found.find("T: key 1: the record at position "), std::string::npos) << found;
    EXPECT_NE(found.find(row.found), std::string::npos) << found;
  }
}

}  // namespace
}  // namespace qrndata::test
