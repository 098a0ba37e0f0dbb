// The pages as a frame handles them: their dialogs, what they tell, and what becomes of them in any
// order of calls.
#include <ocidl.h>
#include <windows.h>

#include <thread>

#include "com/Object.h"
#include "design/pages/PageRows.h"
#include "host/container/Scriptable.h"
#include "host/runner/Form.h"
#include "host/user/Dialogs.h"
#include "ole/SystemGuid.h"
#include "tests/qrnform/FormRun.h"
#include "tests/support/Company.h"
#include "tests/support/Test.h"

namespace qrn::tests {
namespace {

using com::Com;
using com::Query;

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

Com<IClassFactory> FactoryOf(const ole::Guid& classId) {
  const auto entry = reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"qrnbt350.ocx"), "DllGetClassObject")));
  Com<IClassFactory> factory;
  entry(ole::AsGuid(classId), __uuidof(IClassFactory), factory.putVoid());
  return factory;
}

Com<IPropertyPage2> MakePage(const PageRow& row) {
  Com<IPropertyPage2> page;
  if (const auto factory = FactoryOf(row.classId)) {
    factory->CreateInstance(nullptr, __uuidof(IPropertyPage2), page.putVoid());
  }
  return page;
}

// What each page edits.
constexpr const char* kClasses[] = {"QRNBtr",       "QRNBtn",        "QRNEdit",     "QRNListBox",
                                    "QRNComboBox",  "QRNCheck",      "QRNOptBtn",   "QRNPic",
                                    "QRNHScroll",   "QRNVScroll",    "QRNGrid",     "QRNExComboBox",
                                    "QRNExListBox", "QRNExComboBox", "QRNExListBox"};
static_assert(std::size(kClasses) == std::size(kPages));

std::string AllControls(const std::string& directory) {
  std::string text = Piece("QRNBTRLib.QRNBtr QRNBtr", 0, " DDFDir = \"" + directory + "\"\n");
  int place = 1;
  for (const char* name :
       {"QRNBtn", "QRNEdit", "QRNCheck", "QRNOptBtn", "QRNPic", "QRNHScroll", "QRNVScroll",
        "QRNListBox", "QRNComboBox", "QRNExListBox", "QRNExComboBox", "QRNGrid"}) {
    text += Piece(std::string("QRNBTRLib.") + name + " " + name, place++ % 6);
  }
  return text;
}

// "1 3 3 ".
class StatusSite final : public com::Object<IPropertyPageSite> {
 public:
  STDMETHODIMP OnStatusChange(DWORD status) override {
    log += std::to_string(status) + " ";
    return S_OK;
  }
  STDMETHODIMP GetLocaleID(LCID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }
  std::string log;
};

struct Pages : ::testing::Test {
  Pages()
      : forms_({FormText(AllControls(company_.Directory()), "")}, true),
        frame_(CreateWindowExW(WS_EX_CONTROLPARENT, L"Static", L"frame", WS_POPUP | WS_VISIBLE, 300,
                               100, 900, 700, nullptr, nullptr, nullptr, nullptr)) {}
  ~Pages() override {
    if (IsWindow(frame_)) DestroyWindow(frame_);
  }

  IUnknown* Control(const char* name) const {
    return forms_.first().Find(std::wstring(name, name + strlen(name)))->HostedObject();
  }
  std::wstring Value(const char* control, const wchar_t* property) const {
    const auto object = Query<IDispatch>(Control(control));
    com::Variant value = host::GetMember(object.get(), property, {});
    return SUCCEEDED(value.as(VT_BSTR, value)) ? std::wstring(value->bstrVal) : L"?";
  }
  // The page's dialog, shown for these controls.
  HWND Show(IPropertyPage& page, std::initializer_list<const char*> controls) const {
    std::vector<IUnknown*> objects;
    for (const char* name : controls) objects.push_back(Control(name));
    EXPECT_EQ(page.SetObjects(static_cast<ULONG>(objects.size()), objects.data()), S_OK);
    const RECT place{10, 10, 410, 310};
    EXPECT_EQ(page.Activate(frame_, &place, FALSE), S_OK);
    EXPECT_EQ(page.Show(SW_SHOW), S_OK);
    return GetWindow(frame_, GW_CHILD);
  }
  static void Choose(HWND dialog, int id, const wchar_t* line) {
    EXPECT_TRUE(host::ChooseLine(GetDlgItem(dialog, id), line)) << id;
  }

  test::Company company_;
  OpenForms forms_;
  HWND frame_;
};

struct DialogCase {
  const wchar_t* title;
  int width, height;  // dialog units
  const char* ids;    // in the order of the Tab key; "s" behind a list that is sorted
};

const DialogCase kDialogs[] = {
    {L"DDF", 271, 105, "191 192 "},
    {L"Btrieve", 271, 105, "193s 194 195 196 "},
    {L"Btrieve", 271, 105, "193s 194 198 "},
    {L"Btrieve", 271, 105, "204 205 206 207 193 194 198 "},
    {L"Btrieve", 271, 105, "204 205 206 207 193 194 198 "},
    {L"Btrieve", 271, 105, "193 194 198 "},
    {L"Btrieve", 271, 105, "193s 194 198 "},
    {L"Btrieve", 271, 105, "193s 194 198 "},
    {L"Btrieve", 271, 105, "193s 194 196 "},
    {L"Btrieve", 271, 105, "193s 194 196 "},
    {L"Btrieve", 278, 205, "204 205 207 243 244s 245 247 246 248 249 "},
    {L"Field", 275, 190, "204 205 207 243 244s 245 247 246 248 249 "},
    {L"Field", 266, 200, "204 205 207 243 244s 245 247 246 248 249 "},
    {L"Btrieve", 230, 105, "193s 194 198 "},
    {L"Btrieve", 271, 105, "193s 194 198 "},
};

std::wstring ClassOf(HWND window) {
  wchar_t name[32] = L"";
  GetClassNameW(window, name, 32);
  return name;
}

bool IsSorted(HWND control) {
  const LONG_PTR style = GetWindowLongPtrW(control, GWL_STYLE);
  if (ClassOf(control) == L"ComboBox") return (style & CBS_SORT) != 0;
  return ClassOf(control) == L"ListBox" && (style & LBS_SORT) != 0;
}

std::string TabOrder(HWND dialog) {
  std::string ids;
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if ((GetWindowLongPtrW(child, GWL_STYLE) & WS_TABSTOP) == 0) continue;
    ids += std::to_string(GetDlgCtrlID(child)) + (IsSorted(child) ? "s " : " ");
  }
  return ids;
}

RECT PlaceOf(HWND control) {
  RECT place{};
  GetWindowRect(control, &place);
  MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

SIZE TextOf(HWND control) {
  const std::wstring text = host::TextOfWindow(control);
  const com::WindowDc dc(control);
  const com::Selected font(dc.get(),
                           reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
  SIZE extent{};
  GetTextExtentPoint32W(dc.get(), text.c_str(), static_cast<int>(text.size()), &extent);
  return extent;
}

// Every field has a label before it, texts are whole, nothing lies over another or is cut.
void ExpectLegible(HWND dialog, SIZE page) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    const RECT place = PlaceOf(child);
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= page.cx &&
                place.bottom <= page.cy)
        << GetDlgCtrlID(child);
    const bool isButton = ClassOf(child) == L"Button";
    const bool isLabel = ClassOf(child) == L"Static";
    if (isButton || isLabel) {
      EXPECT_LE(TextOf(child).cx, place.right - place.left) << GetDlgCtrlID(child);
      EXPECT_LE(TextOf(child).cy, place.bottom - place.top) << GetDlgCtrlID(child);
    }
    if (!isButton && !isLabel) {
      EXPECT_EQ(ClassOf(GetWindow(child, GW_HWNDPREV)), L"Static") << GetDlgCtrlID(child);
    }
    const bool isGroup = isButton && (GetWindowLongPtrW(child, GWL_STYLE) & WS_TABSTOP) == 0;
    for (HWND other : children) {
      const RECT its = PlaceOf(other);
      RECT both{};
      EXPECT_FALSE(!isGroup && IntersectRect(&both, &place, &its))
          << GetDlgCtrlID(child) << " over " << GetDlgCtrlID(other);
    }
    if (!isGroup) children.push_back(child);
  }
}

TEST_F(Pages, HaveTheirDialogs) {
  const com::GdiFont larger(CreateFontW(-27, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                                        SHIFTJIS_CHARSET, 0, 0, 0, 0, L"ＭＳ Ｐゴシック"));
  for (size_t i = 0; i < std::size(kPages); ++i) {
    SCOPED_TRACE(kPages[i].className);
    const auto page = MakePage(kPages[i]);
    ASSERT_TRUE(page);
    const HWND dialog = Show(*page.get(), {kClasses[i]});
    PROPPAGEINFO info{};
    info.cb = sizeof info;
    ASSERT_EQ(page->GetPageInfo(&info), S_OK);
    RECT size{0, 0, kDialogs[i].width, kDialogs[i].height};
    MapDialogRect(dialog, &size);
    EXPECT_EQ(info.size.cx, size.right);
    EXPECT_EQ(info.size.cy, size.bottom);
    EXPECT_STREQ(info.pszTitle, kDialogs[i].title);
    EXPECT_STREQ(info.pszHelpFile, L"qrnbt350.hlp");
    CoTaskMemFree(info.pszTitle);
    CoTaskMemFree(info.pszHelpFile);
    EXPECT_EQ(TabOrder(dialog), kDialogs[i].ids);
    ExpectLegible(dialog, info.size);
    SendMessageW(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(larger.get()), TRUE);
    PROPPAGEINFO grown{};
    ASSERT_EQ(page->GetPageInfo(&grown), S_OK);
    CoTaskMemFree(grown.pszTitle);
    CoTaskMemFree(grown.pszHelpFile);
    EXPECT_GT(grown.size.cx, info.size.cx * 3 / 2);
    ExpectLegible(dialog, grown.size);
    EXPECT_EQ(page->Deactivate(), S_OK);
  }
}

TEST_F(Pages, TellOfTheFirstChangeAndOfEach) {
  const auto page = MakePage(kPages[2]);
  const auto site = com::Make<StatusSite>();
  page->SetPageSite(site.get());
  const HWND dialog = Show(*page.get(), {"QRNEdit"});
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);
  EXPECT_EQ(site->log, "") << "nothing was changed by showing it";
  Choose(dialog, 193, L"QRNBtr");
  EXPECT_EQ(page->IsPageDirty(), S_OK);
  Choose(dialog, 194, L"People");
  Choose(dialog, 198, L"Name");
  EXPECT_EQ(site->log, "1 3 3 3 ");
  EXPECT_EQ(Value("QRNEdit", L"DbField"), L"") << "before it is applied";
  EXPECT_EQ(page->Apply(), S_OK);
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);
  EXPECT_EQ(
      Value("QRNEdit", L"DbSource") + Value("QRNEdit", L"DbTable") + Value("QRNEdit", L"DbField"),
      L"QRNBtrPeopleName");
  Choose(dialog, 198, L"Pay");
  EXPECT_EQ(site->log, "1 3 3 3 1 3 ");
  page->SetPageSite(nullptr);
}

// What an object has not is passed over, also where the page looks for what to show.
TEST_F(Pages, PutToEveryObjectOfWhateverClass) {
  const auto page = MakePage(kPages[2]);
  const HWND dialog = Show(*page.get(), {"QRNCheck", "QRNBtn", "QRNListBox", "QRNBtr"});
  Choose(dialog, 193, L"QRNBtr");
  Choose(dialog, 194, L"Days");
  Choose(dialog, 198, L"Word");
  EXPECT_EQ(page->Apply(), S_OK);
  for (const char* name : {"QRNCheck", "QRNBtn", "QRNListBox"}) {
    EXPECT_EQ(Value(name, L"DbTable"), L"Days") << name;
  }
  EXPECT_EQ(Value("QRNListBox", L"DbField"), L"Word");
  page->Deactivate();
  IUnknown* other = Control("QRNBtr");
  EXPECT_EQ(page->SetObjects(1, &other), S_OK);
  const RECT place{};
  EXPECT_EQ(page->Activate(frame_, &place, FALSE), S_OK);
  EXPECT_EQ(page->Apply(), S_OK);
}

// A frame that gives other objects to a page that stands sees theirs.
TEST_F(Pages, ShowTheObjectsGivenLast) {
  const auto page = MakePage(kPages[2]);
  const HWND dialog = Show(*page.get(), {"QRNEdit"});
  Choose(dialog, 193, L"QRNBtr");
  page->Apply();
  IUnknown* other = Control("QRNCheck");
  EXPECT_EQ(page->SetObjects(1, &other), S_OK);
  EXPECT_EQ(host::ItemText(GetDlgItem(dialog, 193)), L"");
  other = Control("QRNEdit");
  EXPECT_EQ(page->SetObjects(1, &other), S_OK);
  EXPECT_EQ(host::ItemText(GetDlgItem(dialog, 193)), L"QRNBtr");
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);
}

// Letters of calls: A activate, D deactivate, S show, H hide, M move, O objects, N none, P apply,
// T a site, U no site, W the frame's window goes. Behind each its result: "." for success, "!" for
// one that needs a window.
struct CallsCase {
  const char *calls, *results;
};
const CallsCase kCalls[] = {
    {"", ""},
    {"D", "!"},
    {"SHM", "!!!"},
    {"A", "."},
    {"AA", ".!"},
    {"OTASMHPDNU", ".........."},
    {"ADAD", "...."},
    {"AOSNPUD", "......."},
    {"TOADSU", "....!."},
    {"OAW", "..."},
    {"OAWDP", "...!."},
    {"PN", ".."},
};

struct CallParts {
  IPropertyPage& page;
  HWND frame;
  IUnknown* object;
  IPropertyPageSite* site;
};

constexpr RECT kPlace{1, 2, 301, 202};

struct LetterRow {
  char letter;
  HRESULT (*call)(CallParts& on);
};
// clang-format off
constexpr LetterRow kLetters[] = {
    {'A', [](CallParts& on) { return on.page.Activate(on.frame, &kPlace, FALSE); }},
    {'D', [](CallParts& on) { return on.page.Deactivate(); }},
    {'S', [](CallParts& on) { return on.page.Show(SW_SHOW); }},
    {'H', [](CallParts& on) { return on.page.Show(SW_HIDE); }},
    {'M', [](CallParts& on) { return on.page.Move(&kPlace); }},
    {'O', [](CallParts& on) { return on.page.SetObjects(1, &on.object); }},
    {'N', [](CallParts& on) { return on.page.SetObjects(0, nullptr); }},
    {'P', [](CallParts& on) { return on.page.Apply(); }},
    {'T', [](CallParts& on) { return on.page.SetPageSite(on.site); }},
    {'U', [](CallParts& on) { return on.page.SetPageSite(nullptr); }},
    {'W', [](CallParts& on) { return DestroyWindow(on.frame) ? S_OK : E_FAIL; }},
};
// clang-format on

char Call(CallParts& on, char letter) {
  const auto* row = std::ranges::find(kLetters, letter, &LetterRow::letter);
  const HRESULT result = row->call(on);
  return result == S_OK ? '.' : result == E_UNEXPECTED ? '!' : '?';
}

TEST_F(Pages, TakeCallsInAnyOrderAndLeaveNothing) {
  for (size_t i = 0; i < std::size(kPages); ++i) {
    for (const CallsCase& row : kCalls) {
      const HWND frame = CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 400, 400, nullptr,
                                         nullptr, nullptr, nullptr);
      const auto site = com::Make<StatusSite>();
      auto page = MakePage(kPages[i]);
      CallParts on{*page.get(), frame, Control(kClasses[i]), site.get()};
      std::string results;
      for (const char* call = row.calls; *call; ++call) results += Call(on, *call);
      EXPECT_EQ(results, row.results) << kPages[i].className << " " << row.calls;
      EXPECT_EQ(page.detach()->Release(), 0u) << row.calls;
      EXPECT_FALSE(GetWindow(frame, GW_CHILD)) << row.calls;
      EXPECT_EQ(Query<IUnknown>(site).detach()->Release(), 1u) << row.calls;
      if (IsWindow(frame)) DestroyWindow(frame);
    }
  }
}

TEST_F(Pages, GiveTheKeyboardToAProperty) {
  const auto page = MakePage(kPages[1]);
  const HWND dialog = Show(*page.get(), {"QRNBtn"});
  EXPECT_EQ(page->EditProperty(4), S_OK) << "DbOperation";
  EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 195));
  EXPECT_EQ(page->EditProperty(3), S_OK);
  EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 196));
  EXPECT_EQ(page->EditProperty(9), E_INVALIDARG);
}

TEST_F(Pages, LeaveOtherKeysToTheFrame) {
  const auto page = MakePage(kPages[2]);
  const HWND dialog = Show(*page.get(), {"QRNEdit"});
  const struct {
    const char* what;
    int focus;
    UINT message;
    WPARAM key;
    HRESULT result;
  } cases[] = {
      {"Tab inside", 193, WM_KEYDOWN, VK_TAB, S_OK},
      {"Tab at the end", 198, WM_KEYDOWN, VK_TAB, S_FALSE},
      {"Enter", 193, WM_KEYDOWN, VK_RETURN, S_FALSE},
      {"Escape", 193, WM_KEYDOWN, VK_ESCAPE, S_FALSE},
      {"help", 193, WM_KEYDOWN, VK_F1, S_FALSE},
      {"another function key", 193, WM_KEYDOWN, VK_F4, S_OK},
      {"a letter", 193, WM_CHAR, L'q', S_OK},
      {"a key with Alt", 193, WM_SYSCHAR, L'a', S_FALSE},
  };
  for (const auto& row : cases) {
    const HWND control = GetDlgItem(dialog, row.focus);
    SetFocus(control);
    MSG message{control, row.message, row.key, 0, 0, {}};
    EXPECT_EQ(page->TranslateAccelerator(&message), row.result) << row.what;
  }
  EXPECT_EQ(page->TranslateAccelerator(nullptr), E_POINTER);
}

TEST_F(Pages, AreNotAggregated) {
  Com<IUnknown> page;
  const auto factory = FactoryOf(kQRNEditPpg);
  EXPECT_EQ(factory->CreateInstance(Control("QRNEdit"), __uuidof(IUnknown), page.putVoid()),
            CLASS_E_NOAGGREGATION);
  EXPECT_FALSE(page);
}

// The dialog for files comes in its own time.
void ChooseFileInDialog(const std::wstring& path) {
  for (int i = 0; i < 500; ++i, Sleep(20)) {
    const HWND box = host::FrontBox();
    const HWND name = box ? GetDlgItem(box, 0x47C) : nullptr;
    if (!name) continue;
    Sleep(200);
    SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    return;
  }
}

TEST_F(Pages, LookForADirectory) {
  const auto page = MakePage(kPages[0]);
  const HWND dialog = Show(*page.get(), {"QRNBtr"});
  const std::string directory = company_.Directory();
  const std::wstring folder(directory.begin(), directory.end());
  for (const wchar_t* file : {L"\\File.DDF", L"\\index.ddf", L"\\FIELD.ddf", L"\\other.ddf"}) {
    std::thread user(ChooseFileInDialog, folder + file);
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(192, BN_CLICKED), 0);
    user.join();
    const bool other = file == std::wstring(L"\\other.ddf");
    EXPECT_EQ(host::TextOfWindow(GetDlgItem(dialog, 191)), other ? folder + file : folder);
  }
  EXPECT_EQ(page->IsPageDirty(), S_OK);
}

}  // namespace
}  // namespace qrn::tests
