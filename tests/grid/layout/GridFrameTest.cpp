// Frame, bars and the rectangles of texts.
#include <gtest/gtest.h>

#include "PlayedScreen.h"

namespace qrn::test {
namespace {

std::string Show(GridBars bars) {
  return std::string(bars.horizontal ? "h" : "") + (bars.vertical ? "v" : "");
}

TEST(GridFrame, TakesItsDepthOffEverySide) {
  const struct {
    int32_t appearance, border, depth;
  } cases[] = {{1, 1, 2}, {1, 0, 2}, {0, 1, 1}, {0, 0, 0}, {7, 0, 2}};
  for (const auto& row : cases) EXPECT_EQ(FrameDepth(row.appearance, row.border), row.depth);
  const GridFrame bare = FrameOf({100, 60}, 2, {});
  EXPECT_EQ(bare.inner, (GridSize{96, 56}));
  EXPECT_EQ(bare.usable, bare.inner);
  EXPECT_EQ(FrameOf({100, 60}, 1, {true, false}).usable, (GridSize{98, 40}));
  EXPECT_EQ(FrameOf({100, 60}, 0, {false, true}).usable, (GridSize{82, 60}));
  EXPECT_TRUE(FrameOf({10, 60}, 2, {false, true}).usable.IsEmpty());
}

// A window of 200 by 100.
TEST(GridBarsOf, FollowTheExtentsAndTheOption) {
  const struct {
    int32_t width, height;
    const char *none, *horizontal, *vertical, *both;
  } cases[] = {
      {200, 100, "", "", "", "hv"},  // each is in the other's way
      {182, 82, "", "", "", ""},    {183, 82, "", "", "", ""},     {183, 83, "", "", "", "hv"},
      {201, 82, "", "h", "", "h"},  {201, 83, "", "h", "", "hv"},  {201, 101, "", "h", "v", "hv"},
      {182, 101, "", "", "v", "v"}, {183, 101, "", "", "v", "hv"}, {210, 82, "", "h", "", "h"},
      {0, 0, "", "", "", ""},
  };
  for (const auto& row : cases) {
    const GridSize cells{row.width, row.height};
    SCOPED_TRACE(std::to_string(row.width) + " by " + std::to_string(row.height));
    EXPECT_EQ(Show(ChooseBars(kNoBars, {200, 100}, cells)), row.none);
    EXPECT_EQ(Show(ChooseBars(1, {200, 100}, cells)), row.horizontal);
    EXPECT_EQ(Show(ChooseBars(2, {200, 100}, cells)), row.vertical);
    EXPECT_EQ(Show(ChooseBars(3, {200, 100}, cells)), row.both);
    EXPECT_EQ(Show(ChooseBars(4, {200, 100}, cells)), "");
  }
}

TEST(GridBarsOf, LieAtTheFramesEdge) {
  const GridSize window{200, 100};
  EXPECT_EQ(PlaceHorizontalBar(window, 2, {true, false}), (GridRect{2, 80, 198, 98}));
  EXPECT_EQ(PlaceHorizontalBar(window, 2, {true, true}), (GridRect{2, 80, 180, 98}));
  EXPECT_EQ(PlaceVerticalBar(window, 1, {false, true}), (GridRect{181, 1, 199, 99}));
  EXPECT_EQ(PlaceVerticalBar(window, 0, {true, true}), (GridRect{182, 0, 200, 82}));
}

TEST(VerticalRange, EndsWhereTheRowsToTheLastFit) {
  SizedModel model(11, 2);
  // 10 rows of 20 behind 20 fixed pixels; 18 are always kept for the other bar.
  const struct {
    int32_t innerHeight;
    std::optional<int32_t> last;
  } cases[] = {{98, 8}, {97, 9}, {78, 9}, {118, 7}, {237, 2}, {238, std::nullopt}, {0, 11}};
  for (const auto& row : cases) {
    EXPECT_EQ(LastVerticalPosition(RowsOf(model), row.innerHeight), row.last) << row.innerHeight;
  }
}

TEST(TextRects, AreInsideTheLinesAndMovedByTheFrame) {
  EXPECT_EQ(TextRect({50, 100}, {20, 40}, 2), (GridRect{53, 23, 102, 42}));
  EXPECT_EQ(TextRect({0, 50}, {0, 20}, 0), (GridRect{1, 1, 50, 20}));
}

}  // namespace
}  // namespace qrn::test
