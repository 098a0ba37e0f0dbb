// What stands on a form: a control of somebody else's, or a piece of Visual Basic's own furniture.
// The object is also what code and the control itself see as the control: it adds the container's
// members to the control's own. It lives as long as its form; its window comes and goes with the
// form's.
#pragma once

#include <span>
#include <string>

#include "host/container/ControlOwner.h"
#include "host/container/PropertyBag.h"
#include "host/container/Scriptable.h"
#include "host/container/Units.h"
#include "host/form/FormFile.h"

namespace qrn::host {

class Form;

// What a key with Alt held was to a control.
enum class MnemonicUse { None, Done, NextStop };  // NextStop: the keyboard goes to what follows it

class FormControl : public Scriptable {
 public:
  // `container` is the frame it lies in, null for the form itself; it outlives this.
  FormControl(Form& form, FormControl* container, const form::ControlNode& node);

  // The form is gone: every use fails from here on.
  virtual void Detach() noexcept { form_ = nullptr; }

  const std::wstring& name() const noexcept { return name_; }
  const form::ControlNode& node() const noexcept { return node_; }
  int index() const noexcept { return index_; }
  int line() const noexcept { return line_; }  // of the form file
  int tabIndex() const noexcept { return tabIndex_; }
  bool visible() const noexcept { return visible_; }
  // What the form file says, for a control that has no such property itself.
  bool tabStop() const noexcept { return tabStop_; }
  FormControl* container() const noexcept { return container_; }
  // True if it lies in `outer`, at any depth.
  bool LiesIn(const FormControl& outer) const noexcept;
  bool HasForm() const noexcept { return form_ != nullptr; }
  Form& form() const;  // throws ScriptError when the form is gone
  // "edtName", or "cmd(2)" for an element of an array.
  std::wstring DisplayName() const;
  HWND ParentWindow() const;
  RECT Place() const { return bounds_.Pixels(); }
  // Moves and sizes it.
  void PutAt(const Bounds& bounds);

  // Takes place, order and the like from the form file; a derived class takes its own besides.
  virtual void Read(CompanionFiles& files, form::Mistakes& mistakes);
  // Makes the object behind it, still without a window; throws ClassNotFound.
  virtual void Make() {}
  // Makes the window. False if that fails.
  virtual bool Create() = 0;
  virtual void Destroy() noexcept = 0;
  virtual HWND Window() const noexcept = 0;

  // True if the Tab key stops here now.
  virtual bool IsTabStop() const { return false; }
  // It is the label of the control of that window: screen readers are to find it there.
  virtual void StandBefore(HWND /*control*/) {}
  // True if it can have the keyboard now: it is shown, and neither it nor what holds it is
  // disabled.
  bool CanTakeFocus() const;
  bool HasFocus() const noexcept;
  // Gives it the keyboard. False if it did not come; its handlers may have sent it on by then.
  virtual bool TakeFocus() { return false; }
  // The keyboard came to it; a handler may send it back before TakeFocus returns.
  void OnArrival() noexcept { ++arrivals_; }
  virtual void GiveUpFocus() noexcept {}
  // Tries a key with Alt held (WM_SYSKEYDOWN, then WM_SYSCHAR with `key` as its character).
  virtual MnemonicUse TryMnemonic(const MSG&, wchar_t) { return MnemonicUse::None; }
  // A click by key: Enter for the default button, Escape for the cancel button.
  virtual bool IsDefault() const { return false; }
  virtual bool IsCancel() const { return false; }
  virtual void Press() {}
  // True for a text of several lines and a button: Enter is theirs, not the default button's.
  virtual bool WantsEnter() const { return false; }
  virtual void AmbientChanged(DISPID) noexcept {}
  virtual std::span<const EventInfo> Events() const = 0;
  virtual bool HoldsOthers() const { return false; }
  // The object behind a control of a module; null for furniture and before Make.
  virtual IUnknown* HostedObject() const noexcept { return nullptr; }
  // True for a piece without a window of its own, which its holder draws.
  virtual bool IsPiece() const noexcept { return false; }
  // Draws such a piece into its holder's device context.
  virtual void Draw(HDC) {}
  // A mouse message over a piece without a window; the point counts from the piece's corner.
  virtual void OnMouse(UINT, WPARAM, POINT) {}
  // What lies on it is painted over this.
  virtual OLE_COLOR BackColour() const;

  // Members that the container adds.
  void Name(Call& call);
  void Index(Call& call);
  void Parent(Call& call);
  void Container(Call& call);
  void Object(Call& call);
  void Left(Call& call);
  void Top(Call& call);
  void Width(Call& call);
  void Height(Call& call);
  void Visible(Call& call);
  void Tag(Call& call);
  void ToolTipText(Call& call);
  void TabIndex(Call& call);
  void Handle(Call& call);
  void Move(Call& call);
  void SetFocus(Call& call);
  void ZOrder(Call& call);

 protected:
  // What takes effect when members change; the window may not be there yet.
  virtual void OnMoved() {}
  virtual void OnShown() {}
  virtual Com<IDispatch> Own() { return {}; }
  static MemberTable ContainerMembers();
  // Whether the keyboard came, if only to go on, while `take` ran and gave true.
  template <class Take>
  bool CameBy(Take take) {
    const Com<FormControl> alive(this);
    const HWND before = GetFocus();
    const unsigned arrivals = arrivals_;
    return take() && (HasFocus() || arrivals_ != arrivals || GetFocus() != before);
  }

  bool TakeContainerProperty(const form::Property& property);
  Bounds bounds_;  // in twips, on what holds it

 private:
  double UnitsPerTwip() const;
  void Edge(Call& call, double Bounds::*edge);

  Form* form_;
  FormControl* container_;
  const form::ControlNode& node_;  // its form's: not to be used once the form is gone
  std::wstring name_;
  int index_;
  int line_;
  std::wstring tag_;
  std::wstring toolTip_;
  int tabIndex_ = 0;
  bool visible_ = true;
  bool tabStop_ = true;
  unsigned arrivals_ = 0;
};

}  // namespace qrn::host
