// Registration of the module: the scripts of its classes, its application id and its type library.
//
// They go to the machine's classes; where these are refused, to the user's own, so that nobody
// needs to be an administrator.
#pragma once

#include <windows.h>

namespace qrn::design {

// Registers everything; for the machine also removes what the present user had registered for
// himself, from whatever path. After a failure nothing is left registered, and the result tells
// what failed: SELFREG_E_CLASS or SELFREG_E_TYPELIB. Where the path is too long for the system to
// read the type library, that is SELFREG_E_TYPELIB with nothing touched: a former registration
// stays.
HRESULT RegisterModule();

// Removes from both places what RegisterModule puts there; what is not there is no failure.
HRESULT UnregisterModule();

}  // namespace qrn::design
