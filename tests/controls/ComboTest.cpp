// What is a combo box's own: its text, the selection in it, its styles, its size, its focus.
#include "ListFixture.h"
#include "PlayedInputMethod.h"
#include "com/Extent.h"
#include "controls/list/ComboControl.h"

namespace qrn::test {
namespace {

constexpr const char* kNotNow = "80020009:800A018A";
constexpr const char* kReadOnly = "80020009:800A017F";

struct Combos : Lists {
  void Shown(int32_t style) {
    Make(kComboBox);
    Set(L"DbUpdateOption", Long(0));
    Set(L"Style", Long(style));
    ASSERT_EQ(host_->Show(), S_OK);
    for (const wchar_t* item : {L"Kyoto", L"Nara"}) Say(L"AddItem", {Text(item), Missing()});
  }
  std::string Value(const wchar_t* name) { return host_->Value(name); }
};

TEST_F(Combos, TheTextIsTheChoiceOrWhatWasTyped) {
  Shown(kDropDownCombo);
  Set(L"Text", Text(L"typed"));
  EXPECT_EQ(TextOf(window()), "typed");
  EXPECT_EQ(Value(L"Text"), "ok BSTR:typed");
  Set(L"ListIndex", Long(1));
  EXPECT_EQ(Value(L"Text"), "ok BSTR:Nara");
  const std::wstring tooLong = std::wstring(1023, L'a') + L"漢字";
  Set(L"ListIndex", Long(-1));
  SetWindowTextW(window(), tooLong.c_str());
  EXPECT_EQ(Value(L"Text"), "ok BSTR:" + std::string(1023, 'a'))
      << "1,024 bytes, no half character";
  Make(kComboBox);
  Set(L"Text", Text(L"kept"));
  EXPECT_EQ(Value(L"Text"), "ok BSTR:kept") << "without a window what was put";
  ASSERT_EQ(host_->Show(), S_OK);
  EXPECT_EQ(TextOf(window()), "kept");
}

TEST_F(Combos, SelectionsAreOfTheDropDownComboAtRunTime) {
  Shown(kDropDownCombo);
  Set(L"Text", Text(L"abcdef"));
  const struct {
    const wchar_t* name;
    VARIANT value;
    const char* selected;  // start, length, text
  } steps[] = {{L"SelStart", Long(2), "2 4 cdef"},
               {L"SelLength", Long(2), "2 2 cd"},
               {L"SelStart", Long(2), "2 2 cd"},
               {L"SelStart", Long(1), "1 3 bcd"},
               {L"SelText", Text(L"XY"), nullptr}};
  SendMessageW(window(), CB_SETEDITSEL, 0, MAKELPARAM(0, 6));
  for (const auto& step : steps) {
    Set(step.name, step.value);
    if (step.selected == nullptr) continue;
    const std::string told = Value(L"SelStart").substr(6) + " " + Value(L"SelLength").substr(6) +
                             " " + Value(L"SelText").substr(8);
    EXPECT_EQ(told, step.selected);
  }
  EXPECT_EQ(TextOf(window()), "aXYef");
  for (const int32_t style : {kNormalCombo, kDropDownList}) {
    Shown(style);
    for (const wchar_t* name : {L"SelStart", L"SelLength", L"SelText"}) {
      EXPECT_EQ(Value(name), kNotNow);
      EXPECT_EQ(Put(host_->object(), name, {Long(0)}).Text(), kReadOnly);
    }
  }
  Make(kComboBox, false);
  EXPECT_EQ(Value(L"SelStart"), kNotNow) << "in a designer";
  EXPECT_EQ(Put(host_->object(), L"SelStart", {Long(0)}).Text(), kReadOnly);
}

TEST_F(Combos, AnotherStyleMakesTheWindowAnewWithoutItems) {
  Shown(kDropDownCombo);
  const HWND before = window();
  Set(L"Style", Long(kDropDownCombo));
  EXPECT_EQ(window(), before) << "the same";
  Set(L"Style", Long(kDropDownList));
  EXPECT_NE(window(), before);
  EXPECT_EQ(Items(), "");
}

TEST_F(Combos, AreAsHighAsALineUnlessTheListIsAlwaysOpen) {
  for (const int32_t style : {kDropDownCombo, kNormalCombo, kDropDownList}) {
    Shown(style);
    const auto object = ole::Query<IOleObject>(host_->object());
    SIZEL size{5000, 9000};
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, &size), S_OK);
    ASSERT_EQ(object->GetExtent(DVASPECT_CONTENT, &size), S_OK);
    EXPECT_EQ(size.cx, 5000);
    if (style == kNormalCombo) {
      EXPECT_EQ(size.cy, 9000);
      continue;
    }
    const LONG pixels = com::HimetricToPixels({0, size.cy}).cy;
    EXPECT_GT(pixels, 14);
    EXPECT_LT(pixels, 30);
  }
}

TEST_F(Combos, TheListDropsNineLines) {
  Shown(kDropDownCombo);
  for (int i = 0; i < 40; ++i) Say(L"AddItem", {Text(L"x"), Missing()});
  RECT dropped{};
  SendMessageW(window(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
  const LRESULT line = SendMessageW(window(), CB_GETITEMHEIGHT, 0, 0);
  EXPECT_GE(dropped.bottom - dropped.top, 9 * line);
  RECT own{};
  GetClientRect(list_->hwnd(), &own);
  EXPECT_LT(own.bottom, 9 * line) << "the control itself does not grow";
}

TEST_F(Combos, F4AndAltDownOpenTheList) {
  for (const int32_t style : {kDropDownCombo, kDropDownList}) {
    Shown(style);
    SetFocus(window());
    const auto opens = [&](UINT message, WPARAM key, LPARAM bits) {
      SendMessageW(window(), CB_SHOWDROPDOWN, FALSE, 0);
      SendMessageW(GetFocus(), message, key, bits);
      return SendMessageW(window(), CB_GETDROPPEDSTATE, 0, 0) != 0;
    };
    EXPECT_TRUE(opens(WM_KEYDOWN, VK_F4, 1)) << style;
    EXPECT_TRUE(opens(WM_SYSKEYDOWN, VK_DOWN, 0x20000001)) << style;
    SendMessageW(window(), CB_SHOWDROPDOWN, FALSE, 0);
    SetFocus(TheForm());
  }
}

// The keyboard is in a window inside the combo box; inside and outside are told apart all the same.
TEST_F(Combos, TheFocusComesOnceAndGoesOnce) {
  for (const int32_t style : {kDropDownCombo, kNormalCombo, kDropDownList}) {
    Shown(style);
    SetFocus(list_->hwnd());
    EXPECT_TRUE(GetFocus() == window() || IsChild(window(), GetFocus()));
    std::string& told = host_->site.log;
    const auto count = [&told](const std::string& word) {
      size_t times = 0;
      for (size_t at = told.find(word); at != std::string::npos; at = told.find(word, at + 1))
        ++times;
      return times;
    };
    told.clear();
    SetFocus(TheForm());
    EXPECT_EQ(count("blur "), 1U) << told;
    told.clear();
    SetFocus(window());
    EXPECT_EQ(count("focus "), 1U) << told;
    EXPECT_EQ(count("blur "), 0U) << told;
    SetFocus(TheForm());
  }
}

TEST_F(Combos, TheInputMethodIsSetWhereTextIsTyped) {
  for (const ListClass* each : {&kComboBox, &kExComboBox}) {
    for (const int32_t style : {kDropDownCombo, kNormalCombo, kDropDownList}) {
      PlayedInputMethod method;
      Make(*each);
      Set(L"Style", Long(style));
      Set(L"IMEMode", Long(4));
      ASSERT_EQ(host_->Show(), S_OK);
      SetFocus(list_->hwnd());
      EXPECT_EQ(method.Take(), style == kDropDownList ? "" : "enable1 4:1 16:20 8:2 ") << style;
      SetFocus(TheForm());
    }
  }
}

}  // namespace
}  // namespace qrn::test
