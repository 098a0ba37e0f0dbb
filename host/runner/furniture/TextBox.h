// VB.TextBox.
#pragma once

#include "host/runner/furniture/Furniture.h"

namespace qrn::host {

class TextBox final : public WindowPiece {
 public:
  TextBox(Form& form, FormControl* container, const form::ControlNode& node)
      : WindowPiece(form, container, node, kText) {}

  bool IsTabStop() const override { return look().tabStop && CanTakeFocus(); }
  bool WantsEnter() const override { return look().multiLine; }
  void OnNotice(WORD notice) override;

  // Members for code. Places and lengths count characters.
  void Text(Call& call);
  void MaxLength(Call& call);
  void Locked(Call& call);
  void SelStart(Call& call);
  void SelLength(Call& call);
  void SelText(Call& call);

 protected:
  WindowKind Kind() const override;
  void OnCreated() override;
  void OnText() override;
  MemberTable OwnMembers() const override;

 private:
  struct Selection {
    DWORD start = 0;
    DWORD end = 0;
  };
  Selection Selected() const noexcept;
  void Select(DWORD start, DWORD end) noexcept;
};

}  // namespace qrn::host
