// The toolbox: the pointer, the furniture, and the controls of the modules that are known, each
// with the picture that its module has for it.
#pragma once

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <string>
#include <vector>

#include "com/Handles.h"
#include "host/container/ControlClasses.h"
#include "host/designer/classes/ModuleClassSource.h"
#include "host/designer/model/Gesture.h"
#include "host/form/Language.h"

namespace qrn::designer {

class ToolboxOwner {
 public:
  virtual ~ToolboxOwner() = default;
  // The user took a tool; nothing: the pointer.
  virtual void OnTool(const std::optional<Tool>& tool) = 0;
  // The tool's control is wanted at its usual size in the middle.
  virtual void OnToolToMiddle(const Tool& tool) = 0;
};

class Toolbox {
 public:
  Toolbox(HWND parent, ToolboxOwner& owner, form::Language language);
  Toolbox(const Toolbox&) = delete;
  Toolbox& operator=(const Toolbox&) = delete;

  // Fills it with the furniture and with every control of these libraries.
  void Fill(host::ControlClasses& classes, const ModuleClassSource& source);
  void TakePointer();

  HWND Window() const noexcept { return bar_; }
  int Width() const noexcept;
  void PutAt(const RECT& place) noexcept;
  void TakeFocus() noexcept;
  bool OnCommand(WORD command);
  // Keys and double clicks of the toolbox. True if the message goes no further.
  bool PreTranslate(const MSG& message);
  // On the screen; empty if there is no such tool. By the name that users know; "Pointer" is one.
  RECT PlaceOf(const std::string& name) const;

 private:
  using Images = com::Held<HIMAGELIST, &ImageList_Destroy>;

  struct Button {
    Tool tool;         // without a class: the pointer
    std::string name;  // UTF-8
  };

  void Add(const Button& button, HBITMAP picture);
  int HotTool() const noexcept;
  bool OnKey(WPARAM key);
  void Take(int tool);
  void PutInMiddle(int tool);

  ToolboxOwner& owner_;
  form::Language language_;
  HWND bar_;
  Images images_;
  std::vector<Button> tools_;
};

}  // namespace qrn::designer
