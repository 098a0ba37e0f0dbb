#include "host/runner/furniture/TextBox.h"

#include <algorithm>

#include "host/runner/Form.h"

namespace qrn::host {
namespace {

constexpr DWORD kEditAlignments[] = {ES_LEFT, ES_RIGHT, ES_CENTER};
constexpr DWORD kScrollBars[] = {0, WS_HSCROLL | ES_AUTOHSCROLL, WS_VSCROLL,
                                 WS_HSCROLL | ES_AUTOHSCROLL | WS_VSCROLL};

DWORD NotNegative(const Call& call, const wchar_t* member) {
  const int32_t number = call.NewNumber();
  if (number < 0) throw ScriptError{com::kInvalidPropertyValue, member};
  return static_cast<DWORD>(number);
}

}  // namespace

WindowPiece::WindowKind TextBox::Kind() const {
  DWORD style = WS_TABSTOP | kEditAlignments[static_cast<int>(look().alignment)];
  if (look().multiLine) {
    style |= ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN |
             kScrollBars[static_cast<int>(look().scrollBars)];
  } else {
    style |= ES_AUTOHSCROLL;
  }
  if (look().locked) style |= ES_READONLY;
  if (!look().hideSelection) style |= ES_NOHIDESEL;
  const bool line = look().borderStyle != 0;
  if (line && !look().sunken) style |= WS_BORDER;
  return {L"Edit", style, line && look().sunken ? static_cast<DWORD>(WS_EX_CLIENTEDGE) : 0};
}

void TextBox::OnCreated() {
  SendMessageW(Window(), EM_SETLIMITTEXT, static_cast<WPARAM>(look().maxLength), 0);
  if (look().passwordChar != 0) SendMessageW(Window(), EM_SETPASSWORDCHAR, look().passwordChar, 0);
}

void TextBox::OnText() {
  if (!Window()) return;
  SetWindowTextW(Window(), look().text.c_str());
  // A window of several lines sends no notice of this.
  if (look().multiLine) OnNotice(EN_CHANGE);
}

void TextBox::OnNotice(WORD notice) {
  if (notice != EN_CHANGE) return;
  look().text = WindowText();
  if (form().IsLoaded()) Raise(L"Change");
}

void TextBox::Text(Call& call) {
  form().EnsureLoaded();
  if (!call.IsPut()) return call.Give(WindowText());
  look().text = call.NewText();
  OnText();
}

void TextBox::MaxLength(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look().maxLength));
  form().EnsureLoaded();
  look().maxLength = static_cast<int>(std::min<DWORD>(NotNegative(call, L"MaxLength"), 65535));
  SendMessageW(Window(), EM_SETLIMITTEXT, static_cast<WPARAM>(look().maxLength), 0);
}

void TextBox::Locked(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look().locked);
  form().EnsureLoaded();
  look().locked = call.NewTruth();
  SendMessageW(Window(), EM_SETREADONLY, look().locked, 0);
}

TextBox::Selection TextBox::Selected() const noexcept {
  Selection selection;
  SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&selection.start),
               reinterpret_cast<LPARAM>(&selection.end));
  return selection;
}

void TextBox::Select(DWORD start, DWORD end) noexcept {
  SendMessageW(Window(), EM_SETSEL, start, static_cast<LPARAM>(end));
}

void TextBox::SelStart(Call& call) {
  form().EnsureLoaded();
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(Selected().start));
  const DWORD start = NotNegative(call, L"SelStart");
  Select(start, start);
}

void TextBox::SelLength(Call& call) {
  form().EnsureLoaded();
  const Selection now = Selected();
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(now.end - now.start));
  Select(now.start, now.start + NotNegative(call, L"SelLength"));
}

void TextBox::SelText(Call& call) {
  form().EnsureLoaded();
  if (call.IsPut()) {
    SendMessageW(Window(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(call.NewText().c_str()));
    return;
  }
  const Selection now = Selected();
  call.Give(WindowText().substr(now.start, now.end - now.start));
}

MemberTable TextBox::OwnMembers() const {
  static constexpr MemberEntry kMembers[] = {
      Member<&TextBox::Text>(L"Text", kProperty, kValueMember),
      Member<&TextBox::MaxLength>(L"MaxLength", kProperty),
      Member<&TextBox::Locked>(L"Locked", kProperty),
      Member<&TextBox::SelStart>(L"SelStart", kProperty),
      Member<&TextBox::SelLength>(L"SelLength", kProperty),
      Member<&TextBox::SelText>(L"SelText", kProperty),
      Member<&Furniture::Alignment>(L"Alignment", kGet),
      Member<&Furniture::TabStop>(L"TabStop", kProperty)};
  return kMembers;
}

}  // namespace qrn::host
