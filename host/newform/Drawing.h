// Drawing controls one after the other, in the order of the Tab key.
#pragma once

#include <string>
#include <vector>

#include "host/newform/CardPlan.h"
#include "host/newform/FormPart.h"
#include "host/newform/FormPlan.h"

namespace qrn::newform {

struct Drawing {
  explicit Drawing(const FormPlan& from) : plan(from), words(from.words) {}

  // Puts a part on the form or in a frame, the next for the Tab key.
  FormPart& Add(std::vector<FormPart>& to, FormPart part);
  // A control of the module over the form's table.
  FormPart Bound(const char* kind, const std::string& name, const Box& box, int index = -1) const;

  const FormPlan& plan;
  const Words& words;
  AccessKeys keys;
  int tabIndex = 0;
};

// A field's caption and what shows it; `left` and `top` are the card's corner.
void DrawField(Drawing& drawing, std::vector<FormPart>& to, const CardControl& control,
               const CardPlace& place, int left, int top);

}  // namespace qrn::newform
