#include "ole/Control.h"

#include <olectl.h>

#include "ole/InputState.h"
#include "ole/SystemGuid.h"

namespace qrn::ole {

IUnknown& OuterOf(Control& control) noexcept { return control.Outer(); }

// The interfaces of every control, each with the part that stands for it.
struct InterfaceRows {
  struct Row {
    const IID& (*id)();
    IUnknown* (*find)(Control&);
  };
  template <class I, auto Part, class As = I>
  static constexpr Row Of() {
    return {[]() -> const IID& { return __uuidof(I); },
            [](Control& control) -> IUnknown* { return static_cast<As*>(&(control.*Part)); }};
  }
  static const Row kRows[20];
};

const InterfaceRows::Row InterfaceRows::kRows[20] = {
    Of<IDispatch, &Control::dispatch_>(),
    Of<IOleObject, &Control::oleObject_>(),
    Of<IPersistStreamInit, &Control::persistence_>(),
    Of<IPersist, &Control::persistence_, IPersistStreamInit>(),
    Of<IPersistStorage, &Control::persistence_>(),
    Of<IPersistPropertyBag, &Control::persistence_>(),
    Of<IViewObjectEx, &Control::view_>(),
    Of<IViewObject2, &Control::view_>(),
    Of<IViewObject, &Control::view_>(),
    Of<IOleInPlaceObject, &Control::inPlace_>(),
    Of<IOleWindow, &Control::inPlace_, IOleInPlaceObject>(),
    Of<IOleInPlaceActiveObject, &Control::inPlace_>(),
    Of<IOleControl, &Control::controlFace_>(),
    Of<IConnectionPointContainer, &Control::events_>(),
    Of<IProvideClassInfo2, &Control::classInfo_>(),
    Of<IProvideClassInfo, &Control::classInfo_, IProvideClassInfo2>(),
    Of<ISpecifyPropertyPages, &Control::classInfo_>(),
    Of<ISupportErrorInfo, &Control::classInfo_>(),
    Of<IPerPropertyBrowsing, &Control::classInfo_>(),
    Of<IQuickActivate, &Control::quickActivation_>(),
};

Control::Control(const ControlTable& table, const Binding& binding)
    : table_(table),
      binding_(binding),
      inner_(*this),
      outer_(&inner_),
      window_(*this),
      dispatch_(*this, table_, binding_),
      events_(*this, table_),
      oleObject_(*this, table_),
      inPlace_(*this),
      view_(*this),
      controlFace_(*this),
      persistence_(*this, table_),
      classInfo_(*this, table_),
      quickActivation_(*this) {}

HRESULT Control::FindInterface(REFIID id, void** out) noexcept {
  if (!out) return E_POINTER;
  *out = nullptr;
  IUnknown* found = nullptr;
  if (id == __uuidof(IUnknown)) found = &inner_;
  if (id == AsGuid(table_.interfaceId)) found = &dispatch_;
  for (const auto& row : InterfaceRows::kRows) {
    if (!found && id == row.id()) found = row.find(*this);
  }
  if (!found) found = FindOwn(id);
  if (!found) return E_NOINTERFACE;
  found->AddRef();
  *out = found;
  return S_OK;
}

void Control::Retire() noexcept {
  Guard([&] {
    OnRetire();
    return S_OK;
  });
  inPlace_.Deactivate();
  events_.Disconnect();
  view_.Forget();
  site_.Set(nullptr);
}

HWND Control::ResolveContainerWindow() noexcept {
  return ole::ResolveContainerWindow(site_, inPlace_.site());
}

HRESULT Control::AskLeave(int32_t id) {
  return persistence_.loading() ? S_OK : events_.AskLeave(id);
}

void Control::Changed(int32_t id, bool repaint) {
  persistence_.SetDirty(true);
  OnChanged(id);
  if (persistence_.loading()) return;
  events_.NotifyChanged(id);
  if (repaint) Redraw();
}

void Control::Redraw() noexcept {
  if (window_.get()) {
    RedrawWindow(window_.get(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  }
  Guard([&] {
    view_.Tell();
    return S_OK;
  });
}

void Control::FocusWindow() {
  const HWND focus = GetFocus();
  if (window_.get() && focus != window_.get() && !IsChild(window_.get(), focus)) {
    SetFocus(window_.get());
  }
}

void Control::FocusCame() {
  if (hasFocus_ || !inPlace_.active()) return;
  hasFocus_ = true;
  TellFocus(true);
}

void Control::FocusWent(HWND to) {
  if (!hasFocus_ || (to && (to == hwnd() || IsChild(hwnd(), to)))) return;
  hasFocus_ = false;
  if (inPlace_.active()) TellFocus(false);
}

void Control::TellFocus(bool has) {
  if (const auto container = site_.As<IOleControlSite>()) container->OnFocus(has ? TRUE : FALSE);
}

HRESULT Control::OfferToSite(MSG& message) {
  const auto container = site_.As<IOleControlSite>();
  return container ? container->TranslateAccelerator(&message, static_cast<DWORD>(KeyShift()))
                   : S_FALSE;
}

}  // namespace qrn::ole
