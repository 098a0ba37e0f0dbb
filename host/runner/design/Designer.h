// A form while it is designed: keys and mouse choose a control and ask for its property pages. None
// of them reaches a control.
#pragma once

#include <windows.h>

#include <functional>

#include "host/form/KeyNames.h"
#include "host/runner/ControlSet.h"
#include "host/runner/FormWindow.h"

namespace qrn::host {

// True for keys that mean something to a form being designed: F4 for the property pages, and those
// of its window (Alt+F4, Alt+Space, F10). No other key goes anywhere.
bool IsDesignerKey(const form::KeyChord& chord) noexcept;

class Designer {
 public:
  using PageRequest = std::function<void(const FormControl& control)>;

  // `askForPages` is called for the chosen control, within the message that asks.
  Designer(const ControlSet& controls, FormWindow& window, PageRequest askForPages)
      : controls_(controls), window_(window), askForPages_(std::move(askForPages)) {}

  // A message for the form or something on it, before it is dispatched. True if it goes no further;
  // the keys, the mouse over the form and over the borders of controls never do, the title bar's
  // do.
  bool TakeInput(const MSG& message);

  // Null: no control.
  void Select(FormControl* control);
  FormControl* selected() const noexcept { return selected_; }
  // Draws the frame round the chosen control into the form's device context. One that lies in
  // another control has none.
  void Outline(HDC dc) const noexcept;

 private:
  void Choose(const MSG& press);

  const ControlSet& controls_;
  FormWindow& window_;
  PageRequest askForPages_;
  FormControl* selected_ = nullptr;
};

}  // namespace qrn::host
