// What keeps the form's code from running, as the runner would tell it.
#pragma once

#include <vector>

#include "host/designer/model/Design.h"
#include "host/form/Mistakes.h"

namespace qrn::designer {

// In the order of their lines, which are the file's (CodePart::CodeLine). Found without running:
// what cannot be put in the script engine's words, blocks that do not close, handlers with another
// count of parameters than their event.
std::vector<form::Mistake> CheckCode(const Design& design);

}  // namespace qrn::designer
