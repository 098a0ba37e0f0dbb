#include "grid/data/GridData.h"

#include <new>
#include <utility>

#include "grid/data/GridFill.h"
#include "grid/data/RowCommit.h"
#include "grid/data/RowDelete.h"
#include "grid/model/GridMemory.h"

namespace qrn {

template <class Work>
void GridData::Run(Work work) noexcept {
  const bool outer = std::exchange(underWay_, true);
  try {
    work();
  } catch (const std::bad_alloc&) {
    ReportGridMemoryFailure();
  }
  underWay_ = outer;
}

void GridData::ReloadList() noexcept {
  const GridHost& host = model_.host();
  if (FillTurn::IsTaken() || !host.IsRunTime() || host.Window() == nullptr) return;
  Run([this] { GridFill(model_, engine_).Run(); });
}

void GridData::CommitCell() noexcept {
  if (!underWay_ && model_.editActive != 0) Run([this] { TakeEditText(); });
}

void GridData::CommitRow(int32_t row) noexcept {
  if (!underWay_) Run([&] { RowCommit(model_, engine_, row).Run(); });
}

void GridData::DeleteCurrentRow() noexcept {
  if (!underWay_) Run([this] { RowDelete(model_, engine_).Run(); });
}

void GridData::TakeEditText() {
  GridHost& host = model_.host();
  const std::string text = CutForEditing(host.EditText());
  if (text == model_.savedEditText) return;
  if (host.RaiseBeforeColUpdate(text) || host.Window() == nullptr) return;
  model_.rowDirty = 1;
  model_.WriteText(text);
  host.Raise(GridEvent::AfterColUpdate);
}

}  // namespace qrn
