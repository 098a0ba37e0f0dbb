// What the four list controls share: the contained window that alone keeps the items, what the
// application does with them, and the four ways that lead to a fill: the window is made, the
// database control is ready, the user comes in, the application asks.
//
// Two things differ. The window is a list box or a combo box (ListBoxControl.h, ComboControl.h),
// and the fill is plain or by extended operations (PlainFill.h, ExtendedFill.h). A class is one of
// each and its rows:
//
//   class CQRNListBox final : public PlainFilled<ListBoxControl> { ... };
#pragma once

#include "binding/BoundFaces.h"
#include "binding/FieldBound.h"
#include "binding/ListItems.h"
#include "core/RowSink.h"

namespace qrn {

// When a list fills by itself.
enum UpdateOption : int32_t { kUpdateNone = 0, kUpdateOnInit = 1, kUpdateOnFocus = 2 };

// In what the two kinds of windows differ beside their styles.
struct ListKind {
  const ListMessages& messages;
  void (*fireScroll)(ole::Control& control);
  void (*fireFormat)(ole::Control& control, com::Bstr* line);
};

class ListControl : public Registered<FieldNamed<ListFace>, kListControls> {
 public:
  // Properties. Those that only store take effect when the window is made or filled.
  com::Bstr DbListSource = com::Bstr::Empty();
  com::Bstr DbListTable = com::Bstr::Empty();
  com::Bstr DbListIndex;  // null until it is put: a plain list box then stays empty
  int32_t DbUpdateOption = kUpdateOnInit;
  int16_t Sort = 0;
  int16_t IntegralHeight = 0;
  int16_t Abort = 0;  // set by a handler of `Format` to end the fill

  // Items. `List` and `ItemData` of an index that no item has fail with 381; putting `List` at the
  // index behind the last item adds one, further on it does nothing.
  int32_t GetListCount() const { return Items().Count(); }
  int32_t GetListIndex() const { return Items().Selected(); }
  void PutListIndex(int32_t index) { Items().Select(index); }
  HRESULT GetList(int32_t index, com::Bstr& text);
  void PutList(int32_t index, const com::Bstr& text);
  HRESULT GetItemData(int32_t index, int32_t& data);
  HRESULT PutItemData(int32_t index, int32_t data);

  // `index` may be left out. `place` is what the window answers: the item's index, or below 0.
  HRESULT AddItem(const com::Bstr& text, VARIANT& index, int32_t& place);
  void RemoveItem(int32_t index, int32_t& place);
  void Clear() { Items().Reset(); }
  void Refresh();

  // CQuorin
  std::string GetDbSourceRef() override { return NarrowText(DbListSource); }
  uint16_t GetUpdateOption() override { return LOWORD(DbUpdateOption); }
  void ReloadList() override;

  const ListKind& kind() const noexcept { return kind_; }
  ListItems Items() const noexcept { return {contained(), kind_.messages, SystemProcedure()}; }
  // The application's part in a fill: `Format` with `Abort` cleared before, false when its handler
  // set it; `BtrieveError`.
  bool RaiseFormat(std::u16string& lineData);
  void RaiseBtrieveError(const char* tableName, Status status);
  // The fill keeps its replies under this id.
  virtual void TakeResultId(int16_t /*id*/) {}

  bool OnWindowMessage(com::Message& message) override;
  bool OnContainedMessage(com::Message& message) override;
  void OnDraw(HDC dc, const RECT& rect) override;

 protected:
  ListControl(const ole::ControlTable& table, const ole::Binding& binding, const ListKind& kind)
      : Registered(table, binding, ole::kWindowLook), kind_(kind) {}

  void OnRegister() override;
  std::span<const int32_t> RemadeInDesigner() const override;

  // Whether the control fills itself at all as it is set up.
  virtual bool IsFillable() const { return true; }
  // The position of `DbListIndex` has been found.
  virtual void TakeIndexPosition(int16_t position) = 0;
  // Reads the records of the open table into the window.
  virtual void Fill(RowSink& sink) = 0;
  // A notification of the contained window.
  virtual void OnNotice(WORD code);
  KeyEnd OnKeyDown(MSG& message) override;

 private:
  bool OnCommand(com::Message& message);
  bool OnEnter(com::Message& message);
  bool OnScroll(com::Message& message);

  static const com::MessageRow<ListControl> kOwnMessages[];
  static const com::MessageRow<ListControl> kContainedMessages[];

  const ListKind& kind_;
};

}  // namespace qrn
