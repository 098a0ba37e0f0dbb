// Makes every class of the module by what an assembly manifest says, and tells what it finds wrong.
//   manifest_client MODULE [MANIFEST]
// The program's own manifest holds where none is named. Objects are to come from the file MODULE.
// Ends with the number of faults.
#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "binding/tables/AllTables.h"
#include "com/Handles.h"
#include "com/Module.h"
#include "com/Text.h"
#include "ole/SystemGuid.h"

namespace qrn {
namespace {

using com::Com;
using ole::AsGuid;

int faults = 0;

void Expect(bool holds, const char* className, const char* what) {
  if (holds) return;
  ++faults;
  std::printf("%s: %s\n", className, what);
}

bool IsRegistered(const Guid& classId) {
  com::Key key;
  const std::wstring path = L"CLSID\\" + com::Wide(GuidText(classId));
  return RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, key.put()) == ERROR_SUCCESS;
}

// The file that an object's code lies in.
std::wstring FileOf(IUnknown* object) {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      *reinterpret_cast<const wchar_t* const*>(object), &module);
  return com::PathOf(module);
}

Com<IUnknown> Make(const CLSID& id, HRESULT& result) {
  Com<IUnknown> made;
  result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IUnknown), made.putVoid());
  return made;
}

void TryControl(const ole::ControlTable& table, const std::wstring& file) {
  const char* name = table.className;
  Expect(!IsRegistered(table.classId), name, "is registered");
  HRESULT result = E_FAIL;
  const auto made = Make(AsGuid(table.classId), result);
  if (result == CLASS_E_CLASSNOTAVAILABLE) return;  // a class that the module does not have
  Expect(bool(made), name, "is not made");
  if (!made) return;
  Expect(FileOf(made.get()) == file, name, "comes from another file");
  Com<ITypeInfo> type;
  const auto info = com::Query<IProvideClassInfo>(made);
  Expect(info && info->GetClassInfo(type.put()) == S_OK, name, "does not tell its type");
  DWORD status = 0;
  Expect(OleRegGetMiscStatus(AsGuid(table.classId), DVASPECT_CONTENT, &status) == S_OK &&
             status == table.registration.miscStatus,
         name, "has another status");
  const std::wstring progId = com::Wide(std::string(name) + "." + name);
  for (const std::wstring& each : {progId + L".1", progId}) {
    // The system answers with an id of its own, which leads to the class.
    CLSID found{};
    Expect(CLSIDFromProgID(each.c_str(), &found) == S_OK && Make(found, result), name,
           "is not found by its name");
  }
}

void TryAll(const std::wstring& file) {
  for (const ole::ControlTable* table : kControls) TryControl(*table, file);
  for (const PageRow& page : kPages) {
    HRESULT result = E_FAIL;
    const auto made = Make(AsGuid(page.classId), result);
    Expect(made && FileOf(made.get()) == file, page.className, "is not made");
  }
  Com<ITypeLib> library;
  Expect(SUCCEEDED(
             LoadRegTypeLib(AsGuid(kLibrary.id), kLibrary.major, kLibrary.minor, 0, library.put())),
         kLibrary.name, "is not loaded");
}

void Activate(const wchar_t* manifest) {
  ACTCTXW description{};
  description.cbSize = sizeof description;
  description.lpSource = manifest;
  ULONG_PTR cookie = 0;
  const HANDLE context = CreateActCtxW(&description);
  Expect(context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie), "the manifest",
         "is not taken");
}

}  // namespace
}  // namespace qrn

int wmain(int count, wchar_t** arguments) {
  if (count < 2) return -1;
  if (count > 2) qrn::Activate(arguments[2]);
  OleInitialize(nullptr);
  qrn::TryAll(arguments[1]);
  OleUninitialize();
  return qrn::faults;
}
