// How a form is laid out before it is drawn: how wide it is, what is pinned above the pages of its
// card, and where every field and button goes.
#pragma once

#include <vector>

#include "host/newform/CardPlan.h"
#include "host/newform/FormPart.h"
#include "host/newform/FormPlan.h"

namespace qrn::newform {

// In pixels.
struct FormLayout {
  explicit FormLayout(const FormPlan& plan);

  int pageCount() const noexcept { return pages.pages > 1 ? pages.pages : 1; }
  // The first control of a page, as its place in the plan's card.
  size_t FirstOf(int page) const;

  int width = 0;      // of what stands on the form, between its margins
  int cardWidth = 0;  // less, where a list stands beside the card
  bool beside = false;
  std::vector<size_t> pinned, paged;  // places in the plan's card
  CardPlan pin, pages;
  std::vector<Box> finds;  // the buttons that find, in their frame
  int findHeight = 0;      // of that frame
};

}  // namespace qrn::newform
