// The items of a list box or a combo box, which alone keeps them. The two kinds of windows differ
// in the numbers of their messages, so one class serves both. Texts are wide, as the window holds
// them; indexes count from 0. Of a null window everything is empty and every call does nothing.
//
// A fill adds many items: who knows the system's own procedure of the window has it called at once,
// without the ways of the system and of the window's owner in front of it.
#pragma once

#include <windows.h>

#include <string>

namespace qrn {

struct ListMessages {
  UINT count;
  UINT selected;
  UINT select;
  UINT textLength;
  UINT text;
  UINT add;
  UINT insert;
  UINT remove;
  UINT reset;
  UINT data;
  UINT setData;
  UINT reserve;
};
// clang-format off
inline constexpr ListMessages kListBoxMessages{
    LB_GETCOUNT, LB_GETCURSEL, LB_SETCURSEL, LB_GETTEXTLEN, LB_GETTEXT, LB_ADDSTRING,
    LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT, LB_GETITEMDATA, LB_SETITEMDATA,
    LB_INITSTORAGE};
inline constexpr ListMessages kComboBoxMessages{
    CB_GETCOUNT, CB_GETCURSEL, CB_SETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_ADDSTRING,
    CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT, CB_GETITEMDATA, CB_SETITEMDATA,
    CB_INITSTORAGE};
// clang-format on

class ListItems {
 public:
  static constexpr int32_t kNone = -1;  // LB_ERR, CB_ERR

  ListItems(HWND window, const ListMessages& messages, WNDPROC system = nullptr) noexcept
      : window_(window), messages_(messages), system_(system) {}

  int32_t Count() const noexcept { return window_ ? Ask(messages_.count) : 0; }
  bool Has(int32_t index) const noexcept { return index >= 0 && index < Count(); }

  // The selected item, kNone without one. An index that no item has selects none, whatever the
  // window makes of it by itself.
  int32_t Selected() const noexcept { return window_ ? Ask(messages_.selected) : kNone; }
  void Select(int32_t index) const noexcept;

  // Empty for an item that is not there. Throws std::bad_alloc.
  std::wstring Text(int32_t index) const;
  std::wstring SelectedText() const { return Text(Selected()); }

  // All give what the window answers: the item's index (with sorting not the place asked for) or
  // how many are left; below 0 when it refuses.
  int32_t Add(const wchar_t* text) const noexcept { return Ask(messages_.add, 0, Pointer(text)); }
  int32_t Insert(int32_t index, const wchar_t* text) const noexcept {
    return Ask(messages_.insert, Index(index), Pointer(text));
  }
  int32_t Remove(int32_t index) const noexcept { return Ask(messages_.remove, Index(index)); }
  void Reset() const noexcept { Ask(messages_.reset); }
  // Makes room for that many items more, so that adding them need not.
  void Reserve(int32_t count, size_t bytesOfText) const noexcept {
    Ask(messages_.reserve, Index(count), static_cast<LPARAM>(bytesOfText));
  }

  // A number that the window keeps beside an item; kNone where there is no such item.
  int32_t Data(int32_t index) const noexcept { return Ask(messages_.data, Index(index)); }
  void SetData(int32_t index, int32_t data) const noexcept {
    Ask(messages_.setData, Index(index), data);
  }

 private:
  static WPARAM Index(int32_t index) noexcept { return static_cast<WPARAM>(index); }
  static LPARAM Pointer(const wchar_t* text) noexcept { return reinterpret_cast<LPARAM>(text); }
  int32_t Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
    if (!window_) return 0;
    const LRESULT answer = system_ ? CallWindowProcW(system_, window_, message, wParam, lParam)
                                   : SendMessageW(window_, message, wParam, lParam);
    return static_cast<int32_t>(answer);
  }

  HWND window_;
  const ListMessages& messages_;
  WNDPROC system_;
};

}  // namespace qrn
