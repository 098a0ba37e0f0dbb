// The database control on a form: its start and end with the container's, its look, its form's name
// and window as the container tells them.

#include "MadeBtr.h"
#include "core/FlatState.h"
#include "qrnbt350.h"

namespace qrn::test {
namespace {

// An object of the container's code with a few properties. An EMPTY value fails when it is read.
class Scripted final : public Counted<IDispatch> {
 public:
  std::map<std::wstring, Variant> members;

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
    const auto found = members.find(*names);
    if (found == members.end()) return DISP_E_UNKNOWNNAME;
    *id = static_cast<DISPID>(std::distance(members.begin(), found));
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* value, EXCEPINFO*,
                      UINT*) override {
    const auto found = std::next(members.begin(), id);
    if (flags != DISPATCH_PROPERTYGET || found->second.type() == VT_EMPTY) return E_FAIL;
    return VariantCopy(value, found->second.get());
  }
};

struct BtrOnForm : ::testing::Test {
  BtrOnForm() {
    control.members[L"Parent"] = Variant(Com<IDispatch>(&form));
    form.members[L"Name"] = Variant(Bstr(L"frmMain"));
    form.members[L"hWnd"] = Variant(static_cast<int32_t>(HandleToLong(TheForm())));
    site.extended = Com<IDispatch>(&control);
    site.RunTime(L"Db1");
  }
  ~BtrOnForm() override {
    site.Unhost();
    btr.Drop();
    EXPECT_EQ(site.references, 0u) << "the site is still held";
    TheFlatState() = DbFlatState{};
    site.extended.reset();
    control.members.clear();
  }

  void PutDirectory() { btr.Set(L"DDFDir", Text(company.Directory())); }
  std::string IsOpen() { return btr.Say(L"DbIsOpen", {Text(L"People")}); }
  DbTableInfo* Resolve() { return TheRegistry().ResolveTable(TheForm(), "Db1", "People"); }

  Company company;
  ShownMessages messages;
  Scripted form;
  Scripted control;
  TestSite site;
  MadeBtr btr;
};

TEST_F(BtrOnForm, StartsWithItsWindowAndEndsWithIt) {
  site.Host(btr.unknown().get());
  EXPECT_EQ(IsOpen(), "ok I2:0") << "nothing to start with yet";
  PutDirectory();
  EXPECT_EQ(IsOpen(), "ok I2:0") << "at run time a put does nothing more";
  EXPECT_EQ(Resolve(), nullptr);
  site.Unhost();
  site.Host(btr.unknown().get());
  EXPECT_EQ(IsOpen(), "ok I2:1");
  EXPECT_NE(Resolve(), nullptr);
  site.Unhost();
  EXPECT_EQ(IsOpen(), "ok I2:0");
  EXPECT_EQ(Resolve(), nullptr);
  EXPECT_EQ(messages.Take(), "");
}

TEST_F(BtrOnForm, ADesignersPutLoadsAtOnceAndRegisters) {
  site.ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(false);
  site.Host(btr.unknown().get());
  PropertySink sink;
  const Connection connected(btr.unknown().get(), __uuidof(IPropertyNotifySink), &sink);
  PutDirectory();
  EXPECT_EQ(sink.log, "ask(1) changed(1) ");
  EXPECT_NE(Resolve(), nullptr);
  EXPECT_EQ(IsOpen(), "ok I2:0") << "the designer opens no files";
  PutDirectory();
  EXPECT_EQ(sink.log, "ask(1) changed(1) ") << "the same directory again is nothing";
  sink.refuses = 1;
  btr.Set(L"DDFDir", Text(L""));
  EXPECT_NE(Resolve(), nullptr) << "leave was refused";
}

TEST_F(BtrOnForm, TheFormIsAskedForByDispatch) {
  PutDirectory();
  site.Host(btr.unknown().get());
  EXPECT_EQ(::DbAttachControl("db1", "frmMain"), 0);
  EXPECT_EQ(TheFlatState().FormWindow, TheForm());
  EXPECT_EQ(::DbAttachControl("Db1", "FRMMAIN"), -11);
  EXPECT_EQ(messages.Take(), "");
}

TEST_F(BtrOnForm, EachMissingStepHasItsMessage) {
  PutDirectory();
  site.Host(btr.unknown().get());
  const auto restore = [&] {
    site.extended = Com<IDispatch>(&control);
    control.members[L"Parent"] = Variant(Com<IDispatch>(&form));
    form.members[L"Name"] = Variant(Bstr(L"frmMain"));
    form.members[L"hWnd"] = Variant(static_cast<int32_t>(1));
  };
  const struct {
    const char* what;
    std::function<void()> spoil;
    int32_t result;
    const char* shown;
  } cases[] = {
      {"no extended control", [&] { site.extended.reset(); }, -11, "VE808"},
      {"no parent", [&] { control.members.erase(L"Parent"); }, -11, "VE808"},
      {"parent fails", [&] { control.members[L"Parent"] = Variant(); }, -11, "VE809"},
      {"parent is no object", [&] { control.members[L"Parent"] = Variant(int32_t{5}); }, -11,
       "VE809"},
      {"parent is nothing", [&] { control.members[L"Parent"] = Variant(Com<IDispatch>()); }, -11,
       "VE809"},
      {"no name", [&] { form.members.erase(L"Name"); }, -11, "VE810"},
      {"name fails", [&] { form.members[L"Name"] = Variant(); }, -11, "VE811"},
      {"no window", [&] { form.members.erase(L"hWnd"); }, -1, "VE810"},
      {"window fails", [&] { form.members[L"hWnd"] = Variant(); }, -1, "VE811"},
  };
  for (const auto& row : cases) {
    restore();
    row.spoil();
    EXPECT_EQ(::DbAttachControl("Db1", "frmMain"), row.result) << row.what;
    EXPECT_EQ(messages.TakeCodes(), row.shown) << row.what;
  }
}

// One pixel of what the control draws at (16,16).
COLORREF Drawn(IUnknown* control) {
  const com::WindowDc screen(nullptr);
  const com::MemoryDc dc(CreateCompatibleDC(screen.get()));
  const com::Bitmap bitmap(CreateCompatibleBitmap(screen.get(), 32, 32));
  const com::Selected selected(dc.get(), bitmap.get());
  const RECTL bounds{0, 0, 32, 32};
  Query<IViewObject>(control)->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc.get(),
                                    &bounds, nullptr, nullptr, 0);
  uint32_t sum = 0;
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) sum = sum * 31 + GetPixel(dc.get(), x, y);
  }
  return GetPixel(dc.get(), 16, 16) == GetPixel(dc.get(), 0, 0) &&
                 GetPixel(dc.get(), 31, 5) == GetPixel(dc.get(), 0, 0)
             ? GetPixel(dc.get(), 0, 0)
             : sum | 0x80000000;  // a picture
}

TEST_F(BtrOnForm, LooksLikeTheFormAtRunTimeAndLikeItselfInADesigner) {
  site.ambients[DISPID_AMBIENT_BACKCOLOR] = Variant(static_cast<int32_t>(0x00C08040));
  site.Host(btr.unknown().get());
  EXPECT_EQ(Drawn(btr.unknown().get()), 0x00C08040u);
  site.ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(false);
  const COLORREF without = Drawn(btr.unknown().get());
  PutDirectory();
  const COLORREF with = Drawn(btr.unknown().get());
  EXPECT_TRUE(without & 0x80000000) << "a picture";
  EXPECT_TRUE(with & 0x80000000) << "a picture";
  EXPECT_NE(with, without);
}

TEST_F(BtrOnForm, KeepsItsSize) {
  site.Host(btr.unknown().get());
  HWND window = nullptr;
  Query<IOleWindow>(btr.unknown())->GetWindow(&window);
  RECT size{};
  GetClientRect(window, &size);
  EXPECT_EQ(size.right, 32);
  EXPECT_EQ(size.bottom, 32);
  SIZEL extent{5000, 5000};
  EXPECT_EQ(site.object()->SetExtent(DVASPECT_CONTENT, &extent), E_FAIL);
}

std::wstring seenTitle;
int seenButtons = 0;

void CALLBACK PressOk(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND dialog = FindWindowW(L"#32770", L"About Quorin");
  if (!dialog) return;
  KillTimer(nullptr, timer);
  wchar_t text[80] = L"";
  GetWindowTextW(GetWindow(dialog, GW_CHILD), text, 80);
  seenTitle = text;
  seenButtons = GetDlgItem(dialog, IDOK) ? 1 : 0;
  PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

TEST_F(BtrOnForm, TheAboutBoxTellsTheVersion) {
  const UINT_PTR timer = SetTimer(nullptr, 0, 50, &PressOk);
  EXPECT_EQ(btr.Say(L"About"), "ok EMPTY");
  KillTimer(nullptr, timer);
  EXPECT_EQ(seenTitle, L"Quorin Controls for Btrieve version 3.51");
  EXPECT_EQ(seenButtons, 1);
}

}  // namespace
}  // namespace qrn::test
