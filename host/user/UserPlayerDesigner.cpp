// Steps in the designer: tools, and places on the form that is made there.
#include <algorithm>
#include <iterator>

#include "host/container/Text.h"
#include "host/container/Units.h"
#include "host/form/SourceText.h"
#include "host/user/StepWords.h"
#include "host/user/UserInput.h"
#include "host/user/UserPlayer.h"

namespace qrn::host {
namespace {

using form::UserStep;

// In the order of designer::Handle.
constexpr const char* kHandles[designer::kHandleCount] = {
    "topleft", "top", "topright", "right", "bottomright", "bottom", "bottomleft", "left"};

designer::Handle HandleNamed(const std::string& name) {
  const auto at = std::find_if(std::begin(kHandles), std::end(kHandles),
                               [&](const char* known) { return form::SameWord(known, name); });
  return static_cast<designer::Handle>(at - std::begin(kHandles));
}

ClickKind KindOf(const UserStep& step) {
  ClickKind kind;
  kind.twice = step.Has("twice");
  kind.right = step.Has("right");
  kind.shift = step.Has("shift");
  kind.control = step.Has("ctrl");
  return kind;
}

}  // namespace

designer::DesignWindow& UserPlayer::Designer() {
  designer::DesignWindow* window = scene_.designer();
  if (!window) Fail("no form is being designed");
  return *window;
}

POINT UserPlayer::DesignPoint(const UserStep& step, const char* x, const char* y) {
  RequireNoMessage();
  return Ask<POINT>([this, point = designer::Point{step.Number(x), step.Number(y)}] {
    return Designer().surface().ScreenPoint(point);
  });
}

void UserPlayer::OnTool(const UserStep& step) {
  RequireNoMessage();
  const RECT place = Ask<RECT>([this, name = step.Get("class")] {
    const RECT tool = Designer().toolbox().PlaceOf(name);
    if (IsRectEmpty(&tool)) Fail("there is no tool " + name);
    return tool;
  });
  ClickMouse(CentreOf(place), KindOf(step));
}

void UserPlayer::OnProperty(const UserStep& step) {
  RequireNoMessage();
  const RECT place = Ask<RECT>([this, name = step.Get("name")] {
    const RECT row = Designer().properties().PlaceOf(name);
    if (IsRectEmpty(&row)) Fail("there is no property " + name);
    return row;
  });
  ClickMouse(CentreOf(place), KindOf(step));
}

void UserPlayer::OnPoint(const UserStep& step) {
  ClickMouse(DesignPoint(step, "x", "y"), KindOf(step));
}

void UserPlayer::OnDraw(const UserStep& step) {
  DragMouse(DesignPoint(step, "x", "y"), DesignPoint(step, "x2", "y2"), KindOf(step));
}

void UserPlayer::OnPull(const UserStep& step) {
  RequireNoMessage();
  const POINT from = Ask<POINT>([this, path = step.Get("control"), name = step.Get("handle")] {
    const designer::DesignWindow& window = Designer();
    const designer::Handle handle = HandleNamed(name);
    const designer::Surface& surface = window.surface();
    const auto point = surface.ScreenHandle(Designed(path), handle);
    if (!point) Fail(path + " has no handle to pull there");
    return *point;
  });
  DragMouse(from, {from.x + ToPixels(step.Number("x")), from.y + ToPixels(step.Number("y"))});
}

designer::ControlId UserPlayer::Designed(const std::string& path) {
  designer::DesignWindow& window = Designer();
  designer::Design& design = window.design();
  if (form::SameWord(path, design.Name(design.form()))) return design.form();
  FormControl& control = ControlAt(path);
  for (const designer::ControlId id : design.All()) {
    if (window.surface().Live(id) == &control) return id;
  }
  Fail(path + " is not on the form");
}

}  // namespace qrn::host
