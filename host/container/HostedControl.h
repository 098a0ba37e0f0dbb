// One control of somebody else's on a form, from its making to its end.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include <memory>
#include <string>
#include <vector>

#include "host/container/ControlClasses.h"
#include "host/container/ControlOwner.h"
#include "host/container/ControlSite.h"
#include "host/container/EventSink.h"
#include "host/container/PropertyBag.h"

namespace qrn::host {

class HostedControl {
 public:
  // Makes the control and gives it its site. Throws ClassNotFound when the class makes no object,
  // or one that is no control. `owner` outlives this.
  HostedControl(ControlOwner& owner, ControlClasses& classes, const ControlClass& controlClass);
  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;
  ~HostedControl();

  // Gives the control its properties (from `bag`, or property by property if it reads no bags) or,
  // without a bag, a new one's. What fails is added to `mistakes` with its line.
  void Load(std::span<const form::Property> properties, int line, CompanionFiles& files,
            form::Mistakes& mistakes);

  // Makes the control's window and shows it. False if the control does not activate.
  bool Activate();
  // Gives the control the keyboard. False if it does not take it.
  bool TakeFocus();
  // Takes user interface activation away, before something else gets the keyboard.
  void GiveUpFocus() noexcept;
  void MoveTo(const RECT& place);
  // Shows or hides what is active.
  void Show(bool visible);

  // Tells the control that an ambient property changed; DISPID_UNKNOWN for several.
  void AmbientChanged(DISPID id) noexcept;
  // Tries a key with Alt held, or Enter and Escape, as an accelerator of the control.
  bool TryMnemonic(const MSG& message) noexcept;

  IDispatch* Dispatch() const noexcept { return dispatch_.get(); }
  IUnknown* Object() const noexcept { return object_.get(); }
  // The control's window; null before Activate and for a control without one.
  HWND Window() const noexcept;
  const std::vector<EventInfo>& Events() const noexcept { return events_; }
  bool IsInvisibleAtRunTime() const noexcept { return (status_ & OLEMISC_INVISIBLEATRUNTIME) != 0; }

  // Ends the control: deactivates, takes its site away, lets it go. No event arrives afterwards.
  void Close() noexcept;

 private:
  void FindEvents(const ControlClass& controlClass);
  bool QuickActivate();
  void AttachPlainly();
  void Advise();
  void LoadFromBag(std::span<const form::Property> properties, int line, CompanionFiles& files,
                   form::Mistakes& mistakes);
  void LoadOneByOne(std::span<const form::Property> properties, CompanionFiles& files,
                    form::Mistakes& mistakes);
  void InitNew() noexcept;
  void ShowExtent(const RECT& place) noexcept;
  Com<IConnectionPoint> EventPoint() const noexcept;

  ControlOwner& owner_;
  Com<IUnknown> object_;
  Com<IOleObject> ole_;
  Com<IDispatch> dispatch_;
  Com<ControlSite> site_;
  Com<EventSink> sink_;
  Com<ITypeInfo> eventType_;
  std::vector<EventInfo> events_;
  DWORD status_ = 0;
  DWORD eventCookie_ = 0;
};

// True for properties of a form file that are the container's and not the control's: place, order,
// and what Visual Basic writes beside a control's own.
bool IsContainerProperty(const std::string& name) noexcept;

}  // namespace qrn::host
