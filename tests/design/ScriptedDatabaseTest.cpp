// The database control as scripts use it: made by CreateObject, over files on disk.

#include "BuiltModule.h"
#include "ScriptHost.h"
#include "tests/support/Company.h"

namespace qrn::test {
namespace {

// What every script begins with: `db` over the company, and words for the common calls. A failure
// of the script itself is told and counts.
constexpr char kWords[] = R"(
Set db = CreateObject("QRNBtr.QRNBtr.1")
db.DDFDir = folder
Sub Say(what)
  WScript.Echo what
End Sub
Sub Insert(code, name, town)
  db.DbClearFieldBuffer "People"
  db.DbSetFieldData "People", "Code", CStr(code)
  db.DbSetFieldData "People", "Name", name
  db.DbSetFieldData "People", "Town", town
  Say "insert " & db.DbAccess(2, "People", "ByCode")
End Sub
Function Person()
  Person = db.DbGetFieldData("People", "Code") & " " & db.DbGetFieldData("People", "Name")
End Function
Sub Read(operation, key)
  rc = db.DbAccess(operation, "People", key)
  If rc = 0 Then Say Person() Else Say "status " & rc
End Sub
Sub Find(code)
  db.DbSetFieldData "People", "Code", CStr(code)
  Read 5, "ByCode"
End Sub
)";

struct ScriptCase {
  const char *name, *script, *printed;
};

class ScriptedDatabase : public ::testing::TestWithParam<ScriptCase> {};

std::string Begin(const Company& company) {
  return "folder = \"" + company.Directory() + "\"\n" + kWords;
}

const ScriptCase kScripts[] = {
    {"tables open and close by name",
     R"(Say db.DbIsOpen("People") & " " & db.DbOpen("People") & " " & db.DbIsOpen("People")
Say db.DbOpen("People") & " " & db.DbClose("People") & " " & db.DbClose("People")
Say db.DbOpenAll() & " " & db.DbIsOpen("Notes") & " " & db.DbCloseAll() & " " & db.DbIsOpen("Notes")
db.DbGetNumOfTable tables
For i = 0 To tables
  db.DbGetTableName i, name
  db.DbGetNumOfField name, fields
  Say "[" & name & "] " & fields
Next
)",
     "0 0 1\n-2 0 -3\n0 1 0 0\n[People] 5\n[Notes] 2\n[Days] 3\n[] 3\n"},
    {"properties rule the open",
     R"(db.OpenMode = 2
Say db.OpenMode & " " & db.DbOpen("People")
Insert 1, "Abe", ""
db.DbClose "People"
db.OpenMode = 4
Say db.DbOpen("People")
Set other = CreateObject("QRNBtr.QRNBtr.1")
other.CacheDDF = False
other.DDFDir = folder
Say other.DbIsOpen("People") & " " & other.CacheDDF & " " & db.CacheDDF
db.DDFDir = ""
Say db.DbOpen("People") & " " & db.DbLoadDDF()
)",
     "2 0\ninsert 46\n0\n0 False True\n-20 -21\n"},
    {"a position leads back to its record",
     R"(db.DbOpenAll
For i = 1 To 20
  db.DbClearFieldBuffer "People"
  db.DbSetFieldDataByID 0, 0, CStr(i)
  db.DbSetFieldDataByID 0, 1, "P" & i
  If db.DbAccessByID(2, 0, 0) <> 0 Then Say "no insert"
Next
Find 7
place = db.DbGetPosition("People")
Find 19
Say db.DbGetDirect("People", place, "ByName") & " " & Person()
Read 6, "ByName"
Say db.DbFindPercentage("People", "ByCode", place, part) & " " & (part > 2000 And part < 5000)
Say db.DbGetByPercentage("People", "ByCode", 0) & " " & Person()
Say db.DbGetByPercentage("People", "ByCode", 10000) & " " & Person()
)",
     "7 P7\n19 P19\n0 7 P7\n8 P8\n0 True\n0 1 P1\n0 20 P20\n"},
    {"a script's arrays are none of texts or bytes",
     R"(db.DbOpenAll
Dim a(4)
Say db.DbGetRecord("People", a) & " " & db.DbSetRecord("People", a)
Say db.DbGetRecordImage("People", a) & " " & db.DbGetPosBlock("People", "x")
)",
     "-17 -17\n-23 -23\n"},
    {"variables of any content take answers",
     R"(db.DbOpenAll
Dim none, list(2), elements(1)
Sub Try(what, value)
  one = value : two = value
  db.GetUseCount one
  db.DbIsOpen "People", two
  Say what & ": " & TypeName(one) & ", " & TypeName(two) & " " & two
End Sub
Try "empty", none
Try "null", Null
Try "text", "abc"
Try "large", 100000
Try "real", 1.5
Set one = db : Set two = db
db.GetUseCount one
db.DbIsOpen "People", two
Say "object: " & TypeName(two) & " " & two & " " & one.DbIsOpen("People")
db.DbIsOpen "Nobody", elements(1)
Say "element: " & TypeName(elements(0)) & " " & elements(1)
On Error Resume Next
db.DbIsOpen "People", list
Say "array: " & Err.Number & " " & TypeName(list)
Err.Clear
db.DbIsOpen list, one
Say "array for a text: " & (Err.Number <> 0)
Err.Clear
db.DbIsOpen Null, one
Say "null for a text: " & (Err.Number <> 0)
Err.Clear
db.DbIsOpen none, two
Say "empty for a text: " & two & " " & Err.Number
)",
     "empty: Empty, Integer 1\nnull: Null, Integer 1\ntext: String, Integer 1\n"
     "large: Long, Integer 1\nreal: Double, Integer 1\nobject: Integer 1 1\n"
     "element: Empty -4\narray: 13 Variant()\narray for a text: True\nnull for a text: True\n"
     "empty for a text: -4 0\n"},
    {"two controls move by themselves",
     R"(db.DbOpenAll
Insert 1, "Abe", ""
Insert 2, "Ito", ""
Set other = CreateObject("QRNBtr.QRNBtr.1")
other.DDFDir = folder
Say other.DbIsOpen("People") & " " & other.DbOpen("People")
Read 12, "ByCode"
Say other.DbAccess(13, "People", "ByCode") & " " & other.DbGetFieldData("People", "Name")
Read 6, "ByCode"
Set other = Nothing
Read 7, "ByCode"
Say db.DbReset() & " " & db.DbIsOpen("People") & " " & db.DbOpen("People")
Read 12, "ByCode"
)",
     "insert 0\ninsert 0\n0 0\n1 Abe\n0 Ito\n2 Ito\n1 Abe\n0 0 0\n1 Abe\n"},
};

TEST_P(ScriptedDatabase, DoesWhatTheScriptSays) {
  const Registered registered;
  const Company company;
  const ScriptRun run = RunInScriptHost(Begin(company) + GetParam().script);
  EXPECT_EQ(run.printed, GetParam().printed) << GetParam().name;
  EXPECT_EQ(run.boxes, "") << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(Company, ScriptedDatabase, ::testing::ValuesIn(kScripts));

TEST(ScriptedDatabases, TellOfAFileThatDoesNotOpen) {
  const Registered registered;
  const Company company;
  const ScriptRun run = RunInScriptHost(Begin(company) + R"(
Say db.DbSetFileName("Notes", "absent.btr") & " " & db.DbOpen("Notes") & " " & db.DbIsOpen("Notes")
Say db.DbCreate("Notes") & " " & db.DbOpen("Notes")
Set lost = CreateObject("QRNBtr.QRNBtr.1")
lost.DDFDir = folder & "\nowhere"
Say lost.DbOpen("People")
)");
  EXPECT_EQ(run.printed, "0 12 0\n0 0\n-20\n");
  EXPECT_EQ(run.boxes,
            "VE803 Btrieveファイル Notes のオープンに失敗。(12); VE028 DDFOpen APIエラー(12); ");
}

// A script that ends in the middle of its work leaves what it had finished.
TEST(ScriptedDatabases, KeepWhatWasDoneWhenAScriptEnds) {
  const Registered registered;
  const Company company;
  EXPECT_EQ(RunInScriptHost(Begin(company) + R"(
db.DbOpenAll
Insert 1, "Abe", ""
db.DbBeginTransaction 0
Insert 2, "Ito", ""
WScript.Quit 0
)")
                .printed,
            "insert 0\ninsert 0\n");
  EXPECT_EQ(RunInScriptHost(Begin(company) + R"(
db.DbOpenAll
Find 1
Find 2
)")
                .printed,
            "1 Abe\nstatus 4\n");
}

}  // namespace
}  // namespace qrn::test
