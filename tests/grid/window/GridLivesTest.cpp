// Grids saved and loaded, and grids that come and go by the thousand.
#include "GridFixture.h"
#include "com/Module.h"
#include "tests/ole/LiveBlocks.h"

namespace qrn::test {
namespace {

struct Saved {
  const wchar_t* name;
  VARIANT value;
};
// Every property that a form keeps, each other than at the start.
std::vector<Saved> AllSaved() {
  return {{L"DbListSource", Text(L"Db1")},
          {L"DbListTable", Text(L"People")},
          {L"DbListFields", Text(L"Code,Name,Town")},
          {L"DbConditions", Text(L"@Code > 1")},
          {L"Rows", Long(30)},
          {L"Cols", Long(9)},
          {L"FixedCols", Long(2)},
          {L"FixedRows", Long(3)},
          {L"DbCompareCase", Long(1)},
          {L"DbExOperation", Long(2)},
          {L"DbLeaveResults", Bool(true)},
          {L"DbLocks", Long(3)},
          {L"DbMaxRecords", Long(7)},
          {L"DbSkipRecords", Short(-1)},
          {L"DbUpdateOption", Long(0)},
          {L"GridLines", Bool(false)},
          {L"HighLight", Bool(true)},
          {L"FillStyle", Long(1)},
          {L"GridLineWidth", Long(3)},
          {L"SetColNames", Bool(false)},
          {L"SetRecordNumbers", Bool(false)},
          {L"DbListIndex", Text(L"ByName")},
          {L"ScrollBars", Long(2)},
          {L"AllowUpdate", Bool(true)},
          {L"AllowDelete", Bool(true)},
          {L"AlignFixedCells", Bool(true)},
          {L"SetColWidth", Bool(true)},
          {L"AllowUserResizing", Long(1)},
          {L"Appearance", Short(0)},
          {L"BackColor", Long(0x00AABBCC)},
          {L"BorderStyle", Long(0)},
          {L"ForeColor", Long(0x00112233)},
          {L"MousePointer", Long(11)},
          {L"TabStop", Bool(false)},
          {L"Enabled", Bool(false)}};
}

class Lives : public Grids {
 protected:
  std::string All(HostedControl& from) {
    std::string all;
    for (const Saved& each : AllSaved()) all += from.Value(each.name) + "\n";
    return all;
  }
  // Into a fresh grid and read there.
  std::string Through(const com::Com<IStream>& stream) {
    Hosted<CQRNGrid> loaded(L"grd2");
    const auto persist = com::Query<IPersistStreamInit>(loaded.object());
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    EXPECT_EQ(persist->Load(stream.get()), S_OK);
    return All(loaded);
  }
  com::Com<IStream> Save(IDispatch* grid) {
    com::Com<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    const auto persist = com::Query<IPersistStreamInit>(grid);
    EXPECT_EQ(persist->Save(stream.get(), TRUE), S_OK);
    return stream;
  }
};

TEST_F(Lives, EveryPersistedPropertySurvives) {
  Make(false);
  for (const Saved& each : AllSaved()) Set(each.name, each.value);
  const std::string before = All(*host_);
  EXPECT_EQ(Through(Save(host_->object())), before);
}

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
    const auto stream = Save(host_->object());
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    Hosted<CQRNGrid> loaded(L"grd2");
    EXPECT_EQ(com::Query<IPersistStreamInit>(loaded.object())->Load(stream.get()), S_OK) << size;
    EXPECT_EQ(loaded.Value(L"FixedCols"), "ok I4:0");
  }
}

// Objects of this process that drawings are made of, as far as the system tells.
DWORD DrawingObjects() {
  const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  if (counted != 0) return counted;
  DWORD found = 0;
  for (UINT_PTR index = 0; index < 0x10000; ++index) {
    if (GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0) ++found;
  }
  return found;
}

TEST_F(Lives, AThousandFilledGridsLeaveNothing) {
  const auto once = [&] {
    MakeShown("ud");
    UpdateWindow(window());
    host_.reset();
  };
  for (int i = 0; i < 50; ++i) once();
  const DWORD drawn = DrawingObjects();
  const long long blocks = LiveBlocks();
  const long objects = com::liveObjects;
  for (int i = 0; i < 1000; ++i) once();
  EXPECT_EQ(com::liveObjects, objects);
  EXPECT_EQ(DrawingObjects(), drawn);
  // What others keep for their next use comes and goes; a block a grid would be a thousand.
  EXPECT_LE(LiveBlocks(), blocks + 100);
  EXPECT_EQ(GetWindow(TheForm(), GW_CHILD), nullptr);
}

}  // namespace
}  // namespace qrn::test
