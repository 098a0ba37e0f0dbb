// What shows beside the fields: names of codes, long texts, pictures.
#include <algorithm>

#include "core/DbTypes.h"
#include "host/newform/CodeSheet.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

std::string ShowPicture(CodeSheet& s, const CardControl& control) {
  return "ShowPicture " + control.picture + ", " + s.FieldText(control) + ", Trim(" +
         DbCall("DbGetFieldData(theTable, " + s.FieldText(control) + "))");
}

void Enable(CodeSheet& s, const char* truth) {
  s.code.Line("btnUpdate.Enabled = " + std::string(truth));
  s.code.Line("btnDelete.Enabled = " + std::string(truth));
}

void Empty(CodeSheet& s) {
  s.ForEach([](const CardControl& c) { return !c.said.empty(); },
            [&s](const CardControl& c) { s.code.Line(c.said + ".Caption = \"\""); });
  s.ForEach([](const CardControl& c) { return c.fit.control == Control::Display; },
            [&s](const CardControl& c) { s.code.Line(c.control + ".Text = \"\""); });
  s.ForEach([](const CardControl& c) { return !c.picture.empty(); },
            [&s](const CardControl& c) {
              s.code.Line("ShowPicture " + c.picture + ", " + s.FieldText(c) + ", \"\"");
            });
}

std::string NameCall(CodeSheet& s, const CardControl& control) {
  const Lookup& lookup = *control.lookup;
  const Table& other = s.plan.dictionary.tables[lookup.table];
  return "NameOf(" + Quoted(other.name) + ", " + Quoted(other.keys[lookup.key].name) + ", " +
         Quoted(other.fields[lookup.field].name) + ", " +
         Quoted(other.fields[*lookup.caption].name) + ", " + control.control + ".Text)";
}

// Without the zeros behind the point.
void Shortening(CodeSheet& s) {
  s.code.Procedure("Function Short(text As String) As String",
                   {"Short = text", "If InStr(text, \".\") = 0 Then Exit Function",
                    "Do While Right(Short, 1) = \"0\"", "    Short = Left(Short, Len(Short) - 1)",
                    "Loop", "If Right(Short, 1) = \".\" Then Short = Left(Short, Len(Short) - 1)"});
}

// Bound only while it shows a file that is there: the control tells each other one by a box.
void ShowingPictures(CodeSheet& s) {
  const std::string folder = s.plan.choice.pictures.empty() ? "" : s.plan.choice.pictures + "\\";
  s.code.Remark(s.words[Word::Pictures]);
  s.code.Procedure(
      "Sub ShowPicture(picture As Object, field As String, file As String)",
      {"Dim files As Object", "Set files = CreateObject(\"Scripting.FileSystemObject\")",
       "picture.DbField = \"\"", "Set picture.Picture = Nothing", "If file = \"\" Then Exit Sub",
       "If Not files.FileExists(" + Quoted(folder) + " & file) Then Exit Sub",
       "picture.DbField = field", DbCall("DbTransferToControl theTable"),
       "picture.DbField = \"\""});
}

// A mark that is cleared with the others keeps its value.
void Clearing(CodeSheet& s) {
  s.code.Begin("Sub " + std::string(kClear) + "_Click()");
  s.code.Line(DbCall("DbClearControlData theTable"));
  s.ForEach([](const CardControl& c) { return c.fit.control == Control::Check; },
            [&s](const CardControl& c) { s.code.Line(c.control + ".Value = 0"); });
  s.code.Line("LeaveRecord");
  if (s.layout.pageCount() > 1) s.code.Line("ShowPage 0");
  if (!s.plan.card.empty()) s.code.Line(s.plan.card.front().control + ".SetFocus");
  s.code.Line("Tell " + Quoted(s.words[Word::Ready]));
  s.code.End();
}

void LookingUp(CodeSheet& s) {
  const auto& card = s.plan.card;
  const auto says = [](const CardControl& c) { return !c.said.empty(); };
  const auto displays = [](const CardControl& c) { return c.fit.control == Control::Display; };
  if (std::any_of(card.begin(), card.end(), displays)) {
    s.code.Procedure("Function Lines(text As String) As String",
                     {"Lines = Replace(Replace(text, vbCrLf, vbLf), vbLf, vbCrLf)"});
  }
  if (std::any_of(card.begin(), card.end(), IsFraction)) Shortening(s);
  const auto pictures = [](const CardControl& c) { return !c.picture.empty(); };
  if (std::any_of(card.begin(), card.end(), pictures)) ShowingPictures(s);
  if (std::none_of(card.begin(), card.end(), says)) return;
  s.ForEach(says, [&s](const CardControl& c) {
    s.code.Procedure(Handler(c.control, "Click", ""), {c.said + ".Caption = " + NameCall(s, c)});
  });
  s.code.Procedure(
      "Function NameOf(table As String, key As String, field As String, caption As String, code "
      "As String) As String",
      {"If Trim(code) = \"\" Then Exit Function",
       "If " + DbCall("DbSetFieldData(table, field, Trim(code)) <> 0 Then Exit Function"),
       "If " +
           DbCall("DbAccess(" + std::to_string(kOpGetEqual) +
                  ", table, key) = 0 Then NameOf = Trim(") +
           DbCall("DbGetFieldData(table, caption))")});
}

}  // namespace

void WriteShowing(CodeSheet& s) {
  s.code.Begin("Sub TakeRecord()");
  s.code.Line("shown = True");
  Enable(s, "True");
  s.ForEach([](const CardControl& c) { return !c.said.empty(); },
            [&s](const CardControl& c) { s.code.Line(c.said + ".Caption = " + NameCall(s, c)); });
  s.ForEach([](const CardControl& c) { return c.fit.control == Control::Display; },
            [&s](const CardControl& c) {
              s.code.Line(c.control + ".Text = Lines(" +
                          DbCall("DbGetFieldData(theTable, " + s.FieldText(c) + "))"));
            });
  s.ForEach([](const CardControl& c) { return IsFraction(c); },
            [&s](const CardControl& c) {
              s.code.Line(c.control + ".Text = Short(" + c.control + ".Text)");
            });
  s.ForEach([](const CardControl& c) { return !c.picture.empty(); },
            [&s](const CardControl& c) { s.code.Line(ShowPicture(s, c)); });
  if (s.plan.choice.detail) s.code.Line("ShowDetails");
  s.code.End();
  s.code.Begin("Sub LeaveRecord()");
  s.code.Line("shown = False");
  Enable(s, "False");
  Empty(s);
  if (s.plan.choice.detail) s.code.Line("ShowDetails");
  s.code.End();
  Clearing(s);
  LookingUp(s);
}

// A box that the user passes would make a day of this year of a date of zeros.
void WriteMoments(CodeSheet& s) {
  s.ForEach(
      [&s](const CardControl& c) { return s.plan.table.fields[c.field].type == kDate && IsBox(c); },
      [&s](const CardControl& c) {
        s.code.Procedure(Handler(c.control, "Change", ""),
                         {"If " + c.control + ".Text = \"0000/00/00\" Or " + c.control +
                          ".Text = \"00/00/00\" Then " + c.control + ".Text = \"\""});
      });
}

}  // namespace qrn::newform
