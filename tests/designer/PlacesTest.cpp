// Where controls lie, and how mouse, keys and commands move them.
#include <gtest/gtest.h>

#include <functional>

#include "host/designer/model/Arrange.h"
#include "host/designer/model/Drag.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

std::string Control(const std::string& name, const Place& place, const std::string& inner = {}) {
  const auto line = [](const char* property, int32_t value) {
    return std::string("      ") + property + " = " + std::to_string(value) + "\n";
  };
  return "   Begin VB.Frame " + name + " \n" + line("Height", place.height) +
         line("Left", place.left) + line("Top", place.top) + line("Width", place.width) + inner +
         "   End\n";
}

std::string Text(const Place& place) {
  return std::to_string(place.left) + "," + std::to_string(place.top) + " " +
         std::to_string(place.width) + "x" + std::to_string(place.height);
}

// Three side by side; the last holds a fourth.
std::unique_ptr<Design> Row() {
  return Designed(
      FormWith(Control("a", {120, 240, 600, 300}) + Control("b", {1200, 360, 900, 450}) +
               Control("c", {3000, 600, 1500, 1500}, Control("d", {300, 300, 600, 600}))));
}

class Places : public testing::Test {
 protected:
  Ids Named(const std::string& names) {
    Ids ids;
    for (const char name : names) ids.push_back(IdOf(*design_, std::string(1, name)));
    return ids;
  }
  // Those that no longer lie as Row() puts them: "a 120,240 600x300; b ...".
  std::string Changed() {
    const auto before = Row();
    std::string text;
    for (const char* name : {"a", "b", "c", "d"}) {
      const std::string place = Text(PlaceOf(*design_, IdOf(*design_, name)));
      if (place == Text(PlaceOf(*before, IdOf(*before, name)))) continue;
      text += (text.empty() ? "" : "; ") + std::string(name) + " " + place;
    }
    return text;
  }

  std::unique_ptr<Design> design_ = Row();
};

TEST(PlacesInScales, AreTwipsWhateverTheFormCountsIn) {
  struct Case {
    const char *mode, *place;
    const char* moved;  // Left and Top lines after moving by 300, 450 twips
  } const cases[] = {
      {"1", "10,5 20x2", "310|455"},   {"2", "200,100 400x40", "25|27.5"},
      {"3", "150,75 300x30", "30|35"}, {"5", "14400,7200 28800x2880", "10.208|5.313"},
      {"77", "10,5 20x2", "310|455"},
  };
  for (const Case& row : cases) {
    const auto design = Designed(FormWith(std::string("   ScaleMode       =   ") + row.mode +
                                          "\n   Begin VB.Label a \n      Height = 2\n      Left = "
                                          "10\n      Top = 5\n      Width = 20\n   End\n"));
    const ControlId id = IdOf(*design, "a");
    EXPECT_EQ(Text(PlaceOf(*design, id)), row.place) << row.mode;
    Place place = PlaceOf(*design, id);
    place.left += 300;
    place.top += 450;
    Step step(*design, TextId::MoveControls);
    EXPECT_FALSE(PutPlace(*design, id, place));
    const std::string moved =
        LineValue(*design, "a", "Left") + "|" + LineValue(*design, "a", "Top");
    EXPECT_EQ(moved, row.moved) << row.mode;
  }
}

TEST(PlacesInScales, CountAUsersOwnByTheFormsSize) {
  const auto design = Designed(FormCases()[2].bytes);
  const Place place = PlaceOf(*design, IdOf(*design, "box1"));
  EXPECT_EQ(place.left, 612);  // 10.25 of 100.5 that are 6000 twips wide
  EXPECT_EQ(place.top, 300);   // 5 of 50 that are 3000 twips high
}

TEST(PlacesInScales, StayNumbersInADamagedFile) {
  const auto design =
      Designed(FormWith("   Begin VB.Label x \n      Left = 1e300\n      Top = "
                        "-2147483647\n      Width = -5\n      Height = 1e9\n   "
                        "End\n"));
  EXPECT_EQ(Text(PlaceOf(*design, IdOf(*design, "x"))), "245745,-245745 -5x245745");
  EXPECT_EQ(ControlAt(*design, {5, 5}), design->form());
}

TEST_F(Places, TellWhatLiesUnderThePoint) {
  struct Case {
    Point point;
    const char* name;
  } const cases[] = {
      {{120, 240}, "a"}, {{719, 539}, "a"},   {{720, 240}, "F"},
      {{0, 0}, "F"},     {{3299, 899}, "c"},  {{3300, 900}, "d"},
      {{9999, 0}, "F"},  {{3000, 2099}, "c"}, {{3000, 2100}, "F"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(design_->Name(ControlAt(*design_, row.point)), row.name);
  }
}

TEST_F(Places, AreArrangedByTheLastSelected) {
  struct Case {
    const char* what;
    std::function<Refusal(Design&, const Ids&)> act;
    const char *names, *changed;
  };
  const auto align = [](Edge edge) {
    return [edge](Design& design, const Ids& ids) { return Align(design, ids, edge); };
  };
  const auto alike = [](Alike how) {
    return [how](Design& design, const Ids& ids) { return MakeSameSize(design, ids, how); };
  };
  const auto space = [](Direction how) {
    return [how](Design& design, const Ids& ids) { return SpaceEvenly(design, ids, how); };
  };
  const auto centre = [](Direction how) {
    return [how](Design& design, const Ids& ids) { return CentreInContainer(design, ids, how); };
  };
  const Case cases[] = {
      {"left", align(Edge::Left), "ab", "a 1200,240 600x300"},
      {"centre", align(Edge::Centre), "ab", "a 1350,240 600x300"},
      {"right", align(Edge::Right), "ab", "a 1500,240 600x300"},
      {"top", align(Edge::Top), "ba", "b 1200,240 900x450"},
      {"middle", align(Edge::Middle), "ba", "b 1200,165 900x450"},
      {"bottom", align(Edge::Bottom), "ba", "b 1200,90 900x450"},
      {"across containers", align(Edge::Left), "da", "d -2880,300 600x600"},
      {"same width", alike(Alike::Width), "acb", "a 120,240 900x300; c 3000,600 900x1500"},
      {"same height", alike(Alike::Height), "ab", "a 120,240 600x450"},
      {"same size", alike(Alike::Both), "cda", "c 3000,600 600x300; d 300,300 600x300"},
      {"evenly across", space(Direction::Across), "cba", "b 1410,360 900x450"},
      {"evenly down", space(Direction::Down), "abc", "b 1200,345 900x450"},
      {"two have no space to share", space(Direction::Across), "ab", ""},
      {"in the middle", centre(Direction::Across), "ab", "a 3510,240 600x300; b 4590,360 900x450"},
      {"in the middle of a frame", centre(Direction::Down), "d", "d 300,450 600x600"},
  };
  for (const Case& row : cases) {
    design_ = Row();
    EXPECT_FALSE(row.act(*design_, Named(row.names))) << row.what;
    EXPECT_EQ(Changed(), row.changed) << row.what;
    EXPECT_LE(design_->history().StepCount(), 1u) << row.what;
  }
}

TEST_F(Places, StepWithTheKeysInOneStep) {
  const Grid grid;
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(Nudge(*design_, Named("cd"), 1, -1, grid));
  EXPECT_EQ(Text(PlaceOf(*design_, IdOf(*design_, "c"))), "3360,240 1500x1500");
  EXPECT_EQ(Text(PlaceOf(*design_, IdOf(*design_, "d"))), "300,300 600x600");
  for (int i = 0; i < 9; ++i) EXPECT_FALSE(Stretch(*design_, Named("d"), -1, 1, grid));
  EXPECT_EQ(Text(PlaceOf(*design_, IdOf(*design_, "d"))), "300,300 15x1680");
  EXPECT_FALSE(Nudge(*design_, Named("a"), 1, 0, {120, 120, false}));
  EXPECT_EQ(Text(PlaceOf(*design_, IdOf(*design_, "a"))), "135,240 600x300");
  EXPECT_EQ(design_->history().StepCount(), 3u);
}

TEST(Handles, AreFoundAroundAControl) {
  const Place place{100, 100, 200, 60};
  const Point middles[kHandleCount] = {{100, 100}, {200, 100}, {300, 100}, {300, 130},
                                       {300, 160}, {200, 160}, {100, 160}, {100, 130}};
  for (int at = 0; at < kHandleCount; ++at) {
    const auto handle = static_cast<Handle>(at);
    EXPECT_EQ(HandleMiddle(place, handle), middles[at]);
    EXPECT_EQ(HandleAt(place, {middles[at].x + 10, middles[at].y - 10}, 10), handle);
  }
  EXPECT_FALSE(HandleAt(place, {150, 130}, 10));
  // Of a control too small for all of them the corners are found.
  EXPECT_EQ(HandleAt({0, 0, 15, 15}, {7, 7}, 10), Handle::TopLeft);
}

constexpr std::nullopt_t kNone = std::nullopt;

struct DragCase {
  const char *what, *names;
  std::optional<Handle> handle;
  int32_t across, down;
  bool free;
  const char *into, *changed;
};

TEST_F(Places, FollowTheMouseToTheGrid) {
  const DragCase cases[] = {
      {"one, the nearest crossing", "b", kNone, 70, 50, false, "", "b 1320,360 900x450"},
      {"without the grid", "b", kNone, 70, 50, true, "", "b 1270,410 900x450"},
      {"two keep their distance", "ab", kNone, 130, 0, false, "",
       "a 240,240 600x300; b 1320,360 900x450"},
      {"what lies in a dragged one goes along", "dc", kNone, 1000, 0, false, "",
       "c 3960,600 1500x1500"},
      {"the grid of a frame is its own", "d", kNone, 1, 1, false, "", "d 360,360 600x600"},
      {"into a frame", "a", kNone, 3000, 480, false, "c", "a 120,120 600x300"},
      {"the right side", "b", Handle::Right, 100, 999, false, "", "b 1200,360 960x450"},
      {"a corner", "b", Handle::TopLeft, -250, -130, false, "", "b 960,240 1140x570"},
      {"past the other side", "b", Handle::TopLeft, 5000, 5000, false, "", "b 2085,795 15x15"},
      {"past the left side", "b", Handle::BottomRight, -9000, -9000, false, "", "b 1200,360 15x15"},
  };
  for (const DragCase& row : cases) {
    design_ = Row();
    design_->Select(Named(row.names));
    const Point start{1500, 400};
    const Grid grid;
    Drag drag = row.handle ? Drag::Size(*design_, *row.handle, start, grid)
                           : Drag::Move(*design_, start, grid);
    drag.To({9000, 9000});
    drag.To({start.x + row.across, start.y + row.down}, row.free);
    EXPECT_EQ(design_->history().StepCount(), 0u) << row.what;
    EXPECT_FALSE(drag.Drop(*design_, IdOf(*design_, row.into))) << row.what;
    EXPECT_EQ(Changed(), row.changed) << row.what;
    EXPECT_EQ(Tree(*design_), *row.into ? "b c(a d)" : "a b c(d)") << row.what;
    EXPECT_EQ(design_->history().StepCount(), 1u) << row.what;
  }
}

TEST_F(Places, OfTheFormAreItsSizesAlone) {
  design_->Select({design_->form()});
  EXPECT_FALSE(CanPull(*design_, design_->form(), Handle::Left));
  EXPECT_TRUE(Drag::Move(*design_, {0, 0}, Grid{}).Preview().empty());
  Drag drag = Drag::Size(*design_, Handle::BottomRight, {9000, 6000}, Grid{});
  drag.To({7790, 6610});
  EXPECT_FALSE(drag.Drop(*design_));
  EXPECT_NE(
      Lines(*design_, "F")
          .find("ClientHeight = 6600|ClientWidth = 7800|ScaleHeight = 6600|ScaleWidth = 7800"),
      std::string::npos);
  EXPECT_EQ(design_->UndoName(Language::Japanese), "フォームのサイズの変更");
}

TEST_F(Places, AreSelectedByClickAndBand) {
  const auto selected = [&] {
    std::string names;
    for (const ControlId id : design_->selection()) names += design_->Name(id);
    return names;
  };
  Click(*design_, IdOf(*design_, "a"), false);
  EXPECT_EQ(selected(), "a");
  Click(*design_, IdOf(*design_, "b"), true);
  EXPECT_EQ(selected(), "ab");
  Click(*design_, IdOf(*design_, "a"), false);
  EXPECT_EQ(selected(), "ba");  // still both, the other is primary
  Click(*design_, IdOf(*design_, "b"), true);
  EXPECT_EQ(selected(), "a");
  Click(*design_, design_->form(), true);
  EXPECT_EQ(selected(), "a");
  Click(*design_, design_->form(), false);
  EXPECT_EQ(selected(), "F");
  SelectTouching(*design_, design_->form(), Between({1300, 400}, {700, 300}), false);
  EXPECT_EQ(selected(), "ab");
  SelectTouching(*design_, IdOf(*design_, "c"), {3300, 900, 1, 1}, true);
  EXPECT_EQ(selected(), "abd");
  SelectTouching(*design_, design_->form(), {0, 0, 10, 10}, false);
  EXPECT_EQ(selected(), "F");
  SelectAll(*design_);
  EXPECT_EQ(selected(), "abc");
  SelectNext(*design_, false);
  EXPECT_EQ(selected(), "d");
  SelectNext(*design_, false);
  SelectNext(*design_, false);
  EXPECT_EQ(selected(), "a");
  SelectNext(*design_, true);
  EXPECT_EQ(selected(), "F");
}

}  // namespace
}  // namespace qrn::test
