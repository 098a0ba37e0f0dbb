// The base of every control: all interfaces that containers ask of one, over the rows of its table.
// A control derives, gives its table and binding, and overrides the hooks it needs.
//
// Lives on the thread of its form. Reference counted: the last Release closes what is open,
// destroys the window while the derived part is still whole, and deletes the object. It may be
// aggregated.
#pragma once

#include "com/Module.h"
#include "ole/Access.h"
#include "ole/ClassInfo.h"
#include "ole/ClientSite.h"
#include "ole/ControlFace.h"
#include "ole/Dispatch.h"
#include "ole/Events.h"
#include "ole/InPlace.h"
#include "ole/InnerUnknown.h"
#include "ole/Kit.h"
#include "ole/OleObject.h"
#include "ole/Persistence.h"
#include "ole/QuickActivate.h"
#include "ole/View.h"
#include "ole/Window.h"

namespace qrn::ole {

class Control {
 public:
  // `table` and the lists of `binding` live as long as the program.
  Control(const ControlTable& table, const Binding& binding);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  // Identity. The outer unknown is the aggregator's, or the control's own; the inner one never asks
  // the aggregator.
  IUnknown& Outer() noexcept { return *outer_; }
  IUnknown& Inner() noexcept { return inner_; }
  void BePartOf(IUnknown* aggregator) noexcept { outer_ = aggregator ? aggregator : &inner_; }
  HRESULT FindInterface(REFIID id, void** out) noexcept;
  const ControlTable& table() const noexcept { return table_; }
  // Closes everything as the last Release does, with references left: the container finds a control
  // without window and site.
  void Retire() noexcept;

  // The parts that stand for interfaces.
  ClientSite& site() noexcept { return site_; }
  const ClientSite& site() const noexcept { return site_; }
  ControlWindow& window() noexcept { return window_; }
  Dispatch& dispatch() noexcept { return dispatch_; }
  Events& events() noexcept { return events_; }
  InPlace& inPlace() noexcept { return inPlace_; }
  OleObject& oleObject() noexcept { return oleObject_; }
  Persistence& persistence() noexcept { return persistence_; }
  View& view() noexcept { return view_; }

  // What controls ask most.
  bool UserMode() const noexcept { return site_.UserMode(); }
  Bstr AmbientName() const { return site_.DisplayName(); }
  HWND ResolveContainerWindow() noexcept;
  HWND hwnd() const noexcept { return window_.get(); }
  // A property changed: marks dirty, runs OnChanged, tells the container; with `repaint` also asks
  // the view for a redraw. While the control loads, only OnChanged runs.
  void Changed(int32_t id, bool repaint = false);
  // Asks for a redraw of the view, and of the window with all that it contains.
  void Redraw() noexcept;
  // The focus came into the control, or went to another window (null: to none of this thread);
  // moves inside do not count. The container is told while the control is active in place.
  void FocusCame();
  void FocusWent(HWND to);

  // Puts a property as the container does: asks leave, stores by `store`, then Changed. The result
  // is S_FALSE when leave is refused.
  template <class Store>
  HRESULT Change(int32_t id, Store store) {
    const HRESULT leave = AskLeave(id);
    if (leave != S_OK) return leave;
    store();
    Changed(id);
    return S_OK;
  }
  HRESULT AskLeave(int32_t id);

  // Hooks. All do nothing unless said otherwise.
  virtual void OnSited() {}                  // a client site was set, not when it was taken away
  virtual void OnLoaded() {}                 // state came in from a stream, storage or property bag
  virtual void OnChanged(int32_t) {}         // a property was stored, by a put or by loading
  virtual void OnAmbientChanged(int32_t) {}  // DISPID_UNKNOWN: any of them
  virtual void OnRetire() {}                 // the last moment with everything in place
  virtual bool OnWindowMessage(Message&) { return false; }
  // A key or mouse message that the container offers first; S_OK when it ends here.
  // Goes to the site unless said otherwise: the container's keys work wherever the focus is.
  virtual HRESULT OnAccelerator(MSG& message) { return OfferToSite(message); }
  virtual void OnDraw(HDC, const RECT&) {}
  virtual void OnFillControlInfo(CONTROLINFO&) {}
  virtual void OnMnemonic(MSG&) {}
  // What the container asks for against what the control takes, both in place.
  virtual void AdjustExtent(SIZE& /*himetric*/) {}
  virtual void AdjustRect(RECT& /*pixels*/) {}
  virtual bool HasFixedSize() const { return false; }
  // Styles of the control's own window beyond the usual.
  virtual DWORD ExtraWindowStyle() const { return 0; }
  virtual void FocusWindow();  // gives the focus to the control's window unless it is inside
  // An interface that this control alone has; null for none. Not yet counted.
  virtual IUnknown* FindOwn(REFIID) { return nullptr; }

 protected:
  // Offers a message to the site as an accelerator.
  HRESULT OfferToSite(MSG& message);

 private:
  friend struct InterfaceRows;

  void TellFocus(bool has);

  ModuleLock lock_;
  const ControlTable& table_;
  Binding binding_;
  InnerUnknown inner_;
  IUnknown* outer_;  // not counted: an aggregator outlives its parts
  ClientSite site_;
  ControlWindow window_;
  Dispatch dispatch_;
  Events events_;
  OleObject oleObject_;
  InPlace inPlace_;
  View view_;
  ControlFace controlFace_;
  Persistence persistence_;
  ClassInfo classInfo_;
  QuickActivation quickActivation_;
  bool hasFocus_ = false;
};

}  // namespace qrn::ole
