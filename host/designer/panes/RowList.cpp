#include "host/designer/panes/RowList.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <utility>

#include "com/Text.h"
#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {
namespace {

constexpr UINT_PTR kWatchId = 1;
constexpr int kNamePercent = 46;
// Above and below a row's text: a text field with its border fits in.
constexpr int kAboveRows = 6;

bool HaveSameNames(const std::vector<ShownRow>& one, const std::vector<ShownRow>& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](const ShownRow& a, const ShownRow& b) { return a.name == b.name; });
}

// A row's height follows its pictures, of which there are none.
void SetRowHeight(HWND list, HFONT font) {
  const int height = LineHeight(font) + Scaled(kAboveRows);
  ListView_SetImageList(list, ImageList_Create(1, height, ILC_COLOR, 1, 1), LVSIL_SMALL);
}

void AddColumn(HWND list, int place) {
  LVCOLUMNW column{};
  column.mask = LVCF_WIDTH;
  column.cx = 10;
  SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place),
               reinterpret_cast<LPARAM>(&column));
}

bool MovesRows(UINT message) {
  return message == WM_VSCROLL || message == WM_MOUSEWHEEL || message == WM_SIZE ||
         message == WM_KEYDOWN;
}

}  // namespace

void RowList::Make(HWND parent, int id, HFONT font, std::function<void()> moved) {
  moved_ = std::move(moved);
  window_ = MakeControl(parent, WC_LISTVIEWW,
                        WS_BORDER | WS_CLIPSIBLINGS | LVS_REPORT | LVS_SINGLESEL |
                            LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER,
                        id, font);
  ListView_SetExtendedListViewStyle(window_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
  SetRowHeight(window_, font);
  AddColumn(window_, 0);
  AddColumn(window_, 1);
  SetWindowSubclass(window_, &RowList::Watch, kWatchId, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK RowList::Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR list) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, &RowList::Watch, kWatchId);
  const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
  if (MovesRows(message)) reinterpret_cast<RowList*>(list)->moved_();
  return result;
}

void RowList::SetCell(size_t row, int column, const std::string& text) noexcept {
  std::wstring wide = com::Wide(text);
  LVITEMW item{};
  item.iSubItem = column;
  item.pszText = wide.data();
  SendMessageW(window_, LVM_SETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
}

void RowList::Fill() {
  const int top = ListView_GetTopIndex(window_);
  SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  ListView_DeleteAllItems(window_);
  for (size_t row = 0; row < rows_.size(); ++row) {
    std::wstring name = com::Wide(rows_[row].name);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(row);
    item.pszText = name.data();
    SendMessageW(window_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SetCell(row, 1, rows_[row].value);
  }
  // The top row first comes into view at the bottom.
  const int last = static_cast<int>(rows_.size()) - 1;
  if (last >= 0) ListView_EnsureVisible(window_, last, FALSE);
  if (last >= 0) ListView_EnsureVisible(window_, std::min(top, last), FALSE);
  SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(window_, nullptr, TRUE);
  FitColumns();
}

void RowList::Show(std::vector<ShownRow> rows) {
  if (rows == rows_) return;
  const std::vector<ShownRow> old = std::exchange(rows_, std::move(rows));
  if (!HaveSameNames(old, rows_)) return Fill();
  for (size_t row = 0; row < rows_.size(); ++row) {
    if (old[row].value != rows_[row].value) SetCell(row, 1, rows_[row].value);
  }
}

void RowList::Choose(size_t row) noexcept {
  constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
  ListView_SetItemState(window_, static_cast<int>(row), kChosen, kChosen);
  ListView_EnsureVisible(window_, static_cast<int>(row), FALSE);
}

RECT RowList::ValuePlace(size_t row) const noexcept {
  RECT place{LVIR_BOUNDS, 1, 0, 0};
  RECT client{};
  GetClientRect(window_, &client);
  const bool known = row < rows_.size() && SendMessageW(window_, LVM_GETSUBITEMRECT, row,
                                                        reinterpret_cast<LPARAM>(&place)) != FALSE;
  if (!known || place.top < client.top || place.top >= client.bottom) return {};
  place.right = client.right;
  MapWindowPoints(window_, GetParent(window_), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

RECT RowList::ShownPlace(size_t row) const noexcept {
  ListView_EnsureVisible(window_, static_cast<int>(row), FALSE);
  RECT place{LVIR_LABEL, 0, 0, 0};
  SendMessageW(window_, LVM_GETITEMRECT, row, reinterpret_cast<LPARAM>(&place));
  MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

size_t RowList::PageSize() const noexcept {
  return static_cast<size_t>(std::max(ListView_GetCountPerPage(window_), 1));
}

void RowList::FitColumns() noexcept {
  RECT client{};
  GetClientRect(window_, &client);
  const int name = client.right * kNamePercent / 100;
  ListView_SetColumnWidth(window_, 0, name);
  ListView_SetColumnWidth(window_, 1, client.right - name);
}

}  // namespace qrn::designer
