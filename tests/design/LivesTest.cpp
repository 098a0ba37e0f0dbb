// The module's controls through many lives on a form: nothing is left of them.
#include <ocidl.h>

#include <filesystem>

#include "BuiltModule.h"
#include "tests/ole/Counters.h"
#include "tests/ole/SavedBytes.h"
#include "tests/ole/TestSite.h"

namespace qrn::test {
namespace {

constexpr int kLives = 60;

struct Lives : ::testing::TestWithParam<const ControlTable*> {
  // On the form at design time: placed, drawn, stored, read again, closed.
  static void LiveAndDie() {
    const auto control = Make(GetParam()->classId);
    TestSite site;
    site.ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(false);
    site.ambients[DISPID_AMBIENT_DISPLAYNAME] = Variant(Bstr(L"Control1"));
    ASSERT_EQ(site.Host(control.get()), S_OK);
    const WindowDc dc(site.window());
    const RECTL place{0, 0, 50, 50};
    EXPECT_EQ(Query<IViewObject>(control)->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr,
                                                dc.get(), &place, nullptr, nullptr, 0),
              S_OK);
    EXPECT_EQ(LoadFrom(control.get(), Saved(control.get())), S_OK);
    site.Unhost();
  }
};

TEST_P(Lives, LeaveNothing) {
  if (!Make(GetParam()->classId)) GTEST_SKIP() << "the module has no such class";
  SetOaNoCache();
  for (int i = 0; i < 3; ++i) LiveAndDie();  // what is kept once is kept now
  static TaskBlocks task;                    // as long as the program: one spy serves all classes
  const long long blocks = task.live;
  const long long gdi = DrawingObjects();
  for (int i = 0; i < kLives; ++i) LiveAndDie();
  EXPECT_LE(task.live - blocks, kSystemsOwn);
  EXPECT_LE(DrawingObjects() - gdi, kSystemsOwn);
  EXPECT_EQ(GetWindow(TheForm(), GW_CHILD), nullptr);
  EXPECT_TRUE(ModuleMayUnload());
}

template <class Function>
Function Entry(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// Loads a copy of the module, shows a control of it, and lets it go.
TEST(ModuleLife, LoadedAndUnloadedAgainAndAgain) {
  const std::wstring copy =
      (std::filesystem::temp_directory_path() / L"qrn_design_copy.ocx").wstring();
  ASSERT_TRUE(CopyFileW(ModuleFile().c_str(), copy.c_str(), FALSE));
  for (int i = 0; i < 5; ++i) {
    const HMODULE module = LoadLibraryW(copy.c_str());
    ASSERT_TRUE(module);
    Com<IClassFactory> factory;
    Com<IUnknown> control;
    ASSERT_EQ(Entry<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(module, "DllGetClassObject")(
                  AsGuid(kQRNEditTable.classId), __uuidof(IClassFactory), factory.putVoid()),
              S_OK);
    EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(IUnknown), control.putVoid()), S_OK);
    TestSite site;
    EXPECT_EQ(site.Host(control.get()), S_OK);
    const auto mayUnload = Entry<HRESULT(WINAPI*)()>(module, "DllCanUnloadNow");
    EXPECT_EQ(mayUnload(), S_FALSE);
    site.Unhost();
    control.reset();
    factory.reset();
    EXPECT_EQ(mayUnload(), S_OK);
    FreeLibrary(module);
    EXPECT_EQ(GetModuleHandleW(L"qrn_design_copy.ocx"), nullptr);
  }
  EXPECT_TRUE(DeleteFileW(copy.c_str()));
}

INSTANTIATE_TEST_SUITE_P(All, Lives, ::testing::ValuesIn(kControls),
                         [](const auto& row) { return std::string(row.param->className); });

}  // namespace
}  // namespace qrn::test
