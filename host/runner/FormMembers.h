// What code sees of a form: its members by name.
#pragma once

#include "host/container/Scriptable.h"
#include "host/runner/FormLook.h"

namespace qrn::host {

class Form;

// The base of Form, and of nothing else. What a member needs of the window loads the form first,
// and throws ScriptError where that fails.
class FormMembers : public Scriptable {
 public:
  // As the file says until code changes it.
  const FormLook& look() const noexcept { return look_; }

  // Members for code. The window's own place counts in twips of the screen, whatever the scale
  // inside.
  void Name(Call& call);
  void Caption(Call& call);
  void Handle(Call& call);
  void Left(Call& call);
  void Top(Call& call);
  void Width(Call& call);
  void Height(Call& call);
  void Move(Call& call);
  void ScaleWidth(Call& call);
  void ScaleHeight(Call& call);
  void Visible(Call& call);
  void Enabled(Call& call);
  void BackColor(Call& call);
  void ForeColor(Call& call);
  void Font(Call& call);
  void Tag(Call& call);
  void WindowState(Call& call);
  void KeyPreview(Call& call);
  void MousePointer(Call& call);
  void ActiveControl(Call& call);
  void Controls(Call& call);
  void ControlCount(Call& call);
  void Show(Call& call);
  void Hide(Call& call);
  void Refresh(Call& call);
  void SetFocus(Call& call);
  void ZOrder(Call& call);

 protected:
  std::vector<MemberTable> Tables() const override;

  FormLook look_;

 private:
  Form& form() noexcept;
  HWND Window() noexcept;
  RECT Place();
  RECT Client();
  void MoveTo(const RECT& place);
  void TellControls(DISPID ambient);
};

}  // namespace qrn::host
