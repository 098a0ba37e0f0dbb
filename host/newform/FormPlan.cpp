#include "host/newform/FormPlan.h"

#include <algorithm>

#include "core/DbTypes.h"

namespace qrn::newform {
namespace {

constexpr size_t kMostColumns = 12;

constexpr const char* kOwnNames[] = {kDatabase,    kStatus,    kMove,       kFind,     kBar,
                                     kInsert,      kUpdate,    kDelete,     kClear,    kClose,
                                     kPageButton,  kPageFrame, kDetailGrid, kListGrid, kFindFrame,
                                     kDetailLabel, kListLabel};

const char* PrefixOf(const CardControl& control) {
  if (control.lookup) return "cbo";
  if (control.fit.control == Control::Check) return "chk";
  return control.fit.control == Control::Display ? "txt" : "edt";
}

// One line that is typed, of a table that names records.
bool CanLookUp(const FieldFit& fit) { return fit.control == Control::Edit && !fit.isMoment; }

// The other table is asked for what the box shows: as it stands in the record.
void LookUp(const FormPlan& plan, CardControl& control) {
  if (!CanLookUp(control.fit)) return;
  control.lookup = LookupOf(plan.dictionary, plan.choice.table, control.field);
  if (!control.lookup) return;
  control.fit.format.clear();
  control.fit.isDressed = false;
}

CardControl ControlOf(FormPlan& plan, size_t field) {
  CardControl control;
  control.field = field;
  control.fit = FitOf(plan.table, field);
  LookUp(plan, control);
  const std::string name = Identifier(plan.table.fields[field].name, "Field", field);
  control.control = plan.names.Take(PrefixOf(control) + name);
  if (control.fit.control != Control::Check) control.label = plan.names.Take("lbl" + name);
  if (control.lookup && control.lookup->caption) control.said = plan.names.Take("lblOf" + name);
  if (control.fit.control == Control::Picture) control.picture = plan.names.Take("pic" + name);
  return control;
}

}  // namespace

FormPlan::FormPlan(const Dictionary& from, const FormChoice& chosen)
    : dictionary(from),
      choice(chosen),
      table(from.tables[chosen.table]),
      words(chosen.language),
      formName("frm" + Identifier(table.name, "Table", chosen.table)) {
  names.Take(formName);
  for (const char* name : kOwnNames) names.Take(name);
  for (const size_t field : choice.fields) card.push_back(ControlOf(*this, field));
}

const Key* FormPlan::OrderKey() const noexcept {
  if (!choice.keys.empty()) return &table.keys[choice.keys.front()];
  for (const Key& key : table.keys) {
    if (!key.name.empty()) return &key;
  }
  return nullptr;
}

// What stands behind the fixed part is no column's.
std::vector<size_t> FormPlan::ColumnsOf(const Table& table) {
  std::vector<size_t> columns;
  for (const size_t field : ShowableFields(table)) {
    const int32_t type = table.fields[field].type;
    const bool behind = type == kNote || type == kLVar || type == kBlob;
    if (!behind && columns.size() < kMostColumns) columns.push_back(field);
  }
  return columns;
}

// The fields by which they belong to the master are the same in every row.
std::vector<size_t> FormPlan::DetailColumns() const {
  std::vector<size_t> columns = ColumnsOf(DetailTable());
  std::erase_if(columns, [this](size_t field) {
    return std::any_of(choice.detail->fields.begin(), choice.detail->fields.end(),
                       [field](const auto& pair) { return pair.second == field; });
  });
  return columns.empty() ? ColumnsOf(DetailTable()) : columns;
}

}  // namespace qrn::newform
