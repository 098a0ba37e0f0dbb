// What the panes of the designer's window (properties, code, dialogs) have of the window, and what
// the window has of them.
//
// All of it lives on the window's thread. Texts are UTF-8, places are pixels.
#pragma once

#include <windows.h>

#include <string>

#include "host/designer/model/Design.h"

namespace qrn::designer {

// The window, as its panes see it. It outlives them.
class Workplace {
 public:
  virtual ~Workplace() = default;

  // The form that is open. Another one takes its place when the user opens or makes one; panes are
  // told by Pane::OnOpened and keep nothing of the one before.
  virtual Design& design() = 0;
  // Names from the dictionaries of the form's live database controls.
  virtual const NameOffers& offers() = 0;
  virtual Language language() const = 0;
  // Owner of dialogs and boxes.
  virtual HWND Frame() const = 0;
  // For controls of the panes; the window's life long.
  virtual HFONT Font() const = 0;

  // Tells the user why nothing was changed; nothing to tell is passed over.
  virtual void Tell(const Refusal& refusal) = 0;
  virtual void Tell(const std::string& text) = 0;

  // Property pages of the live control.
  virtual bool HasPages(ControlId control) const = 0;
  virtual void ShowPages(ControlId control) = 0;

  // Brings the code to the front with the caret in the procedure, which is made if it is missing.
  virtual void ShowCode(ControlId control, const std::string& event) = 0;
};

// A child window of the designer's window.
class Pane {
 public:
  virtual ~Pane() = default;

  virtual HWND Window() const noexcept = 0;
  // Takes the keyboard to where the user left it.
  virtual void TakeFocus() = 0;
  // The design changed, or what is selected (an empty report).
  virtual void OnChange(const ChangeReport& report) = 0;
  // Another form is open, or the dictionaries behind it are others.
  virtual void OnOpened() = 0;
  // What stands typed and not yet in the design goes there: before saving, running, undo and
  // leaving. False if it is refused; the user has been told and the keyboard is where it stands.
  virtual bool Settle() = 0;
  // Any message of the thread before it is dispatched: most are for others. True if it was for the
  // pane, something in it or a dialog of its own, and goes no further.
  virtual bool PreTranslate(MSG& message) = 0;
};

}  // namespace qrn::designer
