#include "binding/registry/TableTransfer.h"

#include "binding/registry/FormControls.h"
#include "core/BoundWalk.h"
#include "core/MemoryFailure.h"

namespace qrn {
namespace {

class FormTransfer final : public BoundCaller {
 public:
  FormTransfer(CQuorin& caller, TableFinder table)
      : controls_(caller.GetContainerWindow()), table_(std::move(table)) {}

  DbTableInfo* Table() override { return table_(); }
  FieldControls& Controls() override { return controls_; }
  int32_t IndexID() const override { return -1; }

 private:
  FormControls controls_;
  TableFinder table_;
};

}  // namespace

int32_t TransferToControls(CQuorin& caller, TableFinder table) {
  return OrNoMemory([&]() -> Status {
    FormTransfer transfer(caller, std::move(table));
    ShowOnControls(TheEngine(), transfer);
    return kSuccess;
  });
}

int32_t TransferFromControls(CQuorin& caller, TableFinder table) {
  return OrNoMemory([&]() -> Status {
    FormTransfer transfer(caller, std::move(table));
    if (DbTableInfo* found = transfer.Table()) {
      CollectFromControls(TheEngine(), *found, transfer.Controls());
    }
    return kSuccess;
  });
}

int32_t ClearControls(CQuorin& caller, TableFinder table) {
  return OrNoMemory([&]() -> Status {
    FormTransfer transfer(caller, std::move(table));
    DbTableInfo* found = transfer.Table();
    for (int32_t position = 0; found != nullptr && position < found->FieldCount; ++position) {
      transfer.Controls().ClearControlField(*found, found->Fields[position]);
      found = transfer.Table();
    }
    return kSuccess;
  });
}

}  // namespace qrn
