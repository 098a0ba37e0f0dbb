// List boxes and combo boxes of the system, read and written as the binding does it.
#include <gtest/gtest.h>

#include "binding/ListWindow.h"
#include "platform/CodePage.h"
#include "tests/ole/TestSite.h"

namespace qrn::test {
namespace {

struct ListWindow : ::testing::Test {
  ~ListWindow() override { DestroyWindow(window); }

  void Make(const char* className, DWORD style, UINT add) {
    window = CreateWindowExA(0, className, "", WS_CHILD | style, 0, 0, 100, 100, TheForm(), nullptr,
                             nullptr, nullptr);
    for (const char* text : {"Abe", "Abe2", "表示能力", "ITO"}) {
      SendMessageA(window, add, 0, reinterpret_cast<LPARAM>(Utf8ToCodePage(text).c_str()));
    }
  }
  std::string Utf8(const std::string& bytes) { return CodePageToUtf8(bytes); }

  HWND window = nullptr;
};

struct Step {
  const char* write;  // null: clear
  const char* read;
};

TEST_F(ListWindow, AListBoxSelectsByTheBeginning) {
  Make("LISTBOX", 0, LB_ADDSTRING);
  EXPECT_EQ(ReadListBox(window), "") << "nothing is selected";
  const Step steps[] = {{"Abe", "Abe"}, {"表示", "表示能力"}, {"nobody", "表示能力"},
                        {"ito", "ITO"}, {nullptr, ""},        {"Abe2", "Abe2"}};
  for (const Step& step : steps) {
    if (step.write != nullptr) {
      SelectInListBox(window, Utf8ToCodePage(step.write).c_str());
    } else {
      ClearListBox(window);
    }
    EXPECT_EQ(Utf8(ReadListBox(window)), step.read);
  }
}

TEST_F(ListWindow, AComboBoxWithoutTextOfItsOwnSelectsWholeItems) {
  Make("COMBOBOX", CBS_DROPDOWNLIST, CB_ADDSTRING);
  EXPECT_EQ(ReadComboBox(window, false), "");
  const Step steps[] = {{"Abe", "Abe"},       {"表示能力", "表示能力"},
                        {"表示", "表示能力"}, {"ito", "ITO"},
                        {nullptr, ""},        {"nobody", ""}};
  for (const Step& step : steps) {
    if (step.write != nullptr) {
      WriteComboBox(window, false, Utf8ToCodePage(step.write).c_str());
    } else {
      ClearComboBox(window);
    }
    EXPECT_EQ(Utf8(ReadComboBox(window, false)), step.read);
  }
}

TEST_F(ListWindow, AComboBoxWithTextOfItsOwnTakesAnything) {
  Make("COMBOBOX", CBS_DROPDOWN, CB_ADDSTRING);
  WriteComboBox(window, true, Utf8ToCodePage("表示能力 と").c_str());
  EXPECT_EQ(Utf8(ReadComboBox(window, true)), "表示能力 と");
  EXPECT_EQ(SendMessageA(window, CB_GETCURSEL, 0, 0), CB_ERR);
  SendMessageA(window, CB_SETCURSEL, 1, 0);
  EXPECT_EQ(ReadComboBox(window, true), "Abe2");
  ClearComboBox(window);
  EXPECT_EQ(ReadComboBox(window, true), "");
  EXPECT_EQ(SendMessageA(window, CB_GETCURSEL, 0, 0), CB_ERR);
}

TEST_F(ListWindow, WithoutAWindowThereIsNothing) {
  SelectInListBox(nullptr, "x");
  ClearComboBox(nullptr);
  EXPECT_EQ(ReadListBox(nullptr), "");
  EXPECT_EQ(ReadComboBox(nullptr, false), "");
  EXPECT_EQ(ReadComboBox(nullptr, true), "");
}

}  // namespace
}  // namespace qrn::test
