// The four entries of COM.
#include <objbase.h>

#include "design/ObjectTable.h"
#include "design/Registration.h"
#include "ole/Guard.h"
#include "ole/Module.h"

using namespace qrn;

STDAPI DllCanUnloadNow() { return ole::ModuleIsIdle() ? S_OK : S_FALSE; }

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** out) {
  return ole::GetClassObject(design::Objects(), classId, id, out);
}

STDAPI DllRegisterServer() { return ole::Guard(&design::RegisterModule); }

STDAPI DllUnregisterServer() { return ole::Guard(&design::UnregisterModule); }
