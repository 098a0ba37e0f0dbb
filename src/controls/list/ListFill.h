// One fill of a list control under way, as the engine sees it. Handlers of the application run in
// it and may do anything, close the form included: the control stays alive as long as the fill, and
// without its window the fill ends.
#pragma once

#include <optional>

#include "controls/list/ListControl.h"
#include "core/FillTurn.h"
#include "core/RowSink.h"

namespace qrn {

class ListFill final : public RowSink {
 public:
  explicit ListFill(ListControl& list);
  ListFill(const ListFill&) = delete;
  ListFill& operator=(const ListFill&) = delete;
  ~ListFill() override;

  // The position of the key of that name, the first key's where the table has none such. Nothing
  // when the names of the list lead to no table.
  std::optional<int16_t> Prepare(const std::string& indexName);
  // Opens the table unless it is open. False after the message of a failure.
  bool Open();

  DbTableInfo* Table() override;
  void Empty(size_t fieldCount) override;
  bool Format(std::u16string& lineData) override;
  bool AddRow(const char* text) override;
  void GivePosition(uint32_t position) override;
  void TakeResultId(int16_t id) override { list_.TakeResultId(id); }
  void BtrieveError(const char* tableName, Status status) override {
    list_.RaiseBtrieveError(tableName, status);
  }

 private:
  bool MakeRoom();
  void Redraw(bool on) noexcept;

  const FillTurn turn_;
  ListControl& list_;
  const com::Com<IUnknown> alive_;
  const HWND window_;  // the one that is filled: another may take its place meanwhile
  const WindowHandle form_;
  const std::string source_;
  const std::string table_;
  bool silent_ = false;              // the window does not draw
  int32_t last_ = ListItems::kNone;  // the row added last
  int32_t added_ = 0;
  int32_t room_ = 0;     // items that the window has room for
  std::u16string wide_;  // the row being added
};

}  // namespace qrn
