// Schema files: what is refused, and where it is said.
#include <gtest/gtest.h>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Schema.h"
#include "tools/qrndata/Text.h"

namespace qrndata::test {
namespace {

std::string Refused(const std::string& text) {
  try {
    ParseSchema(text, "s.toml", ".");
    return "taken";
  } catch (const Failure& failure) {
    return failure.what();
  }
}

// A table of one integer field and `more` behind it.
std::string WithField(const std::string& field, const std::string& more = "") {
  return "[[table]]\nname = \"T\"\n" + more + "\n[[table.field]]\n" + field + "\n";
}

struct SchemaCase {
  std::string text;
  const char* said;
};

const std::string kPlain = "name = \"A\"\ntype = \"Integer\"";

TEST(Schema, MistakesNameLineColumnAndWhatWasExpected) {
  const SchemaCase cases[] = {
      {"", "s.toml:1:1: a schema needs a [[table]]"},
      {"x = ", "s.toml:1:"},
      {"tabel = 1",
       "s.toml:1:1: a schema has no \"tabel\"; expected one of title, file_flags, table"},
      {"table = 3", "s.toml:1:9: \"table\" expects an array"},
      {"[[table]]\nid = 4", "s.toml:1:1: a table needs \"name\""},
      {"[[table]]\nname = 5", "s.toml:2:8: \"name\" expects a text in quotes"},
      {"[[table]]\nname = \"T\"", "s.toml:1:1: a table needs a \"field\""},
      {"[[table]]\nname = \" T\"",
       "s.toml:2:8: \"name\" expects a text without blanks at its ends"},
      {"[[table]]\nname = \"表表表表表表表表表表表\"",
       "s.toml:2:8: \"表表表表表表表表表表表\" has 22 bytes in code page 932; at most 20"},
      {"[[table]]\nname = \"한\"", "s.toml:2:8: \"한\": code page 932 has no 한"},
      {"[[table]]\nname = \"X$File\"", "s.toml:2:8: there is a table \"X$File\" already"},
      {"[[table]]\nname = \"T\"\nid = 3",
       "s.toml:3:6: \"id\" expects a whole number from 4 to 32767"},
      {WithField(kPlain, "page_size = 1000"), "s.toml:3:13: \"page_size\" expects 512, 1024"},
      {WithField("name = \"A\""), "s.toml:4:1: a field needs \"type\""},
      {WithField("name = \"A\"\ntype = \"Int\""),
       "s.toml:6:8: \"Int\" is no field type; expected one of String"},
      {WithField("name = \"A\"\ntype = \"String\""),
       "s.toml:4:1: String expects a size of 1 to 4096"},
      {WithField("name = \"A\"\ntype = \"Integer\"\nsize = 3"),
       "s.toml:7:8: Integer expects a size of 1, 2, 4 or 8"},
      {WithField("name = \"A\"\ntype = \"Integer\"\ndecimals = 1"),
       "s.toml:7:12: Integer has no decimals"},
      {WithField("name = \"A\"\ntype = \"Decimal\"\nsize = 2\ndecimals = 4"),
       "s.toml:8:12: Decimal of 2 bytes has at most "},
      {WithField("name = \"A\"\ntype = \"Date\"\nnullable = 1"),
       "s.toml:7:12: \"nullable\" expects true or false"},
      {WithField("name = \"Xe$A\"\ntype = \"Date\""),
       "s.toml:5:8: the third character of a field name may not be $"},
      {WithField(kPlain + "\n[[table.field]]\nname = \"a\"\ntype = \"Date\""),
       "s.toml:8:8: the table has a field \"A\" already"},
      {WithField("name = \"N\"\ntype = \"Note\"\nsize = 9\n[[table.field]]\n" + kPlain),
       "s.toml:8:1: a Note or LVar field must be the table's last field"},
      {WithField("name = \"N\"\ntype = \"Blob\"\n[[table.field]]\nname = \"M\"\ntype = "
                 "\"LVar\"\nsize = 9"),
       "s.toml:7:1: a table with a Blob field cannot have a Note or LVar field as well"},
      {WithField(kPlain + "\n[[table.key]]\nfields = []"), "s.toml:7:1: a key needs \"fields\""},
      {WithField(kPlain + "\n[[table.key]]\nfields = [\"B\"]"),
       "s.toml:7:1: the table has no field \"B\""},
      {WithField(kPlain + "\n[[table.key]]\nfields = [\"A\"]\nnull = \"some\""),
       "s.toml:9:8: \"null\" expects \"all\" or \"any\""},
      {WithField(kPlain + "\n[[table.key]]\nfields = [\"A\"]\nname = \"a\""),
       "s.toml:9:8: the table has a field \"a\" already"},
      {WithField(kPlain + "\n[[table.key]]\nfields = [\"A\"]\ncase_insensitive = true"),
       "s.toml:7:1: \"case_insensitive\" is for text; field \"A\" is Integer"},
      {WithField("name = \"A\"\ntype = \"String\"\nsize = 3"),
       "s.toml:1:1: table \"T\": records of 3 bytes are too short: a data file's records have at "
       "least 4"},
      {WithField(
           "name = \"A\"\ntype = \"Integer\"\nsize = 2\n[[table.field]]\nname = \"N\"\ntype = "
           "\"Note\"\nsize = 9"),
       "s.toml:1:1: table \"T\": records of 2 bytes before the note are too short"},
      {WithField("name = \"A\"\ntype = \"Bit\"\n[[table.key]]\nfields = [\"A\"]"),
       "s.toml:7:1: field \"A\" (Bit of 1 byte) cannot be a key"},
      {WithField("name = \"A\"\ntype = \"String\"\nsize = 250\n[[table.field]]\nname = \"B\"\ntype "
                 "= \"String\"\nsize = 6\n"
                 "[[table.key]]\nfields = [\"A\", \"B\"]"),
       "s.toml:13:10: a key has at most 255 bytes; these fields have 256"},
      {WithField(
           "name = \"A\"\ntype = \"AutoInc\"\n[[table.key]]\nfields = [\"A\"]\nduplicates = true"),
       "s.toml:1:1: table \"T\" (records of 4 bytes, pages of 4096) would be refused: status 55"},
  };
  for (const SchemaCase& row : cases) {
    const std::string said = Refused(row.text);
    EXPECT_EQ(said.substr(0, std::string(row.said).size()), row.said) << row.text << "\n" << said;
  }
}

}  // namespace
}  // namespace qrndata::test
