// Judging what was typed before it is stored.
#include "core/DbTypes.h"
#include "host/newform/CodeSheet.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

void Set(CodeSheet& s, const CardControl& control, const std::string& value,
         const std::string& when = {}) {
  s.code.Line(when + DbCall("DbSetFieldData theTable, " + s.FieldText(control) + ", " + value));
}

std::string Fault(CodeSheet& s, const CardControl& control) {
  const std::string arguments = "(" + control.control + ".Text, " + s.FieldText(control);
  if (control.fit.judged == Judged::AsText) return "TextFault" + arguments + ")";
  const bool exact = control.fit.judged == Judged::AsNumber;
  return "NumberFault" + arguments + (exact ? ", 0)" : ", 0.000001)");
}

// A date and a time without a text are stored as zeros.
void TextFault(CodeSheet& s) {
  s.code.Begin("Function TextFault(typed As String, field As String) As String");
  s.code.Line("Dim stored As String");
  s.code.Line("stored = " + DbCall("DbGetFieldData(theTable, field)"));
  s.code.Line("If RTrim(typed) = RTrim(stored) Then Exit Function");
  s.code.Line(
      "If typed = \"\" And Replace(Replace(Replace(stored, \"0\", \"\"), \"/\", \"\"), "
      "\":\", \"\") = \"\" Then Exit Function");
  s.code.Line("TextFault = field & " + Quoted(s.words[Word::BadText]));
  s.code.End();
}

void NumberFault(CodeSheet& s) {
  s.code.Begin("Function NumberFault(typed As String, field As String, slack As Double) As String");
  s.code.Line("Dim number As String");
  s.code.Line("Dim stored As String");
  s.code.Line("number = Replace(Trim(typed), \",\", \"\")");
  s.code.Line("If number = \"\" Then number = \"0\"");
  s.code.Line("stored = " + DbCall("DbGetFieldData(theTable, field)"));
  s.code.Open("If IsNumeric(number) And IsNumeric(stored) Then");
  s.code.Line("If CDbl(number) = 0 And slack > 0 Then Exit Function");
  s.code.Line(
      "If Abs(CDbl(number) - CDbl(stored)) <= Abs(CDbl(number)) * slack Then Exit Function");
  s.code.Close("End If");
  s.code.Line("NumberFault = field & " + Quoted(s.words[Word::BadNumber]));
  s.code.End();
}

}  // namespace

void WriteJudging(CodeSheet& s) {
  s.code.Remark(s.words[Word::Judging]);
  s.code.Begin("Function Prepared(isNew As Boolean) As String");
  s.code.Line("Dim words As String");
  s.ForEach(
      [](const CardControl& c) { return c.fit.isDressed && IsBox(c); },
      [&s](const CardControl& c) { Set(s, c, "Replace(" + c.control + ".Text, \",\", \"\")"); });
  s.ForEach(
      [](const CardControl& c) { return c.fit.control == Control::Check; },
      [&s](const CardControl& c) { Set(s, c, "\"1\"", "If " + c.control + ".Value <> 0 Then "); });
  s.ForEach([&s](const CardControl& c) { return s.plan.table.fields[c.field].type == kAutoInc; },
            [&s](const CardControl& c) { Set(s, c, "\"0\"", "If isNew Then "); });
  s.ForEach(
      [](const CardControl& c) { return c.fit.judged != Judged::No && IsBox(c); },
      [&s](const CardControl& c) { s.code.Line("If words = \"\" Then words = " + Fault(s, c)); });
  s.code.Line("Prepared = words");
  s.code.End();
  TextFault(s);
  NumberFault(s);
}

}  // namespace qrn::newform
