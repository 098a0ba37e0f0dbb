// A caller's parameters on their way into a script's procedure and back.
#pragma once

#include <oaidl.h>

#include <span>
#include <vector>

#include "host/container/ComObject.h"

namespace qrn::host {

// Engines write back only through a reference to a VARIANT. So each parameter goes in as a
// reference to a plain copy, and what the procedure left there is put back, in the parameter's own
// type, through the reference that the caller gave.
class HandlerArguments {
 public:
  // `before` stand before the caller's parameters. Named parameters are not passed on.
  HandlerArguments(std::span<const Variant> before, DISPPARAMS& parameters);

  DISPPARAMS* get() noexcept { return &passed_; }

  // Stores what by-reference parameters hold now. A value that does not fit its type leaves the
  // caller's as it was.
  void PutBack() noexcept;

 private:
  DISPPARAMS& given_;
  std::vector<Variant> copies_;  // in the order the system wants: last parameter first
  std::vector<VARIANT> references_;
  DISPPARAMS passed_{};
};

}  // namespace qrn::host
