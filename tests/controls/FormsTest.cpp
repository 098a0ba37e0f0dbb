// Forms with a database control, edits and buttons, all real: whichever control comes first,
// several forms at once, frames, controls made anew, forms that go while they are at work.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "Hosted.h"
#include "binding/QRNBtr.h"
#include "controls/QRNBtn.h"
#include "controls/QRNEdit.h"
#include "tests/extended/ShownMessages.h"
#include "tests/module/Company.h"

namespace qrn::test {
namespace {

constexpr int32_t kGetFirst = 4;  // DbOperation
constexpr DISPID kChange = 1;

// A window that controls stand on. All of them are children of the one visible window.
class Window {
 public:
  explicit Window(const wchar_t* className = L"STATIC", HWND parent = TheForm())
      : window_(CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE, 0, 0, 200, 200, parent,
                                nullptr, nullptr, nullptr)) {}
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() { DestroyWindow(window_); }
  HWND get() const { return window_; }

 private:
  HWND window_;
};

// One form over a database of its own: "Db", "edtName" and "btnFirst". `order` is that of their
// windows: d, e, b.
class PlayedForm {
 public:
  PlayedForm(const wchar_t* name, const char* order) : name_(name) {
    const std::string directory = company.Directory();
    btr.Set(L"DDFDir", Text(std::wstring(directory.begin(), directory.end()).c_str()));
    Bind(edit);
    edit.Set(L"DbField", Text(L"Name"));
    Bind(button);
    button.Set(L"DbIndex", Text(L"ByCode"));
    button.Set(L"DbOperation", Long(kGetFirst));
    for (const char* each = order; *each != '\0'; ++each) {
      HostedControl& control = *each == 'd'   ? static_cast<HostedControl&>(btr)
                               : *each == 'e' ? static_cast<HostedControl&>(edit)
                                              : button;
      control.site.form = window.get();
      EXPECT_EQ(control.Show(), S_OK);
    }
    Insert();
  }

  void Bind(HostedControl& control) {
    control.Set(L"DbSource", Text(L"Db"));
    control.Set(L"DbTable", Text(L"People"));
  }
  void Click() { SendMessageW(button.window(), BM_CLICK, 0, 0); }
  std::string Say(const wchar_t* method, std::initializer_list<VARIANT> arguments) {
    return CallMethod(btr.object(), method, arguments).Text();
  }

  Window window;
  Company company;
  Hosted<CQRNBtr> btr{L"Db"};
  Hosted<CQRNEdit> edit{L"edtName"};
  Hosted<CQRNBtn> button{L"btnFirst"};

 private:
  // One person, called as the form.
  void Insert() {
    Say(L"DbClearFieldBuffer", {Text(L"People")});
    Say(L"DbSetFieldData", {Text(L"People"), Text(L"Name"), Text(name_)});
    EXPECT_EQ(Say(L"DbAccess", {Short(2), Text(L"People"), Text(L"ByCode")}), "ok I2:0");
  }

  const wchar_t* name_;
};

TEST(Forms, WhicheverControlComesFirstEachFormFindsItsOwn) {
  ShownMessages messages;
  PlayedForm two(L"Ito", "ebd");
  std::string order = "bde";
  do {
    PlayedForm one(L"Abe", order.c_str());
    SetWindowTextW(two.edit.window(), L"");
    one.Click();
    EXPECT_EQ(TextOf(one.edit.window()), "Abe") << order;
    EXPECT_EQ(TextOf(two.edit.window()), "") << order;
    two.Click();
    EXPECT_EQ(TextOf(one.edit.window()), "Abe") << order;
    EXPECT_EQ(TextOf(two.edit.window()), "Ito") << order;
    EXPECT_EQ(messages.Take(), "") << order;
  } while (std::ranges::next_permutation(order).found);
}

TEST(Forms, TwoDatabaseControlsOnOneFormServeTheirOwnControls) {
  PlayedForm form(L"Abe", "dbe");
  Company other;
  Hosted<CQRNBtr> second(L"Db2");
  const std::string directory = other.Directory();
  second.Set(L"DDFDir", Text(std::wstring(directory.begin(), directory.end()).c_str()));
  second.site.form = form.window.get();
  second.Show();
  CallMethod(second.object(), L"DbSetFieldData", {Text(L"People"), Text(L"Name"), Text(L"Ueda")});
  CallMethod(second.object(), L"DbAccess", {Short(2), Text(L"People"), Text(L"ByCode")});
  form.Click();
  EXPECT_EQ(TextOf(form.edit.window()), "Abe");
  form.button.Set(L"DbSource", Text(L"Db2"));
  form.Click();
  EXPECT_EQ(TextOf(form.edit.window()), "Ueda") << "the field's control takes either's record";
}

TEST(Forms, AFrameIsSeenThrough) {
  WNDCLASSW description{};
  description.lpfnWndProc = DefWindowProcW;
  description.lpszClassName = L"ThunderRT5Frame";
  RegisterClassW(&description);
  PlayedForm form(L"Abe", "deb");
  {
    const Window frame(L"ThunderRT5Frame", form.window.get());
    Hosted<CQRNEdit> inside(L"edtInside");
    form.Bind(inside);
    inside.Set(L"DbField", Text(L"Name"));
    inside.site.form = frame.get();
    inside.Show();
    form.Click();
    EXPECT_EQ(TextOf(inside.window()), "Abe");
  }
  UnregisterClassW(L"ThunderRT5Frame", nullptr);
}

TEST(Forms, AControlMadeAnewTakesTheFormersPlace) {
  PlayedForm form(L"Abe", "deb");
  Hosted<CQRNEdit> anew(L"edtName");
  form.Bind(anew);
  anew.Set(L"DbField", Text(L"Name"));
  anew.site.form = form.window.get();
  anew.Show();
  EXPECT_EQ(form.edit.window(), nullptr) << "the former has lost its window";
  form.Click();
  EXPECT_EQ(TextOf(anew.window()), "Abe");
  anew.Unhost();
  form.Click();
  EXPECT_EQ(form.edit.Value(L"Text"), "ok BSTR:") << "the former's entry is gone for good";
}

TEST(Forms, AFormMayGoInsideAnEventOfItsOwn) {
  ShownMessages messages;
  const struct {
    const char* what;
    std::function<void(PlayedForm&)> go;
  } cases[] = {
      {"its window is destroyed", [](PlayedForm& form) { DestroyWindow(form.window.get()); }},
      {"its controls are taken away, the last first",
       [](PlayedForm& form) {
         form.btr.Unhost();
         form.edit.Unhost();
         form.button.Unhost();
       }},
      {"its database control alone goes", [](PlayedForm& form) { form.btr.Unhost(); }},
  };
  for (const auto& row : cases) {
    PlayedForm other(L"Ito", "deb");
    PlayedForm form(L"Abe", "bed");
    int changes = 0;
    form.edit.events.answer = [&](DISPID id, DISPPARAMS&) {
      if (id == kChange && changes++ == 0) row.go(form);
    };
    form.Click();
    EXPECT_EQ(changes, 1) << row.what;
    other.Click();
    EXPECT_EQ(TextOf(other.edit.window()), "Ito") << row.what;
  }
  messages.Take();
}

TEST(Forms, FormsComeAndGoWithoutATrace) {
  const auto once = [] {
    PlayedForm form(L"Abe", "edb");
    form.Click();
  };
  once();
  const DWORD gdi = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  for (int i = 0; i < 8; ++i) once();
  EXPECT_EQ(GetWindow(TheForm(), GW_CHILD), nullptr);
  EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), gdi);
}

}  // namespace
}  // namespace qrn::test
