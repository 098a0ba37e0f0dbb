#include "grid/layout/GridScroll.h"

#include <algorithm>

namespace qrn {
namespace {

// Where one bar stands: its position, and the first row or column that shows. The two move together
// but need not agree: ranges are set anew, bars come and go.
struct BarPlace {
  int32_t& position;
  int32_t& first;
  int32_t fixed;
  int32_t count;
};

// Whatever the position says, the view begins with a row or column that there is.
void Show(BarPlace place, int64_t first) noexcept {
  const int64_t last = std::max<int64_t>(place.fixed, int64_t{place.count} - 1);
  place.first = static_cast<int32_t>(std::clamp<int64_t>(first, place.fixed, last));
}

bool StepBack(BarPlace place, BarRange range) noexcept {
  if (place.position <= range.least) return false;
  --place.position;
  Show(place, int64_t{place.first} - 1);
  return true;
}

bool StepOn(BarPlace place, BarRange range) noexcept {
  if (place.position >= range.most) return false;
  ++place.position;
  Show(place, int64_t{place.first} + 1);
  return true;
}

bool GoTo(BarPlace place, int32_t thumb, BarRange range) noexcept {
  if (thumb < range.least || thumb > range.most) return false;
  const bool moves = thumb != place.position;
  const int32_t before = place.first;
  place.position = thumb;
  Show(place, int64_t{place.fixed} - 1 + thumb);
  return moves || place.first != before;
}

bool Move(BarPlace place, uint32_t notice, int32_t thumb, BarRange range) noexcept {
  switch (notice) {
    case kLineBack:
    case kPageBack:
      return StepBack(place, range);
    case kLineOn:
    case kPageOn:
      return StepOn(place, range);
    case kThumbDropped:
      return GoTo(place, thumb, range);
    default:
      return false;
  }
}

}  // namespace

void GridScroll::OnNotice(GridDirection direction, uint32_t notice, int32_t thumb, BarRange range) {
  const bool across = direction == GridDirection::Horizontal;
  const BarPlace place =
      across ? BarPlace{model_.hScrollPos, model_.LeftCol, model_.FixedCols, model_.Cols}
             : BarPlace{model_.vScrollPos, model_.TopRow, model_.FixedRows, model_.Rows};
  if (!Move(place, notice, thumb, range)) return;
  if (across) KeepCurrentColumnInView();
  screen_.Repaint();
  screen_.ShowBarPosition(direction);
  screen_.PlaceEdit();
}

void GridScroll::KeepCurrentColumnInView() {
  const GridView view(model_, screen_.UsableSize());
  if (!view.IsInView(model_.Row, model_.Col)) model_.Col = model_.LeftCol;
}

}  // namespace qrn
