// Whatever is done before the designer's window can be undone and redone, and the form on the
// screen is the form in the file.
#include <gtest/gtest.h>
#include <ole2.h>

#include <cstdio>
#include <fstream>
#include <random>

#include "com/Module.h"
#include "host/container/Units.h"
#include "host/designer/model/Places.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"
#include "tests/designer/window/BoxAnswerer.h"
#include "tests/designer/window/WindowActions.h"
#include "tests/support/Setting.h"
#include "tests/support/TempFolder.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr DWORD kPatienceMs = 20000;  // for one action, on a machine that does much else

// Ends the program, with the seed, when nothing is done for long: the window hangs.
class Watchdog {
 public:
  Watchdog(uint32_t seed, const WindowActions& actions)
      : seed_(seed), actions_(actions), thread_([this] { Watch(); }) {}
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;
  ~Watchdog() {
    ended_ = true;
    thread_.join();
  }
  void OnAction(int action) {
    action_ = action;
    last_ = GetTickCount64();
  }

 private:
  void Watch() {
    while (!ended_) {
      Sleep(20);
      if (GetTickCount64() - last_ < kPatienceMs) continue;
      std::printf("hangs in action %d (%s), seed %u\n", action_.load(), actions_.doing(),
                  static_cast<unsigned>(seed_));
      std::fflush(stdout);
      TerminateProcess(GetCurrentProcess(), 3);
    }
  }

  uint32_t seed_;
  const WindowActions& actions_;
  std::atomic<int> action_ = 0;
  std::atomic<ULONGLONG> last_ = GetTickCount64();
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

std::string Begun() {
  return "   Begin VB.TextBox t \n      Height          =   360\n      Left            =   600\n"
         "      TabIndex        =   0\n      Top             =   600\n      Width           =   "
         "1200\n"
         "   End\n"
         "   Begin VB.Frame f \n      Height          =   1800\n      Left            =   600\n"
         "      TabIndex        =   1\n      Top             =   1440\n      Width           =   "
         "3000\n"
         "      Begin VB.CommandButton cmd \n         Height          =   480\n"
         "         Left            =   240\n         TabIndex        =   2\n"
         "         Top             =   360\n         Width           =   960\n      End\n   End\n"
         "   Begin NoLib.Thing thg \n      Height          =   600\n      Left            =   "
         "3900\n"
         "      Top             =   600\n      Width           =   900\n      Zoom            =   "
         "3\n"
         "   End\n";
}

class DesignerWindow : public testing::Test {
 protected:
  DesignerWindow() {
    OleInitialize(nullptr);
    const std::filesystem::path own(com::PathOf(nullptr));
    classes_.AddModule((own.parent_path() / L"qrnbt350.ocx").wstring());
    std::ofstream(folder_.Path("form.frm"), std::ios::binary)
        << FormWith(Begun(), "Private Sub cmd_Click()\n    Print 1\nEnd Sub\n");
  }
  ~DesignerWindow() override { OleUninitialize(); }

  // Every control that has a place lies there on the screen.
  static void ExpectShown(DesignWindow& window) {
    const Design& design = window.design();
    for (const ControlId id : design.All()) {
      const host::FormControl* live = window.surface().Live(id);
      ASSERT_TRUE(live) << design.Name(id);
      if (!HasPlace(design, id)) continue;
      const Place place = PlaceOf(design, id);
      const RECT shown = live->Place();
      EXPECT_EQ(shown.left, host::ToPixels(place.left)) << design.Name(id);
      EXPECT_EQ(shown.top, host::ToPixels(place.top)) << design.Name(id);
    }
  }

  TempFolder folder_;
  host::ModuleClasses classes_;
  const uint32_t seed_ = Seed();
  std::mt19937 random_{seed_};
};

TEST_F(DesignerWindow, GivesTheFileBackWhenAllIsUndoneAndTheSameWhenItIsRedone) {
  std::printf("seed %u\n", static_cast<unsigned>(seed_));
  std::fflush(stdout);
  SCOPED_TRACE("seed " + std::to_string(seed_));
  const BoxAnswerer answerer;
  DesignWindow window(classes_, {form::Language::Japanese, false});
  window.Open(folder_.Path("form.frm"));
  window.Show();
  WindowActions actions(window, [this](uint32_t limit) { return random_() % limit; });
  Watchdog watchdog(seed_, actions);
  const std::string opened = Actions::Saved(window.design());
  const int count = static_cast<int>(Setting("QRN_ACTIONS", 500));
  for (int action = 0; action < count; ++action) {
    watchdog.OnAction(action);
    actions.DoOne();
    if (action % 25 == 0) ExpectShown(window);
    ASSERT_FALSE(HasFailure()) << "after action " << action << ", " << actions.doing();
  }
  actions.GiveUpTyping();
  Design& design = window.design();
  const auto walk = [&](WORD command, bool (Design::*can)() const) {
    for (size_t steps = design.history().StepCount(); steps > 0 && (design.*can)(); --steps) {
      watchdog.OnAction(count);
      actions.Command(command);
    }
    ExpectShown(window);
  };
  walk(kEditRedo, &Design::CanRedo);
  const std::string done = Actions::Saved(design);
  EXPECT_GT(design.history().StepCount(), static_cast<size_t>(count / 10));
  walk(kEditUndo, &Design::CanUndo);
  EXPECT_EQ(Actions::Saved(design), opened);
  EXPECT_FALSE(design.IsDirty());
  walk(kEditRedo, &Design::CanRedo);
  EXPECT_EQ(Actions::Saved(design), done);
}

// By the bar and by keys, as far as something of the form and of the properties is left.
TEST_F(DesignerWindow, GivesThePropertiesTheWidthThatIsWanted) {
  DesignWindow window(classes_, {form::Language::Japanese, false});
  window.Open(folder_.Path("form.frm"));
  window.Show();
  WindowActions actions(window, [](uint32_t) { return 0u; });
  actions.Pump();
  const auto width = [](HWND part) {
    RECT place{};
    GetWindowRect(part, &place);
    return static_cast<int>(place.right - place.left);
  };
  HWND properties = window.properties().Window();
  const int before = width(properties);
  actions.DragSplitter(-50);
  EXPECT_EQ(width(properties), before + 50);
  actions.Command(kViewNarrower);
  EXPECT_LT(width(properties), before + 50);
  actions.DragSplitter(-5000);
  EXPECT_GT(width(window.surface().Window()), 100);
  EXPECT_GT(width(properties), before);
  actions.DragSplitter(5000);
  EXPECT_GT(width(properties), 100);
  EXPECT_LT(width(properties), before);
}

}  // namespace
}  // namespace qrn::test
