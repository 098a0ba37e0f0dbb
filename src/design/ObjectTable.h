// The classes that the module makes for others.
//
// A control joins in with one row in ObjectTable.cpp, ControlRow<kQRNEditTable, CQRNEdit>():
// its class derives from ole::Control or ole::VisibleControl, has a constructor without arguments,
// and hands its table and the binding of its members to the base (ole/Bind.h tells how). Class
// objects, the control's script and its removal follow from the row; its type stands in the
// library from the table alone. A property page joins in the same way.
#pragma once

#include <span>

#include "ole/ClassFactory.h"

namespace qrn::design {

std::span<const ole::ClassRow> Objects() noexcept;

}  // namespace qrn::design
