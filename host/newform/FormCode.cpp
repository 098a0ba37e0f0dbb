#include "host/newform/FormCode.h"

#include <algorithm>
#include <utility>

#include "core/DbTypes.h"
#include "host/newform/CodeText.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

// The record manager's numbers; operation buttons have their own.
constexpr int kOpGetEqual = 5, kOpGetFirst = 12, kOpStepFirst = 33;

struct StatusRow {
  int status;
  const char* Words::*words;
};

constexpr StatusRow kStatuses[] = {
    {4, &Words::notFound},        {5, &Words::duplicate},
    {8, &Words::noRecord},        {9, &Words::end},
    {10, &Words::keyFixed},       {22, &Words::tooLong},
    {80, &Words::changedByOther}, {84, &Words::inUse},
    {85, &Words::inUse},
};

struct Storing {
  const char* button;
  const char* how;
  const char* words;  // when it has been done
};

std::string Number(size_t number) { return std::to_string(number); }

class CodeWriter {
 public:
  explicit CodeWriter(const FormPlan& plan) : plan_(plan), words_(plan.words) {}

  std::string Write() {
    Head();
    Start();
    if (plan_.pages > 1) Pages();
    Course();
    Walking();
    if (plan_.HasKeys()) {
      ButtonsThatStore();
    } else {
      CodeThatStores();
    }
    Judging();
    Showing();
    if (plan_.choice.detail) DetailRows();
    if (plan_.HasList()) ListRows();
    if (HasGrids()) Grids();
    Moments();
    code_.Procedure("Sub " + std::string(kClose) + "_Click()", {"Unload Me"});
    return code_.Text();
  }

 private:
  bool HasGrids() const { return plan_.choice.detail || plan_.HasList(); }
  std::string FieldText(const CardControl& control) const {
    return Quoted(plan_.table.fields[control.field].name);
  }
  static std::string Status(const std::string& words) {
    return std::string(kStatus) + ".Caption = " + words;
  }
  static std::string Database(const std::string& call) {
    return std::string(kDatabase) + "." + call;
  }

  // A call on the table along its order, or without a key.
  std::string Access(int operation) const {
    if (const Key* key = plan_.OrderKey()) {
      return Database("DbAccess(" + Number(static_cast<size_t>(operation)) + ", theTable, " +
                      Quoted(key->name) + ")");
    }
    return Database("DbAccessByID(" + Number(static_cast<size_t>(operation)) + ", " +
                    Number(plan_.choice.table) + (plan_.HasKeys() ? ", 0)" : ", -1)"));
  }

  template <class Wanted, class Act>
  void ForEach(Wanted wanted, Act act) {
    for (const CardControl& control : plan_.card) {
      if (wanted(control)) act(control);
    }
  }

  void Head() {
    code_.Line("Option Explicit");
    code_.Blank();
    code_.Remark(words_.about);
    code_.Blank();
    code_.Line("Private Const theTable = " + Quoted(plan_.table.name));
    code_.Line("Private Const noFile = 12");
    code_.Line("Private Const longer = 22");
    code_.Blank();
    code_.Remark(words_.course);
    code_.Line("Private shown As Boolean");
    code_.Line("Private asked As Boolean");
    code_.Line("Private told As String");
    code_.Blank();
  }

  void Start() {
    code_.Begin("Sub Form_Load()");
    code_.Line("OpenTable theTable");
    if (plan_.choice.detail) code_.Line("OpenTable " + Quoted(plan_.DetailTable().name));
    if (HasGrids()) code_.Line("DressGrids");
    if (plan_.HasBar()) {
      code_.Line("barRecord.AutoFirst = False");
      code_.Line("barRecord.DbTable = theTable");
    }
    ForEach([](const CardControl& c) { return !c.picture.empty(); },
            [this](const CardControl& c) { code_.Line(c.picture + ".DbField = \"\""); });
    FirstRecord();
    if (plan_.HasList()) code_.Line("ShowList");
    code_.End();
    Opening();
  }

  // Reads by code bring the fixed part alone, and the next update would cut what is behind it.
  void FirstRecord() {
    if (plan_.table.IsVariable()) {
      code_.Line("LeaveRecord");
      code_.Line(Status(Quoted(words_.seek)));
      return;
    }
    code_.Open("If " + Access(plan_.HasKeys() ? kOpGetFirst : kOpStepFirst) + " = 0 Then");
    code_.Line(Database("DbTransferToControl theTable"));
    code_.Line("TakeRecord");
    code_.Turn("Else");
    code_.Line("LeaveRecord");
    code_.Line(Status(Quoted(words_.empty)));
    code_.Close("End If");
  }

  void Opening() {
    code_.Remark(words_.opening);
    code_.Procedure("Sub OpenTable(table As String)",
                    {"If " + Database("DbIsOpen(table) = 1 Then Exit Sub"),
                     "If " + Database("DbOpen(table) <> noFile Then Exit Sub"),
                     "If " + Database("DbCreate(table) = 0 Then ") + Database("DbOpen table")});
    code_.Procedure(
        "Sub " + std::string(kDatabase) + "_BtrieveError(TableName As String, Status As Integer)",
        {"If Status = noFile Then Status = 0"});
  }

  void Pages() {
    code_.Begin("Sub " + std::string(kPageButton) + "_Click(Index As Integer)");
    code_.Line("ShowPage Index");
    code_.Line("Select Case Index");
    for (size_t page = 0; page < plan_.firsts.size(); ++page) {
      code_.Line("Case " + Number(page) + ": " + plan_.card[plan_.firsts[page]].control +
                 ".SetFocus");
    }
    code_.Line("End Select");
    code_.End();
    const std::string last = Number(static_cast<size_t>(plan_.pages - 1));
    code_.Procedure("Sub ShowPage(page As Integer)",
                    {"Dim i As Integer", "For i = 0 To " + last,
                     "    " + std::string(kPageFrame) + "(i).Visible = (i = page)", "Next"});
  }

  // Status 0 tells a control that the failure has been dealt with.
  void Course() {
    code_.Begin("Sub Failed(Status As Integer)");
    code_.Line("told = " + Quoted(words_.failed) + " & Status");
    code_.Line("Select Case Status");
    for (const StatusRow& row : kStatuses) {
      code_.Line("Case " + std::to_string(row.status) + ": told = " + Quoted(words_.*row.words));
    }
    code_.Line("Case Else: Exit Sub");
    code_.Line("End Select");
    code_.Line("Status = 0");
    code_.End();
    code_.Procedure("Sub Tell(words As String)", {Status("words"), "told = \"\""});
    code_.Procedure("Sub Done()", {"If told = \"\" Then TakeRecord", "Tell told"});
  }

  static std::string Handler(const std::string& control, const char* event,
                             const char* parameters) {
    return "Sub " + control + "_" + event + "(" + parameters + ")";
  }

  void Walking() {
    constexpr char kError[] = "Index As Integer, TableName As String, Status As Integer";
    code_.Procedure(Handler(kMove, "BtrieveError", kError), {"Failed Status"});
    code_.Procedure(Handler(kMove, "Click", "Index As Integer"), {"Done"});
    if (plan_.HasBar()) {
      code_.Procedure(Handler(kBar, "BtrieveError", "TableName As String, Status As Integer"),
                      {"Failed Status", "Tell told"});
      code_.Procedure(Handler(kBar, "Change", ""), {"Done"});
      code_.Procedure(Handler(kBar, "Scroll", ""), {"Done"});
    }
    if (plan_.choice.keys.empty()) return;
    code_.Procedure(Handler(kFind, "BtrieveError", kError), {"Failed Status", "LeaveRecord"});
    code_.Procedure(Handler(kFind, "Click", "Index As Integer"),
                    {"If told = \"\" Then UseKey Index", "Done"});
    UsingAKey();
  }

  // Records are walked along the key by which one was found.
  void UsingAKey() {
    code_.Begin("Sub UseKey(place As Integer)");
    code_.Line("Dim i As Integer");
    code_.Line("For i = 0 To 3");
    code_.Line("    btnMove(i).DbIndex = btnFind(place).DbIndex");
    code_.Line("Next");
    code_.Line("btnInsert.DbIndex = btnFind(place).DbIndex");
    code_.Line("btnUpdate.DbIndex = btnFind(place).DbIndex");
    if (plan_.HasBar()) code_.Line("barRecord.Enabled = (place = 0)");
    code_.End();
  }

  void AfterStoring(const char* words) {
    code_.Open("If told = \"\" Then");
    code_.Line(Database("DbTransferToControl theTable"));
    code_.Line("TakeRecord");
    if (plan_.HasList()) code_.Line("ShowList");
    code_.Line("told = " + Quoted(words));
    code_.Close("End If");
    code_.Line("Tell told");
  }

  void AfterDeleting() {
    code_.Line(Database("DbClearControlData theTable"));
    code_.Line("LeaveRecord");
    if (plan_.HasList()) code_.Line("ShowList");
    code_.Line("told = " + Quoted(words_.removed));
  }

  void ButtonsThatStore() {
    constexpr char kError[] = "TableName As String, Status As Integer";
    const Storing storings[] = {{kInsert, "True", words_.inserted},
                                {kUpdate, "False", words_.updated}};
    for (const auto& [button, isNew, words] : storings) {
      code_.Procedure(Handler(button, "SetData", ""),
                      {"told = Prepared(" + std::string(isNew) + ")",
                       std::string(button) + ".Abort = (told <> \"\")"});
      code_.Procedure(Handler(button, "BtrieveError", kError), {"Failed Status"});
      code_.Begin(Handler(button, "Click", ""));
      AfterStoring(words);
      code_.End();
    }
    DeleteButton(kError);
  }

  // A question that was declined goes to Click at once.
  void DeleteButton(const char* errorParameters) {
    code_.Procedure(Handler(kDelete, "SetData", ""), {"asked = True"});
    code_.Procedure(Handler(kDelete, "BtrieveError", errorParameters), {"Failed Status"});
    code_.Begin(Handler(kDelete, "Click", ""));
    code_.Open("If Not asked Then");
    code_.Line("told = " + Quoted(words_.kept));
    code_.Turn("ElseIf told = \"\" Then");
    AfterDeleting();
    code_.Close("End If");
    code_.Line("asked = False");
    code_.Line("Tell told");
    code_.End();
  }

  // Operation buttons store along keys alone.
  void CodeThatStores() {
    code_.Begin("Sub Store(operation As Integer, isNew As Boolean)");
    code_.Line("Dim rc As Integer");
    code_.Line("If isNew Then " + Database("DbClearFieldBuffer theTable"));
    code_.Line(Database("DbTransferFromControl theTable"));
    code_.Line("told = Prepared(isNew)");
    code_.Line("If told <> \"\" Then Exit Sub");
    code_.Line("rc = " +
               Database("DbAccessByID(operation, " + Number(plan_.choice.table) + ", -1)"));
    code_.Line("If rc <> 0 Then Failed rc");
    code_.End();
    const Storing storings[] = {{kInsert, "Store 2, True", words_.inserted},
                                {kUpdate, "Store 3, False", words_.updated}};
    for (const auto& [button, call, words] : storings) {
      code_.Begin(Handler(button, "Click", ""));
      code_.Line(call);
      AfterStoring(words);
      code_.End();
    }
    DeleteButton("TableName As String, Status As Integer");
  }

  void Judging() {
    code_.Remark(words_.judging);
    code_.Begin("Function Prepared(isNew As Boolean) As String");
    code_.Line("Dim words As String");
    ForEach(
        [](const CardControl& c) { return c.fit.isDressed && IsBox(c); },
        [this](const CardControl& c) { Set(c, "Replace(" + c.control + ".Text, \",\", \"\")"); });
    ForEach(
        [](const CardControl& c) { return c.fit.control == Control::Check; },
        [this](const CardControl& c) { Set(c, "\"1\"", "If " + c.control + ".Value <> 0 Then "); });
    ForEach([this](const CardControl& c) { return plan_.table.fields[c.field].type == kAutoInc; },
            [this](const CardControl& c) { Set(c, "\"0\"", "If isNew Then "); });
    ForEach(
        [](const CardControl& c) { return c.fit.judged != Judged::No && IsBox(c); },
        [this](const CardControl& c) { code_.Line("If words = \"\" Then words = " + Fault(c)); });
    code_.Line("Prepared = words");
    code_.End();
    TextFault();
    NumberFault();
  }

  static bool IsBox(const CardControl& control) {
    return control.fit.control == Control::Edit || control.fit.control == Control::Note ||
           control.fit.control == Control::Picture;
  }

  void Set(const CardControl& control, const std::string& value, const std::string& when = {}) {
    code_.Line(when + Database("DbSetFieldData theTable, " + FieldText(control) + ", " + value));
  }

  std::string Fault(const CardControl& control) const {
    const std::string arguments = "(" + control.control + ".Text, " + FieldText(control);
    if (control.fit.judged == Judged::AsText) return "TextFault" + arguments + ")";
    const bool exact = control.fit.judged == Judged::AsNumber;
    return "NumberFault" + arguments + (exact ? ", 0)" : ", 0.000001)");
  }

  // A date and a time without a text are stored as zeros.
  void TextFault() {
    code_.Begin("Function TextFault(typed As String, field As String) As String");
    code_.Line("Dim stored As String");
    code_.Line("stored = " + Database("DbGetFieldData(theTable, field)"));
    code_.Line("If RTrim(typed) = RTrim(stored) Then Exit Function");
    code_.Line(
        "If typed = \"\" And Replace(Replace(Replace(stored, \"0\", \"\"), \"/\", \"\"), "
        "\":\", \"\") = \"\" Then Exit Function");
    code_.Line("TextFault = field & " + Quoted(words_.badText));
    code_.End();
  }

  void NumberFault() {
    code_.Begin(
        "Function NumberFault(typed As String, field As String, slack As Double) As String");
    code_.Line("Dim number As String");
    code_.Line("Dim stored As String");
    code_.Line("number = Replace(Trim(typed), \",\", \"\")");
    code_.Line("If number = \"\" Then number = \"0\"");
    code_.Line("stored = " + Database("DbGetFieldData(theTable, field)"));
    code_.Open("If IsNumeric(number) And IsNumeric(stored) Then");
    code_.Line("If CDbl(number) = 0 And slack > 0 Then Exit Function");
    code_.Line(
        "If Abs(CDbl(number) - CDbl(stored)) <= Abs(CDbl(number)) * slack Then Exit Function");
    code_.Close("End If");
    code_.Line("NumberFault = field & " + Quoted(words_.badNumber));
    code_.End();
  }

  void Showing() {
    code_.Begin("Sub TakeRecord()");
    code_.Line("shown = True");
    Enable("True");
    ForEach([](const CardControl& c) { return !c.said.empty(); },
            [this](const CardControl& c) { code_.Line(c.said + ".Caption = " + NameCall(c)); });
    ForEach([](const CardControl& c) { return c.fit.control == Control::Display; },
            [this](const CardControl& c) {
              code_.Line(c.control + ".Text = Lines(" +
                         Database("DbGetFieldData(theTable, " + FieldText(c) + "))"));
            });
    ForEach([](const CardControl& c) { return IsFraction(c); },
            [this](const CardControl& c) {
              code_.Line(c.control + ".Text = Short(" + c.control + ".Text)");
            });
    ForEach([](const CardControl& c) { return !c.picture.empty(); },
            [this](const CardControl& c) { code_.Line(ShowPicture(c)); });
    if (plan_.choice.detail) code_.Line("ShowDetails");
    code_.End();
    code_.Begin("Sub LeaveRecord()");
    code_.Line("shown = False");
    Enable("False");
    Empty();
    if (plan_.choice.detail) code_.Line("ShowDetails");
    code_.End();
    Clearing();
    LookingUp();
  }

  static bool IsFraction(const CardControl& control) {
    return control.fit.judged == Judged::AsFraction && IsBox(control);
  }
  std::string ShowPicture(const CardControl& control) const {
    return "ShowPicture " + control.picture + ", " + FieldText(control) + ", Trim(" +
           Database("DbGetFieldData(theTable, " + FieldText(control) + "))");
  }

  void Enable(const char* truth) {
    code_.Line("btnUpdate.Enabled = " + std::string(truth));
    code_.Line("btnDelete.Enabled = " + std::string(truth));
  }

  void Empty() {
    ForEach([](const CardControl& c) { return !c.said.empty(); },
            [this](const CardControl& c) { code_.Line(c.said + ".Caption = \"\""); });
    ForEach([](const CardControl& c) { return c.fit.control == Control::Display; },
            [this](const CardControl& c) { code_.Line(c.control + ".Text = \"\""); });
    ForEach([](const CardControl& c) { return !c.picture.empty(); },
            [this](const CardControl& c) {
              code_.Line("ShowPicture " + c.picture + ", " + FieldText(c) + ", \"\"");
            });
  }

  // A mark that is cleared with the others keeps its value.
  void Clearing() {
    code_.Begin("Sub " + std::string(kClear) + "_Click()");
    code_.Line(Database("DbClearControlData theTable"));
    ForEach([](const CardControl& c) { return c.fit.control == Control::Check; },
            [this](const CardControl& c) { code_.Line(c.control + ".Value = 0"); });
    code_.Line("LeaveRecord");
    if (plan_.pages > 1) code_.Line("ShowPage 0");
    if (!plan_.card.empty()) code_.Line(plan_.card.front().control + ".SetFocus");
    code_.Line("Tell " + Quoted(words_.ready));
    code_.End();
  }

  std::string NameCall(const CardControl& control) const {
    const Lookup& lookup = *control.lookup;
    const Table& other = plan_.dictionary.tables[lookup.table];
    return "NameOf(" + Quoted(other.name) + ", " + Quoted(other.keys[lookup.key].name) + ", " +
           Quoted(other.fields[lookup.field].name) + ", " +
           Quoted(other.fields[*lookup.caption].name) + ", " + control.control + ".Text)";
  }

  void LookingUp() {
    const auto& card = plan_.card;
    const auto says = [](const CardControl& c) { return !c.said.empty(); };
    const auto displays = [](const CardControl& c) { return c.fit.control == Control::Display; };
    if (std::any_of(card.begin(), card.end(), displays)) {
      code_.Procedure("Function Lines(text As String) As String",
                      {"Lines = Replace(Replace(text, vbCrLf, vbLf), vbLf, vbCrLf)"});
    }
    if (std::any_of(card.begin(), card.end(), IsFraction)) Shortening();
    const auto pictures = [](const CardControl& c) { return !c.picture.empty(); };
    if (std::any_of(card.begin(), card.end(), pictures)) ShowingPictures();
    if (std::none_of(card.begin(), card.end(), says)) return;
    ForEach(says, [this](const CardControl& c) {
      code_.Procedure(Handler(c.control, "Click", ""), {c.said + ".Caption = " + NameCall(c)});
    });
    code_.Procedure(
        "Function NameOf(table As String, key As String, field As String, caption As String, code "
        "As String) As String",
        {"If Trim(code) = \"\" Then Exit Function",
         "If " + Database("DbSetFieldData(table, field, Trim(code)) <> 0 Then Exit Function"),
         "If " +
             Database("DbAccess(" + std::to_string(kOpGetEqual) +
                      ", table, key) = 0 Then NameOf = Trim(") +
             Database("DbGetFieldData(table, caption))")});
  }

  // Without the zeros behind the point.
  void Shortening() {
    code_.Procedure(
        "Function Short(text As String) As String",
        {"Short = text", "If InStr(text, \".\") = 0 Then Exit Function",
         "Do While Right(Short, 1) = \"0\"", "    Short = Left(Short, Len(Short) - 1)", "Loop",
         "If Right(Short, 1) = \".\" Then Short = Left(Short, Len(Short) - 1)"});
  }

  // Bound only while it shows a file that is there: the control tells each other one by a box.
  void ShowingPictures() {
    const std::string folder = plan_.choice.pictures.empty() ? "" : plan_.choice.pictures + "\\";
    code_.Remark(words_.pictures);
    code_.Procedure(
        "Sub ShowPicture(picture As Object, field As String, file As String)",
        {"Dim files As Object", "Set files = CreateObject(\"Scripting.FileSystemObject\")",
         "picture.DbField = \"\"", "Set picture.Picture = Nothing", "If file = \"\" Then Exit Sub",
         "If Not files.FileExists(" + Quoted(folder) + " & file) Then Exit Sub",
         "picture.DbField = field", Database("DbTransferToControl theTable"),
         "picture.DbField = \"\""});
  }

  // The condition that a row belongs to the record shown.
  std::string Condition() const {
    std::string text;
    for (const auto& [own, other] : plan_.choice.detail->fields) {
      text += text.empty() ? "" : " & \" & \" & ";
      text += "Matching(" + Number(other) + ", " + Quoted(plan_.table.fields[own].name) + ")";
    }
    return text;
  }

  void DetailRows() {
    code_.Begin("Sub ShowDetails()");
    code_.Line(std::string("EmptyGrid ") + kDetailGrid + ", " +
               ColumnNames(plan_.DetailTable(), plan_.DetailColumns()));
    code_.Line("If Not shown Then Exit Sub");
    for (const auto& pair : plan_.choice.detail->fields) {
      code_.Line(
          "If " +
          Database("DbGetFieldData(theTable, " + Quoted(plan_.table.fields[pair.first].name)) +
          ") = \"\" Then Exit Sub");
    }
    code_.Line(std::string(kDetailGrid) + ".DbConditions = " + Condition());
    code_.Line(std::string(kDetailGrid) + ".Refresh");
    code_.End();
    code_.Begin("Function Matching(place As Integer, field As String) As String");
    code_.Line("Dim value As String");
    code_.Line("Dim mark As String");
    code_.Line("value = " + Database("DbGetFieldData(theTable, field)"));
    code_.Line("mark = \"'\"");
    code_.Line("If InStr(value, mark) > 0 Then mark = \"\"\"\"");
    code_.Line("If InStr(value, mark) > 0 Then mark = \"/\"");
    code_.Line("Matching = \"@\" & place & \" = \" & mark & value & mark");
    code_.End();
    GridErrors(kDetailGrid);
  }

  void ListRows() {
    code_.Procedure("Sub ShowList()", {std::string("EmptyGrid ") + kListGrid + ", " +
                                           ColumnNames(plan_.table, plan_.ListColumns()),
                                       std::string(kListGrid) + ".Refresh"});
    GridErrors(kListGrid);
    if (!plan_.ListLeads()) return;
    code_.Procedure(Handler(kListGrid, "BeforeDelete", "pCancel As Integer"), {"pCancel = 1"});
    code_.Procedure(Handler(kListGrid, "Change", ""), {"ShowRow"});
    code_.Procedure(Handler(kListGrid, "KeyUp", "KeyCode As Integer, Shift As Integer"),
                    {"If KeyCode = vbKeyUp Or KeyCode = vbKeyDown Then ShowRow"});
    code_.Procedure("Sub ShowRow()",
                    {"Dim place As Long", "place = PlaceOf(grdList.Row - grdList.FixedRows)",
                     "If place = -1 Then Exit Sub",
                     "If " + Database("DbGetDirect(theTable, place, btnMove(0).DbIndex)") +
                         " <> 0 Then Exit Sub",
                     Database("DbTransferToControl theTable"), "Done"});
    code_.Procedure(
        "Function PlaceOf(row As Long) As Long",
        {"PlaceOf = -1", "On Error Resume Next", "PlaceOf = grdList.DbPhysicalPosition(row)"});
  }

  void GridErrors(const char* grid) {
    code_.Procedure(Handler(grid, "BtrieveError", "TableName As String, sStatus As Integer"),
                    {"If sStatus = 60 Then " + Status(Quoted(words_.partly)),
                     "If sStatus = 60 Or sStatus = 9 Then sStatus = 0"});
  }

  static std::string ColumnNames(const Table& table, const std::vector<size_t>& columns) {
    std::string names;
    for (const size_t column : columns) {
      names += (names.empty() ? "" : ", ") + Quoted(table.fields[column].name);
    }
    return "Array(" + names + ")";
  }

  // A fill adds rows and takes none away.
  void Grids() {
    code_.Procedure("Sub EmptyGrid(grid As Object, names As Variant)",
                    {"Dim col As Integer", "grid.Clear", "grid.Rows = grid.FixedRows + 1",
                     "grid.Row = 0", "For col = 0 To UBound(names)",
                     "    grid.Col = grid.FixedCols + col", "    grid.Text = names(col)", "Next",
                     "grid.Row = grid.FixedRows", "grid.Col = grid.FixedCols"});
    code_.Begin("Sub DressGrids()");
    if (plan_.choice.detail) Dress(kDetailGrid, plan_.DetailTable(), plan_.DetailColumns());
    if (plan_.HasList()) Dress(kListGrid, plan_.table, plan_.ListColumns());
    code_.End();
  }

  void Dress(const char* grid, const Table& table, const std::vector<size_t>& columns) {
    constexpr int kCharacter = 7, kMargin = 14, kNarrowest = 8, kWidest = 30;
    for (size_t i = 0; i < columns.size(); ++i) {
      const Field& field = table.fields[columns[i]];
      const FieldFit fit = FitOf(table, columns[i]);
      const int characters = std::clamp(
          std::max(fit.characters, static_cast<int>(field.name.size())), kNarrowest, kWidest);
      const std::string place = "(" + Number(i + 1) + ")";
      const int width = (characters * kCharacter + kMargin) * kTwips;
      code_.Line(std::string(grid) + ".ColWidth" + place + " = " + std::to_string(width));
      if (!fit.isNumber) continue;
      code_.Line(std::string(grid) + ".TextAlign" + place + " = 1");
      const std::string format = fit.judged == Judged::AsFraction ? "0.0#####" : fit.format;
      if (format.empty()) continue;
      code_.Line(std::string(grid) + ".FormatString" + place + " = " + Quoted(format));
    }
  }

  // A box that the user passes would make a day of this year of a date of zeros.
  void Moments() {
    ForEach(
        [this](const CardControl& c) {
          return plan_.table.fields[c.field].type == kDate && IsBox(c);
        },
        [this](const CardControl& c) {
          code_.Procedure(Handler(c.control, "Change", ""),
                          {"If " + c.control + ".Text = \"0000/00/00\" Or " + c.control +
                           ".Text = \"00/00/00\" Then " + c.control + ".Text = \"\""});
        });
  }

  const FormPlan& plan_;
  const Words& words_;
  CodeText code_;
};

}  // namespace

std::string FormCode(const FormPlan& plan) { return CodeWriter(plan).Write(); }

}  // namespace qrn::newform
