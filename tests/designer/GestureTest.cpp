// Presses of the mouse on a form: what they select, move, size and draw.
#include <gtest/gtest.h>

#include "host/designer/model/Gesture.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr int32_t kReach = 60;

std::string Piece(const std::string& kindAndName, const Place& place,
                  const std::string& inner = {}) {
  const auto line = [](const char* property, int32_t value) {
    return std::string("      ") + property + " = " + std::to_string(value) + "\n";
  };
  return "   Begin VB." + kindAndName + " \n" + line("Height", place.height) +
         line("Left", place.left) + line("TabIndex", 0) + line("Top", place.top) +
         line("Width", place.width) + inner + "   End\n";
}

// A frame with a button in it, and a text box beside it.
std::unique_ptr<Design> Card() {
  const std::string button = Piece("CommandButton b", {240, 240, 600, 360});
  return Designed(FormWith("   ClientHeight = 3000\n   ClientWidth = 6000\n" +
                           Piece("Frame f", {600, 600, 1800, 1800}, button) +
                           Piece("TextBox t", {3000, 600, 1200, 300})));
}

std::string Selected(const Design& design) {
  std::string names;
  for (const ControlId id : design.selection()) names += design.Name(id);
  return names;
}

struct PressCase {
  const char* what;
  const char* selected;  // names before
  Point from, to;
  Held held;
  const char* after;  // names selected
  const char* steps;  // what the design tells that it can undo
  Place text;         // of t, on the form
};

constexpr Held kPlain, kShift{true, false}, kCtrl{false, true};
constexpr Place kText{3000, 600, 1200, 300}, kMoved{3240, 600, 1200, 300},
    kSized{3000, 600, 1560, 300};

const PressCase kPresses[] = {
    {"a click selects", "", 3100, 700, 3100, 700, kPlain, "t", "", kText},
    {"the innermost", "", 900, 900, 900, 900, kPlain, "b", "", kText},
    {"a click beside all selects the form", "t", 100, 100, 100, 100, kPlain, "F", "", kText},
    {"Ctrl adds", "b", 3100, 700, 3100, 700, kCtrl, "bt", "", kText},
    {"Shift takes away", "bt", 3100, 700, 3100, 700, kShift, "b", "", kText},
    {"a click among several makes it the primary one", "tb", 3100, 700, 3100, 700, kPlain, "bt", "",
     kText},
    {"a drag moves to the grid", "", 3100, 700, 3290, 700, kPlain, "t", "Move", kMoved},
    {"with Ctrl beside it", "", 3100, 700, 3290, 700, kCtrl, "t", "", kText},
    {"a shaking hand moves nothing", "", 3100, 700, 3140, 740, kPlain, "t", "", kText},
    {"a handle sizes", "t", 4200, 750, 4570, 750, kPlain, "t", "Size", kSized},
    {"not of what is not selected", "", 4200, 750, 4570, 750, kPlain, "F", "", kText},
    {"a band selects what it touches", "", 2700, 300, 3100, 700, kPlain, "t", "", kText},
    {"with Ctrl within a frame, beside what is selected", "t", 620, 620, 1000, 1000, kCtrl, "tb",
     "", kText},
};

TEST(Gestures, DoWhatTheMouseSays) {
  for (const PressCase& given : kPresses) {
    const auto design = Card();
    const Grid grid;
    Ids ids;
    for (const char* name = given.selected; *name; ++name) {
      ids.push_back(IdOf(*design, std::string(1, *name)));
    }
    design->Select(ids);
    Gesture gesture(*design, grid);
    gesture.Press(given.from, given.held, kReach);
    if (given.from != given.to) gesture.To(given.to, given.held);
    EXPECT_FALSE(gesture.Release()) << given.what;
    EXPECT_EQ(Selected(*design), given.after) << given.what;
    EXPECT_EQ(design->UndoName(Language::English), given.steps) << given.what;
    EXPECT_EQ(PlaceOnForm(*design, IdOf(*design, "t")), given.text) << given.what;
  }
}

struct DrawCase {
  const char* what;
  Point from, to;
  bool free;  // Ctrl is held
  const char* container;
  Place place;  // in it
};

const DrawCase kDrawn[] = {
    {"on the form", 3010, 1210, 4190, 1790, false, "F", {3000, 1200, 1200, 600}},
    {"from the lower right corner", 4190, 1790, 3010, 1210, false, "F", {3000, 1200, 1200, 600}},
    {"beside the grid", 3010, 1210, 4190, 1790, true, "F", {3010, 1210, 1180, 580}},
    {"in a frame, whose corner the grid counts from",
     1330,
     1330,
     1810,
     1690,
     false,
     "f",
     {720, 720, 480, 360}},
    {"over a button, which holds nothing", 900, 900, 1380, 1380, false, "f", {360, 360, 480, 480}},
    {"a click has the usual size", 3010, 1210, 3010, 1210, false, "F", {3000, 1200, 1215, 495}},
    {"so has a stroke", 3010, 1210, 4190, 1210, false, "F", {3000, 1200, 1215, 495}},
};

TEST(Gestures, DrawWithATool) {
  for (const DrawCase& given : kDrawn) {
    const auto design = Card();
    const Grid grid;
    Gesture gesture(*design, grid);
    gesture.PressWith({"VB", "CommandButton"}, given.from);
    if (given.from != given.to) gesture.To(given.to, {false, given.free});
    ControlId added = 0;
    ASSERT_FALSE(gesture.Release(&added)) << given.what;
    ASSERT_NE(added, 0u) << given.what;
    EXPECT_EQ(design->Name(design->Container(added)), given.container) << given.what;
    EXPECT_EQ(PlaceOf(*design, added), given.place) << given.what;
  }
}

TEST(Gestures, KeepTheSizeOfWhatShowsNothing) {
  const auto design = Card();
  const Grid grid;
  Gesture gesture(*design, grid);
  gesture.PressWith({"LIB", "Source"}, {3000, 1200});
  gesture.To({5000, 2500}, {});
  ControlId added = 0;
  ASSERT_FALSE(gesture.Release(&added));
  const ClassInfo* info = Classes().Find("LIB", "Source");
  EXPECT_EQ(PlaceOf(*design, added), (Place{3000, 1200, info->width, info->height}));
}

// Each into the middle of what is selected, none over the one before.
TEST(ToolsWithoutAPlace, GoToTheMiddle) {
  const auto design = Card();
  const Grid grid;
  const Tool tool{"VB", "Label"};
  const NewControl first = InTheMiddle(*design, tool, grid);
  ASSERT_FALSE(AddControl(*design, first));
  design->Select({design->form()});
  const NewControl second = InTheMiddle(*design, tool, grid);
  EXPECT_EQ(second.place.left, first.place.left + grid.width);
  EXPECT_EQ(second.place.top, first.place.top + grid.height);
  design->Select({IdOf(*design, "b")});
  EXPECT_EQ(InTheMiddle(*design, tool, grid).container, IdOf(*design, "f"));
}

}  // namespace
}  // namespace qrn::test
