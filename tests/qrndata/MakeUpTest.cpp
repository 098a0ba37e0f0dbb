// A dictionary beside data files of another make-up: what is refused, what is only told, and that
// nothing prints values from the wrong bytes.
#include "ToolFixture.h"

namespace qrndata::test {
namespace {

struct MakeUpCase {
  const char* what;
  const char* fields;
  const char* keys;
  const char* told;  // behind the table's name
};

constexpr char kFields[] =
    R"({ name = "Id", type = "Integer" }, { name = "Sum", type = "Integer" },
       { name = "Name", type = "String", size = 4 })";
constexpr char kKeys[] =
    R"({ fields = ["Id"] }, { fields = ["Name"], duplicates = true }, { fields = ["Sum"] })";

std::string SchemaOf(const std::string& fields, const std::string& keys) {
  return "[[table]]\nname = \"T\"\nfield = [" + fields + "]\nkey = [" + keys + "]\n";
}

const MakeUpCase kOther[] = {
    {"a wider field",
     R"({ name = "Id", type = "Integer" }, { name = "Sum", type = "Integer", size = 8 },
        { name = "Name", type = "String", size = 4 })",
     kKeys, "the record length is 12 in the file and 16 in the dictionary"},
    {"a narrower one",
     R"({ name = "Id", type = "Integer" }, { name = "Sum", type = "Integer", size = 2 },
        { name = "Name", type = "String", size = 4 })",
     kKeys, "the record length is 12 in the file and 10 in the dictionary"},
    {"fields that have changed places",
     R"({ name = "Sum", type = "Integer" }, { name = "Id", type = "Integer" },
        { name = "Name", type = "String", size = 4 })",
     kKeys, "key 0, segment 0, field \"Id\": the offset is 0 in the file and 4 in the dictionary"},
    {"a segment that has changed its length",
     R"({ name = "Id", type = "Integer" }, { name = "Sum", type = "String", size = 6 },
        { name = "Name", type = "String", size = 2 })",
     R"({ fields = ["Id"] }, { fields = ["Name"], duplicates = true })",
     "the number of keys is 3 in the file and 2 in the dictionary"},
    {"another kind of number",
     R"({ name = "Id", type = "Float", size = 4 }, { name = "Sum", type = "Integer" },
        { name = "Name", type = "String", size = 4 })",
     kKeys, "key 0, segment 0, field \"Id\": the type is 1 in the file and 2 in the dictionary"},
    {"a text of any length",
     R"({ name = "Id", type = "Integer" }, { name = "Sum", type = "Integer" },
        { name = "Name", type = "Note", size = 4 })",
     R"({ fields = ["Id"] })",
     "the file has fixed records, but a field of the table has no fixed length"},
    {"another key in the place of one", kFields,
     R"({ fields = ["Id"] }, { fields = ["Id", "Sum"] }, { fields = ["Sum"] })",
     "key 1: the number of segments is 1 in the file and 2 in the dictionary"},
};

const MakeUpCase kSound[] = {
    {"a key that the dictionary does not tell", kFields,
     R"({ fields = ["Id"] }, { fields = ["Name"], duplicates = true })",
     "warning: table \"T\": the number of keys is 3 in the file and 2 in the dictionary\n"},
    {"other flags of a key", kFields,
     R"({ fields = ["Id"] }, { fields = ["Name"] }, { fields = ["Sum"] })",
     "warning: table \"T\": key 1, segment 0, field \"Name\": the flag word is 1 in the file and 0 "
     "in the dictionary\n"},
    {"a type that keys sort alike",
     R"({ name = "Id", type = "UBin" }, { name = "Sum", type = "Integer" },
        { name = "Name", type = "String", size = 4 })",
     kKeys,
     "warning: table \"T\": key 0, segment 0, field \"Id\": the type is 1 in the file and 14 in "
     "the dictionary\n"},
};

const MakeUpCase kMoved{"a key between the others that the dictionary does not tell", kFields,
                        R"({ fields = ["Id"] }, { fields = ["Sum"] })",
                        "key 1 of the dictionary is key 2 of the file; forms take key 1 for it"};

class MakeUp : public ToolTest {
 protected:
  void SetUp() override {
    Build(SchemaOf(kFields, kKeys));
    ASSERT_EQ(Import("T", "Id,Sum,Name\n1,30,c\n2,20,b\n3,10,a\n").code, 0);
  }

  Said BuildKeeping(const MakeUpCase& row) {
    Write("other.toml", SchemaOf(row.fields, row.keys));
    return Run({"build", Path("other.toml"), Path("db"), "--keep-data"});
  }

  // The other schema's dictionary beside these data.
  void PutDictionary(const MakeUpCase& row) {
    Write("other.toml", SchemaOf(row.fields, row.keys));
    ASSERT_EQ(Run({"build", Path("other.toml"), Path("other"), "--replace"}).code, 0);
    for (const std::string name : {"file.ddf", "field.ddf", "index.ddf"}) {
      Write("db/" + name, Read("other/" + name));
    }
  }
};

constexpr char kRows[] = "Id,Sum,Name\n1,30,c\n2,20,b\n3,10,a\n";

TEST_F(MakeUp, ADictionaryThatDoesNotFitTheDataIsNotBuilt) {
  for (const MakeUpCase& row : kOther) {
    const Said said = BuildKeeping(row);
    EXPECT_EQ(said.code, 4) << row.what;
    EXPECT_EQ(said.err.find(std::string("qrndata: table \"T\": the data file is not as the "
                                        "dictionary has it: ") +
                            row.told + "; nothing was written: "),
              0u)
        << row.what << ": " << said.err;
    EXPECT_EQ(Export("T"), kRows) << row.what;
  }
  Write("other.toml", SchemaOf(kFields, std::string(kKeys) + R"(, { fields = ["Sum", "Id"] })"));
  EXPECT_EQ(Run({"build", Path("other.toml"), Path("db"), "--keep-data"}).code, 4)
      << "a key that the file would not get";
}

TEST_F(MakeUp, NothingReadsOrWritesByADictionaryOfOtherRecords) {
  for (const MakeUpCase& row : kOther) {
    PutDictionary(row);
    const std::string refusal =
        std::string(
            "code=4 err=qrndata: table \"T\": the data file is not as the dictionary has "
            "it: ") +
        row.told + "\n";
    EXPECT_EQ(Export("T"), refusal) << row.what;
    EXPECT_EQ(Line(Import("T", "Id\n9\n")), refusal) << row.what;
    EXPECT_EQ(Check().code, 1) << row.what;
    EXPECT_NE(Check().out.find(std::string("T: ") + row.told), std::string::npos) << row.what;
    for (const auto& arguments : {std::vector<std::string>{"show", Path("db")},
                                  std::vector<std::string>{"show", Path("db"), "T"}}) {
      const Said shown = Run(arguments);
      EXPECT_EQ(shown.code, 1) << row.what;
      EXPECT_NE(shown.err.find(row.told), std::string::npos) << row.what << ": " << shown.err;
    }
  }
}

TEST_F(MakeUp, WhatReadsRightIsReadWithAWarning) {
  for (const MakeUpCase& row : kSound) {
    const Said built = BuildKeeping(row);
    EXPECT_EQ(built.code, 0) << row.what;
    EXPECT_EQ(built.err, row.told) << row.what;
    const Said read = Run({"export", Path("db"), "T"});
    EXPECT_EQ(read.code, 0) << row.what;
    EXPECT_EQ(read.out, kRows) << row.what;
    EXPECT_EQ(read.err, row.told) << row.what;
    EXPECT_EQ(Check().code, 0) << row.what << ": " << Check().out;
  }
}

// Forms would search along another key.
TEST_F(MakeUp, ADictionaryThatMovesAKeyIsNotBuilt) {
  const Said said = BuildKeeping(kMoved);
  EXPECT_EQ(said.code, 4);
  EXPECT_NE(said.err.find(kMoved.told), std::string::npos) << said.err;
  EXPECT_EQ(Check().code, 0) << "the former dictionary stands";
  PutDictionary(kMoved);
  EXPECT_EQ(Check().code, 1);
  EXPECT_NE(Check().out.find(std::string("T: ") + kMoved.told), std::string::npos);
}

}  // namespace
}  // namespace qrndata::test
