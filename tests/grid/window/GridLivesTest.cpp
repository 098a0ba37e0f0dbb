// Grids saved and loaded, and grids that come and go by the hundred.
#include "GridFixture.h"
#include "com/Module.h"
#include "tests/ole/LiveBlocks.h"
#include "tests/ole/SavedBytes.h"
#include "tests/support/DrawingObjects.h"

namespace qrn::test {
namespace {

using Lives = Grids;

// What may be saved may be loaded: the counts come one by one.
TEST_F(Lives, SizesAtTheFixedCountOfAFreshGridLoad) {
  for (const int32_t size : {0, 1}) {
    Make(false);
    Set(L"FixedCols", Long(0));
    Set(L"FixedRows", Long(0));
    if (size == 1) {
      Set(L"Cols", Long(1));
      Set(L"Rows", Long(1));
    }
    Hosted<CQRNGrid> loaded(L"grd2");
    EXPECT_EQ(LoadFrom(loaded.object(), Saved(host_->object())), S_OK) << size;
    EXPECT_EQ(loaded.Value(L"FixedCols"), "ok I4:0");
  }
}

TEST_F(Lives, HundredsOfFilledGridsLeaveNothing) {
  const auto once = [&] {
    MakeShown("ud");
    UpdateWindow(window());
    host_.reset();
  };
  for (int i = 0; i < 50; ++i) once();
  const long long drawn = DrawingObjects();
  const long long blocks = LiveBlocks();
  const long objects = com::liveObjects;
  for (int i = 0; i < 300; ++i) once();
  EXPECT_EQ(com::liveObjects, objects);
  EXPECT_EQ(DrawingObjects(), drawn);
  // What others keep for their next use comes and goes; a block a grid would be three hundred.
  EXPECT_LE(LiveBlocks(), blocks + 100);
  EXPECT_EQ(GetWindow(TheForm(), GW_CHILD), nullptr);
}

}  // namespace
}  // namespace qrn::test
