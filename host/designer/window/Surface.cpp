#include "host/designer/window/Surface.h"

#include <algorithm>
#include <stdexcept>

#include "host/container/Text.h"
#include "host/designer/model/TabOrder.h"
#include "host/designer/panes/PaneWindow.h"
#include "host/runner/WindowClass.h"

namespace qrn::designer {
namespace {

constexpr wchar_t kSurfaceClass[] = L"QrnDesignSurface";
constexpr int kFormMargin = 12;  // pixels between the surface's corner and the form
// From the middle of a handle to its edge, in pixels.
int DrawnReach() noexcept { return Scaled(3); }

RECT AroundPoint(POINT middle) noexcept {
  const int reach = DrawnReach();
  return {middle.x - reach, middle.y - reach, middle.x + reach + 1, middle.y + reach + 1};
}

POINT Pixels(Point point) noexcept { return {host::ToPixels(point.x), host::ToPixels(point.y)}; }

RECT Pixels(const Place& place) noexcept {
  return host::Bounds{double(place.left), double(place.top), double(place.width),
                      double(place.height)}
      .Pixels();
}

Place PlaceIn(const RECT& pixels) noexcept {
  return {pixels.left * kTwipsPerPixel, pixels.top * kTwipsPerPixel,
          (pixels.right - pixels.left) * kTwipsPerPixel,
          (pixels.bottom - pixels.top) * kTwipsPerPixel};
}

// Handles lie just outside of what they belong to.
RECT Around(RECT place) noexcept {
  InflateRect(&place, DrawnReach(), DrawnReach());
  return place;
}

void AddHandles(const Design& design, ControlId id, const RECT& around, bool isPrimary,
                std::vector<Mark>* marks) {
  const Place place = PlaceIn(around);
  for (int at = 0; at < kHandleCount; ++at) {
    const auto handle = static_cast<Handle>(at);
    const bool pulls = isPrimary && CanPull(design, id, handle);
    marks->push_back({AroundPoint(Pixels(HandleMiddle(place, handle))),
                      pulls ? MarkKind::Handle : MarkKind::FixedHandle});
  }
}

}  // namespace

Surface::Surface(HWND parent, SurfaceOwner& owner, host::ControlClasses& classes, HFONT font)
    : owner_(owner), font_(font), live_(classes, *this) {
  host::RegisterWindowClass(kSurfaceClass, &Surface::Procedure,
                            GetSysColorBrush(COLOR_APPWORKSPACE));
  window_ = CreateWindowExW(
      WS_EX_CLIENTEDGE, kSurfaceClass, L"",
      WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0, 0,
      0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw std::runtime_error("the designer's surface cannot be made");
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  scroller_.emplace(window_);
  outer_ = std::make_unique<Marks>(window_, font_);
}

Surface::~Surface() {
  // What its windows send while they go finds nothing any more.
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  design_ = nullptr;
}

void Surface::Open(Design& design, const std::string& path) {
  CancelGesture();
  clicked_.reset();
  design_ = &design;
  path_ = path;
  ShowForm();
}

void Surface::MoveTo(const std::string& path) {
  if (path == path_) return;
  path_ = path;
  ShowForm();
}

void Surface::ShowForm() {
  const POINT origin = scroller_->origin();
  const std::string reason =
      live_.Show(*design_, path_, {kFormMargin - origin.x, kFormMargin - origin.y});
  if (live_.Window()) inner_ = std::make_unique<Marks>(live_.Window(), font_);
  Arrange();
  if (!reason.empty()) owner_.OnCannotShow(reason);
}

// The form at its place, the bars as large as it needs.
void Surface::Arrange() {
  if (!live_.Window()) return;
  RECT place{};
  GetWindowRect(live_.Window(), &place);
  scroller_->Fit(
      {place.right - place.left + 2 * kFormMargin, place.bottom - place.top + 2 * kFormMargin});
  const POINT origin = scroller_->origin();
  SetWindowPos(live_.Window(), nullptr, kFormMargin - origin.x, kFormMargin - origin.y, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  ShowMarks();
}

void Surface::OnChange(const ChangeReport& report) {
  if (!report.Any()) {
    Reveal();
    return ShowMarks();
  }
  if (!report.structure && report.properties.empty()) return;
  if (!live_.Carry(*design_, report)) return ShowForm();
  inner_->Raise();  // controls that came stand in front of it
  Arrange();
}

host::FormControl* Surface::Live(ControlId control) const { return live_.Find(control); }

void Surface::ShowGrid(bool shown) {
  gridIsShown_ = shown;
  if (live_.Window()) InvalidateRect(live_.Window(), nullptr, FALSE);
}

void Surface::TakeTool(std::optional<Tool> tool) {
  CancelGesture();
  if (clicked_) EndTabOrder(false);
  tool_ = std::move(tool);
}

void Surface::PutInMiddle(const Tool& tool) {
  CancelGesture();
  owner_.Tell(AddControl(*design_, InTheMiddle(*design_, tool, grid_)));
  SetFocus(window_);
}

std::vector<Mark> Surface::SelectionMarks() const {
  std::vector<Mark> marks;
  for (const ControlId id : design_->selection()) {
    if (id == design_->form() || !HasPlace(*design_, id)) continue;
    AddHandles(*design_, id, Around(Pixels(PlaceOnForm(*design_, id))), id == design_->Primary(),
               &marks);
  }
  if (gesture_) {
    for (const Place& place : gesture_->Outlines()) {
      marks.push_back({Pixels(place), MarkKind::Outline});
    }
  }
  return marks;
}

std::vector<Mark> Surface::NumberMarks() const {
  std::vector<Mark> marks;
  for (const ControlId id : TabOrderOf(*design_)) {
    if (!HasPlace(*design_, id)) continue;
    const auto taken = std::find(clicked_->begin(), clicked_->end(), id);
    const bool isTaken = taken != clicked_->end();
    const auto number = isTaken
                            ? taken - clicked_->begin()
                            : static_cast<std::ptrdiff_t>(design_->NumberValue(id, "TabIndex", 0));
    const std::wstring text = std::to_wstring(number);
    const SIZE size = inner_->SizeOf(text);
    const POINT corner =
        Pixels(Point{PlaceOnForm(*design_, id).left, PlaceOnForm(*design_, id).top});
    marks.push_back({{corner.x, corner.y, corner.x + size.cx, corner.y + size.cy},
                     isTaken ? MarkKind::TakenNumber : MarkKind::Number,
                     text});
  }
  return marks;
}

void Surface::ShowMarks() {
  if (!design_ || !inner_) return;
  std::vector<Mark> outer;
  if (design_->Primary() == design_->form() && !clicked_) {
    RECT place{};
    GetWindowRect(live_.Window(), &place);
    MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    AddHandles(*design_, design_->form(), Around(place), true, &outer);
  }
  outer_->Show(std::move(outer));
  inner_->Show(clicked_ ? NumberMarks() : SelectionMarks());
}

void Surface::Reveal() {
  const ControlId primary = design_->Primary();
  if (primary == 0 || primary == design_->form() || gesture_ || !live_.Window()) return;
  RECT part = Around(ScreenPlace(primary));
  MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&part), 2);
  const POINT origin = scroller_->origin();
  OffsetRect(&part, origin.x, origin.y);
  if (scroller_->Reveal(part)) Arrange();
}

Point Surface::OnForm(POINT screen) const {
  ScreenToClient(live_.Window(), &screen);
  return {screen.x * kTwipsPerPixel, screen.y * kTwipsPerPixel};
}

POINT Surface::ScreenPoint(Point onForm) const {
  POINT point = Pixels(onForm);
  ClientToScreen(live_.Window(), &point);
  return point;
}

RECT Surface::ScreenPlace(ControlId control) const {
  RECT place{};
  if (control == design_->form()) {
    GetWindowRect(live_.Window(), &place);
    return place;
  }
  place = Pixels(PlaceOnForm(*design_, control));
  MapWindowPoints(live_.Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

std::optional<POINT> Surface::ScreenHandle(ControlId control, Handle handle) const {
  if (!design_->IsSelected(control) || !CanPull(*design_, control, handle)) return std::nullopt;
  return Pixels(HandleMiddle(PlaceIn(Around(ScreenPlace(control))), handle));
}

std::optional<Handle> Surface::FormHandleAt(POINT screen) const {
  if (design_->Primary() != design_->form()) return std::nullopt;
  const auto handle = HandleAt(PlaceIn(Around(ScreenPlace(design_->form()))),
                               {screen.x * kTwipsPerPixel, screen.y * kTwipsPerPixel},
                               DrawnReach() * kTwipsPerPixel);
  return handle && CanPull(*design_, design_->form(), *handle) ? handle : std::nullopt;
}

void Surface::DrawGround(HDC dc, const RECT& area) const noexcept {
  if (!gridIsShown_) return;
  const int across = host::ToPixels(grid_.width);
  const int down = host::ToPixels(grid_.height);
  if (across < 2 || down < 2) return;
  const COLORREF dots = GetSysColor(COLOR_BTNTEXT);
  for (int y = 0; y < area.bottom; y += down) {
    for (int x = 0; x < area.right; x += across) SetPixelV(dc, x, y, dots);
  }
}

void Surface::ShowPages(host::FormControl& control) {
  for (const ControlId id : design_->All()) {
    if (Live(id) == &control) return owner_.ShowPages(id);
  }
}

LRESULT CALLBACK Surface::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<Surface*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!self || !self->design_) return DefWindowProcW(window, message, wParam, lParam);
  return self->OnMessage(message, wParam, lParam);
}

}  // namespace qrn::designer
