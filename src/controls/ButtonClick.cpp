#include "controls/ButtonClick.h"

#include <algorithm>
#include <iterator>

#include "binding/BtrieveError.h"
#include "binding/registry/TableTransfer.h"
#include "binding/tables/QRNBtnTable.h"
#include "controls/QRNBtn.h"
#include "core/ButtonOperations.h"
#include "core/DictionaryLookup.h"
#include "core/ReturnCodes.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

Status RunRead(BoundButton& button, int32_t dbOperation) {
  return DbButtonRead(TheEngine(), DbOpToBtrieve(dbOperation), button);
}
Status RunStep(BoundButton& button, int32_t dbOperation) {
  return DbButtonStep(TheEngine(), DbOpToBtrieve(dbOperation), button);
}
Status RunInsert(BoundButton& button, int32_t dbOperation) {
  return DbButtonInsert(TheEngine(), button, dbOperation == DbInsertNCC);
}
Status RunUpdate(BoundButton& button, int32_t dbOperation) {
  return DbButtonUpdate(TheEngine(), button, dbOperation == DbUpdateNCC);
}
Status RunDelete(BoundButton& button, int32_t) { return DbButtonDelete(TheEngine(), button); }

// A range of `DbOperation` and what runs for it.
struct OperationRow {
  int32_t first;
  int32_t last;
  Status (*run)(BoundButton& button, int32_t dbOperation);
  bool writes;
};
// clang-format off
constexpr OperationRow kOperations[] = {
    {DbInsert,    DbInsert,             &RunInsert, true},
    {DbUpdate,    DbUpdate,             &RunUpdate, true},
    {DbDelete,    DbDelete,             &RunDelete, true},
    {DbGetEqual,  DbGetLessThanOrEuqal, &RunRead,   false},
    {DbStepFirst, DbStepPrevious,       &RunStep,   false},
    {DbInsertNCC, DbInsertNCC,          &RunInsert, true},
    {DbUpdateNCC, DbUpdateNCC,          &RunUpdate, true},
};
// clang-format on

const OperationRow* OperationOf(int32_t dbOperation) {
  const auto* row =
      std::find_if(std::begin(kOperations), std::end(kOperations),
                   [&](const auto& r) { return dbOperation >= r.first && dbOperation <= r.last; });
  return row != std::end(kOperations) ? row : nullptr;
}

}  // namespace

ButtonClick::ButtonClick(CQRNBtn& button)
    : button_(button),
      form_(button.GetContainerWindow()),
      source_(NarrowText(button.DbSource)),
      table_(NarrowText(button.DbTable)),
      controls_(form_) {}

DbTableInfo* ButtonClick::Table() {
  DbTableInfo* table = TheRegistry().ResolveTable(form_, source_, table_);
  return table != nullptr && table->IsOpen != 0 ? table : nullptr;
}

int32_t ButtonClick::IndexID() const { return button_.IndexID; }
int32_t ButtonClick::DbLocks() const { return button_.DbLocks; }

bool ButtonClick::RefusedBySetData() {
  button_.Abort = 0;
  ole::Fire<kQRNBtnTable, "SetData">(button_);
  return button_.Abort != 0;
}

void ButtonClick::Run() {
  if (!Confirmed() || !Prepared()) return;
  const int32_t dbOperation = button_.DbOperation;
  const OperationRow* row = OperationOf(dbOperation);
  if (row == nullptr) {
    ShowMessage(kVE801);
    return;
  }
  Finish(row->run(*this, dbOperation), row->writes);
}

// A question that could not be shown counts as declined.
bool ButtonClick::Confirmed() {
  if (button_.ConfirmMsg.empty()) return true;
  const HWND owner = button_.hwnd() ? button_.hwnd() : static_cast<HWND>(form_);
  const com::Bstr question = button_.ConfirmMsg;
  return MessageBoxW(owner, question.c_str(), L"", MB_OKCANCEL) == IDOK;
}

// The table is there and open; the key is known.
bool ButtonClick::Prepared() {
  DbTableInfo* table = TheRegistry().ResolveTable(form_, source_, table_);
  if (table == nullptr) {
    ShowMessage(kVE802);
    return false;
  }
  button_.FindIndex(*table);
  return table->IsOpen != 0 || TheRegistry().DbOpenOnDemand(*table, form_, source_) == kSuccess;
}

void ButtonClick::Finish(Status result, bool wrote) {
  if (result != kSuccess) {
    if (result != kRefused) Report(result);
    return;
  }
  if (wrote && button_.ClearControlData != 0) ClearControls(button_, [this] { return Table(); });
  TheRegistry().NotifyPositionChanged(nullptr, source_, table_, IndexID());
}

void ButtonClick::Report(Status result) {
  ReportBtrieveError<kQRNBtnTable>(button_, table_, result, kVE807);
}

}  // namespace qrn
