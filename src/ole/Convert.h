// Values between what hosts send and what a row's type asks for.
#pragma once

#include <oaidl.h>

#include "ole/Kit.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

// The value sent, through any references, as a value of `type`. Numbers that a colour or a handle
// takes keep their bits, negative ones too; an object for a font or picture must be one.
// DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW where there is no such value.
HRESULT ConvertValue(const VARIANT& sent, const ValueType& type, LCID locale, Variant& value);

// The value with which an out argument enters the call: what the host's variable holds if that
// converts, else zero or null. DISP_E_TYPEMISMATCH if what was sent is a reference that could not
// take the answer; a plain value is no error, its answer is dropped.
HRESULT OpenOutArgument(const VARIANT& sent, const ValueType& type, LCID locale, Variant& value);

// Stores an out argument's answer where the host asked for it, in the type of the host's variable:
// a reference to exactly the type, to a VARIANT (through any number of them), or to another type
// that the answer converts to.
HRESULT StoreAnswer(const VARIANT& sent, const Variant& answer, LCID locale);

}  // namespace qrn::ole
