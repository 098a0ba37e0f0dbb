// Forms over data files: formats, notes, fields that are shown only, the database control's event.
#include <gtest/gtest.h>

#include <string>

#include "tests/qrnform/FormRun.h"
#include "tests/support/Company.h"

namespace qrn::tests {
namespace {

std::string Bound(const std::string& table) {
  return " DbSource = \"db\"\n DbTable = \"" + table + "\"\n";
}
// A QRNEdit edtField over that field.
std::string FieldEdit(const std::string& field, int place, const std::string& more = {},
                      const std::string& table = "People") {
  return Edit("edt" + field, place, Bound(table) + " DbField = \"" + field + "\"\n" + more + "\n");
}
std::string Button(const std::string& name, int operation, int place, const std::string& table,
                   const std::string& index) {
  return Piece("QRNBTRLib.QRNBtn btn" + name, place,
               Bound(table) + " ClearControlData = 0\n DbOperation = " + std::to_string(operation) +
                   "\n DbIndex = \"" + index + "\"\n");
}

enum DbOperation { kInsert = 0, kUpdate = 1, kGetEqual = 3, kGetFirst = 4 };

constexpr char kOnePerson[] =
    "Private Sub Form_Load()\n"
    "  db.DbClearFieldBuffer \"People\"\n"
    "  db.DbSetFieldData \"People\", \"Code\", \"7\"\n"
    "  db.DbSetFieldData \"People\", \"Name\", \"abc\"\n"
    "  db.DbSetFieldData \"People\", \"Born\", \"2001/2/3\"\n"
    "  db.DbSetFieldData \"People\", \"Pay\", \"1234567.50\"\n"
    "  If db.DbAccess(2, \"People\", \"ByCode\") <> 0 Then Print \"no insert\"\n"
    "End Sub\n"
    "Public Sub Stored()\n"
    "  db.DbClearFieldBuffer \"People\"\n"
    "  db.DbAccess 12, \"People\", \"ByCode\"\n"
    "  Print db.DbGetFieldData(\"People\", \"Code\"); \" \"; db.DbGetFieldData(\"People\", "
    "\"Name\"); \" \"; db.DbGetFieldData(\"People\", \"Born\"); \" \"; "
    "db.DbGetFieldData(\"People\", \"Pay\")\n"
    "End Sub\n";

class DataForms : public ::testing::Test {
 protected:
  // The form's output, and with it what failed.
  std::string Run(const std::string& controls, const std::string& code, const std::string& script) {
    const std::string database =
        "Begin QRNBTRLib.QRNBtr db\n Left = 5000\n Top = 100\n DDFDir = \"" + company_.Directory() +
        "\"\nEnd\n";
    const RunResult result = RunForms({{FormText(database + controls, code)}, script});
    EXPECT_EQ(result.failure, "");
    EXPECT_EQ(result.faults, 0);
    EXPECT_EQ(result.left, 0);
    return result.printed;
  }

 private:
  test::Company company_;
};

TEST_F(DataForms, AFormatDressesWhatTheRecordBrings) {
  const std::string controls =
      FieldEdit("Code", 0, " Format = \"00000\"") +
      FieldEdit("Name", 1, " Format = \"#,##0\"\n FormatOption = 1") +
      FieldEdit("Born", 2, " Format = \"yyyy年m月d日\"") +
      FieldEdit("Pay", 3, " Format = \"#,##0.00\"\n FormatOption = 2\n MaxLength = 15") +
      FieldEdit("Town", 4, " Format = \"@@@\"\n FormatOption = 3\n MaxLength = 6") +
      Button("First", kGetFirst, 5, "People", "ByCode");
  EXPECT_EQ(Run(controls, kOnePerson,
                "click btnFirst\nprint edtCode.Text\nprint edtName.Text\nprint edtBorn.Text\n"
                "print edtPay.Text\nprint edtTown.Text\n"),
            "00007\nabc\n2001年2月3日\n   1,234,567.50\n\n")
      << "what is no number stays raw, what is empty empty";
}

TEST_F(DataForms, ADressedNumberGoesBackAsItCame) {
  const std::string controls = FieldEdit("Code", 0, " Format = \"00000\"") +
                               FieldEdit("Pay", 1,
                                         " Format = \"#,##0.00\"\n FormatOption = 3\n"
                                         " MaxLength = 15") +
                               Button("First", kGetFirst, 2, "People", "ByCode") +
                               Button("Update", kUpdate, 3, "People", "ByCode");
  EXPECT_EQ(Run(controls, kOnePerson,
                "click btnFirst\nclick btnUpdate\ncall Stored\nclick btnFirst\n"
                "set edtPay.Text = \"-98765.4\"\nprint edtPay.Text\nclick btnUpdate\n"
                "call Stored\n"),
            "7 abc 2001/02/03 1234567.50\n     -98,765.40\n7 abc 2001/02/03 -98765.40\n");
}

TEST_F(DataForms, TypingIsDressedKeyByKey) {
  const std::string controls =
      FieldEdit("Code", 0, " Format = \"#,##0\"\n FormatOption = 1\n NumericMask = -1") +
      FieldEdit("Pay", 1, " Format = \"#,##0\"\n FormatOption = 3\n MaxLength = 9") +
      FieldEdit("Name", 2, " Format = \"#,##0\"\n FormatOption = 2\n MaxLength = 9");
  EXPECT_EQ(Run(controls, "",
                "focus edtCode\ntype \"12x34567\"\nprint edtCode.Text\nprint edtCode.SelStart\n"
                "key Backspace times 3\nprint edtCode.Text\n"
                "focus edtPay\ntype \"1234\"\nprint edtPay.Text\n"
                "focus edtName\ntype \"1234\"\nprint edtName.Text\n"),
            "1,234,567\n9\n1,234\n    1,234\n1234\n");
}

// The note is typed, kept, found again and changed; its length follows.
TEST_F(DataForms, ANoteGoesToTheFileAndComesBack) {
  const std::string controls = FieldEdit("Id", 0, "", "Notes") +
                               FieldEdit("Text", 1, " MultiLine = -1\n MaxLength = 200", "Notes") +
                               Button("Insert", kInsert, 2, "Notes", "ById") +
                               Button("Update", kUpdate, 3, "Notes", "ById") +
                               Button("Find", kGetEqual, 4, "Notes", "ById");
  const char code[] =
      "Public Sub Stored()\n"
      "  Dim text As String\n"
      "  db.DbClearFieldBuffer \"Notes\"\n"
      "  db.DbAccess 12, \"Notes\", \"ById\"\n"
      "  text = db.DbGetFieldData(\"Notes\", \"Text\")\n"
      "  Print Len(text); Replace(text, vbCrLf, \"|\")\n"
      "End Sub\n"
      "Public Sub Lengthen()\n  edtText.Text = String(199, \"y\") & \"z\"\nEnd Sub\n"
      "Public Sub Clear()\n  edtText.Text = \"\": edtId.Text = \"1\"\nEnd Sub\n";
  EXPECT_EQ(Run(controls, code,
                "focus edtText\ntype \"一行目\"\nkey Enter\ntype \"二行目 表\"\n"
                "click btnInsert\ncall Stored\ncall Clear\nclick btnFind\n"
                "expect edtText.Text contains \"二行目 表\"\n"
                "focus edtText\nkey Ctrl+End\ntype \"。\"\nclick btnUpdate\ncall Stored\n"
                "call Lengthen\nclick btnUpdate\ncall Clear\nclick btnFind\n"
                "expect edtText.Text contains \"yyyz\"\ncall Stored\n"
                "set edtText.Text = \"短\"\nclick btnUpdate\ncall Stored\ncall Clear\n"
                "click btnFind\nprint edtText.Text\n"
                "set edtText.Text = \"\"\nclick btnUpdate\ncall Stored\n"),
            " 10 一行目|二行目 表\n 11 一行目|二行目 表。\n 200 " + std::string(199, 'y') +
                "z\n 1 短\n短\n 0 \n");
}

TEST(MissingDictionary, IsToldBeforeTheFormComes) {
  const std::string form = FormText(
      "Begin QRNBTRLib.QRNBtr db\n Left = 5000\n Top = 100\n DDFDir = \"C:\\absent\"\nEnd\n" +
          FieldEdit("Name", 1),
      "");
  EXPECT_EQ(RunForms({{form},
                      "message \"VE028 DDFOpen APIエラー(12)\" OK\nfocus edtName\ntype \"x\"\n"
                      "expect edtName.Text = \"x\"\n"})
                .failure,
            "");
  EXPECT_EQ(
      RunForms({{form}, "print edtName.Text\n"}).failure,
      "script:1: nobody answers the box \"VE028 DDFOpen APIエラー(12)\" (title \"エラー\") that "
      "comes before the form");
}

TEST_F(DataForms, TheDatabaseControlsFailuresReachItsHandler) {
  const char code[] =
      "Private silent As Boolean\n"
      "Private Sub db_BtrieveError(TableName As String, Status As Integer)\n"
      "  Print TableName; Status\n"
      "  If silent Then Status = 0\n"
      "End Sub\n"
      "Public Sub Lose()\n"
      "  silent = Not silent\n"
      "  db.DbClose \"Notes\"\n"
      "  db.DbSetFileName \"Notes\", \"absent.btr\"\n"
      "  Print db.DbOpen(\"Notes\"); db.DbOpenAll()\n"
      "End Sub\n"
      "Public Sub Done()\n  Print db.DbIsOpen(\"People\"); db.DbIsOpen(\"Notes\")\nEnd Sub\n";
  EXPECT_EQ(Run(FieldEdit("Name", 0), code, "call Lose\ncall Done\n"),
            "Notes 12 \nNotes 12 \n 12  12 \n 1  0 \n");
}

}  // namespace
}  // namespace qrn::tests
