// VB.Label: a text without a window of its own. For screen readers a static window that is never
// shown stands for it, before the control whose label it is.
#pragma once

#include "host/runner/furniture/Furniture.h"

namespace qrn::host {

class Label final : public Furniture {
 public:
  Label(Form& form, FormControl* container, const form::ControlNode& node)
      : Furniture(form, container, node, kLabel) {}

  bool Create() override;
  void Destroy() noexcept override;
  HWND Window() const noexcept override { return nullptr; }
  bool IsPiece() const noexcept override { return true; }
  void Draw(HDC dc) override;
  void OnMouse(UINT message, WPARAM wParam, POINT point) override;
  MnemonicUse TryMnemonic(const MSG& message, wchar_t key) override;
  void StandBefore(HWND control) override;

 protected:
  MemberTable OwnMembers() const override;
  void OnLook() override;
  void OnMoved() override;
  void OnShown() override;

 private:
  UINT DrawFlags() const noexcept;
  void FitSize();
  void Uncover() noexcept;

  HWND spoken_ = nullptr;
  RECT drawnAt_{};  // what has to be drawn again when the label moves
};

}  // namespace qrn::host
