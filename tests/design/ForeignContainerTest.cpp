// Containers and callers that nobody here wrote: the system's ATL host and its script host.

#include "BuiltModule.h"
#include "ScriptHost.h"
#include "com/Handles.h"
#include "com/Variant.h"

namespace qrn::test {
namespace {

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

// The system's host of controls: a window class whose text is the class to host.
struct AtlHost : ::testing::Test {
  void SetUp() override {
    ASSERT_EQ(registered_.result, S_OK);
    atl_.reset(LoadLibraryW(L"atl100.dll"));
    ASSERT_TRUE(atl_);
    ASSERT_TRUE(Entry<BOOL(WINAPI*)()>("AtlAxWinInit")());
    form_ = CreateWindowExW(0, L"STATIC", L"form", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                            nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  void TearDown() override { DestroyWindow(form_); }

  template <class Function>
  Function Entry(const char* name) {
    auto* const found = GetProcAddress(atl_.get(), name);
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(found));
  }
  HWND Host(const std::wstring& progId) {
    return CreateWindowExW(0, L"AtlAxWin100", progId.c_str(), WS_CHILD | WS_VISIBLE, 10, 10, 120,
                           80, form_, nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  Com<IUnknown> ControlOf(HWND host) {
    Com<IUnknown> control;
    Entry<HRESULT(WINAPI*)(HWND, IUnknown**)>("AtlAxGetControl")(host, control.put());
    return control;
  }

 private:
  Registered registered_;
  Library atl_;
  HWND form_ = nullptr;
};

TEST_F(AtlHost, ShowsEveryControlThatIsThere) {
  int shown = 0;
  for (const ControlTable* table : kControls) {
    if (!Make(table->classId)) continue;
    SCOPED_TRACE(table->className);
    const std::string name = table->className;
    const HWND host = Host(std::wstring(name.begin(), name.end()) + L"." +
                           std::wstring(name.begin(), name.end()) + L".1");
    ASSERT_TRUE(host);
    const HWND window = GetWindow(host, GW_CHILD);
    EXPECT_EQ(ClassOf(window), L"QRNBT350.Control");
    EXPECT_TRUE(IsWindowVisible(window));
    auto control = ControlOf(host);
    ASSERT_TRUE(control);
    Com<IDispatch> object;
    EXPECT_EQ(control->QueryInterface(reinterpret_cast<const GUID&>(table->interfaceId),
                                      object.putVoid()),
              S_OK);
    MoveWindow(host, 0, 0, 200, 100, TRUE);
    UpdateWindow(host);
    object.reset();
    control.reset();
    DestroyWindow(host);
    EXPECT_FALSE(IsWindow(window));
    ++shown;
  }
  EXPECT_GT(shown, 0);
  EXPECT_TRUE(ModuleMayUnload());
}

TEST(ScriptHost, DrivesTheDatabaseControl) {
  const Registered registered;
  EXPECT_EQ(RunInScriptHost(R"(On Error Resume Next
Set db = CreateObject("QRNBtr.QRNBtr.1")
WScript.Echo "made " & Err.Number
db.OwnerName = "somebody"
WScript.Echo db.OwnerName
db.OpenMode = "two"
WScript.Echo "a text for a number: " & (Err.Number <> 0)
Err.Clear
db.Nobody = 1
WScript.Echo "an unknown member: " & Err.Number
Err.Clear
rc = 99
rc = db.DbOpen("nowhere")
WScript.Echo "open without a dictionary: " & rc & " " & Err.Number
rc = 99
db.DbOpen "nowhere", rc
WScript.Echo "the same in an argument: " & rc & " " & Err.Number
Dim mode(1)
db.DbExSetMode "U", mode(0)
db.DbExSetMode "UC", mode(1)
WScript.Echo "into elements: " & mode(0) & " " & mode(1) & " " & VarType(mode(1))
count = 77
rc = db.DbGetNumOfTable(count)
WScript.Echo "a failure's out argument: " & count & " " & rc
WScript.Echo "a null text: " & Len(db.DbGetFieldData("nowhere", "f")) & " " & Err.Number
db.DbOpen
WScript.Echo "too few arguments: " & (Err.Number <> 0)
Err.Clear
Set db = Nothing
WScript.Echo "done"
)")
                .printed,
            "made 0\nsomebody\na text for a number: True\nan unknown member: 438\n"
            "open without a dictionary: -20 0\nthe same in an argument: -20 0\n"
            "into elements: -1 0 2\na failure's out argument: 77 -20\na null text: 0 0\n"
            "too few arguments: True\ndone\n");
}

}  // namespace
}  // namespace qrn::test
