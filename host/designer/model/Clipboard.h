// Controls as text on the clipboard: header lines and blocks as they stand in a form file, which
// any program can read, and behind them, as comments, the pictures and long texts that they refer
// to.
#pragma once

#include <string>
#include <string_view>

#include "host/designer/model/Arrange.h"

namespace qrn::designer {

// UTF-8; empty if nothing but the form is meant. What lies in a copied container goes along, its
// code does not.
std::string CopyText(const Design& design, const Ids& ids);

// Copies and deletes, one step. `*text` is filled even where nothing is deleted.
Refusal Cut(Design& design, const Ids& ids, std::string* text);

// True if the text begins as a fragment does, so that the menu can offer it.
bool LooksLikeControls(std::string_view utf8) noexcept;

// Puts controls in front, in the container that is selected or holds the primary control, and
// selects them: one step. A name that is free stays, others are made new; elements of one array
// stay together. Where something lies at the very place already, they are shifted by the grid. Code
// is not touched.
Refusal Paste(Design& design, std::string_view utf8, const Grid& grid);

}  // namespace qrn::designer
