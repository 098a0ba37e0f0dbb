// What many controls leave behind: nothing.

#include "Counters.h"
#include "LiveBlocks.h"
#include "SampleFixture.h"
#include "SavedBytes.h"
#include "ole/SystemGuid.h"

namespace qrn::test {
namespace {

long long Windows() {
  long long count = 0;
  const auto each = [](HWND, LPARAM at) -> BOOL {
    ++*reinterpret_cast<long long*>(at);
    return TRUE;
  };
  EnumChildWindows(TheForm(), each, reinterpret_cast<LPARAM>(&count));
  return count;
}

// A control through its whole life: sited, loaded, active, drawn, called, heard, closed.
void LiveAndDie() {
  const auto control = Com<IUnknown>::Take(&(new Sample)->Inner());
  const auto object = Query<IDispatch>(control);
  TestSite site;
  site.RunTime();
  EventSink sink;
  {
    const Connection connection(control.get(), AsGuid(kSampleTable.eventsId), &sink);
    ASSERT_EQ(site.Host(control.get(), OLEIVERB_UIACTIVATE), S_OK);
    const Variant name(Bstr(L"somebody"));
    Put(object.get(), L"Name", {*name.get()});
    Put(object.get(), L"BackColor", {Long(0x123456)});
    const CallResult font = Get(object.get(), L"Font");
    Put(object.get(), L"Font", {*font.value.get()});
    CallMethod(object.get(), L"Ring");
    ASSERT_EQ(LoadFrom(control.get(), Saved(control.get())), S_OK);
  }
  site.Unhost();
}

TEST(LeakTest, HundredsOfControlsLeaveNothing) {
  SetOaNoCache();
  for (int i = 0; i < 3; ++i) LiveAndDie();  // what is kept once is kept now
  static TaskBlocks task;                    // as long as a block is left that it has seen
  const long long blocks = LiveBlocks();
  const long long gdi = DrawingObjects();
  const long long windows = Windows();
  const int destroyed = Sample::destroyed;
  for (int i = 0; i < 300; ++i) LiveAndDie();
  EXPECT_EQ(Sample::destroyed - destroyed, 300);
  EXPECT_EQ(LiveBlocks() - blocks, 0);
  EXPECT_LE(task.live, kSystemsOwn);
  CoRevokeMallocSpy();
  EXPECT_LE(DrawingObjects() - gdi, kSystemsOwn);
  EXPECT_EQ(Windows() - windows, 0);
  EXPECT_TRUE(ModuleIsIdle());
}

}  // namespace
}  // namespace qrn::test
