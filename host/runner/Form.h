// A form: its window, what stands on it, and its code.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/container/Ambients.h"
#include "host/container/ControlClasses.h"
#include "host/container/InPlaceFrame.h"
#include "host/runner/ControlArray.h"
#include "host/runner/FormControl.h"
#include "host/runner/FormLook.h"
#include "host/runner/FormSource.h"
#include "host/script/ScriptEngine.h"

namespace qrn::host {

class Program;

// Why a form is being unloaded, in the order code knows the numbers.
enum class UnloadCause : int16_t { ControlMenu, Code, System, TaskManager };

// Lives as long as its program. Its window and its controls come with Load and go with Unload; the
// variables of its code stay.
class Form final : public Scriptable, public ScriptHost {
 public:
  Form(Program& program, std::shared_ptr<const FormSource> source);

  const FormSource& source() const noexcept { return *source_; }
  const std::wstring& name() const noexcept { return name_; }
  const FormLook& look() const noexcept { return look_; }
  HWND Window() const noexcept { return window_; }
  bool IsLoaded() const noexcept { return state_ == State::Loaded; }
  const std::vector<Com<FormControl>>& controls() const noexcept { return controls_; }
  // The control of that name, of an array the element `index`; null if there is none.
  FormControl* Find(std::wstring_view controlName, int index = -1) const noexcept;

  // Throws form::FileRefused with what the controls do not take, and std::runtime_error with a
  // plain reason when windows or code cannot be had; the form is unloaded then.
  void Load();
  void EnsureLoaded();  // the same for code: throws ScriptError
  void Display(bool modal);
  void Conceal();
  // False if the form's code forbids it.
  bool Unload(UnloadCause cause);
  // Unloads without asking; used at the program's end.
  void Discard() noexcept;
  // The program is going: code is let go, every use fails.
  void Detach() noexcept;

  // For controls.
  ControlClasses& classes() const;
  Com<InPlaceFrame> frame() const { return frame_; }
  AmbientValues Ambients() const;
  bool IsDesign() const;
  void Fire(FormControl& control, const std::wstring& event, DISPPARAMS& parameters);
  void OnUIActive(FormControl& control, bool active);
  void OnFocus(FormControl& control, bool focus);
  // Tells the user where there are none.
  void ShowPages(FormControl& control);
  bool HasPages(const FormControl& control) const;
  // The same, once the messages before it are done.
  void PostShowPages(const FormControl& control) const noexcept;
  // Pieces without a window of their own that lie in `container` (null: the form).
  void DrawPieces(FormControl* container, HDC dc) const;
  FormControl* PieceAt(FormControl* container, POINT point) const noexcept;
  // What a window of the form that holds others passes on: notices and colours for furniture, mouse
  // messages for pieces without a window.
  std::optional<LRESULT> OnHolderMessage(FormControl* container, UINT message, WPARAM wParam,
                                         LPARAM lParam);

  // A message for the form or something on it, before it is dispatched. True if it is done.
  bool PreTranslate(MSG& message);
  // A key that the focused control did not want. True if the form took it.
  bool TranslateKey(const MSG& message);
  void FocusNext(bool backwards);
  // To be called when a control may have become one that cannot be used: if it has the keyboard,
  // the next stop gets it.
  void KeepKeyboard();
  FormControl* Focused() const noexcept { return active_; }

  // Members for code.
  void Name(Call& call);
  void Caption(Call& call);
  void Handle(Call& call);
  void Left(Call& call);
  void Top(Call& call);
  void Width(Call& call);
  void Height(Call& call);
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
  void Move(Call& call);
  void Refresh(Call& call);
  void SetFocus(Call& call);
  void ZOrder(Call& call);

 protected:
  std::vector<MemberTable> Tables() const override;
  HRESULT FindOther(LPOLESTR name, LCID locale, DISPID* id) override;
  HRESULT InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;

 private:
  enum class State { Unloaded, Loading, Loaded, Unloading };

  Com<IDispatch> ItemNamed(const std::wstring& name) override;
  void OnScriptFault(const ScriptFault& fault) override;
  HWND BoxOwner() override { return window_; }

  void AddControls(const std::vector<form::ControlNode>& nodes, FormControl* container,
                   form::Mistakes& mistakes);
  void AddToArray(FormControl& element);
  void MakeControls();
  void CheckHandlers(form::Mistakes& mistakes) const;
  void StartCode();
  void CreateControls();
  void MakeWindow();
  void Dismantle() noexcept;
  void FocusFirst();
  void BeModal();
  void EndModal() noexcept;
  void RaiseOwn(const wchar_t* event, DISPPARAMS& parameters);
  void RaiseOwn(const wchar_t* event);
  void RunHandler(const std::wstring& procedure, std::span<const Variant> before,
                  DISPPARAMS& parameters);
  Com<IDispatch> ControlObject(std::wstring_view controlName) const;
  Com<IDispatch> CodeMembers();

  std::vector<FormControl*> TabOrder() const;
  std::vector<FormControl*> StopsAfter(const FormControl* now, bool backwards) const;
  void HandKeyboardOn();
  void TellFocus();
  FormControl* ControlOf(HWND window) const noexcept;
  bool TakeDesignInput(const MSG& message);
  FormControl* ControlUnder(POINT screen) const noexcept;
  void Select(FormControl* control);
  void OutlineSelected(HDC dc) const noexcept;
  bool PreviewKey(MSG& message);
  bool TryMnemonic(const MSG& message);
  bool PressKeyButton(bool cancel);
  void FocusAfter(const FormControl& piece);

  static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnPaint();
  void OnSize();
  void OnActivate(bool active);
  void OnUsableAgain();
  void OnMouse(UINT message, WPARAM wParam, LPARAM lParam);
  RECT WindowPlace() const;
  void MoveTo(const RECT& place);
  double UnitsPerPixel() const noexcept;

  Program* program_;
  std::shared_ptr<const FormSource> source_;
  std::wstring name_;
  FormLook look_;
  State state_ = State::Unloaded;
  HWND window_ = nullptr;
  Com<InPlaceFrame> frame_;
  std::vector<Com<FormControl>> controls_;  // those that hold others stand before what they hold
  std::vector<std::pair<std::wstring, Com<ControlArray>>> arrays_;
  std::unique_ptr<ScriptEngine> engine_;
  FormControl* active_ = nullptr;        // has the keyboard, or had it last
  FormControl* focusTold_ = nullptr;     // whose GotFocus was raised, and LostFocus not yet
  FormControl* pressedPiece_ = nullptr;  // a piece without a window, between button down and up
  FormControl* selected_ = nullptr;      // while the form is designed
  bool tellingFocus_ = false;
  bool modal_ = false;
  std::vector<HWND> waiting_;  // forms that a modal one keeps from the user
  bool shownBefore_ = false;
};

}  // namespace qrn::host
