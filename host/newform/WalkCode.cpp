// Walking records and finding them, and what is said of an operation.
#include "host/newform/CodeSheet.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

struct StatusRow {
  int status;
  Word word;
};

constexpr StatusRow kStatuses[] = {
    {4, Word::NotFound},  {5, Word::Duplicate}, {8, Word::NoRecord},        {9, Word::End},
    {10, Word::KeyFixed}, {22, Word::TooLong},  {80, Word::ChangedByOther}, {84, Word::InUse},
    {85, Word::InUse},
};

// Records are walked along the key by which one was found.
void UsingAKey(CodeSheet& s) {
  s.code.Begin("Sub UseKey(place As Integer)");
  s.code.Line("Dim i As Integer");
  s.code.Line("For i = 0 To 3");
  s.code.Line("    btnMove(i).DbIndex = btnFind(place).DbIndex");
  s.code.Line("Next");
  s.code.Line("btnInsert.DbIndex = btnFind(place).DbIndex");
  s.code.Line("btnUpdate.DbIndex = btnFind(place).DbIndex");
  if (s.plan.HasBar()) s.code.Line("barRecord.Enabled = (place = 0)");
  s.code.End();
}

}  // namespace

// Status 0 tells a control that the failure has been dealt with.
void WriteCourse(CodeSheet& s) {
  s.code.Begin("Sub Failed(Status As Integer)");
  s.code.Line("told = " + Quoted(s.words[Word::Failed]) + " & Status");
  s.code.Line("Select Case Status");
  for (const StatusRow& row : kStatuses) {
    s.code.Line("Case " + std::to_string(row.status) + ": told = " + Quoted(s.words[row.word]));
  }
  s.code.Line("Case Else: Exit Sub");
  s.code.Line("End Select");
  s.code.Line("Status = 0");
  s.code.End();
  s.code.Procedure("Sub Tell(words As String)", {StatusLine("words"), "told = \"\""});
  s.code.Procedure("Sub Done()", {"If told = \"\" Then TakeRecord", "Tell told"});
}

void WriteWalking(CodeSheet& s) {
  constexpr char kError[] = "Index As Integer, TableName As String, Status As Integer";
  s.code.Procedure(Handler(kMove, "BtrieveError", kError), {"Failed Status"});
  s.code.Procedure(Handler(kMove, "Click", "Index As Integer"), {"Done"});
  if (s.plan.HasBar()) {
    s.code.Procedure(Handler(kBar, "BtrieveError", "TableName As String, Status As Integer"),
                     {"Failed Status", "Tell told"});
    s.code.Procedure(Handler(kBar, "Change", ""), {"Done"});
    s.code.Procedure(Handler(kBar, "Scroll", ""), {"Done"});
  }
  if (s.plan.choice.keys.empty()) return;
  s.code.Procedure(Handler(kFind, "BtrieveError", kError), {"Failed Status", "LeaveRecord"});
  s.code.Procedure(Handler(kFind, "Click", "Index As Integer"),
                   {"If told = \"\" Then UseKey Index", "Done"});
  UsingAKey(s);
}

}  // namespace qrn::newform
