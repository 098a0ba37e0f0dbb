// The face of a database control: whose dictionary the others read, and whom the flat interface can
// be attached to.
#pragma once

#include <optional>

#include "binding/CQuorin.h"
#include "core/FlatState.h"

namespace qrn {

class DataControl : public CQuorin, public AttachedDatabase {
 public:
  // Owned by the control; null without one.
  virtual DbDictionary* GetDictionary() const noexcept = 0;

  // What the container tells of the form that holds the control: its name (code page 932) and its
  // window. Nothing after a message (VE808 to VE811) when it does not.
  virtual std::optional<std::string> AskFormName() = 0;
  virtual std::optional<WindowHandle> AskFormWindow() = 0;

 protected:
  ~DataControl() = default;
};

}  // namespace qrn
