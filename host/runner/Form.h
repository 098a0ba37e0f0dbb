// A form: what its file says, put together of its window, what stands on it, the keyboard there and
// its code.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/container/Ambients.h"
#include "host/container/ControlClasses.h"
#include "host/runner/ControlSet.h"
#include "host/runner/DesignStage.h"
#include "host/runner/FormCode.h"
#include "host/runner/FormKeyboard.h"
#include "host/runner/FormMembers.h"
#include "host/runner/FormSource.h"
#include "host/runner/FormWindow.h"
#include "host/runner/Pieces.h"

namespace qrn::host {

class Program;

// Why a form is being unloaded, in the order code knows the numbers.
enum class UnloadCause : int16_t { ControlMenu, Code, System, TaskManager };

// Lives as long as its program. Its window and its controls come with Load and go with Unload; the
// variables of its code stay.
class Form final : public FormMembers, private FormWindowOwner {
 public:
  // Throws form::FileRefused for controls that cannot be had.
  Form(Program& program, std::shared_ptr<const FormSource> source);

  // Throws form::FileRefused with what the controls do not take, and std::runtime_error with a
  // plain reason when windows or code cannot be had; the form is unloaded then.
  void Load();
  void EnsureLoaded();  // the same for code: throws ScriptError
  // Loads and shows it; a modal one keeps the user from the others until it is hidden or unloaded.
  void Display(bool modal);
  void Conceal();
  // False if the form's code forbids it.
  bool Unload(UnloadCause cause);
  // The program is going: unloads without asking and lets the code go, every use fails.
  void Detach() noexcept;

  const FormSource& source() const noexcept { return *source_; }
  const std::wstring& name() const noexcept { return name_; }
  bool IsLoaded() const noexcept { return state_ == State::Loaded; }
  bool IsUnloaded() const noexcept { return state_ == State::Unloaded; }
  bool IsDesign() const noexcept { return isDesign_; }
  Program* program() const noexcept { return program_; }  // null once it is going
  HWND Window() const noexcept { return window_.get(); }
  RECT Place() const noexcept { return window_.Place(); }
  void MoveTo(const RECT& place) noexcept { window_.MoveTo(place); }
  const ControlSet& controls() const noexcept { return controls_; }
  FormControl* Find(std::wstring_view controlName, int index = -1) const noexcept {
    return controls_.Find(controlName, index);
  }
  // The control that has the keyboard, or had it last; null if none had.
  FormControl* Focused() const noexcept { return keyboard_.active(); }

  // A message for the form or something on it, before it is dispatched. True if it is done.
  bool PreTranslate(MSG& message);

  // While the form stands on a stage. Adds one control without what lies in it, which comes up at
  // once; `nodes` holds it alone and outlives it. Throws form::FileRefused, and nothing is added,
  // with what is refused.
  FormControl& AddControl(const std::vector<form::ControlNode>& nodes, FormControl* container);
  // Takes a control away with all that lies in it.
  void RemoveControl(FormControl& control) noexcept;
  // Every control, those in front before those behind them in the same container.
  void ArrangeControls(const std::vector<FormControl*>& order);

  // For controls.
  ControlClasses& classes() const;
  Com<InPlaceFrame> frame() const { return window_.frame(); }
  AmbientValues Ambients() const;
  FormCode& code() noexcept { return code_; }
  FormKeyboard& keyboard() noexcept { return keyboard_; }
  Pieces& pieces() noexcept { return pieces_; }
  void OnUIActive(FormControl& control);
  void OnFocus(FormControl& control);
  // Property pages of a control of a module. Showing tells the user where there are none; Post
  // shows them once the messages before it are done.
  bool HasPages(const FormControl& control) const;
  void ShowPages(FormControl& control);
  void PostShowPages(const FormControl& control) const noexcept;

 protected:
  HRESULT FindOther(LPOLESTR name, LCID locale, DISPID* id) override;
  HRESULT InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;

 private:
  enum class State { Unloaded, Loading, Loaded, Unloading };
  struct WindowRow;
  static const WindowRow kWindowRows[];

  void ReadLook(form::Mistakes& mistakes);
  void MakeControls();
  void CreateControls();
  void LeaveControls() noexcept;
  void Dismantle() noexcept;

  std::optional<LRESULT> OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  Com<IUnknown> Life() override { return Com<IUnknown>(static_cast<IDispatch*>(this)); }
  std::optional<LRESULT> OnClose(WPARAM, LPARAM);
  std::optional<LRESULT> OnSessionEnd(WPARAM, LPARAM);
  std::optional<LRESULT> OnShowPages(WPARAM place, LPARAM);
  std::optional<LRESULT> OnEraseBackground(WPARAM, LPARAM);
  std::optional<LRESULT> OnPaint(WPARAM, LPARAM);
  std::optional<LRESULT> OnSetCursor(WPARAM, LPARAM);
  std::optional<LRESULT> OnSize(WPARAM, LPARAM);
  std::optional<LRESULT> OnActivate(WPARAM how, LPARAM);
  std::optional<LRESULT> OnSetFocus(WPARAM, LPARAM);
  std::optional<LRESULT> OnEnable(WPARAM enabled, LPARAM);
  void OnMouse(UINT message, WPARAM wParam, POINT point);

  Program* program_;
  std::shared_ptr<const FormSource> source_;
  bool isDesign_;
  DesignStage* stage_;  // null while the form runs
  std::wstring name_;
  State state_ = State::Unloaded;
  ControlSet controls_;
  FormWindow window_;
  FormCode code_;
  FormKeyboard keyboard_;
  Pieces pieces_;
};

}  // namespace qrn::host
