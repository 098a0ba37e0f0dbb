// An operation button beside two edits, "Code" and "Name" of the office's people, with a scroll bar
// that listens.
#pragma once

#include "OfficeFixture.h"
#include "controls/QRNBtn.h"

namespace qrn::test {

// A scroll bar, played: writes down who moved.
class PlayedScroll final : public CQuorin {
 public:
  PlayedScroll() { TheRegistry().RegisterNavControl(*this); }
  ~PlayedScroll() { TheRegistry().UnregisterNavControl(*this); }

  std::string log;

  void Destroy() override {}
  std::string GetControlName() override { return "scr1"; }
  WindowHandle GetContainerWindow() override { return TheForm(); }
  std::string GetDbTableRef() override { return "Db1"; }
  ControlType GetControlType() override { return kTypeScroll; }
  void OnPositionChanged(const std::string& table, int32_t index) override {
    log += table + ":" + std::to_string(index) + " ";
  }
};

inline constexpr DISPID kBtrieveError = 1;
inline constexpr DISPID kSetData = 2;
inline constexpr const char* kFailed = "VE807 ボタンによるBtrieveオペレーションに失敗しました。";

struct Button : OfficeFixture {
  void SetUp() override {
    Bind(code_, L"Code");
    Bind(name_, L"Name");
    ASSERT_EQ(code_.Show(), S_OK);
    ASSERT_EQ(name_.Show(), S_OK);
    Bind(button_);
    ASSERT_EQ(button_.Show(), S_OK);
  }

  void Fill(const wchar_t* code, const wchar_t* name) {
    SetWindowTextW(code_.window(), code);
    SetWindowTextW(name_.window(), name);
  }
  std::string Screen() { return TextOf(code_.window()) + "|" + TextOf(name_.window()); }

  // The events of a click of that operation.
  std::string Click(int32_t dbOperation) {
    button_.Set(L"DbOperation", Long(dbOperation));
    button_.events.log.clear();
    SendMessageW(button_.window(), BM_CLICK, 0, 0);
    RunMessages();
    // BM_CLICK presses and lets go: the events of the mouse are of no interest here.
    return button_.TakeEvents("567");
  }

  void InsertThree() {
    button_.Set(L"ClearControlData", Bool(false));
    for (const wchar_t* code : {L"1", L"2", L"3"}) {
      Fill(code, L"氏名");
      ASSERT_EQ(Click(DbInsert), "2() -600() ");
    }
  }

  PlayedScroll scroll_;
  Hosted<CQRNEdit> code_{L"edtCode"};
  Hosted<CQRNEdit> name_{L"edtName"};
  Hosted<CQRNBtn> button_{L"btn1"};
};

}  // namespace qrn::test
