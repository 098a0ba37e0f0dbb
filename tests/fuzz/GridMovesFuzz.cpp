// Keys, mouse and bars of a grid of any sizes, with handlers that change it on the way. Whatever
// happens, the view and the current cell stay among the cells that there are, positions within
// their range, and no walk fails.
#include <iterator>

#include "grid/layout/GridKeys.h"
#include "grid/layout/GridMouse.h"
#include "grid/layout/GridScroll.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/grid/layout/PlayedScreen.h"

namespace qrn::test {
namespace {

class Choices : public fuzz::Input {
 public:
  using Input::Input;
  int32_t Below(int32_t limit) { return Byte() % limit; }
  // From well before the cells to well behind them.
  int32_t Place() { return Byte() * 3 - 60; }
  int32_t Size() {
    static constexpr int32_t kOdd[] = {0, 1, 2, -7, 5000, INT32_MAX};
    const int32_t byte = Byte();
    return byte < 6 ? kOdd[byte] : byte;
  }
};

class QuietScreen final : public PlayedScreen {
 public:
  using PlayedScreen::PlayedScreen;

 protected:
  void Note(const std::string&) override {}
};

class Session {
 public:
  explicit Session(Choices& choices)
      : choices_(choices), model_(2 + choices.Below(40), 2 + choices.Below(12), {64, 16}) {
    screen_.onEvent = [this](const std::string&) { Handle(); };
    screen_.usable = {choices.Place(), choices.Place()};
  }

  void Run() {
    while (!choices_.IsOver()) {
      Step();
      Check();
    }
  }

 private:
  using Act = void (*)(Session&, Choices&);

  void Step() {
    static constexpr uint32_t kKeys[] = {kKeyReturn, kKeyLeft,   kKeyUp, kKeyRight,
                                         kKeyDown,   kKeyDelete, 65};
    static constexpr Act kSteps[] = {
        [](Session& s, Choices& c) { s.keys_.OnGridKey(kKeys[c.Below(7)]); },
        [](Session& s, Choices& c) { s.PressInEdit(kKeys[c.Below(7)]); },
        [](Session& s, Choices& c) { s.mouse_.Press(c.Place(), c.Place()); },
        [](Session& s, Choices& c) { s.mouse_.Move(c.Below(4) != 0, c.Place(), c.Place()); },
        [](Session& s, Choices&) { s.mouse_.Release(); },
        [](Session& s, Choices&) { s.Scroll(); },
        [](Session& s, Choices& c) { s.model_.SetColWidthPx(c.Below(17), c.Size()); },
        [](Session& s, Choices& c) { s.model_.SetRowHeightPx(c.Below(65), c.Size()); },
        [](Session& s, Choices&) { s.Handle(); },
    };
    kSteps[choices_.Below(std::size(kSteps))](*this, choices_);
  }

  void PressInEdit(uint32_t key) {
    const uint32_t length = static_cast<uint32_t>(choices_.Below(3));
    const uint32_t caret = static_cast<uint32_t>(choices_.Below(3));
    keys_.OnEditKey(key, {caret, caret, length});
  }

  void Scroll() {
    const bool across = choices_.Below(2) == 0;
    const auto notice = static_cast<uint32_t>(choices_.Below(6));
    scroll_.OnNotice(across ? GridDirection::Horizontal : GridDirection::Vertical, notice,
                     choices_.Place(), {1, across ? model_.Cols - model_.FixedCols : model_.Rows});
  }

  // What a handler may do to the grid; puts that are refused change nothing.
  void Handle() {
    static constexpr Act kPuts[] = {
        [](Session& s, Choices& c) { s.model_.PutRows(c.Below(70) - 2); },
        [](Session& s, Choices& c) { s.model_.PutCols(c.Below(20) - 2); },
        [](Session& s, Choices& c) { s.model_.PutFixedRows(c.Below(6) - 1); },
        [](Session& s, Choices& c) { s.model_.PutFixedCols(c.Below(4) - 1); },
        [](Session& s, Choices& c) { s.model_.Row = c.Below(70) - 2; },
        [](Session& s, Choices& c) { s.model_.Col = c.Below(20) - 2; },
        [](Session& s, Choices& c) { s.model_.AllowUserResizing = c.Below(5); },
        [](Session& s, Choices& c) {
          s.model_.AllowUpdate = s.model_.AllowDelete = static_cast<int16_t>(-c.Below(2));
        },
        [](Session&, Choices&) {},
    };
    kPuts[choices_.Below(std::size(kPuts))](*this, choices_);
    // Programs put the current cell and the counts where they like; what follows goes on from
    // there.
    givenRow_ = model_.Row;
    givenCol_ = model_.Col;
  }

  void Check() {
    const GridView view(model_, screen_.usable);
    for (const GridAxis* axis : {&view.rows, &view.columns}) {
      const int32_t limit = axis == &view.rows ? screen_.usable.height : screen_.usable.width;
      int32_t before = -1;
      for (const PlacedTrack& each : axis->ShownScrolling(limit)) {
        fuzz::Require(each.index > before && each.index < axis->count,
                      "a row that is not there is shown");
        fuzz::Require(each.span.start < limit && each.span.start < each.span.end,
                      "a row out of place");
        before = each.index;
      }
    }
    ExpectAmong(model_.Row, givenRow_, model_.FixedRows, model_.Rows, "the current row");
    ExpectAmong(model_.Col, givenCol_, model_.FixedCols, model_.Cols, "the current column");
  }

  // Not further out than where a program has put it.
  static void ExpectAmong(int32_t index, int32_t given, int32_t fixed, int32_t count,
                          const char* what) {
    fuzz::Require(
        index >= std::min({given, fixed, 0}) && index <= std::max({given, fixed, count - 1}), what);
  }

  Choices& choices_;
  SizedModel model_;
  QuietScreen screen_{model_};
  GridKeys keys_{model_, screen_};
  GridMouse mouse_{model_, screen_};
  GridScroll scroll_{model_, screen_};
  int32_t givenRow_ = 1;
  int32_t givenCol_ = 1;
};

}  // namespace
}  // namespace qrn::test

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qrn::test::Choices choices(data, std::min<size_t>(size, 2000));
  qrn::test::Session(choices).Run();
  return 0;
}
