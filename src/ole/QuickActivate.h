// IQuickActivate: site, sinks and status in one call, as Visual Basic loads forms.
#pragma once

#include <ocidl.h>

#include "ole/Face.h"

namespace qrn::ole {

class QuickActivation final : public Face<IQuickActivate> {
 public:
  using Face::Face;

  // Takes each part of the container's offer that is there; a sink that cannot be connected gets
  // the cookie 0.
  STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* state) override;
  STDMETHODIMP SetContentExtent(LPSIZEL size) override;
  STDMETHODIMP GetContentExtent(LPSIZEL size) override;
};

}  // namespace qrn::ole
