// The module's life: loaded, it reads the settings and builds the engine, so that both stand before
// any control is made and before the first flat call.
#include <windows.h>

#include "binding/InputMethod.h"
#include "binding/registry/ControlRegistry.h"
#include "com/Guard.h"
#include "com/Module.h"

namespace {

HRESULT OnLoad(HINSTANCE instance) {
  DisableThreadLibraryCalls(instance);
  qrn::com::ModuleStart(instance);
  qrn::TheRegistry();
  qrn::TheInputMethod();
  qrn::TheEngine();
  return S_OK;
}

}  // namespace

// `processEnds` is null when the module is unloaded from a process that lives on.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* processEnds) {
  if (reason == DLL_PROCESS_ATTACH) {
    return SUCCEEDED(qrn::com::Guard([instance] { return OnLoad(instance); }));
  }
  if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) qrn::com::ModuleEnd();
  return TRUE;
}
