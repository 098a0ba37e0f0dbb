// How a form begins: what its code declares, what it opens, the first record, its pages.
#include "host/newform/CodeSheet.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

// Reads by code bring the fixed part alone, and the next update would cut what is behind it.
void FirstRecord(CodeSheet& s) {
  if (s.plan.table.IsVariable()) {
    s.code.Line("LeaveRecord");
    s.code.Line(StatusLine(Quoted(s.words[Word::Seek])));
    return;
  }
  s.code.Open("If " + s.Access(s.plan.HasKeys() ? kOpGetFirst : kOpStepFirst) + " = 0 Then");
  s.code.Line(DbCall("DbTransferToControl theTable"));
  s.code.Line("TakeRecord");
  s.code.Turn("Else");
  s.code.Line("LeaveRecord");
  s.code.Line(StatusLine(Quoted(s.words[Word::Empty])));
  s.code.Close("End If");
}

void Opening(CodeSheet& s) {
  s.code.Remark(s.words[Word::Opening]);
  s.code.Procedure("Sub OpenTable(table As String)",
                   {"If " + DbCall("DbIsOpen(table) = 1 Then Exit Sub"),
                    "If " + DbCall("DbOpen(table) <> noFile Then Exit Sub"),
                    "If " + DbCall("DbCreate(table) = 0 Then ") + DbCall("DbOpen table")});
  s.code.Procedure(
      "Sub " + std::string(kDatabase) + "_BtrieveError(TableName As String, Status As Integer)",
      {"If Status = noFile Then Status = 0"});
}

}  // namespace

void WriteStart(CodeSheet& s) {
  s.code.Begin("Sub Form_Load()");
  s.code.Line("OpenTable theTable");
  if (s.plan.choice.detail) s.code.Line("OpenTable " + Quoted(s.plan.DetailTable().name));
  if (s.HasGrids()) s.code.Line("DressGrids");
  if (s.plan.HasBar()) {
    s.code.Line("barRecord.AutoFirst = False");
    s.code.Line("barRecord.DbTable = theTable");
  }
  s.ForEach([](const CardControl& c) { return !c.picture.empty(); },
            [&s](const CardControl& c) { s.code.Line(c.picture + ".DbField = \"\""); });
  FirstRecord(s);
  if (s.plan.HasList()) s.code.Line("ShowList");
  s.code.End();
  Opening(s);
}

void WritePages(CodeSheet& s) {
  s.code.Begin("Sub " + std::string(kPageButton) + "_Click(Index As Integer)");
  s.code.Line("ShowPage Index");
  s.code.Line("Select Case Index");
  for (int page = 0; page < s.layout.pageCount(); ++page) {
    s.code.Line("Case " + std::to_string(page) + ": " +
                s.plan.card[s.layout.FirstOf(page)].control + ".SetFocus");
  }
  s.code.Line("End Select");
  s.code.End();
  const std::string last = Number(static_cast<size_t>(s.layout.pageCount() - 1));
  s.code.Procedure("Sub ShowPage(page As Integer)",
                   {"Dim i As Integer", "For i = 0 To " + last,
                    "    " + std::string(kPageFrame) + "(i).Visible = (i = page)", "Next"});
}

void WriteHead(CodeSheet& s) {
  s.code.Line("Option Explicit");
  s.code.Blank();
  s.code.Remark(s.words[Word::About]);
  s.code.Blank();
  s.code.Line("Private Const theTable = " + Quoted(s.plan.table.name));
  s.code.Line("Private Const noFile = 12");
  s.code.Line("Private Const longer = 22");
  s.code.Blank();
  s.code.Remark(s.words[Word::Course]);
  s.code.Line("Private shown As Boolean");
  s.code.Line("Private asked As Boolean");
  s.code.Line("Private told As String");
  s.code.Blank();
}

}  // namespace qrn::newform
