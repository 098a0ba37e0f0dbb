// VB.CommandButton.
#pragma once

#include "host/runner/furniture/Furniture.h"

namespace qrn::host {

class CommandButton final : public WindowPiece {
 public:
  CommandButton(Form& form, FormControl* container, const form::ControlNode& node)
      : WindowPiece(form, container, node, kButton) {}

  bool IsTabStop() const override { return look().tabStop && CanTakeFocus(); }
  bool IsDefault() const override { return look().isDefault; }
  bool IsCancel() const override { return look().isCancel; }
  bool WantsEnter() const override { return true; }
  void Press() override;
  MnemonicUse TryMnemonic(const MSG& message, wchar_t key) override;
  void OnNotice(WORD notice) override;

  // Members for code.
  void Value(Call& call);
  void Default(Call& call);
  void Cancel(Call& call);

 protected:
  WindowKind Kind() const override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  MemberTable OwnMembers() const override;
};

}  // namespace qrn::host
