#include "host/designer/model/Places.h"

#include <algorithm>
#include <cmath>

namespace qrn::designer {
namespace {

constexpr double kHimetricPerInch = 2540;
constexpr double kTwipsPerInch = 1440;

// Twips that a unit of each ScaleMode takes across and down.
struct Scale {
  double x = 1;
  double y = 1;
  bool isWhole = true;  // places are written without a fraction
};

constexpr Scale kScales[] = {
    {1, 1, true},                                         // 0: the user's own, see below
    {1, 1, true},                                         // 1: twips
    {20, 20, false},                                      // 2: points
    {kTwipsPerPixel, kTwipsPerPixel, true},               // 3: pixels
    {120, 240, false},                                    // 4: characters
    {kTwipsPerInch, kTwipsPerInch, false},                // 5: inches
    {kTwipsPerInch / 25.4, kTwipsPerInch / 25.4, false},  // 6: millimetres
    {kTwipsPerInch / 2.54, kTwipsPerInch / 2.54, false},  // 7: centimetres
};
constexpr int kUserMode = 0;
constexpr int kTwipMode = 1;

// Only these count what lies on them in another unit than twips.
bool HasScale(const Block& container) {
  return container.Is("VB", "Form") || container.Is("VB", "PictureBox") ||
         container.Is("VB", "UserControl") || container.Is("VB", "PropertyPage") ||
         container.Is("VB", "UserDocument");
}

Scale UserScale(const Design& design, ControlId container) {
  const bool isForm = container == design.form();
  const double width = design.NumberValue(container, isForm ? "ClientWidth" : "Width", 0);
  const double height = design.NumberValue(container, isForm ? "ClientHeight" : "Height", 0);
  const double across = std::abs(design.NumberValue(container, "ScaleWidth", width));
  const double down = std::abs(design.NumberValue(container, "ScaleHeight", height));
  if (!(width > 0 && height > 0 && across > 0 && down > 0)) return {};
  return {width / across, height / down, false};
}

Scale ScaleOf(const Design& design, ControlId container) {
  if (container == 0 || !HasScale(design.At(container))) return {};
  const double mode = design.NumberValue(container, "ScaleMode", kTwipMode);
  if (mode == kUserMode) return UserScale(design, container);
  const bool known = mode > 0 && mode < static_cast<double>(std::size(kScales));
  return kScales[known ? static_cast<size_t>(mode) : size_t{kTwipMode}];
}

// Whatever a damaged file says, it stays a number that can be added to others.
int32_t Twips(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<int32_t>(
      std::lround(std::clamp(value, -1.0 * kLargestSize, 1.0 * kLargestSize)));
}

// Width or height where the line is missing: what the control has told of its extent.
int32_t UnwrittenSize(const Design& design, ControlId id, const char* extent, int32_t usual) {
  const double himetric = design.NumberValue(id, extent, -1);
  return himetric >= 0 ? Twips(himetric * kTwipsPerInch / kHimetricPerInch) : usual;
}

form::PropertyValue Written(int32_t twips, double scale, bool isWhole) {
  const double value = twips / scale;
  const double rounded = isWhole ? std::round(value) : std::round(value * 1000) / 1000;
  if (rounded == std::trunc(rounded)) return static_cast<int32_t>(rounded);
  return rounded;
}

// What a control has told of its extent, and what it saves of it itself.
struct Extent {
  const char* told;
  const char* saved;
};
constexpr Extent kExtentX{"_ExtentX", "_cx"};
constexpr Extent kExtentY{"_ExtentY", "_cy"};

struct Side {
  const char* property;
  std::optional<int32_t> now;  // nothing: written whatever it is
  int32_t wanted;
  double scale;
  const Extent* extent;  // null: none goes with it
};

Refusal PutExtent(Design& design, ControlId id, const Extent& extent, int32_t twips) {
  const auto himetric = static_cast<int32_t>(std::lround(twips * kHimetricPerInch / kTwipsPerInch));
  for (const char* line : {extent.told, extent.saved}) {
    if (!design.Value(id, line)) continue;
    if (Refusal refusal = design.Put(id, line, himetric)) return refusal;
  }
  return {};
}

Refusal PutSides(Design& design, ControlId id, std::initializer_list<Side> sides, bool isWhole) {
  for (const Side& side : sides) {
    if (side.now && *side.now == side.wanted) continue;
    Refusal refusal = design.Put(id, side.property, Written(side.wanted, side.scale, isWhole));
    if (!refusal && side.extent) refusal = PutExtent(design, id, *side.extent, side.wanted);
    if (refusal) return refusal;
  }
  return {};
}

Refusal PutFormSize(Design& design, const Place& now, const Place& wanted) {
  Refusal refusal = PutSides(design, design.form(),
                             {{"ClientHeight", now.height, wanted.height, 1, nullptr},
                              {"ClientWidth", now.width, wanted.width, 1, nullptr}},
                             true);
  return refusal || now == wanted ? refusal : PutScaleSize(design);
}

Place Cut(Place place) noexcept {
  place.left = std::clamp(place.left, -kLargestSize, kLargestSize);
  place.top = std::clamp(place.top, -kLargestSize, kLargestSize);
  place.width = std::clamp(place.width, 0, kLargestSize);
  place.height = std::clamp(place.height, 0, kLargestSize);
  return place;
}

Refusal PutControlPlace(Design& design, ControlId id, const Place& place,
                        const std::optional<Place>& now) {
  const Scale scale = ScaleOf(design, design.Container(id));
  const auto was = [&](int32_t Place::*side) {
    return now ? std::optional<int32_t>((*now).*side) : std::nullopt;
  };
  Refusal refusal;
  if (HasSize(design, id)) {
    refusal = PutSides(design, id,
                       {{"Height", was(&Place::height), place.height, scale.y, &kExtentY},
                        {"Width", was(&Place::width), place.width, scale.x, &kExtentX}},
                       scale.isWhole);
  }
  if (refusal) return refusal;
  return PutSides(design, id,
                  {{"Left", was(&Place::left), place.left, scale.x, nullptr},
                   {"Top", was(&Place::top), place.top, scale.y, nullptr}},
                  scale.isWhole);
}

ControlId DeepestAt(const Design& design, ControlId container, Point point) {
  for (const ControlId id : design.Inside(container)) {
    if (HasPlace(design, id) && PlaceOnForm(design, id).Holds(point)) {
      return DeepestAt(design, id, point);
    }
  }
  return container;
}

}  // namespace

bool Place::Holds(Point point) const noexcept {
  return point.x >= left && point.x < Right() && point.y >= top && point.y < Bottom();
}

bool Place::Touches(const Place& other) const noexcept {
  return left < other.Right() && other.left < Right() && top < other.Bottom() &&
         other.top < Bottom();
}

Place Between(Point one, Point other) noexcept {
  return {std::min(one.x, other.x), std::min(one.y, other.y), std::abs(one.x - other.x),
          std::abs(one.y - other.y)};
}

bool HasPlace(const Design& design, ControlId id) {
  const Block& block = design.At(id);
  if (id == design.form() || block.Is("VB", "Line")) return false;
  return block.Find("Left") != kNowhere || block.Find("Top") != kNowhere ||
         block.Find("Width") != kNowhere || design.Class(id) != nullptr;
}

bool HasSize(const Design& design, ControlId id) {
  if (id == design.form()) return true;
  const ClassInfo* info = design.Class(id);
  if (info) return info->hasSize;
  return design.At(id).Find("Width") != kNowhere;
}

Place PlaceOf(const Design& design, ControlId id) {
  if (id == design.form()) {
    return {0, 0, Twips(design.NumberValue(id, "ClientWidth", 4680)),
            Twips(design.NumberValue(id, "ClientHeight", 3195))};
  }
  const Scale scale = ScaleOf(design, design.Container(id));
  const ClassInfo* info = design.Class(id);
  Place place;
  place.left = Twips(design.NumberValue(id, "Left", 0) * scale.x);
  place.top = Twips(design.NumberValue(id, "Top", 0) * scale.y);
  const int32_t usualWidth = UnwrittenSize(design, id, "_ExtentX", info ? info->width : 0);
  const int32_t usualHeight = UnwrittenSize(design, id, "_ExtentY", info ? info->height : 0);
  place.width = Twips(design.NumberValue(id, "Width", usualWidth / scale.x) * scale.x);
  place.height = Twips(design.NumberValue(id, "Height", usualHeight / scale.y) * scale.y);
  return place;
}

Point OriginOnForm(const Design& design, ControlId container) {
  Point origin;
  for (ControlId at = container; at != design.form() && at != 0; at = design.Container(at)) {
    const Place place = PlaceOf(design, at);
    origin.x += place.left;
    origin.y += place.top;
  }
  return origin;
}

Place PlaceOnForm(const Design& design, ControlId id) {
  Place place = PlaceOf(design, id);
  if (id == design.form()) return place;
  const Point origin = OriginOnForm(design, design.Container(id));
  place.left += origin.x;
  place.top += origin.y;
  return place;
}

Refusal PutPlace(Design& design, ControlId id, Place place) {
  place = Cut(place);
  const Place now = PlaceOf(design, id);
  return id == design.form() ? PutFormSize(design, now, place)
                             : PutControlPlace(design, id, place, now);
}

Refusal PutFirstPlace(Design& design, ControlId id, Place place) {
  return PutControlPlace(design, id, Cut(place), {});
}

Refusal PutExtents(Design& design, ControlId id) {
  const Place place = PlaceOf(design, id);
  Refusal refusal = PutExtent(design, id, kExtentX, place.width);
  return refusal ? refusal : PutExtent(design, id, kExtentY, place.height);
}

// A scale of the user's own stays: it stretches with the form.
Refusal PutScaleSize(Design& design) {
  const ControlId form = design.form();
  if (design.NumberValue(form, "ScaleMode", kTwipMode) == kUserMode) return {};
  const Scale scale = ScaleOf(design, form);
  const Place place = PlaceOf(design, form);
  return PutSides(design, form,
                  {{"ScaleHeight", std::nullopt, place.height, scale.y, nullptr},
                   {"ScaleWidth", std::nullopt, place.width, scale.x, nullptr}},
                  scale.isWhole);
}

ControlId ControlAt(const Design& design, Point onForm) {
  return DeepestAt(design, design.form(), onForm);
}

std::vector<ControlId> Touching(const Design& design, ControlId container, const Place& onForm) {
  std::vector<ControlId> found;
  for (const ControlId id : design.Inside(container)) {
    if (HasPlace(design, id) && PlaceOnForm(design, id).Touches(onForm)) found.push_back(id);
  }
  return found;
}

}  // namespace qrn::designer
