// Where several controls go together: alignment, sizes, spaces, steps of the arrow keys. Each
// function is one step. The last of the ids is the one that the others follow.
#pragma once

#include "host/designer/model/Design.h"
#include "host/designer/model/Places.h"

namespace qrn::designer {

// Lines that places snap to while they are dragged and that arrow keys step by.
struct Grid {
  int32_t width = 120;  // as Visual Basic begins
  int32_t height = 120;
  bool snaps = true;

  Point Snapped(Point point) const noexcept;
};

enum class Edge { Left, Centre, Right, Top, Middle, Bottom };
Refusal Align(Design& design, const Ids& ids, Edge edge);
// Each to the nearest crossing of the grid.
Refusal AlignToGrid(Design& design, const Ids& ids, const Grid& grid);

enum class Alike { Width, Height, Both };
Refusal MakeSameSize(Design& design, const Ids& ids, Alike alike);

enum class Direction { Across, Down };
// The same space between neighbours; the outer two stay. Needs three.
Refusal SpaceEvenly(Design& design, const Ids& ids, Direction direction);
// In the middle of what they lie in, together.
Refusal CentreInContainer(Design& design, const Ids& ids, Direction direction);

// Arrow keys: moves, or with Shift sizes, by so many steps of the grid (by pixels where it does
// not snap). Pressed again and again it is one step.
Refusal Nudge(Design& design, const Ids& ids, int across, int down, const Grid& grid);
Refusal Stretch(Design& design, const Ids& ids, int across, int down, const Grid& grid);

}  // namespace qrn::designer
