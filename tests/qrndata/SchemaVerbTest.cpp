// Dictionaries written back as schemas: a build of them makes the same rows and data files.
#include "ToolFixture.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/RecordScan.h"

namespace qrndata::test {
namespace {

constexpr const char* kDictionaryFiles[] = {"file.ddf", "field.ddf", "index.ddf"};

class SchemaBack : public ToolTest {
 protected:
  // Builds from what `schema` says of the database, in "again", and compares all files.
  void ExpectSameBytes(const std::vector<std::string>& dataFiles) {
    const Said said = Run({"schema", Path("db"), "-o", Path("back.toml")});
    ASSERT_EQ(said.code, 0) << said.err;
    ASSERT_EQ(Run({"build", Path("back.toml"), Path("again"), "--replace"}).code, 0);
    for (const char* name : kDictionaryFiles) {
      EXPECT_TRUE(Records("db", name) == Records("again", name)) << name << '\n'
                                                                 << Read("back.toml");
    }
    for (const std::string& name : dataFiles) ExpectSame(name);
  }

 private:
  // By place. The files have the number of the transaction that has made them somewhere in their
  // free room.
  std::string Records(const std::string& folder, const char* name) const {
    BtrFile file(PathFromUtf8(Path(folder)) / name, Access::ReadOnly);
    RecordScan scan(file, kNoKey);
    std::string records;
    while (scan.Next()) records.append(scan.Record().begin(), scan.Record().end());
    EXPECT_FALSE(records.empty()) << name;
    return records;
  }
  void ExpectSame(const std::string& name) {
    EXPECT_TRUE(Read("db/" + name) == Read("again/" + name)) << name << '\n' << Read("back.toml");
  }
};

constexpr char kEverything[] = R"([[table]]
name = "Wide \" \\ 表"
id = 9
file = "wide.dat"
page_size = 8192
file_flags = 2
field = [
  { name = "Id", type = "AutoInc", size = 2 },
  { name = "名前", type = "String", size = 20, nullable = true },
  { name = "Price", type = "Decimal", size = 6, decimals = 2 },
  { name = "Memo", type = "Note", size = 300 },
]
key = [
  { fields = ["Id"] },
  { name = "By名", fields = [{ field = "名前", descending = true, case_insensitive = true }, "Price"], null = "any", null_value = 32 },
  { fields = ["Price"], duplicates = true, modifiable = true, null = "all" },
]
[[table]]
name = "Sorted"
id = 5
field = [ { name = "Code", type = "String", size = 8 }, { name = "Blob", type = "Blob" } ]
key = [ { fields = ["Code"], collation = "turned.seq" } ]
[[table]]
name = "Plain"
field = [ { name = "Code", type = "Integer" } ]
)";

TEST_F(SchemaBack, WhatASchemaCanSayComesBack) {
  std::string sequence = "\xACTURNED  ";
  for (int byte = 0; byte < 256; ++byte) sequence += static_cast<char>(255 - byte);
  Write("turned.seq", sequence);
  Build(kEverything);
  ExpectSameBytes({"wide.dat", "Sorted.btr", "Plain.btr"});
}

TEST_F(SchemaBack, WhatItCannotSayIsTold) {
  Build("[[table]]\nname = \"T\"\nfield = [ { name = \"Id\", type = \"Integer\" } ]\n");
  std::filesystem::remove(Folder() / "db" / "T.btr");
  const Said said = Run({"schema", Path("db")});
  EXPECT_EQ(said.code, 1);
  EXPECT_NE(said.err.find("warning: table \"T\": page size, flags and null values are the standard "
                          "ones: "),
            std::string::npos)
      << said.err;
  EXPECT_EQ(said.out,
            "[[table]]\nname = \"T\"\nid = 4\nfile = \"T.btr\"\npage_size = 4096\n"
            "file_flags = 130\nfield = [\n  { name = \"Id\", type = \"Integer\", size = 4 },\n]\n");
  EXPECT_EQ(Run({"schema", Path("db"), "-o", Path("db/field.ddf")}).code, 2);
  EXPECT_EQ(Run({"show", Path("db")}).code, 1) << "a listed file is not there";
}

}  // namespace
}  // namespace qrndata::test
