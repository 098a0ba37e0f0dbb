// Visual Basic code as it goes to the script engine.

#include "host/form/SourceText.h"
#include "host/form/VbCode.h"
#include "tests/support/Test.h"

namespace qrn::form {
namespace {

std::string Rewritten(const std::string& code, Mistakes* mistakes = nullptr) {
  Mistakes own;
  const ScriptCode script =
      RewriteCode(SourceLines("\xEF\xBB\xBF" + code), 1, mistakes ? *mistakes : own);
  EXPECT_TRUE(mistakes || !own.Any()) << own.Text("code");
  return script.text;
}

struct RewriteCase {
  const char *what, *code, *expected;
};

// clang-format off
const RewriteCase kModuleCases[] = {
    {"a typed variable begins with its value", "Dim n As Integer", "Dim n: n = 0\n"},
    {"several in one line", "Private a As String, b, c&", "Dim a: a = \"\": Dim b: Dim c: c = CLng(0)\n"},
    {"an object begins as Nothing", "Public o As Object", "Dim o: Set o = Nothing\n"},
    {"a type with its library", "Dim d As ADODB.Recordset, e As Date", "Dim d: Set d = Nothing: Dim e: e = CDate(0)\n"},
    {"a fixed array", "Dim a(10) As String", "Dim a(10)\n"},
    {"an array of two dimensions", "Dim a(1 To 5, 3) As Long", "Dim a(5, 3)\n"},
    {"an array of a constant's size", "Dim a(kMost) As Long", "Dim a: ReDim a(kMost)\n"},
    {"a dynamic array has no brackets", "Dim a() As Byte", "Dim a\n"},
    {"a constant", "Private Const kMost As Integer = 5, kName$ = \"x\"", "Const kMost = 5: Const kName = \"x\"\n"},
    {"a negative constant", "Const a = -1", "Const a = -1\n"},
    {"a computed constant", "Const a = 1 + 2", "Dim a: a = 1 + 2\n"},
    {"an enumeration counts on", "Public Enum Colour\n Red\n Green = 5\n Blue\nEnd Enum",
     "\nDim Red: Red = 0\nDim Green: Green = 5\nDim Blue: Blue = Green + 1\n\n"},
    {"Option Explicit goes first", "' head\nOption Explicit\nDim a", "Option Explicit: \n\nDim a\n"},
    {"Option Base moves LBound", "Option Base 1\nDim a(3)\nx = LBound(a)", "\nDim a(3)\nx = 1\n"},
    {"attributes go", "Attribute x.VB_VarHelpID = -1\nDim a", "\nDim a\n"},
};

const RewriteCase kStatementCases[] = {
    {"comments go", "x = 1 ' one\nRem all\ny = 2: Rem more", "x = 1\n\ny = 2\n"},
    {"a quote in a text is no comment", "x = \"it's\" & \"a \"\"b\"\"\"", "x = \"it's\" & \"a \"\"b\"\"\"\n"},
    {"continued lines keep the count", "x = 1 + _\n  2 + _\n  3\ny = 4", "x = 1 + 2 + 3\n\n\ny = 4\n"},
    {"type characters go", "a$ = Left$(b$, 2&) & Chr$(65)", "a = Left(b, 2) & Chr(65)\n"},
    {"hexadecimal stays", "a = &HFF& + &H10 + &O17", "a = &HFF& + &H10 + &O17\n"},
    {"numbers lose their type", "a = 1.5! + 2# + 3@ + 1D3", "a = 1.5 + 2 + 3 + 1E3\n"},
    {"a date stays", "a = #1/2/2003#", "a = #1/2/2003#\n"},
    {"Next names nothing", "For i = 1 To 3\nFor j = 1 To 2\nNext j, i", "For i = 1 To 3\nFor j = 1 To 2\nNext: Next\n"},
    {"Let goes", "Let a = 1", "a = 1\n"},
    {"Me is the form", "Me.Caption = a.Me", "ThisForm_.Caption = a.Me\n"},
    {"Else keeps no colon", "If a Then\nElse: b = 1\nEnd If", "If a Then\nElse b = 1\nEnd If\n"},
    {"If on one line", "If a Then b = 1: c = 2 Else d = 3", "If a Then b = 1: c = 2 Else d = 3\n"},
    {"ElseIf", "If a Then\nElseIf b Then\nc = 1\nElse\nEnd If", "If a Then\nElseIf b Then\nc = 1\nElse\nEnd If\n"},
    {"Print with separators", "Debug.Print a; b, \"c\";\nPrint\nMe.Print x",
     "HostPrint_ a, \";\", b, \",\", \"c\", \";\"\nHostPrint_\nHostPrint_ x\n"},
    {"Debug.Assert", "Debug.Assert a > 1", "HostAssert_ a > 1\n"},
    {"End alone ends the program", "If a Then End", "If a Then HostEnd_\n"},
    {"plain cases stay", "Select Case a\nCase 1, 2\nCase Else\nEnd Select", "Select Case a\nCase 1, 2\nCase Else\nEnd Select\n"},
    {"cases with ranges become conditions", "Select Case a + 1\nCase 1 To 3, 7: b = 1\nCase Is >= 9\nCase Else\nEnd Select",
     "Dim Select0_: Select0_ = (a + 1): Select Case True\nCase (Select0_ >= (1) And Select0_ <= (3)), (Select0_ = (7)): b = 1\n"
     "Case (Select0_ >= (9))\nCase Else\nEnd Select\n"},
    {"functions the engine may lack", "a = LenB(StrConv(b, 128)) + x.LenB", "a = Host_LenB(StrConv(b, 128)) + x.LenB\n"},
    {"ReDim takes the upper bound", "Dim a() As Long\nReDim Preserve a(1 To n)\nb = LBound(a)", "Dim a\nReDim Preserve a(n)\nb = 1\n"},
    {"Erase of a dynamic array", "Dim a() As Long\nErase a", "Dim a\na = Empty\n"},
    {"errors that are passed over", "On Error Resume Next\nOn Error GoTo 0", "On Error Resume Next\nOn Error GoTo 0\n"},
    {"Japanese names and texts", "顧客名 = \"表示ソ\"", "顧客名 = \"表示ソ\"\n"},
};

const RewriteCase kProcedureCases[] = {
    {"an event procedure", "Private Sub edtName_KeyPress(KeyAscii As Integer)\nKeyAscii = 0\nEnd Sub",
     "Sub edtName_KeyPress(KeyAscii)\nKeyAscii = CInt(0)\nEnd Sub\n"},
    {"ByVal converts at the door", "Sub A(ByVal n As Long, ByRef s As String, v)\nEnd Sub", "Sub A(ByVal n, s, v): n = CLng(n)\nEnd Sub\n"},
    {"a function begins with its type's value", "Function F(a() As Long) As String\nF = 1\nEnd Function",
     "Function F(a): F = \"\"\nF = CStr(1)\nEnd Function\n"},
    {"a function by type character", "Function F%()\nF = 1.6\nEnd Function", "Function F(): F = 0\nF = CInt(1.6)\nEnd Function\n"},
    {"variables begin at the head, once", "Sub A()\nDo\nDim n As Integer\nn = n + 1\nLoop\nEnd Sub",
     "Sub A(): n = 0\nDo\nDim n\nn = CInt(n + 1)\nLoop\nEnd Sub\n"},
    {"elements are converted, arrays are not", "Sub A()\nDim a(3) As Integer, b() As String\na(i + 1) = 1.5\nb = Split(s)\nEnd Sub",
     "Sub A()\nDim a(3): Dim b\na(i + 1) = CInt(1.5)\nb = Split(s)\nEnd Sub\n"},
    {"a Static variable is the module's", "Sub A()\nStatic n As Long\nn = n + 1\nEnd Sub",
     "Dim A_n_: A_n_ = CLng(0): Sub A()\n\nA_n_ = CLng(A_n_ + 1)\nEnd Sub\n"},
    {"a local hides the module's type", "Dim n As Integer\nSub A()\nDim n\nn = 1.5\nEnd Sub\nSub B()\nn = 1.5\nEnd Sub",
     "Dim n: n = 0\nSub A()\nDim n\nn = 1.5\nEnd Sub\nSub B()\nn = CInt(1.5)\nEnd Sub\n"},
    {"a typed assignment behind Then", "Sub A()\nDim n%\nIf a Then n = 1.5 Else n = 2.5\nEnd Sub",
     "Sub A(): n = 0\nDim n\nIf a Then n = CInt(1.5) Else n = CInt(2.5)\nEnd Sub\n"},
    {"one's own LenB", "Function LenB(a)\nEnd Function\nx = LenB(1)", "Function LenB(a)\nEnd Function\nx = LenB(1)\n"},
};
// clang-format on

void ExpectAll(std::span<const RewriteCase> cases) {
  for (const RewriteCase& c : cases) EXPECT_EQ(Rewritten(c.code), c.expected) << c.what;
}

TEST(VbCode, DeclarationsOfTheModuleLoseTheirTypesAndKeepTheirMeaning) { ExpectAll(kModuleCases); }
TEST(VbCode, StatementsAreSaidInTheEnginesWords) { ExpectAll(kStatementCases); }
TEST(VbCode, ProceduresConvertWhatTheirTypesPromise) { ExpectAll(kProcedureCases); }

struct RefusalCase {
  const char* code;
  const char* expected;  // "line: part of the reason", one a line
};

// clang-format off
const RefusalCase kRefused[] = {
    {"x = 1\nOn Error GoTo Fail", "2: a jump on an error cannot be had"},
    {"Fail:\nx = 1", "1: 'Fail:' is a jump label"},
    {"10 x = 1", "1: a line number cannot be had"},
    {"GoTo Fail", "1: jumps cannot be had"},
    {"Private Type Point\n x As Long\n y As Long\nEnd Type\nDim a", "1: a type of one's own"},
    {"Private Declare Function f Lib \"x\" () As Long", "1: functions of other libraries"},
    {"Property Get A()\nA = 1\nEnd Property", "1: a form here has no properties"},
    {"Open \"a\" For Input As #1", "1: file statements"},
    {"Print #1, a", "1: file statements"},
    {"Name a As b", "1: file statements"},
    {"Sub A(Optional b)\nEnd Sub", "1: an Optional parameter"},
    {"Sub A(ParamArray b())\nEnd Sub", "1: ParamArray"},
    {"x = a Like \"b*\"", "1: Like cannot be had"},
    {"Set x = New Form2", "1: New cannot be had"},
    {"Dim x As New Collection", "1: 'As New' cannot be had"},
    {"Dim x As String * 5", "1: a text of fixed length"},
    {"f a:=1", "1: an argument by name"},
    {"x = rs!Name", "1: '!' between names"},
    {"Mid(s, 1, 2) = \"x\"", "1: Mid on the left"},
    {"Dim a(-1 To 5)", "1: an array cannot begin below 0"},
    {"#If A Then", "1: lines with #"},
    {"Private WithEvents a As B", "1: WithEvents"},
    {"x = \"abc", "1: the closing quote"},
    {"If a\nEnd If", "1: 'Then' is missing"},
    {"If a Then\nx = 1", "1: 'End If' is missing for this 'If'"},
    {"Next", "1: 'Next' without 'For'"},
    {"For i = 1 To 2\nLoop", "2: 'Loop' stands where 'Next' is expected for the 'For' of line 1"},
    {"Sub A()\nEnd Sub\nSub a()\nEnd Sub", "3: a stands already on line 1"},
    {"Sub A()\nEnd Function", "2: 'End Function' stands where 'End Sub' is expected"},
    {"Option Compare Text", "1: texts are compared as they are"},
    {"Const a", "1: the constant a needs '='"},
    {"Dim 5", "1: a name is expected"},
    {"x = 1 ~ 2", "1: the character '~'"},
    {"Case 1", "1: 'Case' stands outside its 'Select'"},
    {"Else", "1: 'Else' stands outside its 'If'"},
    {"Sub", "1: a name is expected behind 'Sub'"},
};
// clang-format on

TEST(VbCode, WhatCannotBeHadIsRefusedWithLineAndReason) {
  for (const RefusalCase& c : kRefused) {
    Mistakes mistakes;
    Rewritten(c.code, &mistakes);
    ASSERT_TRUE(mistakes.Any()) << c.code;
    const Mistake& first = mistakes.List().front();
    EXPECT_TRUE((std::to_string(first.line) + ": " + first.reason).starts_with(c.expected))
        << c.code << "\n"
        << mistakes.Text("code");
  }
}

TEST(VbCode, OneRefusedBlockIsOneMistake) {
  Mistakes mistakes;
  Rewritten("Type A\n b As New C\n Open As Long\nEnd Type\nDim x\nGoTo y", &mistakes);
  EXPECT_EQ(mistakes.Text("f.frm").find("f.frm:1: a type"), 0u);
  ASSERT_EQ(mistakes.List().size(), 2u);
  EXPECT_EQ(mistakes.List()[1].line, 6);
}

TEST(VbCode, ProceduresAreListedWithTheirParameters) {
  Mistakes mistakes;
  const ScriptCode code = RewriteCode(
      {"Private Sub a_Click()", "End Sub", "Function F(x, y As Long) As Long", "End Function"}, 40,
      mistakes);
  ASSERT_EQ(code.procedures.size(), 2u);
  EXPECT_EQ(code.firstLine, 40);
  ASSERT_TRUE(code.Find("A_CLICK"));
  EXPECT_EQ(code.Find("A_CLICK")->line, 40);
  EXPECT_EQ(code.Find("f")->parameterCount, 2);
  EXPECT_TRUE(code.Find("f")->isFunction);
  EXPECT_FALSE(code.Find("g"));
}

}  // namespace
}  // namespace qrn::form
