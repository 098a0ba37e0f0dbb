#include "controls/list/ListControl.h"

#include <olectl.h>

#include "binding/registry/ControlRegistry.h"
#include "binding/tables/ListArguments.h"
#include "com/Guard.h"
#include "controls/list/ListFill.h"
#include "ole/Convert.h"
#include "ole/Names.h"

namespace qrn {
namespace {

// What list boxes and combo boxes tell by the same codes.
constexpr WORD kSelected = 1;       // LBN_SELCHANGE, CBN_SELCHANGE
constexpr WORD kDoubleClicked = 2;  // LBN_DBLCLK, CBN_DBLCLK

// The container's colour, for what a window of whole lines leaves of the control's place.
void FillBehind(const ole::ClientSite& site, HDC dc, const RECT& rect) {
  com::Variant told;
  const bool known =
      SUCCEEDED(site.Ambient(DISPID_AMBIENT_BACKCOLOR, told)) && told.type() == VT_I4;
  COLORREF color = GetSysColor(COLOR_BTNFACE);
  if (known) OleTranslateColor(static_cast<OLE_COLOR>(told->lVal), nullptr, &color);
  const com::Brush brush(CreateSolidBrush(color));
  FillRect(dc, &rect, brush.get());
}

bool IsLeftOut(const VARIANT& argument) noexcept {
  return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

}  // namespace

const com::MessageRow<ListControl> ListControl::kOwnMessages[] = {
    {WM_COMMAND, &ListControl::OnCommand},
    {WM_SETFOCUS, &ListControl::OnEnter},
};
const com::MessageRow<ListControl> ListControl::kContainedMessages[] = {
    {WM_VSCROLL, &ListControl::OnScroll},
};

bool ListControl::OnWindowMessage(com::Message& message) {
  return Route(*this, kOwnMessages, message) || VisibleControl::OnWindowMessage(message);
}

bool ListControl::OnContainedMessage(com::Message& message) {
  return Route(*this, kContainedMessages, message) || VisibleControl::OnContainedMessage(message);
}

void ListControl::OnRegister() {
  Registered::OnRegister();
  if (DbUpdateOption == kUpdateOnInit) ReloadList();
}

std::span<const int32_t> ListControl::RemadeInDesigner() const {
  static constexpr int32_t kIds[] = {ole::stock::kAppearance, ole::stock::kBorderStyle};
  return kIds;
}

void ListControl::OnDraw(HDC dc, const RECT& rect) {
  if (contained()) FillBehind(site(), dc, rect);
  VisibleControl::OnDraw(dc, rect);
}

bool ListControl::OnCommand(com::Message& message) {
  const com::Com<IUnknown> alive(&Outer());
  OnNotice(HIWORD(message.wParam));
  return false;
}

void ListControl::OnNotice(WORD code) {
  if (code == kSelected) ole::Fire<kPointerEvents, "Click">(*this);
  if (code == kDoubleClicked) ole::Fire<kPointerEvents, "DblClick">(*this);
}

// The fill comes before the site hears of the focus. Its handlers may send the focus elsewhere or
// end the control: who is left without it has nothing more to tell.
bool ListControl::OnEnter(com::Message&) {
  if (DbUpdateOption != kUpdateOnFocus || !UserMode() || !inPlace().active()) return false;
  const com::Com<IUnknown> alive(&Outer());
  ReloadList();
  return !hwnd() || GetFocus() != hwnd();
}

bool ListControl::OnScroll(com::Message&) {
  kind_.fireScroll(*this);
  return false;
}

ListControl::KeyEnd ListControl::OnKeyDown(MSG& message) {
  if (message.wParam == VK_RETURN) ole::Fire<kPointerEvents, "Click">(*this);
  return KeyEnd::Site;
}

HRESULT ListControl::GetList(int32_t index, com::Bstr& text) {
  if (!Items().Has(index)) return com::kInvalidArrayIndex;
  try {
    text = com::Bstr(Items().Text(index));
  } catch (const std::bad_alloc&) {
    return com::kControlOutOfMemory;
  }
  return S_OK;
}

void ListControl::PutList(int32_t index, const com::Bstr& text) {
  const ListItems items = Items();
  if (index < 0 || index > items.Count()) return;
  items.Remove(index);
  items.Insert(index, text.c_str());
}

HRESULT ListControl::GetItemData(int32_t index, int32_t& data) {
  if (!Items().Has(index)) return com::kInvalidArrayIndex;
  data = Items().Data(index);
  return S_OK;
}

HRESULT ListControl::PutItemData(int32_t index, int32_t data) {
  if (!Items().Has(index)) return com::kInvalidArrayIndex;
  Items().SetData(index, data);
  return S_OK;
}

HRESULT ListControl::AddItem(const com::Bstr& text, VARIANT& index, int32_t& place) {
  if (IsLeftOut(index)) {
    place = Items().Add(text.c_str());
    return S_OK;
  }
  com::Variant number;
  const HRESULT converted = VariantChangeType(number.get(), &index, 0, VT_I4);
  if (FAILED(converted)) return converted;
  place = Items().Insert(number->lVal, text.c_str());
  return S_OK;
}

void ListControl::RemoveItem(int32_t index, int32_t& place) {
  place = Items().Remove(index);
  if (contained()) InvalidateRect(contained(), nullptr, TRUE);
}

void ListControl::Refresh() {
  if (FillTurn::IsTaken()) return;
  Clear();
  ReloadList();
}

void ListControl::ReloadList() {
  if (!contained() || !IsFillable() || FillTurn::IsTaken()) return;
  ListFill fill(*this);
  const auto position = fill.Prepare(NarrowText(DbListIndex));
  if (!position) return;
  TakeIndexPosition(*position);
  if (fill.Open()) Fill(fill);
}

bool ListControl::RaiseFormat(std::u16string& lineData) {
  Abort = 0;
  com::Bstr line(com::AsWide(lineData));
  kind_.fireFormat(*this, &line);
  lineData = com::AsUtf16(line.view());
  return Abort == 0;
}

void ListControl::RaiseBtrieveError(const char* tableName, Status status) {
  const com::Bstr table = WidenToBstr(tableName);
  ole::Fire<list::kListEvents, "BtrieveError">(*this, table.get(), &status);
}

}  // namespace qrn
