// What a hosted control needs of whoever puts it on a form.
#pragma once

#include <windows.h>

#include "host/container/Ambients.h"
#include "host/container/InPlaceFrame.h"
#include "host/container/TypeNames.h"

namespace qrn::host {

class ControlOwner {
 public:
  virtual ~ControlOwner() = default;

  // The window the control lies on (the form, or a frame on it) and its place there in pixels.
  virtual HWND ParentWindow() const = 0;
  virtual RECT Place() const = 0;
  virtual Com<InPlaceFrame> Frame() const = 0;
  virtual AmbientValues Ambients() const = 0;

  // The object that stands for the control before scripts and before the control itself: it has
  // Name, Parent and the rest of what the container adds.
  virtual Com<IDispatch> Extended() = 0;

  // An event of the control. The parameters are the control's own; what handlers change of
  // by-reference ones has to be stored through them before the return.
  virtual void OnEvent(const EventInfo& event, DISPPARAMS& parameters) = 0;

  virtual void OnUIActive(bool active) = 0;
  virtual void OnFocus(bool focus) = 0;
  // The control moved or resized itself; `place` is what it asks for.
  virtual void OnMoved(const RECT& place) = 0;
  // A key that the control did not want. True if the form took it.
  virtual bool OnKey(MSG& message) = 0;
  // The control's default verb or `OLEIVERB_PROPERTIES` asks for its property pages.
  virtual void ShowPages() = 0;
};

}  // namespace qrn::host
