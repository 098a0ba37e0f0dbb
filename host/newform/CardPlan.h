// Where the fields of a card stand: one below the other in a column, in two, or on pages of two.
// All in pixels.
#pragma once

#include <span>
#include <vector>

namespace qrn::newform {

struct CardItem {
  int label = 0;   // width of its caption, 0 without one
  int width = 0;   // of what stands behind the caption
  int height = 0;  // of the same
};

struct CardPlace {
  int page = 0;
  int column = 0;
  int label = 0;  // left edges, the card's own edge at 0
  int left = 0;
  int top = 0;
  int width = 0;  // the item's, cut to what the column has
  int height = 0;
};

struct CardPlan {
  std::vector<CardPlace> places;  // of each item, in order; the eye goes down the columns
  int pages = 0;                  // 0 without items
  int width = 0;                  // of the widest page
  int height = 0;                 // of the highest
};

// Room for the card; at least for a caption and a box.
struct CardRoom {
  int width = 0;
  int height = 0;
};

inline constexpr int kRowPitch = 30;
inline constexpr int kBoxHeight = 23;

CardPlan PlanCard(std::span<const CardItem> items, const CardRoom& room);

// Room that two columns of these items would take side by side, were it there.
int RowsHeight(std::span<const CardItem> items);

}  // namespace qrn::newform
