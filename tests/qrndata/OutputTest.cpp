// Files that the tool writes: never over a database's own, and never half.
#include <algorithm>

#include "ToolFixture.h"
#include "platform/BtrCall.h"

namespace qrndata::test {
namespace {

namespace fs = std::filesystem;

constexpr char kOutputSchema[] = R"([[table]]
name = "T"
field = [ { name = "Id", type = "Integer", size = 4 } ]
key = [ { fields = ["Id"] } ]
[[table]]
name = "U"
field = [ { name = "Id", type = "Integer", size = 4 } ])";

class Writing : public ToolTest {
 protected:
  void SetUp() override {
    Build(kOutputSchema);
    ASSERT_EQ(Import("T", "Id\n1\n2\n").code, 0);
  }

  // What lies in the folder, with the database's own.
  std::string Files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Folder())) {
      if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) all += name + " ";
    return all;
  }
};

struct PlaceCase {
  const char* output;
  const char* said;
};

// Also by another way to the same file, and where the file is missing.
const PlaceCase kDatabaseFiles[] = {
    {"db/T.btr", "the data file of table \"T\""},
    {"db/../db/T.btr", "the data file of table \"T\""},
    {"linked.csv", "the data file of table \"T\""},
    {"db/T.btr-wal", "the data file of table \"T\""},
    {"db/U.btr", "the data file of table \"U\""},
    {"db/file.ddf", "a file of the dictionary"},
    {"db/index.ddf", "a file of the dictionary"},
};

TEST_F(Writing, NothingGoesOverADatabasesFiles) {
  fs::create_hard_link(Folder() / "db" / "T.btr", Folder() / "linked.csv");
  fs::remove(Folder() / "db" / "U.btr");
  const std::string before = Files();
  for (const PlaceCase& row : kDatabaseFiles) {
    const std::string said = std::string(": this is ") + row.said + "; name another file\n";
    const Said exported = Run({"export", Path("db"), "T", "-o", Path(row.output)});
    EXPECT_EQ(exported.code, 2) << row.output;
    EXPECT_NE(exported.err.find(said), std::string::npos) << exported.err;
    const Said imported = Import("T", "Id\nx\n", {"--refused", Path(row.output)});
    EXPECT_EQ(imported.code, 2) << row.output;
    EXPECT_NE(imported.err.find(said), std::string::npos) << imported.err;
  }
  EXPECT_EQ(Files(), before);
  EXPECT_EQ(Export("T"), "Id\n1\n2\n");
}

TEST_F(Writing, RefusedRowsDoNotGoOverTheirOwnFile) {
  const Said said = Import("T", "Id\n3\nx\n", {"--refused", Path("db/../in.csv")});
  EXPECT_EQ(said.code, 2);
  EXPECT_NE(said.err.find("this is the file that the rows come from"), std::string::npos);
  EXPECT_EQ(Read("in.csv"), "Id\n3\nx\n");
  EXPECT_EQ(Export("T"), "Id\n1\n2\n") << "nothing was stored";
}

int16_t BTR_CALL FailingSteps(uint16_t operation, void* posBlock, void* data, uint32_t* length,
                              void* key, uint8_t keyLength, int8_t keyNumber) {
  constexpr uint16_t kStepNextExtended = 38;
  if (operation == kStepNextExtended) return 2;
  qrn::ReplaceBtrCall(nullptr);
  const int16_t status = qrn::BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  qrn::ReplaceBtrCall(&FailingSteps);
  return status;
}

TEST_F(Writing, AFailedExportLeavesTheFormerFile) {
  Write("out.csv", "former");
  const std::string before = Files();
  qrn::ReplaceBtrCall(&FailingSteps);
  const Said said = Run({"export", Path("db"), "T", "-o", Path("out.csv")});
  qrn::ReplaceBtrCall(nullptr);
  EXPECT_EQ(said.code, 4);
  EXPECT_EQ(said.err,
            "qrndata: " + (fs::path("db") / "T.btr").string() +
                ": reading the records: status 2 (read or write failed, or the file is damaged); "
                "out.csv: not written\n");
  EXPECT_EQ(Read("out.csv"), "former");
  EXPECT_EQ(Files(), before);
  Write("db/T.btr", "no data file");
  EXPECT_EQ(Run({"export", Path("db"), "T", "-o", Path("out.csv")}).err,
            "qrndata: " + (fs::path("db") / "T.btr").string() +
                ": status 30 (not a file of the record manager); out.csv: not written\n");
  EXPECT_EQ(Read("out.csv"), "former");
}

TEST_F(Writing, AWholeExportTakesTheFormersPlace) {
  Write("out.csv", "former, and longer than what comes");
  Write("out.csv.1.part", "somebody's");
  const std::string before = Files();
  EXPECT_EQ(Line(Run({"export", Path("db"), "T", "-o", Path("out.csv")})),
            "code=0 out=T: 2 rows\n");
  EXPECT_EQ(Read("out.csv"), "Id\n1\n2\n");
  EXPECT_EQ(Read("out.csv.1.part"), "somebody's");
  EXPECT_EQ(Files(), before);
  EXPECT_EQ(Line(Run({"export", Path("db"), "T", "-o", Path("none/out.csv")})),
            "code=4 err=qrndata: none/out.csv: cannot be written\n");
  EXPECT_EQ(Line(Run({"export", Path("db"), "T", "-o", Path("db")})), "code=0 out=T: 2 rows\n");
  EXPECT_EQ(Read("db/T.csv"), "Id\n1\n2\n");
}

#ifdef _WIN32
TEST_F(Writing, DevicesAreWritten) {
  EXPECT_EQ(Line(Run({"export", Path("db"), "T", "-o", "NUL"})), "code=0 out=T: 2 rows\n");
}
#else
TEST_F(Writing, LinksAndDevicesStayWhatTheyAre) {
  Write("real.csv", "former");
  fs::create_symlink("real.csv", Folder() / "link.csv");
  fs::create_symlink("/dev/null", Folder() / "nothing");
  EXPECT_EQ(Run({"export", Path("db"), "T", "-o", Path("link.csv")}).code, 0);
  EXPECT_EQ(Read("real.csv"), "Id\n1\n2\n");
  EXPECT_TRUE(fs::is_symlink(Folder() / "link.csv"));
  EXPECT_EQ(Run({"export", Path("db"), "T", "-o", Path("nothing")}).code, 0);
  EXPECT_TRUE(fs::is_symlink(Folder() / "nothing"));
}
#endif

}  // namespace
}  // namespace qrndata::test
