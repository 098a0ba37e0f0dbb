// The keyboard on a form: which control has it, who is told of that, the tab order, and what keys
// do that no control wants.
#pragma once

#include <windows.h>

#include <vector>

#include "host/runner/ControlSet.h"
#include "host/runner/FormCode.h"
#include "host/runner/FormWindow.h"

namespace qrn::host {

// Works from Begin to End; outside, the keyboard may move and nobody is told. Handlers run inside
// most of this and may unload the form: the caller keeps the form alive.
class FormKeyboard {
 public:
  FormKeyboard(const ControlSet& controls, const FormWindow& window, FormCode& code) noexcept
      : controls_(controls), window_(window), code_(code) {}

  // The form is loaded; it goes. Nobody has the keyboard at first, nor afterwards.
  void Begin() noexcept { live_ = true; }
  void End() noexcept;

  // The control that has the keyboard or had it last; null if none ever had.
  FormControl* active() const noexcept { return active_; }

  // The form is shown. The first time the keyboard begins at the first stop of the tab order; only
  // then can the stops be seen.
  void OnShown();
  // A control became the active one; whoever was gives that up.
  void OnActive(FormControl& control);
  // The keyboard came to a control: raises LostFocus and GotFocus.
  void OnFocus(FormControl& control);
  // The form's own window has the keyboard: hands it to the control that had it last, or the next
  // one that takes it.
  void HandOn();
  // A control may have become one that cannot be used: if it has the keyboard, the next stop gets
  // it.
  void Keep();

  // A key message for something on the form, before it is dispatched. With `preview` the form's own
  // handlers see it first. True if it is done.
  bool PreTranslate(MSG& message, bool preview);
  // A key that the control with the keyboard did not want: Tab, Enter, Escape, keys of captions.
  // True if it was used.
  bool Translate(const MSG& message);

 private:
  std::vector<FormControl*> TabOrder() const;
  std::vector<FormControl*> StopsAfter(const FormControl* now, bool backwards) const;
  void Next(bool backwards);
  void After(const FormControl& piece);
  void Tell();
  bool Preview(MSG& message);
  bool TryMnemonic(const MSG& message);
  bool PressButton(bool (FormControl::*isWanted)() const);

  const ControlSet& controls_;
  const FormWindow& window_;
  FormCode& code_;
  bool live_ = false;
  bool shownBefore_ = false;
  bool telling_ = false;
  FormControl* active_ = nullptr;
  FormControl* told_ = nullptr;  // its GotFocus was raised, and its LostFocus not yet
};

}  // namespace qrn::host
