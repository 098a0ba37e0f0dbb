// Visual Basic's own pieces beside the controls of modules: labels, frames, command buttons, text
// fields.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/runner/FormControl.h"
#include "host/runner/furniture/FontWatch.h"
#include "host/runner/furniture/FurnitureLook.h"

namespace qrn::host {

// The control that a node of a form file asks for: a piece of furniture or a module's control.
// Throws ClassNotFound for a piece that is not known here, with what may stand instead.
Com<FormControl> MakeFormControl(Form& form, FormControl* container, const form::ControlNode& node);

class Furniture : public FormControl {
 public:
  Furniture(Form& form, FormControl* container, const form::ControlNode& node, FurnitureKind kind);

  void Read(CompanionFiles& files, form::Mistakes& mistakes) override;
  std::span<const EventInfo> Events() const override;
  OLE_COLOR BackColour() const override { return look_.backColor; }
  void AmbientChanged(DISPID id) noexcept override;

  // Members for code.
  void Caption(Call& call);
  void Enabled(Call& call);
  void BackColor(Call& call);
  void ForeColor(Call& call);
  void Font(Call& call);
  void FontName(Call& call);
  void FontSize(Call& call);
  void FontBold(Call& call);
  void Alignment(Call& call);
  void TabStop(Call& call);
  void Refresh(Call& call);

 protected:
  std::vector<MemberTable> Tables() const override;
  const FurnitureLook& look() const noexcept { return look_; }
  FurnitureLook& look() noexcept { return look_; }
  HFONT FontHandle() const noexcept;
  // The character after the & of the caption, upper case; 0 if there is none.
  wchar_t MnemonicOf() const noexcept;
  // True for Alt and the caption's character, while the piece can be used.
  bool IsMnemonic(const MSG& message, wchar_t key) const noexcept;
  void Raise(const wchar_t* event, DISPPARAMS& arguments);
  void Raise(const wchar_t* event);
  // MouseDown, MouseUp or MouseMove for a mouse message; the point in pixels of the piece.
  void RaiseMouse(UINT message, WPARAM wParam, POINT point);
  // Called after every change of look.
  virtual void OnLook() = 0;
  virtual void OnText() { OnLook(); }
  virtual MemberTable OwnMembers() const { return {}; }

 private:
  void Changed();

  FurnitureKind kind_;
  FurnitureLook look_;
  std::unique_ptr<FontWatch> watch_;
};

// A piece with a window of its own.
class WindowPiece : public Furniture {
 public:
  using Furniture::Furniture;

  // The piece behind a window; null for a window that is none.
  static WindowPiece* Of(HWND window) noexcept;

  void Detach() noexcept override;
  bool Create() override;
  void Destroy() noexcept override;
  HWND Window() const noexcept override { return window_; }
  bool TakeFocus() override;

  // A notice (BN_CLICKED, EN_CHANGE ...) and the question for colours that the holder passed on.
  virtual void OnNotice(WORD) {}
  HBRUSH OnColours(HDC dc);

 protected:
  struct WindowKind {
    const wchar_t* className;
    DWORD style;
    DWORD extended;
  };
  virtual WindowKind Kind() const = 0;
  virtual std::wstring WindowTitle() const { return look().text; }
  virtual void OnCreated() {}
  // A message of the window, before its own procedure. A result ends it.
  virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void OnLook() override;
  void OnText() override;
  void OnMoved() override;
  void OnShown() override;
  std::wstring WindowText() const;

 private:
  static LRESULT CALLBACK SubclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR data);
  std::optional<LRESULT> OnKey(UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
  com::Brush background_;
};

}  // namespace qrn::host
