#include <unistd.h>

#include <iostream>

#include "platform/UserLanguage.h"
#include "tools/qrndata/Program.h"

namespace qrndata {

int RunProgram(int argc, ProgramChar** argv, ProgramBody body) {
  std::ios::sync_with_stdio(false);
  std::ostream* terminal = isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr;
  return body({argv + 1, argv + argc},
              {std::cout, std::cerr, terminal, &std::cin, qrn::UserLanguage()});
}

}  // namespace qrndata
