// The container as a control sees it: its client site and the ambient properties there.
#pragma once

#include <ocidl.h>
#include <oleidl.h>

#include "ole/Kit.h"

namespace qrn::ole {

class ClientSite {
 public:
  void Set(IOleClientSite* site) noexcept { site_ = Com<IOleClientSite>(site); }

  explicit operator bool() const noexcept { return bool(site_); }
  const Com<IOleClientSite>& get() const noexcept { return site_; }
  // Another interface of the site; empty where it has none.
  template <class I>
  Com<I> As() const noexcept {
    return Query<I>(site_);
  }

  // An ambient property. Fails without a site, and when the site does not know it.
  HRESULT Ambient(DISPID id, Variant& value) const noexcept;
  // The form runs; a container that does not say counts as a designer.
  bool UserMode() const noexcept;
  // True only if the container says that it designs: one that does not say counts as running.
  bool SaysDesignMode() const noexcept;
  // The control's name in the container, empty if it gives none.
  Bstr DisplayName() const;

 private:
  Com<IOleClientSite> site_;
};

// The form a control stands on, for lookups by form: the window of the in-place site, or without
// one of the client site. A frame or tab control in between is seen through: its parent counts.
// Null without either.
HWND ResolveContainerWindow(const ClientSite& site, IOleWindow* inPlaceSite) noexcept;

}  // namespace qrn::ole
