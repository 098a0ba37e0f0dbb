#include "host/newform/FormLayout.h"

#include <algorithm>

#include "host/newform/Metrics.h"
#include "host/newform/NewForm.h"

namespace qrn::newform {
namespace {

constexpr int kMostWidth = kWidestForm - 2 * kMargin;
constexpr int kLeastWidth = 600 - 2 * kMargin;
constexpr int kListWidth = 360;
constexpr int kLowestBeside = 160;
constexpr int kNoteHeight = 86;
constexpr int kSaidWidth = 170;
constexpr int kCheckMark = 24;
constexpr int kAroundCaption = 46;  // of a button, its access key with it
constexpr int kBetweenFinds = 6;
constexpr size_t kMostPinned = 4;

bool IsHigh(const CardControl& control) {
  const Control kind = control.fit.control;
  return kind == Control::Note || (kind == Control::Display && !control.fit.isNumber);
}

int BoxWidth(const CardControl& control) {
  const bool digits = control.fit.isNumber || control.fit.isMoment;
  const int wanted = control.fit.characters * (digits ? kDigit : kCharacter) + kBoxMargin;
  return std::max(wanted, kNarrowestBox);
}

CardItem ItemOf(const FormPlan& plan, const CardControl& control) {
  const int caption = TextWidth(Shown(plan.table.fields[control.field].name));
  if (control.fit.control == Control::Check) return {0, caption + kCheckMark, kBoxHeight};
  CardItem item{caption, BoxWidth(control), IsHigh(control) ? kNoteHeight : kBoxHeight};
  if (control.lookup) item.width += kArrow;
  if (!control.said.empty()) item.width += kGap + kSaidWidth;
  if (!control.picture.empty()) {
    item.width = std::max(item.width, kPictureWidth);
    item.height += kGap + kPictureHeight;
  }
  return item;
}

std::vector<CardItem> Items(const FormPlan& plan, const std::vector<size_t>& places) {
  std::vector<CardItem> items;
  items.reserve(places.size());
  for (const size_t place : places) items.push_back(ItemOf(plan, plan.card[place]));
  return items;
}

// The fields of the key that records are walked along stay in sight on every page.
bool IsPinned(const FormPlan& plan, const CardControl& control) {
  const Key* key = plan.OrderKey();
  return key && key->fields.size() <= kMostPinned &&
         std::find(key->fields.begin(), key->fields.end(), control.field) != key->fields.end();
}

template <class Wanted>
std::vector<size_t> AllOf(const FormPlan& plan, Wanted wanted) {
  std::vector<size_t> places;
  for (size_t i = 0; i < plan.card.size(); ++i) {
    if (wanted(plan.card[i])) places.push_back(i);
  }
  return places;
}

void Widen(FormLayout& layout, const FormPlan& plan, const std::vector<CardItem>& items) {
  const CardPlan card = PlanCard(items, {kMostWidth - 2 * kFrameSide, kHighestForm});
  const int framed = card.width + 2 * kFrameSide;
  layout.width = layout.cardWidth = std::clamp(framed, kLeastWidth, kMostWidth);
  layout.beside = plan.HasList() && !plan.choice.detail && card.pages == 1 &&
                  card.height >= kLowestBeside && framed + kGap + kListWidth <= kMostWidth;
  if (!layout.beside) return;
  layout.cardWidth = framed;
  layout.width = std::max(layout.width, framed + kGap + kListWidth);
}

// Side by side, as many rows as they take.
void PlaceFinds(FormLayout& layout, const FormPlan& plan) {
  layout.finds.clear();
  int left = kFrameSide, row = 0;
  for (const size_t key : plan.choice.keys) {
    const int width = std::max(TextWidth(plan.table.keys[key].name) + kAroundCaption, kButtonWidth);
    if (left > kFrameSide && left + width > layout.width - kFrameSide) {
      left = kFrameSide;
      ++row;
    }
    layout.finds.push_back({left, kFrameTop + row * kFindPitch, width, kButtonHeight});
    left += width + kBetweenFinds;
  }
  layout.findHeight = kFrameTop + row * kFindPitch + kButtonHeight + kFrameBottom;
}

// What stands below the card.
int HeightBelow(const FormLayout& layout, const FormPlan& plan) {
  constexpr int kWithGrid = kLabelHeight + kGridHeight + kGap;
  int height = 2 * (kButtonHeight + kGap);  // those that move, those that store
  if (!plan.choice.keys.empty()) height += layout.findHeight + kGap;
  if (plan.choice.detail) height += kWithGrid;
  if (plan.HasList() && !layout.beside) height += kWithGrid;
  return height + kStatusHeight + kMargin;
}

CardRoom RoomFor(const FormLayout& layout, const FormPlan& plan, int above) {
  const int frame = kFrameTop + kFrameBottom + kGap;
  return {layout.cardWidth - 2 * kFrameSide,
          kHighestForm - kMargin - above - frame - HeightBelow(layout, plan)};
}

void TurnPages(FormLayout& layout, const FormPlan& plan) {
  layout.width = layout.cardWidth = kMostWidth;
  PlaceFinds(layout, plan);
  layout.pinned = AllOf(plan, [&](const CardControl& control) { return IsPinned(plan, control); });
  layout.paged = AllOf(plan, [&](const CardControl& control) { return !IsPinned(plan, control); });
  layout.pin = PlanCard(Items(plan, layout.pinned), {kMostWidth - 2 * kFrameSide, kHighestForm});
  const int pinned = layout.pinned.empty() ? 0 : layout.pin.height + kGap;
  layout.pages =
      PlanCard(Items(plan, layout.paged), RoomFor(layout, plan, pinned + kButtonHeight + kGap));
}

}  // namespace

FormLayout::FormLayout(const FormPlan& plan) {
  paged = AllOf(plan, [](const CardControl&) { return true; });
  const std::vector<CardItem> items = Items(plan, paged);
  Widen(*this, plan, items);
  PlaceFinds(*this, plan);
  pages = PlanCard(items, RoomFor(*this, plan, 0));
  if (pages.pages > 1) TurnPages(*this, plan);
}

size_t FormLayout::FirstOf(int page) const {
  for (size_t i = 0; i < paged.size(); ++i) {
    if (pages.places[i].page == page) return paged[i];
  }
  return 0;
}

}  // namespace qrn::newform
