// Containers and callers that nobody here wrote: the system's ATL host and its script host.

#include <fstream>

#include "BuiltModule.h"
#include "com/Handles.h"
#include "com/Variant.h"
#include "platform/CodePage.h"
#include "tests/support/Company.h"

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

// Runs a script (VBScript, UTF-8) to its end; gives what it printed, lines that end in "\n".
std::string RunInScriptHost(const std::string& text) {
  const TempFolder folder;
  const auto script = folder.Root() / "script.vbs";
  const auto output = folder.Root() / "output.txt";
  std::ofstream(script, std::ios::binary) << Utf8ToCodePage(text);
  RunTool(L"cmd.exe /c cscript.exe //nologo " + script.wstring() + L" > " + output.wstring());
  std::ifstream file(output, std::ios::binary);
  std::string printed(std::istreambuf_iterator<char>(file), {});
  std::erase(printed, '\r');
  return CodePageToUtf8(printed);
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
)"),
            "made 0\nsomebody\na text for a number: True\nan unknown member: 438\n"
            "open without a dictionary: -20 0\nthe same in an argument: -20 0\n"
            "into elements: -1 0 2\na failure's out argument: 77 -20\na null text: 0 0\n"
            "too few arguments: True\ndone\n");
}

TEST(ScriptHost, TakesAnswersInVariablesOfAnyContent) {
  const Registered registered;
  const Company company;
  EXPECT_EQ(
      RunInScriptHost("Set db = CreateObject(\"QRNBtr.QRNBtr.1\")\ndb.DDFDir = \"" +
                      company.Directory() + "\"\n" + R"(Sub Say(what)
  WScript.Echo what
End Sub
db.DbOpenAll
Dim none, list(2), elements(1)
Sub Try(what, value)
  one = value : two = value
  db.GetUseCount one
  db.DbIsOpen "People", two
  Say what & ": " & TypeName(one) & ", " & TypeName(two) & " " & two
End Sub
Try "empty", none
Try "null", Null
Try "text", "abc"
Try "large", 100000
Try "real", 1.5
Set one = db : Set two = db
db.GetUseCount one
db.DbIsOpen "People", two
Say "object: " & TypeName(two) & " " & two & " " & one.DbIsOpen("People")
db.DbIsOpen "Nobody", elements(1)
Say "element: " & TypeName(elements(0)) & " " & elements(1)
On Error Resume Next
db.DbIsOpen "People", list
Say "array: " & Err.Number & " " & TypeName(list)
Err.Clear
db.DbIsOpen list, one
Say "array for a text: " & (Err.Number <> 0)
Err.Clear
db.DbIsOpen Null, one
Say "null for a text: " & (Err.Number <> 0)
Err.Clear
db.DbIsOpen none, two
Say "empty for a text: " & two & " " & Err.Number
)"),
      "empty: Empty, Integer 1\nnull: Null, Integer 1\ntext: String, Integer 1\n"
      "large: Long, Integer 1\nreal: Double, Integer 1\nobject: Integer 1 1\n"
      "element: Empty -4\narray: 13 Variant()\narray for a text: True\nnull for a text: True\n"
      "empty for a text: -4 0\n");
}

}  // namespace
}  // namespace qrn::test
