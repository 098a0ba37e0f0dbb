// The frame for property pages, with pages that only count what is asked of them.
#include <gtest/gtest.h>
#include <ocidl.h>
#include <olectl.h>

#include <string>
#include <thread>

#include "host/runner/design/PropertyPages.h"
#include "host/user/Dialogs.h"
#include "host/user/UserInput.h"

namespace qrn::tests {
namespace {

using host::Com;
using host::ComObject;
using host::MakeCom;

constexpr GUID kFirstPage = {0x1B7C1C10, 0x1, 0x1, {1, 2, 3, 4, 5, 6, 7, 1}};
constexpr GUID kSecondPage = {0x1B7C1C10, 0x1, 0x1, {1, 2, 3, 4, 5, 6, 7, 2}};
constexpr GUID kMissingPage = {0x1B7C1C10, 0x1, 0x1, {1, 2, 3, 4, 5, 6, 7, 3}};

LPOLESTR TaskText(const wchar_t* text) { return com::CopyToTaskMemory(text); }

// Becomes dirty when it is shown, once.
class CountingPage final : public ComObject<IPropertyPage> {
 public:
  CountingPage(const wchar_t* title, std::string& log) : title_(title), log_(log) {}

  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override {
    if (!site) log_ += "gone ";
    site_ = Com<IPropertyPageSite>(site);
    return S_OK;
  }
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL) override {
    window_ = CreateWindowExW(0, L"Static", title_, WS_CHILD, place->left, place->top, 50, 20,
                              parent, nullptr, nullptr, nullptr);
    log_ += "activate ";
    dirty_ = true;
    return S_OK;
  }
  STDMETHODIMP Deactivate() override {
    DestroyWindow(window_);
    log_ += "deactivate ";
    return S_OK;
  }
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override {
    *info = PROPPAGEINFO{};
    info->cb = sizeof *info;
    info->pszTitle = TaskText(title_);
    info->size = {300, 150};
    return S_OK;
  }
  STDMETHODIMP SetObjects(ULONG count, IUnknown**) override {
    log_ += "objects=" + std::to_string(count) + " ";
    return S_OK;
  }
  STDMETHODIMP Show(UINT command) override {
    ShowWindow(window_, static_cast<int>(command));
    log_ += command == SW_HIDE ? "hide " : "show ";
    return S_OK;
  }
  STDMETHODIMP Move(LPCRECT) override { return S_OK; }
  STDMETHODIMP IsPageDirty() override { return dirty_ ? S_OK : S_FALSE; }
  STDMETHODIMP Apply() override {
    dirty_ = false;
    log_ += "apply ";
    return S_OK;
  }
  STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }

 private:
  const wchar_t* title_;
  std::string& log_;
  Com<IPropertyPageSite> site_;
  HWND window_ = nullptr;
  bool dirty_ = false;
};

class PagedControl final : public ComObject<ISpecifyPropertyPages> {
 public:
  explicit PagedControl(std::vector<GUID> pages) : pages_(std::move(pages)) {}
  STDMETHODIMP GetPages(CAUUID* pages) override {
    pages->cElems = static_cast<ULONG>(pages_.size());
    pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(pages_.size() * sizeof(GUID)));
    std::copy(pages_.begin(), pages_.end(), pages->pElems);
    return S_OK;
  }

 private:
  std::vector<GUID> pages_;
};

class PageClasses final : public host::ControlClasses {
 public:
  void Add(const form::LibraryReference&, const std::wstring&) override {}
  host::ControlClass Find(const std::string&, const std::string&) override { return {}; }
  std::vector<Com<ITypeLib>> Libraries() const override { return {}; }
  Com<IUnknown> Make(const GUID& id) override {
    if (id == kFirstPage) return Com<IUnknown>(MakeCom<CountingPage>(L"Btrieve", log).get());
    if (id == kSecondPage) return Com<IUnknown>(MakeCom<CountingPage>(L"色", log).get());
    return {};
  }
  std::string log;
};

HWND WaitForFrame() {
  HWND frame = nullptr;
  for (int i = 0; i < 500 && !frame; ++i) {
    Sleep(20);
    frame = host::WindowTitled(L"edtOne プロパティ");
  }
  Sleep(100);
  return frame;
}

// Presses one button after the other, each once the frame stands.
void Press(std::initializer_list<const wchar_t*> buttons) {
  for (const wchar_t* name : buttons) {
    HWND frame = WaitForFrame();
    if (host::ChooseTab(frame, name)) continue;
    if (HWND button = host::ButtonOf(frame, name)) host::PressButton(frame, button);
    Sleep(100);
  }
}

void PressKeys(std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    SetForegroundWindow(WaitForFrame());
    host::PressKey(*form::KeyChordOf(key));
    Sleep(150);
  }
}

template <class Works>
std::string ShowAndWork(Works works) {
  PageClasses classes;
  const auto control = MakeCom<PagedControl>(std::vector{kFirstPage, kMissingPage, kSecondPage});
  std::thread user(works);
  EXPECT_TRUE(host::ShowPropertyPages(nullptr, L"edtOne", control.get(), classes));
  user.join();
  return classes.log;
}

struct PageCase {
  const char* name;
  std::initializer_list<const wchar_t*> pressed;
  const char* log;
};

const PageCase kPageCases[] = {
    {"cancel applies nothing",
     {L"Cancel"},
     "objects=1 objects=1 activate show deactivate objects=0 gone objects=0 gone "},
    {"OK applies and closes",
     {L"OK"},
     "objects=1 objects=1 activate show apply deactivate objects=0 gone objects=0 gone "},
    {"apply stays open",
     {L"適用", L"Cancel"},
     "objects=1 objects=1 activate show apply deactivate objects=0 gone objects=0 gone "},
    {"a second page is made when it is chosen",
     {L"色", L"OK"},
     "objects=1 objects=1 activate show hide activate show apply apply deactivate objects=0 gone "
     "deactivate objects=0 gone "},
};

TEST(PropertyPages, AreAppliedAsTheButtonsSay) {
  for (const PageCase& row : kPageCases) {
    EXPECT_EQ(ShowAndWork([&] { Press(row.pressed); }), row.log) << row.name;
  }
  EXPECT_EQ(host::liveObjects, 0);
}

// The button that applies is disabled by that, with the keyboard on it.
TEST(PropertyPages, AreWorkedByKeysAlone) {
  EXPECT_EQ(ShowAndWork([] { PressKeys({"Tab", "Tab", "Space", "Space"}); }), kPageCases[2].log);
  EXPECT_EQ(ShowAndWork([] { PressKeys({"Ctrl+Tab", "Enter"}); }), kPageCases[3].log);
  EXPECT_EQ(ShowAndWork([] { PressKeys({"Shift+Tab", "Right", "Enter"}); }), kPageCases[3].log);
  EXPECT_EQ(ShowAndWork([] { PressKeys({"Escape"}); }), kPageCases[0].log);
}

TEST(PropertyPages, AreNotShownWhereNoneCanBeMade) {
  PageClasses classes;
  const auto control = MakeCom<PagedControl>(std::vector{kMissingPage});
  EXPECT_FALSE(host::ShowPropertyPages(nullptr, L"edtOne", control.get(), classes));
}

}  // namespace
}  // namespace qrn::tests
