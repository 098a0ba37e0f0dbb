#include "tools/qrndata/Program.h"

#include <filesystem>
#include <iostream>
#include <new>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Paths.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace qrndata {

int RunGuarded(const char* name, const Streams& streams, const std::function<int()>& body) {
  try {
    return body();
  } catch (const Failure& failure) {
    streams.err << name << ": " << failure.what() << '\n';
    return failure.Code();
  } catch (const std::bad_alloc&) {
    streams.err << name << ": not enough memory\n";
  } catch (const std::exception& error) {
    streams.err << name << ": " << error.what() << '\n';
  }
  return kSystem;
}

#ifdef _WIN32
namespace {

// Input and output as they stand, line ends included, and shown as UTF-8 while the program runs.
class Utf8Console {
 public:
  Utf8Console() : before_(GetConsoleOutputCP()) {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
  }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console() { SetConsoleOutputCP(before_); }

  // Escape sequences work on consoles that take this mode.
  static bool IsTerminal() {
    constexpr DWORD kEscapes = ENABLE_VIRTUAL_TERMINAL_PROCESSING;
    const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return _isatty(_fileno(stderr)) != 0 && GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | kEscapes) != 0;
  }

 private:
  UINT before_;
};

}  // namespace

int RunProgram(int argc, ProgramChar** argv, ProgramBody body) {
  std::ios::sync_with_stdio(false);
  const Utf8Console console;
  std::vector<std::string> arguments;
  for (int at = 1; at < argc; ++at) {
    arguments.push_back(PathToUtf8(std::filesystem::path(argv[at])));
  }
  std::ostream* terminal = Utf8Console::IsTerminal() ? &std::cerr : nullptr;
  return body(std::move(arguments), {std::cout, std::cerr, terminal, &std::cin});
}

#else

int RunProgram(int argc, ProgramChar** argv, ProgramBody body) {
  std::ios::sync_with_stdio(false);
  std::ostream* terminal = isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr;
  return body({argv + 1, argv + argc}, {std::cout, std::cerr, terminal, &std::cin});
}

#endif

}  // namespace qrndata
