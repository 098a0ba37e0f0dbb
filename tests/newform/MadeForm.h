// What is wrong with a form that was made, seen by those who read it: the form reader, the code's
// rewriter, the eye, and the database control.
#pragma once

#include <string>

#include "tools/qrndata/Dictionary.h"

namespace qrn::tests {

// A line for each fault, empty if there is none. `bytes` is the form's file.
std::string FaultsOf(const std::string& bytes, const qrndata::Dictionary& dictionary);

}  // namespace qrn::tests
