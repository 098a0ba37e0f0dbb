// The command line of `qrnform --new`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/newform/FormOrder.h"

namespace qrn::qrnform {

// True where the arguments ask for a new form.
bool AskForNewForm(const std::vector<std::string>& arguments);

// As ReadOptions.
std::optional<newform::FormOrder> ReadNewFormOptions(std::vector<std::string> arguments,
                                                     int* exitCode);

}  // namespace qrn::qrnform
