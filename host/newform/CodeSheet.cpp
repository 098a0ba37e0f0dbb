#include "host/newform/CodeSheet.h"

#include "host/newform/FormPart.h"

namespace qrn::newform {

std::string Number(size_t number) { return std::to_string(number); }

std::string DbCall(const std::string& call) { return std::string(kDatabase) + "." + call; }

std::string StatusLine(const std::string& words) {
  return std::string(kStatus) + ".Caption = " + words;
}

std::string Handler(const std::string& control, const char* event, const char* parameters) {
  return "Sub " + control + "_" + event + "(" + parameters + ")";
}

std::string ColumnNames(const Table& table, const std::vector<size_t>& columns) {
  std::string names;
  for (const size_t column : columns) {
    names += (names.empty() ? "" : ", ") + Quoted(table.fields[column].name);
  }
  return "Array(" + names + ")";
}

bool IsBox(const CardControl& control) {
  return control.fit.control == Control::Edit || control.fit.control == Control::Note ||
         control.fit.control == Control::Picture;
}

bool IsFraction(const CardControl& control) {
  return control.fit.judged == Judged::AsFraction && IsBox(control);
}

std::string CodeSheet::FieldText(const CardControl& control) const {
  return Quoted(plan.table.fields[control.field].name);
}

std::string CodeSheet::Access(int operation) const {
  const std::string number = std::to_string(operation);
  if (const Key* key = plan.OrderKey()) {
    return DbCall("DbAccess(" + number + ", theTable, " + Quoted(key->name) + ")");
  }
  return DbCall("DbAccessByID(" + number + ", " + Number(plan.choice.table) +
                (plan.HasKeys() ? ", 0)" : ", -1)"));
}

}  // namespace qrn::newform
