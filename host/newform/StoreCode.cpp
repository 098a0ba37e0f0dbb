// Storing and deleting records.
#include "host/newform/CodeSheet.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

struct Storing {
  const char* button;
  const char* how;
  const char* words;  // when it has been done
};

void AfterStoring(CodeSheet& s, const char* words) {
  s.code.Open("If told = \"\" Then");
  s.code.Line(DbCall("DbTransferToControl theTable"));
  s.code.Line("TakeRecord");
  if (s.plan.HasList()) s.code.Line("ShowList");
  s.code.Line("told = " + Quoted(words));
  s.code.Close("End If");
  s.code.Line("Tell told");
}

void AfterDeleting(CodeSheet& s) {
  s.code.Line(DbCall("DbClearControlData theTable"));
  s.code.Line("LeaveRecord");
  if (s.plan.HasList()) s.code.Line("ShowList");
  s.code.Line("told = " + Quoted(s.words[Word::Removed]));
}

// A question that was declined goes to Click at once.
void DeleteButton(CodeSheet& s, const char* errorParameters) {
  s.code.Procedure(Handler(kDelete, "SetData", ""), {"asked = True"});
  s.code.Procedure(Handler(kDelete, "BtrieveError", errorParameters), {"Failed Status"});
  s.code.Begin(Handler(kDelete, "Click", ""));
  s.code.Open("If Not asked Then");
  s.code.Line("told = " + Quoted(s.words[Word::Kept]));
  s.code.Turn("ElseIf told = \"\" Then");
  AfterDeleting(s);
  s.code.Close("End If");
  s.code.Line("asked = False");
  s.code.Line("Tell told");
  s.code.End();
}

}  // namespace

void WriteStoringButtons(CodeSheet& s) {
  constexpr char kError[] = "TableName As String, Status As Integer";
  const Storing storings[] = {{kInsert, "True", s.words[Word::Inserted]},
                              {kUpdate, "False", s.words[Word::Updated]}};
  for (const auto& [button, isNew, words] : storings) {
    s.code.Procedure(Handler(button, "SetData", ""),
                     {"told = Prepared(" + std::string(isNew) + ")",
                      std::string(button) + ".Abort = (told <> \"\")"});
    s.code.Procedure(Handler(button, "BtrieveError", kError), {"Failed Status"});
    s.code.Begin(Handler(button, "Click", ""));
    AfterStoring(s, words);
    s.code.End();
  }
  DeleteButton(s, kError);
}

// Operation buttons store along keys alone.
void WriteStoring(CodeSheet& s) {
  s.code.Begin("Sub Store(operation As Integer, isNew As Boolean)");
  s.code.Line("Dim rc As Integer");
  s.code.Line("If isNew Then " + DbCall("DbClearFieldBuffer theTable"));
  s.code.Line(DbCall("DbTransferFromControl theTable"));
  s.code.Line("told = Prepared(isNew)");
  s.code.Line("If told <> \"\" Then Exit Sub");
  s.code.Line("rc = " + DbCall("DbAccessByID(operation, " + Number(s.plan.choice.table) + ", -1)"));
  s.code.Line("If rc <> 0 Then Failed rc");
  s.code.End();
  const Storing storings[] = {{kInsert, "Store 2, True", s.words[Word::Inserted]},
                              {kUpdate, "Store 3, False", s.words[Word::Updated]}};
  for (const auto& [button, call, words] : storings) {
    s.code.Begin(Handler(button, "Click", ""));
    s.code.Line(call);
    AfterStoring(s, words);
    s.code.End();
  }
  DeleteButton(s, "TableName As String, Status As Integer");
}

}  // namespace qrn::newform
