// What many controls leave behind: nothing.
#include <gtest/gtest.h>

#include "LiveBlocks.h"
#include "SampleFixture.h"

// Of the system's oleaut32: texts are freed at once from then on.
extern "C" void WINAPI SetOaNoCache(void);

namespace qrn::test {
namespace {

// Counts the blocks of the task allocator and of texts. A block that a later spy did not see made
// counts for nothing.
class TaskBlocks final : public Counted<IMallocSpy> {
 public:
  TaskBlocks() { CoRegisterMallocSpy(this); }
  long long live = 0;

  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size; }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    live += block ? 1 : 0;
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override {
    live -= block && spied ? 1 : 0;
    return block;
  }
  STDMETHODIMP_(void) PostFree(BOOL) override {}
  STDMETHODIMP_(SIZE_T)
  PreRealloc(void* block, SIZE_T size, void** next, BOOL spied) override {
    live += !block ? 1 : size == 0 && spied ? -1 : 0;
    *next = block;
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int yes) override { return yes; }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}
};

// Objects of the drawing system. Where the system does not count them they are counted in the
// process's own table: 65,536 entries of 24 bytes, the type in the 16 bits at 14.
long long GdiObjects() {
  if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return counted;
  const auto* environment = reinterpret_cast<const uint8_t*>(__readgsqword(0x60));
  const auto* table = *reinterpret_cast<const uint8_t* const*>(environment + 0xF8);
  long long used = 0;
  for (int i = 0; table && i < 65536; ++i) {
    used += *reinterpret_cast<const uint16_t*>(table + i * 24 + 14) != 0;
  }
  return used;
}

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
    Com<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    Query<IPersistStreamInit>(control)->Save(stream.get(), TRUE);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    ASSERT_EQ(Query<IPersistStreamInit>(control)->Load(stream.get()), S_OK);
  }
  site.Unhost();
}

TEST(LeakTest, AThousandControlsLeaveNothing) {
  SetOaNoCache();
  for (int i = 0; i < 3; ++i) LiveAndDie();  // what is kept once is kept now
  static TaskBlocks task;                    // as long as a block is left that it has seen
  const long long blocks = LiveBlocks();
  const long long gdi = GdiObjects();
  const long long windows = Windows();
  const int destroyed = Sample::destroyed;
  for (int i = 0; i < 1000; ++i) LiveAndDie();
  EXPECT_EQ(Sample::destroyed - destroyed, 1000);
  EXPECT_EQ(LiveBlocks() - blocks, 0);
  EXPECT_EQ(task.live, 0);
  CoRevokeMallocSpy();
  EXPECT_EQ(GdiObjects() - gdi, 0);
  EXPECT_EQ(Windows() - windows, 0);
  EXPECT_TRUE(ModuleIsIdle());
}

}  // namespace
}  // namespace qrn::test
