#include "controls/list/ListBoxControl.h"

#include "binding/ListWindow.h"
#include "binding/tables/ListArguments.h"
#include "controls/list/ListAccessible.h"
#include "ole/Names.h"

namespace qrn {
namespace {

constexpr ListKind kListBox{
    kListBoxMessages,
    [](ole::Control& control) { ole::Fire<list::kListEvents, "Scroll">(control); },
    [](ole::Control& control, com::Bstr* line) {
      ole::Fire<list::kListEvents, "Format">(control, line);
    }};

}  // namespace

ListBoxControl::ListBoxControl(const ole::ControlTable& table, const ole::Binding& binding)
    : ListControl(table, binding, kListBox) {}

std::optional<ole::ContainedDescription> ListBoxControl::DescribeContained() {
  DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_VSCROLL | LBS_USETABSTOPS | LBS_NOTIFY;
  if (Sort) style |= LBS_SORT;
  if (!IntegralHeight) style |= LBS_NOINTEGRALHEIGHT;
  if (BorderStyle) style |= WS_BORDER;
  const DWORD exStyle = Appearance ? WS_EX_CLIENTEDGE : 0;
  return ole::ContainedDescription{L"ListBox", style, exStyle, {}};
}

com::Com<IAccessible> ListBoxControl::MakeAccessible(HWND window) {
  return com::Com<IAccessible>(new ListAccessible(window, hwnd()));
}

HRESULT ListBoxControl::GetText(com::Bstr& text) {
  text = com::Bstr(Items().SelectedText());
  return S_OK;
}

void ListBoxControl::PutText(const com::Bstr& text) {
  const ListItems items = Items();
  const int32_t selected = items.Selected();
  if (selected == ListItems::kNone) return;
  items.Remove(selected);
  items.Insert(selected, text.c_str());
}

std::string ListBoxControl::SelectedText() { return ReadListBox(contained()); }
void ListBoxControl::SelectText(const char* text) { SelectInListBox(contained(), text); }
void ListBoxControl::ClearSelection() { ClearListBox(contained()); }

// All keys are the window's own, arrows included.
bool ListBoxControl::OnContainedMessage(com::Message& message) {
  return message.id != WM_KEYDOWN && ListControl::OnContainedMessage(message);
}

ListControl::KeyEnd ListBoxControl::OnKeyDown(MSG& message) {
  const bool arrow = message.wParam >= VK_LEFT && message.wParam <= VK_DOWN;
  return arrow ? KeyEnd::Window : ListControl::OnKeyDown(message);
}

}  // namespace qrn
