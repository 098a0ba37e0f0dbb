#include "host/newform/CardPlan.h"

#include <algorithm>
#include <array>

namespace qrn::newform {
namespace {

constexpr int kBetweenRows = kRowPitch - kBoxHeight;
constexpr int kBehindLabel = 8;
constexpr int kBetweenColumns = 24;
constexpr int kWidestLabel = 150;
constexpr size_t kMostInOneColumn = 12;
constexpr int kColumns = 2;

// Widths of the captions and of what stands behind them.
struct Column {
  int label = 0;
  int box = 0;

  int Width() const { return label + (label > 0 ? kBehindLabel : 0) + box; }
};

int HeightOf(const CardItem& item, int most) { return std::min(item.height, most); }

// Puts item after item below each other, the next column or page where `most` is passed.
class Filling {
 public:
  Filling(int columns, int most, int pageHeight)
      : columns_(columns), most_(most), pageHeight_(pageHeight) {}

  CardPlace Next(const CardItem& item) {
    const int height = HeightOf(item, pageHeight_);
    if (top_ > 0 && (top_ + height > pageHeight_ || (top_ >= most_ && place_.column == 0))) Turn();
    CardPlace place = place_;
    place.top = top_;
    place.height = height;
    top_ += height + kBetweenRows;
    return place;
  }

 private:
  void Turn() {
    top_ = 0;
    if (++place_.column < columns_) return;
    place_.column = 0;
    ++place_.page;
  }

  int columns_;
  int most_;
  int pageHeight_;
  int top_ = 0;
  CardPlace place_;
};

CardPlan Fill(std::span<const CardItem> items, int columns, int most, int pageHeight) {
  CardPlan plan;
  Filling filling(columns, most, pageHeight);
  for (const CardItem& item : items) plan.places.push_back(filling.Next(item));
  plan.pages = items.empty() ? 0 : plan.places.back().page + 1;
  return plan;
}

std::array<Column, kColumns> Columns(std::span<const CardItem> items, const CardPlan& plan) {
  std::array<Column, kColumns> columns;
  for (size_t i = 0; i < items.size(); ++i) {
    Column& column = columns[static_cast<size_t>(plan.places[i].column)];
    column.label = std::max(column.label, std::min(items[i].label, kWidestLabel));
    column.box = std::max(column.box, items[i].width);
  }
  return columns;
}

// Both columns give way where they do not fit, the wider one first.
void Narrow(std::array<Column, kColumns>& columns, int width) {
  const bool two = columns[1].Width() > 0;
  int excess = columns[0].Width() + columns[1].Width() + (two ? kBetweenColumns : 0) - width;
  if (excess <= 0) return;
  Column& wide = columns[0].box >= columns[1].box ? columns[0] : columns[1];
  Column& narrow = columns[0].box >= columns[1].box ? columns[1] : columns[0];
  const int first = std::min(excess, wide.box - narrow.box);
  wide.box -= first;
  excess -= first;
  if (excess <= 0) return;
  wide.box -= two ? (excess + 1) / 2 : excess;
  if (two) narrow.box -= (excess + 1) / 2;
}

void Place(CardPlan& plan, std::span<const CardItem> items,
           const std::array<Column, kColumns>& columns) {
  for (size_t i = 0; i < items.size(); ++i) {
    CardPlace& place = plan.places[i];
    const Column& column = columns[static_cast<size_t>(place.column)];
    place.label = place.column == 0 ? 0 : columns[0].Width() + kBetweenColumns;
    place.left = place.label + column.Width() - column.box;
    place.width = std::min(items[i].width, column.box);
    plan.width = std::max(plan.width, place.label + column.Width());
    plan.height = std::max(plan.height, place.top + place.height);
  }
}

}  // namespace

int RowsHeight(std::span<const CardItem> items) {
  int height = -kBetweenRows;
  for (const CardItem& item : items) height += item.height + kBetweenRows;
  return std::max(height, 0);
}

CardPlan PlanCard(std::span<const CardItem> items, const CardRoom& room) {
  const int height = RowsHeight(items);
  const bool one = height <= room.height && items.size() <= kMostInOneColumn;
  // Two columns of one page are as long as each other, pages are filled.
  const int half = (height + kBetweenRows) / 2;
  CardPlan plan = Fill(items, one ? 1 : kColumns, one ? room.height : half, room.height);
  if (plan.pages > 1) plan = Fill(items, kColumns, room.height, room.height);
  auto columns = Columns(items, plan);
  Narrow(columns, room.width);
  Place(plan, items, columns);
  return plan;
}

}  // namespace qrn::newform
