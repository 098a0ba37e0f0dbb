// The four entries of COM.
#include <objbase.h>

#include "com/Guard.h"
#include "com/Module.h"
#include "design/ObjectTable.h"
#include "design/Registration.h"

using namespace qrn;

STDAPI DllCanUnloadNow() { return com::ModuleIsIdle() ? S_OK : S_FALSE; }

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** out) {
  return ole::GetClassObject(design::Objects(), classId, id, out);
}

STDAPI DllRegisterServer() { return com::Guard(&design::RegisterModule); }

STDAPI DllUnregisterServer() { return com::Guard(&design::UnregisterModule); }
