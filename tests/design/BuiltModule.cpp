#include "BuiltModule.h"

namespace qrn::test {
namespace {

template <class Function>
Function Entry(const char* name) {
  auto* const found = GetProcAddress(Module(), name);
  EXPECT_TRUE(found) << name;
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(found));
}

using Plain = HRESULT(WINAPI*)();
using GetClass = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);

class Environment final : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_EQ(OleInitialize(nullptr), S_OK); }
  void TearDown() override {
    EXPECT_TRUE(ModuleMayUnload()) << "objects are left alive";
    OleUninitialize();
  }
};

[[maybe_unused]] const auto* const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new Environment);

}  // namespace

std::wstring ModuleFile() {
  wchar_t program[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  std::wstring path = program;
  return path.substr(0, path.rfind(L'\\') + 1) + L"qrnbt350.ocx";
}

HMODULE Module() {
  static const HMODULE module = LoadLibraryW(ModuleFile().c_str());
  return module;
}

HRESULT RegisterModule() { return Entry<Plain>("DllRegisterServer")(); }
HRESULT UnregisterModule() { return Entry<Plain>("DllUnregisterServer")(); }
bool ModuleMayUnload() { return Entry<Plain>("DllCanUnloadNow")() == S_OK; }

HRESULT ClassObjectOf(const Guid& classId, REFIID id, void** out) {
  return Entry<GetClass>("DllGetClassObject")(AsGuid(classId), id, out);
}

Com<IUnknown> Make(const Guid& classId) {
  Com<IClassFactory> factory;
  Com<IUnknown> object;
  ClassObjectOf(classId, __uuidof(IClassFactory), factory.putVoid());
  if (factory) factory->CreateInstance(nullptr, __uuidof(IUnknown), object.putVoid());
  return object;
}

DWORD RunTool(std::wstring command) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  DWORD result = STILL_ACTIVE;
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                     &process)) {
    if (WaitForSingleObject(process.hProcess, 60000) != WAIT_OBJECT_0) {
      TerminateProcess(process.hProcess, STILL_ACTIVE);
    }
    GetExitCodeProcess(process.hProcess, &result);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  return result;
}

}  // namespace qrn::test
