// A program of the command line: where it speaks, its start and its end.
#pragma once

#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "tools/qrndata/Messages.h"

namespace qrndata {

// Where a program speaks and listens. What is said is UTF-8.
struct Streams {
  std::ostream& out;
  std::ostream& err;
  std::ostream* terminal;                 // for progress; null where nobody watches
  std::istream* in = nullptr;             // as it comes, line ends included
  Language language = Language::English;  // the user's own
};

// What main is called on the system.
#ifdef _WIN32
#define QRN_MAIN wmain
using ProgramChar = wchar_t;
#else
#define QRN_MAIN main
using ProgramChar = char;
#endif

// `arguments` are UTF-8, without the program's name; the result is the exit code.
using ProgramBody = int (*)(std::vector<std::string> arguments, const Streams& streams);

// The body of main: arguments and streams as UTF-8 on both systems.
int RunProgram(int argc, ProgramChar** argv, ProgramBody body);

// Runs `body`; what it throws is told as "name: ..." and becomes the exit code.
int RunGuarded(const char* name, const Streams& streams, const std::function<int()>& body);

}  // namespace qrndata
