// VB.Frame: a titled box that holds other controls.
#pragma once

#include "host/runner/furniture/Furniture.h"

namespace qrn::host {

class Frame final : public WindowPiece {
 public:
  Frame(Form& form, FormControl* container, const form::ControlNode& node)
      : WindowPiece(form, container, node, kFrame) {}

  bool HoldsOthers() const override { return true; }
  bool Create() override;
  MnemonicUse TryMnemonic(const MSG& message, wchar_t key) override;
  void OnMouse(UINT message, WPARAM wParam, POINT point) override;

 protected:
  WindowKind Kind() const override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  MemberTable OwnMembers() const override;

 private:
  void OnPaint();
  void DrawBox(HDC dc, RECT area);
};

}  // namespace qrn::host
