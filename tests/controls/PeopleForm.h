// Forms with a database control, an edit and a button, all real, over data files of their own.
#pragma once

#include "Hosted.h"
#include "binding/QRNBtr.h"
#include "controls/QRNBtn.h"
#include "controls/QRNEdit.h"
#include "tests/support/Company.h"
#include "tests/support/Test.h"

namespace qrn::test {

// A window that controls stand on. All of them are children of the one visible window.
class Window : Pinned {
 public:
  explicit Window(const wchar_t* className = L"STATIC", HWND parent = TheForm())
      : window_(CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE, 0, 0, 200, 200, parent,
                                nullptr, nullptr, nullptr)) {}
  ~Window() { DestroyWindow(window_); }
  HWND get() const { return window_; }

 private:
  HWND window_;
};

// One form over a database of its own: "Db", "edtName" and "btnFirst". `order` is that of their
// windows: d, e, b.
class PeopleForm {
 public:
  PeopleForm(const wchar_t* name, const char* order) : name_(name) {
    btr.Set(L"DDFDir", Text(company.Directory()));
    Bind(edit);
    edit.Set(L"DbField", Text(L"Name"));
    Bind(button);
    button.Set(L"DbIndex", Text(L"ByCode"));
    button.Set(L"DbOperation", Long(DbGetFirst));
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
  std::string Say(const wchar_t* method, std::initializer_list<VARIANT> arguments = {}) {
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

}  // namespace qrn::test
