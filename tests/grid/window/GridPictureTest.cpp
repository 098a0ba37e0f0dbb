// How grids look, beside pictures that were looked at.
#include "GridFixture.h"
#include "Pictures.h"

namespace qrn::test {
namespace {

using Puts = void (*)(HostedControl& grid);

void At(HostedControl& grid, const wchar_t* name, int32_t index, VARIANT value) {
  EXPECT_EQ(Put(grid.object(), name, {Long(index), value}).result, S_OK);
}

struct Look {
  const char* name;
  Puts before;  // the grid is shown
  Puts after;
};

const Look kLooks[] = {
    {"3d", [](HostedControl&) {}, [](HostedControl&) {}},
    {"flat", [](HostedControl& grid) { grid.Set(L"Appearance", Short(0)); }, [](HostedControl&) {}},
    {"bare",
     [](HostedControl& grid) {
       grid.Set(L"Appearance", Short(0));
       grid.Set(L"BorderStyle", Long(0));
     },
     [](HostedControl&) {}},
    {"no-lines", [](HostedControl& grid) { grid.Set(L"GridLines", Bool(false)); },
     [](HostedControl&) {}},
    {"wide-band",
     [](HostedControl& grid) {
       grid.Set(L"Rows", Long(5));
       grid.Set(L"FixedRows", Long(2));
       grid.Set(L"Cols", Long(5));
       grid.Set(L"FixedCols", Long(2));
     },
     [](HostedControl&) {}},
    {"aligned", [](HostedControl& grid) { grid.Set(L"AlignFixedCells", Bool(true)); },
     [](HostedControl& grid) {
       At(grid, L"TextAlign", 1, Short(1));
       At(grid, L"TextAlign", 2, Short(2));
     }},
    {"selection", [](HostedControl& grid) { grid.Set(L"HighLight", Bool(true)); },
     [](HostedControl& grid) {
       grid.Set(L"SelStartRow", Long(2));
       grid.Set(L"SelEndRow", Long(3));
       grid.Set(L"SelStartCol", Long(1));
       grid.Set(L"SelEndCol", Long(2));
     }},
    {"both-bars",
     [](HostedControl& grid) {
       grid.Set(L"Rows", Long(40));
       grid.Set(L"Cols", Long(12));
     },
     [](HostedControl&) {}},
    {"cut-texts", [](HostedControl& grid) { grid.Set(L"GridLineWidth", Long(3)); },
     [](HostedControl& grid) {
       grid.Set(L"Row", Long(3));
       grid.Set(L"Col", Long(2));
       grid.Set(L"Text", Text(L"春はあけぼのやうやう白くなりゆく"));
       At(grid, L"RowHeight", 2, Long(600));
     }},
};

class Looks : public Grids, public ::testing::WithParamInterface<Look> {};

TEST_P(Looks, IsAsItsPicture) {
  Make();
  GetParam().before(*host_);
  ASSERT_EQ(host_->Show(), S_OK);
  GetParam().after(*host_);
  SetFocus(TheForm());
  RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  EXPECT_EQ(CompareWithPicture(window(), GetParam().name), "");
}

INSTANTIATE_TEST_SUITE_P(Grid, Looks, ::testing::ValuesIn(kLooks), [](const auto& test) {
  std::string name = test.param.name;
  std::erase(name, '-');
  return name;
});

}  // namespace
}  // namespace qrn::test
