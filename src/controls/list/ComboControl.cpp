#include "controls/list/ComboControl.h"

#include <algorithm>

#include "binding/InputMethod.h"
#include "binding/ListWindow.h"
#include "binding/tables/ListArguments.h"
#include "com/Extent.h"
#include "com/Guard.h"
#include "com/WindowText.h"
#include "controls/list/ListAccessible.h"
#include "ole/Names.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr ListKind kComboBox{
    kComboBoxMessages,
    [](ole::Control& control) { ole::Fire<list::kComboEvents, "Scroll">(control); },
    [](ole::Control& control, com::Bstr* line) {
      ole::Fire<list::kComboEvents, "Format">(control, line);
    }};

constexpr size_t kLongestText = 1024;  // bytes of `Text` as it is read from the window
constexpr int kAroundLine = 6;         // pixels of a combo box above and below its line
constexpr int kBelowSimple = 5;        // pixels that a simple combo's window reaches further down
constexpr int kLinesDropped = 9;

// What each style adds to the window's.
constexpr DWORD kStyles[] = {
    CBS_AUTOHSCROLL | CBS_DROPDOWN,
    CBS_AUTOHSCROLL | CBS_SIMPLE,
    CBS_DROPDOWNLIST,
};

// Metrics of a font on the screen, the system's own where there is none.
TEXTMETRICW MetricsOf(HFONT font) {
  const com::WindowDc dc(nullptr);
  const com::Selected face(dc.get(),
                           font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc.get(), &metrics);
  return metrics;
}

}  // namespace

ComboControl::ComboControl(const ole::ControlTable& table, const ole::Binding& binding)
    : ListControl(table, binding, kComboBox) {}

std::optional<ole::ContainedDescription> ComboControl::DescribeContained() {
  DWORD style =
      WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_VSCROLL | CBS_DISABLENOSCROLL;
  const auto row = static_cast<size_t>(Style);
  if (row < std::size(kStyles)) style |= kStyles[row];
  if (Sort) style |= CBS_SORT;
  if (!IntegralHeight) style |= CBS_NOINTEGRALHEIGHT;
  const DWORD exStyle = Appearance ? WS_EX_CLIENTEDGE : 0;
  return ole::ContainedDescription{L"ComboBox", style, exStyle, std::wstring(Text.view())};
}

// A combo box does not take its text from its caption.
void ComboControl::OnContainedMade() {
  if (Style != kDropDownList && !Text.empty()) SetWindowTextW(contained(), Text.c_str());
  inside_.clear();
  for (const HWND window : {Inside().hwndItem, Inside().hwndList}) {
    if (window && window != contained()) {
      inside_.push_back(std::make_unique<ole::InnerWindow>(*this, window));
    }
  }
  RECT client{};
  GetClientRect(hwnd(), &client);
  LayOut(client);
}

COMBOBOXINFO ComboControl::Inside() const noexcept {
  COMBOBOXINFO inside{};
  inside.cbSize = sizeof inside;
  GetComboBoxInfo(contained(), &inside);
  return inside;
}

com::Com<IAccessible> ComboControl::MakeAccessible(HWND window) {
  if (window == Inside().hwndList) return com::Com<IAccessible>(new ListAccessible(window, hwnd()));
  const LONG role = window == contained() ? ROLE_SYSTEM_COMBOBOX : ROLE_SYSTEM_TEXT;
  return com::Com<IAccessible>(new ole::TextAccessible(window, hwnd(), role));
}

void ComboControl::PutStyle(int32_t style) {
  if (std::exchange(Style, style) != style && contained()) RemakeContained();
}

int ComboControl::LineHeight() {
  const com::FontInUse inUse(font().get());
  const TEXTMETRICW metrics = MetricsOf(inUse.get());
  return metrics.tmHeight + metrics.tmDescent;
}

// Only a simple combo, whose list is always open, is as high as its container wants it.
void ComboControl::AdjustExtent(SIZE& himetric) {
  if (Style == kNormalCombo) return;
  himetric.cy = com::PixelsToHimetric({0, LineHeight() + kAroundLine}).cy;
}

// The window's height is that of the line and the list together.
void ComboControl::LayOut(const RECT& client) {
  if (!contained()) return;
  int height = client.bottom;
  if (Style == kNormalCombo) {
    height += kBelowSimple;
  } else if (UserMode()) {
    height += kLinesDropped * LineHeight();
  }
  MoveWindow(contained(), 0, 0, client.right, height, TRUE);
}

// The focus is in a window inside the combo box, so that only notices tell of it.
void ComboControl::OnNotice(WORD code) {
  if (code == CBN_SETFOCUS) {
    FocusCame();
    if (IMEMode != 0 && Style != kDropDownList) TheInputMethod().Apply(contained(), IMEMode);
  }
  if (code == CBN_KILLFOCUS) FocusWent(GetFocus());
  if (code == CBN_EDITCHANGE) ole::Fire<list::kComboEvents, "Change">(*this);
  ListControl::OnNotice(code);
}

ListControl::KeyEnd ComboControl::OnKeyDown(MSG& message) {
  const bool sideways = message.wParam == VK_LEFT || message.wParam == VK_RIGHT;
  return sideways ? VisibleControl::OnKeyDown(message) : ListControl::OnKeyDown(message);
}

HRESULT ComboControl::GetText(com::Bstr& text) {
  if (contained() && UserMode()) {
    const int32_t selected = Items().Selected();
    const com::Bstr whole(selected != ListItems::kNone ? Items().Text(selected)
                                                       : com::TextOfWindow(contained()));
    const std::string bytes = NarrowText(whole);
    Text = bytes.size() <= kLongestText
               ? whole
               : WidenToBstr(bytes.substr(0, CutAtCharacter(bytes, kLongestText)));
  }
  text = Text;
  return S_OK;
}

void ComboControl::PutText(const com::Bstr& text) {
  Text = text;
  if (contained()) SetWindowTextW(contained(), text.c_str());
}

bool ComboControl::HasSelection() const noexcept {
  return HasOwnText() && contained() && UserMode();
}

ComboControl::Selection ComboControl::GetSelection() const noexcept {
  const LRESULT packed = SendMessageW(contained(), CB_GETEDITSEL, 0, 0);
  return {LOWORD(packed), HIWORD(packed)};
}

void ComboControl::Select(Selection selection) const noexcept {
  SendMessageW(contained(), CB_SETEDITSEL, 0, MAKELPARAM(selection.start, selection.end));
}

HRESULT ComboControl::GetSelStart(int32_t& start) {
  if (!HasSelection()) return com::kNotAvailableNow;
  start = GetSelection().start;
  return S_OK;
}

HRESULT ComboControl::PutSelStart(int32_t start) {
  if (!HasSelection()) return com::kPropertyIsReadOnly;
  const Selection now = GetSelection();
  const auto wanted = static_cast<WORD>(start);
  if (wanted != now.start) Select({wanted, now.end});
  return S_OK;
}

HRESULT ComboControl::GetSelLength(int32_t& length) {
  if (!HasSelection()) return com::kNotAvailableNow;
  const Selection now = GetSelection();
  length = now.end - now.start;
  return S_OK;
}

HRESULT ComboControl::PutSelLength(int32_t length) {
  if (!HasSelection()) return com::kPropertyIsReadOnly;
  const Selection now = GetSelection();
  Select({now.start, static_cast<WORD>(now.start + length)});
  return S_OK;
}

HRESULT ComboControl::GetSelText(com::Bstr& text) {
  if (!HasSelection()) return com::kNotAvailableNow;
  const std::wstring whole = com::TextOfWindow(contained());
  const Selection now = GetSelection();
  const size_t start = std::min<size_t>(now.start, whole.size());
  const size_t end = std::clamp<size_t>(now.end, start, whole.size());
  text = com::Bstr(std::wstring_view(whole).substr(start, end - start));
  return S_OK;
}

HRESULT ComboControl::PutSelText(const com::Bstr& text) {
  if (!HasSelection()) return com::kPropertyIsReadOnly;
  std::wstring whole = com::TextOfWindow(contained());
  const Selection now = GetSelection();
  const size_t start = std::min<size_t>(now.start, whole.size());
  const size_t end = std::clamp<size_t>(now.end, start, whole.size());
  whole.replace(start, end - start, text.view());
  SetWindowTextW(contained(), whole.c_str());
  return S_OK;
}

std::string ComboControl::SelectedText() { return ReadComboBox(contained(), HasOwnText()); }
void ComboControl::SelectText(const char* text) { WriteComboBox(contained(), HasOwnText(), text); }
void ComboControl::ClearSelection() { ClearComboBox(contained()); }

}  // namespace qrn
