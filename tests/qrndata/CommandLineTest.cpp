// What the command line says to whoever mistypes it, and to whoever asks.
#include "ToolFixture.h"

namespace qrndata::test {
namespace {

class CommandLine : public ToolTest {};

struct MistakeCase {
  std::vector<std::string> arguments;
  const char* said;
};

TEST_F(CommandLine, MistakesAreNamedWithWhatWasExpected) {
  const MistakeCase cases[] = {
      {{},
       "qrndata: no verb: expected build, import, export, show, check, convert, schema, "
       "copy, move, publish or status; "
       "--help tells what they do\n"},
      {{"foo"},
       "qrndata: there is no verb \"foo\": expected build, import, export, show, check, convert, "
       "schema, copy, move, publish or status\n"},
      {{"export", "db", "T", "--encoding", "utf8"},
       "--encoding: expected utf-8 or cp932, not \"utf8\"\n"},
      {{"export", "db", "T", "--format", "xml"},
       "--format: expected csv, json, jsonl, sqlite or xlsx, not \"xml\"\n"},
      {{"import", "db", "T", "f", "--on-unmappable", "1"},
       "--on-unmappable: expected error, replace or skip, not \"1\"\n"},
      {{"import", "db", "T"}, "FILE is required\n"},
  };
  for (const MistakeCase& row : cases) {
    const Said said = Run(row.arguments);
    EXPECT_EQ(said.code, 2) << row.said;
    EXPECT_EQ(said.err.substr(0, std::string(row.said).size()), row.said);
  }
}

struct HelpCase {
  const char* verb;
  const char* part;
};

TEST_F(CommandLine, HelpNamesChoicesAndStandards) {
  const HelpCase cases[] = {
      {"import", "--encoding utf-8|cp932"},
      {"import", "error refuses the row"},
      {"import", "--batch NUMBER              rows stored at once, 1 to 10000 (standard: 10000)"},
      {"export", "--format csv|json|jsonl|sqlite|xlsx"},
      {"export", "error leaves the record out"},
      {"check", "(standard: 20)"},
  };
  for (const HelpCase& row : cases) {
    const Said said = Run({row.verb, "--help"});
    EXPECT_EQ(said.code, 0);
    EXPECT_NE(said.out.find(row.part), std::string::npos) << row.part << "\n" << said.out;
    EXPECT_EQ(said.out.find("->"), std::string::npos) << said.out;
  }
  EXPECT_EQ(Run({"--help"}).code, 0);
}

TEST_F(CommandLine, ADirectoryIsNoSchemaAndNoCsvFile) {
  EXPECT_EQ(Line(Run({"build", Path("."), Path("db")})),
            "code=4 err=qrndata: .: cannot be read (it is a directory)\n");
  EXPECT_FALSE(std::filesystem::exists(Folder() / "db"));
  Build("[[table]]\nname = \"T\"\nfield = [ { name = \"Id\", type = \"Integer\" } ]\n");
  EXPECT_EQ(Line(Run({"import", Path("db"), "T", Path("db")})),
            "code=4 err=qrndata: db: cannot be read\n");
}

}  // namespace
}  // namespace qrndata::test
