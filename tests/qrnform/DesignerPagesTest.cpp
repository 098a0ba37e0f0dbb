// What property pages change in a live control comes into the form: the system's pages for fonts,
// colours and pictures are stood in for by pages that put one value when they are applied.
#include <gtest/gtest.h>
#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <algorithm>
#include <vector>

#include "host/container/ComObject.h"
#include "host/container/Fonts.h"
#include "host/container/Scriptable.h"
#include "platform/CodePage.h"
#include "tests/qrnform/DesignerRun.h"
#include "tests/support/SmallBitmap.h"

namespace qrn::tests {
namespace {

using host::Com;
using host::MakeCom;

// The class ids of the system's pages, which controls name.
constexpr GUID kFontPage = {
    0x7EBDAAE0, 0x8120, 0x11CF, {0x89, 0x9F, 0x00, 0xAA, 0x00, 0x68, 0x8B, 0x10}};
constexpr GUID kColourPage = {
    0x7EBDAAE1, 0x8120, 0x11CF, {0x89, 0x9F, 0x00, 0xAA, 0x00, 0x68, 0x8B, 0x10}};
constexpr GUID kPicturePage = {
    0x7EBDAAE2, 0x8120, 0x11CF, {0x89, 0x9F, 0x00, 0xAA, 0x00, 0x68, 0x8B, 0x10}};

host::Variant Picture() {
  const std::string bytes = test::SmallBitmap();
  HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  std::copy(bytes.begin(), bytes.end(), static_cast<char*>(GlobalLock(block)));
  GlobalUnlock(block);
  Com<IStream> stream;
  CreateStreamOnHGlobal(block, TRUE, stream.put());
  Com<IDispatch> picture;
  OleLoadPicture(stream.get(), static_cast<LONG>(bytes.size()), FALSE, IID_IDispatch,
                 picture.putVoid());
  return host::Variant(picture);
}

host::Variant Font() {
  com::FontDescription look;
  look.name =
      L"VL ゴシック";  // one that is there: another one would come back by its stand-in's name
  look.points = 12;
  look.italic = true;
  return host::Variant(Com<IDispatch>(com::MakeFont(look).get()));
}

host::Variant Colour() { return host::Variant(int32_t{0x0080FF}); }

// Puts one property of the objects that it is given, when it is applied.
class PuttingPage final : public host::ComObject<IPropertyPage> {
 public:
  PuttingPage(const wchar_t* property, host::Variant (*value)())
      : property_(property), value_(value) {}

  STDMETHODIMP SetPageSite(IPropertyPageSite*) override { return S_OK; }
  STDMETHODIMP Activate(HWND parent, LPCRECT, BOOL) override {
    window_ = CreateWindowExW(0, L"Static", L"", WS_CHILD, 0, 0, 50, 20, parent, nullptr, nullptr,
                              nullptr);
    return S_OK;
  }
  STDMETHODIMP Deactivate() override { return DestroyWindow(window_), S_OK; }
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override {
    *info = PROPPAGEINFO{};
    info->cb = sizeof *info;
    info->pszTitle = com::CopyToTaskMemory(property_);
    info->size = {200, 100};
    return S_OK;
  }
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override {
    object_ = host::Query<IDispatch>(count > 0 ? objects[0] : nullptr);
    return S_OK;
  }
  STDMETHODIMP Show(UINT command) override {
    ShowWindow(window_, static_cast<int>(command));
    return S_OK;
  }
  STDMETHODIMP Move(LPCRECT) override { return S_OK; }
  STDMETHODIMP IsPageDirty() override { return S_OK; }
  STDMETHODIMP Apply() override {
    return host::PutMember(object_.get(), property_, *value_().get(), {}) ? S_OK : E_FAIL;
  }
  STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }

 private:
  const wchar_t* property_;
  host::Variant (*value_)();
  Com<IDispatch> object_;
  HWND window_ = nullptr;
};

class PageFactory final : public host::ComObject<IClassFactory> {
 public:
  PageFactory(const wchar_t* property, host::Variant (*value)())
      : property_(property), value_(value) {}
  STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
    return MakeCom<PuttingPage>(property_, value_)->QueryInterface(id, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  const wchar_t* property_;
  host::Variant (*value_)();
};

// The system makes these pages while it lives.
class StandInPages {
 public:
  StandInPages() {
    OleInitialize(nullptr);
    Add(kFontPage, L"Font", &Font);
    Add(kColourPage, L"BackColor", &Colour);
    Add(kPicturePage, L"Picture", &Picture);
  }
  StandInPages(const StandInPages&) = delete;
  StandInPages& operator=(const StandInPages&) = delete;
  ~StandInPages() {
    for (const DWORD cookie : cookies_) CoRevokeClassObject(cookie);
    OleUninitialize();
  }

 private:
  void Add(const GUID& id, const wchar_t* property, host::Variant (*value)()) {
    DWORD cookie = 0;
    const auto factory = MakeCom<PageFactory>(property, value);
    CoRegisterClassObject(id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    cookies_.push_back(cookie);
  }
  std::vector<DWORD> cookies_;
};

constexpr char kDrawn[] =
    "tool QRNBtn\ndraw from 600 600 to 1800 1080\nkey Ctrl+S\n"
    "dialog \"名前を付けて保存\" enter 1148 \"@form.frm\"\n"
    "dialog \"名前を付けて保存\" press \"OK\"\nwait 300\nclose\n";

std::string Pages(const char* tab) {
  const std::string frame = "dialog \"QRNBtn1 プロパティ\" ";
  return "click QRNBtn1\nkey Shift+F4\n" + frame + "tab \"" + tab + "\"\n" + frame +
         "press \"OK\"\nwait 200\n";
}

const std::string kAllPages = Pages("BackColor") + Pages("Font") + Pages("Picture");

TEST(DesignerPages, ChangeTheFormByOneStepEach) {
  const StandInPages standIns;
  DesignerRun run;
  ASSERT_EQ(run.Play(kDrawn), "");
  const std::string before = run.Bytes();
  ASSERT_EQ(run.Play(kAllPages + "key Ctrl+S\nclose\n"), "");
  const std::string saved = CodePageToUtf8(run.Bytes());
  for (const char* line : {"BackColor       =   &H000080FF&\r\n",
                           "      BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851} \r\n"
                           "         Name            =   \"VL ゴシック\"\r\n"
                           "         Size            =   12\r\n",
                           "Picture         =   \"form.frx\":0000\r\n"}) {
    EXPECT_NE(saved.find(line), std::string::npos) << saved;
  }
  EXPECT_NE(run.Bytes("form.frx").find(test::SmallBitmap()), std::string::npos);
  // What the control has already changes nothing.
  ASSERT_EQ(run.Play(kAllPages + "key Ctrl+S\nclose\n"), "");
  EXPECT_EQ(CodePageToUtf8(run.Bytes()), saved);
  DesignerRun again(before);
  ASSERT_EQ(again.Play(kAllPages + "key Ctrl+S\nkey Ctrl+Z times 3\nkey Ctrl+S\nclose\n"), "");
  EXPECT_EQ(again.Bytes(), before);
}

}  // namespace
}  // namespace qrn::tests
