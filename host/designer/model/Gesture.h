// One press of the mouse on the form, from the button's going down to its coming up: what it
// selects, moves, sizes or draws. Places are twips of the form's client area.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/designer/model/Controls.h"
#include "host/designer/model/Drag.h"

namespace qrn::designer {

struct Held {
  bool shift = false;
  bool control = false;
};

// What the user draws with: a class of the toolbox.
struct Tool {
  std::string library;
  std::string className;
  bool operator==(const Tool&) const = default;
};

class Gesture {
 public:
  // The design and the grid outlive the gesture. Within it the design changes only by Press, which
  // selects, and by Release.
  Gesture(Design& design, const Grid& grid) : design_(design), grid_(grid) {}

  // On the form or on something there; `reach` is how far from its middle a handle is hit, and how
  // far the mouse must go before something is dragged.
  void Press(Point point, Held held, int32_t reach);
  // The same with a tool in hand.
  void PressWith(Tool tool, Point point);
  // On a handle of the primary control or of the form.
  void PressHandle(Handle handle, Point point);

  void To(Point now, Held held);
  // What the user is to see meanwhile: where things would lie, or the rubber band.
  std::vector<Place> Outlines() const;
  // One step, or none; a band selects. `*added`, which may be null, tells of a control drawn.
  Refusal Release(ControlId* added = nullptr);

 private:
  enum class Kind { None, Band, Draw, Drag };

  Place Drawn() const;
  Refusal Draw(ControlId* added);

  Design& design_;
  const Grid& grid_;
  Kind kind_ = Kind::None;
  ControlId container_ = 0;
  Tool tool_;
  std::optional<Drag> drag_;
  Point start_;
  Point now_;
  Held held_;
  int32_t reach_ = 0;
  ControlId toggled_ = 0;  // to be clicked on release unless a band was drawn
  bool moved_ = false;
};

// The container that a control drawn at a point comes into: the innermost there that holds others.
ControlId ContainerAt(const Design& design, Point onForm);

// Where a control of a class lies that is put on the form without a place being shown: at its usual
// size in the middle of what is selected if that holds others, else of what the selection lies in;
// shifted where a control lies at that very place.
NewControl InTheMiddle(const Design& design, const Tool& tool, const Grid& grid);

}  // namespace qrn::designer
