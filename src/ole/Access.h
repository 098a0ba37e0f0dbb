// How a row of a control's table reaches its C++ class: which member holds a property or which pair
// of functions gets and puts it, and which function runs a method. Checked against the row's types
// where the control's list is compiled.
#pragma once

#include <oaidl.h>

#include <span>

#include "ole/tables/Members.h"

namespace qrn::ole {

class Control;

// Values arrive converted to the row's type, and are the callee's to change or take.
struct PropertyAccess {
  HRESULT (*get)(Control&, VARIANT* index, VARIANT& value) = nullptr;
  HRESULT (*put)(Control&, VARIANT* index, VARIANT& value) = nullptr;
  bool (*carries)(VarType type) = nullptr;  // whether the C++ type holds that variant type
  size_t indexCount = 0;
};
struct MethodAccess {
  HRESULT (*call)(Control&, VARIANT* arguments) = nullptr;
  bool (*carries)(size_t argument, VarType type) = nullptr;
  size_t argumentCount = 0;
};

struct PropertyEntry {
  int32_t id;
  PropertyAccess access;
};
struct MethodEntry {
  int32_t id;
  MethodAccess access;
};

// Access for each row of a table, in its order.
struct Binding {
  std::span<const PropertyAccess> properties;
  std::span<const MethodAccess> methods;
};

}  // namespace qrn::ole
