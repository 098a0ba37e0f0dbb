#include "host/runner/furniture/CommandButton.h"

#include "host/runner/Form.h"

namespace qrn::host {

WindowPiece::WindowKind CommandButton::Kind() const {
  const DWORD face = look().isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
  return {L"Button", face | BS_MULTILINE | WS_TABSTOP, 0};
}

void CommandButton::Press() {
  if (!CanTakeFocus()) return;
  const Com<FormControl> alive(this);
  TakeFocus();
  if (Window()) Raise(L"Click");
}

MnemonicUse CommandButton::TryMnemonic(const MSG& message, wchar_t key) {
  if (!IsMnemonic(message, key) || !CanTakeFocus()) return MnemonicUse::None;
  Press();
  return MnemonicUse::Done;
}

void CommandButton::OnNotice(WORD notice) {
  if (notice == BN_CLICKED) Raise(L"Click");
}

std::optional<LRESULT> CommandButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const std::optional<LRESULT> done = WindowPiece::OnMessage(message, wParam, lParam);
  if (done || message != WM_KEYDOWN || wParam != VK_RETURN) return done;
  Press();
  return 0;
}

void CommandButton::Value(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(false);
  form().EnsureLoaded();
  if (call.NewTruth()) Raise(L"Click");
}

void CommandButton::Default(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look().isDefault);
  look().isDefault = call.NewTruth();
}

void CommandButton::Cancel(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look().isCancel);
  look().isCancel = call.NewTruth();
}

MemberTable CommandButton::OwnMembers() const {
  static constexpr MemberEntry kMembers[] = {
      Member<&Furniture::Caption>(L"Caption", kProperty),
      Member<&CommandButton::Value>(L"Value", kProperty, kValueMember),
      Member<&CommandButton::Default>(L"Default", kProperty),
      Member<&CommandButton::Cancel>(L"Cancel", kProperty),
      Member<&Furniture::TabStop>(L"TabStop", kProperty)};
  return kMembers;
}

}  // namespace qrn::host
