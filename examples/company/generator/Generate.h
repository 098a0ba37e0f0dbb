// The generator as its user calls it.
#pragma once

#include <string>
#include <vector>

#include "tools/qrndata/Program.h"

namespace company {

// `arguments` are UTF-8, without the program's name; the exit code is one of qrndata's.
int Run(std::vector<std::string> arguments, const qrndata::Streams& streams);

}  // namespace company
