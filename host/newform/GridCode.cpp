// The grids of a form: its details, its list.
#include <algorithm>

#include "host/newform/CodeSheet.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {
namespace {

void GridErrors(CodeSheet& s, const char* grid) {
  s.code.Procedure(Handler(grid, "BtrieveError", "TableName As String, sStatus As Integer"),
                   {"If sStatus = 60 Then " + StatusLine(Quoted(s.words[Word::Partly])),
                    "If sStatus = 60 Or sStatus = 9 Then sStatus = 0"});
}

// The condition that a row belongs to the record shown.
std::string Condition(CodeSheet& s) {
  std::string text;
  for (const auto& [own, other] : s.plan.choice.detail->fields) {
    text += text.empty() ? "" : " & \" & \" & ";
    text += "Matching(" + Number(other) + ", " + Quoted(s.plan.table.fields[own].name) + ")";
  }
  return text;
}

void Dress(CodeSheet& s, const char* grid, const Table& table, const std::vector<size_t>& columns) {
  constexpr int kCharacter = 7, kMargin = 14, kNarrowest = 8, kWidest = 30;
  for (size_t i = 0; i < columns.size(); ++i) {
    const Field& field = table.fields[columns[i]];
    const FieldFit fit = FitOf(table, columns[i]);
    const int characters = std::clamp(std::max(fit.characters, static_cast<int>(field.name.size())),
                                      kNarrowest, kWidest);
    const std::string place = "(" + Number(i + 1) + ")";
    const int width = (characters * kCharacter + kMargin) * kTwipsPerPixel;
    s.code.Line(std::string(grid) + ".ColWidth" + place + " = " + std::to_string(width));
    if (!fit.isNumber) continue;
    s.code.Line(std::string(grid) + ".TextAlign" + place + " = 1");
    const std::string format = fit.judged == Judged::AsFraction ? "0.0#####" : fit.format;
    if (format.empty()) continue;
    s.code.Line(std::string(grid) + ".FormatString" + place + " = " + Quoted(format));
  }
}

}  // namespace

void WriteDetails(CodeSheet& s) {
  s.code.Begin("Sub ShowDetails()");
  s.code.Line(std::string("EmptyGrid ") + kDetailGrid + ", " +
              ColumnNames(s.plan.DetailTable(), s.plan.DetailColumns()));
  s.code.Line("If Not shown Then Exit Sub");
  for (const auto& pair : s.plan.choice.detail->fields) {
    s.code.Line("If " +
                DbCall("DbGetFieldData(theTable, " + Quoted(s.plan.table.fields[pair.first].name)) +
                ") = \"\" Then Exit Sub");
  }
  s.code.Line(std::string(kDetailGrid) + ".DbConditions = " + Condition(s));
  s.code.Line(std::string(kDetailGrid) + ".Refresh");
  s.code.End();
  s.code.Begin("Function Matching(place As Integer, field As String) As String");
  s.code.Line("Dim value As String");
  s.code.Line("Dim mark As String");
  s.code.Line("value = " + DbCall("DbGetFieldData(theTable, field)"));
  s.code.Line("mark = \"'\"");
  s.code.Line("If InStr(value, mark) > 0 Then mark = \"\"\"\"");
  s.code.Line("If InStr(value, mark) > 0 Then mark = \"/\"");
  s.code.Line("Matching = \"@\" & place & \" = \" & mark & value & mark");
  s.code.End();
  GridErrors(s, kDetailGrid);
}

void WriteList(CodeSheet& s) {
  s.code.Procedure("Sub ShowList()", {std::string("EmptyGrid ") + kListGrid + ", " +
                                          ColumnNames(s.plan.table, s.plan.ListColumns()),
                                      std::string(kListGrid) + ".Refresh"});
  GridErrors(s, kListGrid);
  if (!s.plan.ListLeads()) return;
  s.code.Procedure(Handler(kListGrid, "BeforeDelete", "pCancel As Integer"), {"pCancel = 1"});
  s.code.Procedure(Handler(kListGrid, "Change", ""), {"ShowRow"});
  s.code.Procedure(Handler(kListGrid, "KeyUp", "KeyCode As Integer, Shift As Integer"),
                   {"If KeyCode = vbKeyUp Or KeyCode = vbKeyDown Then ShowRow"});
  s.code.Procedure(
      "Sub ShowRow()",
      {"Dim place As Long", "place = PlaceOf(grdList.Row - grdList.FixedRows)",
       "If place = -1 Then Exit Sub",
       "If " + DbCall("DbGetDirect(theTable, place, btnMove(0).DbIndex)") + " <> 0 Then Exit Sub",
       DbCall("DbTransferToControl theTable"), "Done"});
  s.code.Procedure(
      "Function PlaceOf(row As Long) As Long",
      {"PlaceOf = -1", "On Error Resume Next", "PlaceOf = grdList.DbPhysicalPosition(row)"});
}

// A fill adds rows and takes none away.
void WriteGrids(CodeSheet& s) {
  s.code.Procedure("Sub EmptyGrid(grid As Object, names As Variant)",
                   {"Dim col As Integer", "grid.Clear", "grid.Rows = grid.FixedRows + 1",
                    "grid.Row = 0", "For col = 0 To UBound(names)",
                    "    grid.Col = grid.FixedCols + col", "    grid.Text = names(col)", "Next",
                    "grid.Row = grid.FixedRows", "grid.Col = grid.FixedCols"});
  s.code.Begin("Sub DressGrids()");
  if (s.plan.choice.detail) Dress(s, kDetailGrid, s.plan.DetailTable(), s.plan.DetailColumns());
  if (s.plan.HasList()) Dress(s, kListGrid, s.plan.table, s.plan.ListColumns());
  s.code.End();
}

}  // namespace qrn::newform
