// Where columns and rows lie, and what lies at a place.
#include <gtest/gtest.h>

#include "PlayedScreen.h"

namespace qrn::test {
namespace {

// Sizes 50 30 20 40 10, one fixed, from track 2 on: fixed 0-50, then 50-70, 70-110, 110-120.
struct Axis : ::testing::Test {
  void SetUp() override {
    ASSERT_TRUE(sizes_.Make(5));
    const int32_t px[] = {50, 30, 20, 40, 10};
    for (int32_t i = 0; i < 5; ++i) sizes_.Set(i, px[i]);
  }
  static std::string Show(const std::vector<PlacedTrack>& tracks) {
    std::string shown;
    for (const PlacedTrack& each : tracks) {
      shown += std::to_string(each.index) + ":" + std::to_string(each.span.start) + "-" +
               std::to_string(each.span.end) + " ";
    }
    return shown;
  }

  PixelSizes sizes_{25};
  GridAxis axis_{&sizes_, 5, 1, 2, 50};
};

TEST_F(Axis, ShowsWhatStartsBeforeTheLimit) {
  EXPECT_EQ(Show(axis_.ShownFixed(200)), "0:0-50 ");
  EXPECT_EQ(Show(axis_.ShownScrolling(200)), "2:50-70 3:70-110 4:110-120 ");
  EXPECT_EQ(Show(axis_.ShownScrolling(111)), "2:50-70 3:70-110 4:110-120 ");
  EXPECT_EQ(Show(axis_.ShownScrolling(110)), "2:50-70 3:70-110 ");
  EXPECT_EQ(Show(axis_.ShownScrolling(50)), "");
  EXPECT_EQ(Show(axis_.ShownFixed(0)), "");
  sizes_.Set(3, 0);
  EXPECT_EQ(Show(axis_.ShownScrolling(200)), "2:50-70 4:70-80 ");
}

TEST_F(Axis, FindsWhatLiesAtAPlace) {
  const struct {
    int32_t place, fixed, scrolling, border;
  } cases[] = {{-1, -1, -1, -1}, {0, 0, -1, -1},   {48, 0, -1, -1},  {49, 0, -1, 0},
               {50, -1, 2, 0},   {51, -1, 2, 0},   {52, -1, 2, -1},  {69, -1, 2, 2},
               {70, -1, 3, 2},   {71, -1, 3, 2},   {108, -1, 3, -1}, {109, -1, 3, 3},
               {119, -1, 4, 4},  {120, -1, -1, 4}, {121, -1, -1, 4}, {122, -1, -1, -1}};
  for (const auto& row : cases) {
    EXPECT_EQ(axis_.FixedAt(row.place), row.fixed) << row.place;
    EXPECT_EQ(axis_.ScrollingAt(row.place), row.scrolling) << row.place;
    EXPECT_EQ(axis_.BorderAt(row.place), row.border) << row.place;
  }
}

// Nobody sums sixty thousand heights to draw ten rows.
TEST(AxisOfManyTracks, WalksEndBehindTheLimit) {
  PixelSizes sizes(20);
  const GridAxis axis{&sizes, INT32_MAX, 1, 1, 20};
  EXPECT_EQ(axis.ShownScrolling(100).size(), 4u);
  EXPECT_GT(axis.Place(INT32_MAX - 1, 100).start, 100);
  EXPECT_GT(axis.End(100), 100);
  EXPECT_EQ(axis.BorderAt(1000), 49);
  EXPECT_EQ(axis.ScrollingAt(1000), 50);
  EXPECT_FALSE(axis.IsInView(INT32_MAX - 1, 100));
}

}  // namespace
}  // namespace qrn::test
