#include "controls/list/ListControl.h"

#include <olectl.h>

#include "binding/registry/ControlRegistry.h"
#include "com/Guard.h"
#include "controls/list/ListFill.h"
#include "ole/Convert.h"

namespace qrn {
namespace {

constexpr int32_t kBtrieveErrorEvent = 1;

// What list boxes and combo boxes tell by the same codes.
constexpr WORD kSelected = 1;       // LBN_SELCHANGE, CBN_SELCHANGE
constexpr WORD kDoubleClicked = 2;  // LBN_DBLCLK, CBN_DBLCLK

// The container's colour, for what a window of whole lines leaves of the control's place.
void FillBehind(const ole::ClientSite& site, HDC dc, const RECT& rect) {
  ole::Variant told;
  const bool known =
      SUCCEEDED(site.Ambient(DISPID_AMBIENT_BACKCOLOR, told)) && told.type() == VT_I4;
  COLORREF color = GetSysColor(COLOR_BTNFACE);
  if (known) OleTranslateColor(static_cast<OLE_COLOR>(told->lVal), nullptr, &color);
  const ole::Brush brush(CreateSolidBrush(color));
  FillRect(dc, &rect, brush.get());
}

bool IsLeftOut(const VARIANT& argument) noexcept {
  return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

}  // namespace

const ole::MessageRow<ListControl> ListControl::kOwnMessages[] = {
    {WM_COMMAND, &ListControl::OnCommand},
    {WM_SETFOCUS, &ListControl::OnEnter},
};
const ole::MessageRow<ListControl> ListControl::kContainedMessages[] = {
    {WM_VSCROLL, &ListControl::OnScroll},
};

bool ListControl::OnWindowMessage(ole::Message& message) {
  return Route(*this, kOwnMessages, message) || VisibleControl::OnWindowMessage(message);
}

bool ListControl::OnContainedMessage(ole::Message& message) {
  return Route(*this, kContainedMessages, message) || VisibleControl::OnContainedMessage(message);
}

void ListControl::OnRegister() {
  TheRegistry().RegisterListControl(*this);
  if (DbUpdateOption == kUpdateOnInit) ReloadList();
}
void ListControl::OnUnregister() { TheRegistry().UnregisterListControl(*this); }

void ListControl::OnChanged(int32_t id) {
  VisibleControl::OnChanged(id);
  const bool needsWindow = id == ole::stock::kAppearance || id == ole::stock::kBorderStyle;
  if (needsWindow && !UserMode()) RemakeContained();
}

void ListControl::OnDraw(HDC dc, const RECT& rect) {
  if (contained()) FillBehind(site(), dc, rect);
  VisibleControl::OnDraw(dc, rect);
}

bool ListControl::OnCommand(ole::Message& message) {
  const ole::Com<IUnknown> alive(&Outer());
  OnNotice(HIWORD(message.wParam));
  return false;
}

void ListControl::OnNotice(WORD code) {
  if (code == kSelected) Fire(ole::stock::kClick);
  if (code == kDoubleClicked) Fire(ole::stock::kDblClick);
}

// The fill comes before the site hears of the focus. Its handlers may send the focus elsewhere or
// end the control: who is left without it has nothing more to tell.
bool ListControl::OnEnter(ole::Message&) {
  if (DbUpdateOption != kUpdateOnFocus || !UserMode() || !inPlace().active()) return false;
  const ole::Com<IUnknown> alive(&Outer());
  ReloadList();
  return !hwnd() || GetFocus() != hwnd();
}

bool ListControl::OnScroll(ole::Message&) {
  Fire(kind_.scrollEvent);
  return false;
}

ListControl::KeyEnd ListControl::OnKeyDown(MSG& message) {
  if (message.wParam == VK_RETURN) Fire(ole::stock::kClick);
  return KeyEnd::Site;
}

HRESULT ListControl::GetList(int32_t index, ole::Bstr& text) {
  if (!Items().Has(index)) return ole::kInvalidArrayIndex;
  try {
    text = ole::Bstr(Items().Text(index));
  } catch (const std::bad_alloc&) {
    return ole::kControlOutOfMemory;
  }
  return S_OK;
}

void ListControl::PutList(int32_t index, const ole::Bstr& text) {
  const ListItems items = Items();
  if (index < 0 || index > items.Count()) return;
  items.Remove(index);
  items.Insert(index, text.c_str());
}

HRESULT ListControl::GetItemData(int32_t index, int32_t& data) {
  if (!Items().Has(index)) return ole::kInvalidArrayIndex;
  data = Items().Data(index);
  return S_OK;
}

HRESULT ListControl::PutItemData(int32_t index, int32_t data) {
  if (!Items().Has(index)) return ole::kInvalidArrayIndex;
  Items().SetData(index, data);
  return S_OK;
}

HRESULT ListControl::AddItem(const ole::Bstr& text, VARIANT& index, int32_t& place) {
  if (IsLeftOut(index)) {
    place = Items().Add(text.c_str());
    return S_OK;
  }
  ole::Variant number;
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
  if (ListFill::IsRunning()) return;
  Clear();
  ReloadList();
}

// A fill that a handler of another fill asks for would write into the text of the row under way:
// there is one for the process. It is left out.
void ListControl::ReloadList() {
  if (!contained() || !IsFillable() || ListFill::IsRunning()) return;
  ListFill fill(*this);
  const auto position = fill.Prepare(NarrowText(DbListIndex));
  if (!position) return;
  TakeIndexPosition(*position);
  if (fill.Open()) Fill(fill);
}

bool ListControl::RaiseFormat(std::u16string& lineData) {
  Abort = 0;
  ole::Bstr line({reinterpret_cast<const wchar_t*>(lineData.data()), lineData.size()});
  Fire(kind_.formatEvent, &line);
  lineData.assign(reinterpret_cast<const char16_t*>(line.c_str()), line.view().size());
  return Abort == 0;
}

void ListControl::RaiseBtrieveError(const char* tableName, Status status) {
  const ole::Bstr table = WidenToBstr(tableName);
  Fire(kBtrieveErrorEvent, table.get(), &status);
}

}  // namespace qrn
