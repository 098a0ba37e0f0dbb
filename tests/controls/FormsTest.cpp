// Forms with a database control, edits and buttons, all real: whichever control comes first,
// several forms at once, frames, controls made anew, forms that go while they are at work.

#include "PeopleForm.h"
#include "tests/extended/ShownMessages.h"
#include "tests/support/DrawingObjects.h"

namespace qrn::test {
namespace {

constexpr DISPID kChangeEvent = 1;

TEST(Forms, WhicheverControlComesFirstEachFormFindsItsOwn) {
  ShownMessages messages;
  PeopleForm two(L"Ito", "ebd");
  std::string order = "bde";
  do {
    PeopleForm one(L"Abe", order.c_str());
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

TEST(Forms, AFrameIsSeenThrough) {
  WNDCLASSW description{};
  description.lpfnWndProc = DefWindowProcW;
  description.lpszClassName = L"ThunderRT5Frame";
  RegisterClassW(&description);
  PeopleForm form(L"Abe", "deb");
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

TEST(Forms, AFormMayGoInsideAnEventOfItsOwn) {
  ShownMessages messages;
  const struct {
    const char* what;
    std::function<void(PeopleForm&)> go;
  } cases[] = {
      {"its window is destroyed", [](PeopleForm& form) { DestroyWindow(form.window.get()); }},
      {"its controls are taken away, the last first",
       [](PeopleForm& form) {
         form.btr.Unhost();
         form.edit.Unhost();
         form.button.Unhost();
       }},
      {"its database control alone goes", [](PeopleForm& form) { form.btr.Unhost(); }},
  };
  for (const auto& row : cases) {
    PeopleForm other(L"Ito", "deb");
    PeopleForm form(L"Abe", "bed");
    int changes = 0;
    form.edit.events.answer = [&](DISPID id, DISPPARAMS&) {
      if (id == kChangeEvent && changes++ == 0) row.go(form);
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
    PeopleForm form(L"Abe", "edb");
    form.Click();
  };
  once();
  const long long drawn = DrawingObjects();
  for (int i = 0; i < 8; ++i) once();
  EXPECT_EQ(GetWindow(TheForm(), GW_CHILD), nullptr);
  EXPECT_EQ(DrawingObjects(), drawn);
}

// What the container does with a key works from there too; a running form has nothing to reach
// there.
TEST(Forms, TheirDatabaseControlLeavesKeysToTheContainer) {
  for (const bool runs : {false, true}) {
    Hosted<CQRNBtr> btr(L"Db9", runs);
    btr.site.acceleratorResult = S_OK;
    ASSERT_EQ(btr.Show(), S_OK);
    EXPECT_EQ(btr.Offer(WM_KEYDOWN, VK_TAB), S_OK);
    EXPECT_NE(btr.site.log.find("accelerator "), std::string::npos);
    SetFocus(TheForm());
    btr.site.log.clear();
    SetFocus(btr->hwnd());
    EXPECT_EQ(btr.site.log, runs ? "" : "focus ");
    SetFocus(TheForm());
    EXPECT_EQ(btr.site.log, runs ? "" : "focus blur ");
  }
}

}  // namespace
}  // namespace qrn::test
