// The control that docs/adding-a-control.md adds, built from the page's own blocks.

#include "OfficeFixture.h"
#include "Tick.h"

namespace qrn::test {
namespace {

struct DocumentedControl : OfficeFixture {
  void SetUp() override {
    Bind(tick_, L"Code");
    tick_.Set(L"Caption", Text(L"&Paid"));
    ASSERT_EQ(tick_.Show(), S_OK);
  }

  LRESULT Mark() { return SendMessageW(tick_.window(), BM_GETCHECK, 0, 0); }
  void Show(const char* text) { Write(text, "Code"); }

  Hosted<Tick> tick_{L"tck1"};
};

TEST_F(DocumentedControl, ShowsItsFieldAsAMark) {
  Show("1");
  EXPECT_EQ(Mark(), 1);
  EXPECT_EQ(tick_->Value, 1);
  Show("0");
  EXPECT_EQ(Mark(), 0);
}

TEST_F(DocumentedControl, AClickTurnsTheMarkAndIsTold) {
  tick_.events.log.clear();
  SendMessageW(tick_->hwnd(), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED), 0);
  EXPECT_EQ(Mark(), 1);
  EXPECT_EQ(tick_.events.log, "-600() ");
}

TEST_F(DocumentedControl, HasItsCaptionAndTheKeyBehindIt) {
  EXPECT_EQ(TextOf(tick_.window()), "&Paid");
  CONTROLINFO info{};
  tick_->OnFillControlInfo(info);
  ACCEL key{};
  ASSERT_EQ(CopyAcceleratorTableW(info.hAccel, &key, 1), 1);
  EXPECT_EQ(key.key, 'P');
}

}  // namespace
}  // namespace qrn::test
