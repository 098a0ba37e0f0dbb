#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>

#include <filesystem>
#include <iostream>
#include <memory>

#include "platform/UserLanguage.h"
#include "tools/qrndata/ConsoleBuffer_win.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Program.h"

namespace qrndata {

namespace {

// A stream that shows characters where it goes to a console; elsewhere its bytes as they stand.
class ConsoleStream {
 public:
  ConsoleStream(std::ostream& stream, DWORD handle, FILE* file)
      : stream_(stream), console_(GetStdHandle(handle)), buffer_(console_) {
    _setmode(_fileno(file), _O_BINARY);
    DWORD mode = 0;
    isConsole_ = GetConsoleMode(console_, &mode) != 0;
    if (isConsole_) before_ = stream.rdbuf(&buffer_);
  }
  ConsoleStream(const ConsoleStream&) = delete;
  ConsoleStream& operator=(const ConsoleStream&) = delete;
  ~ConsoleStream() {
    if (before_ == nullptr) return;
    stream_.flush();
    stream_.rdbuf(before_);
  }

  // Escape sequences work on consoles that take this mode.
  bool TakesEscapes() const {
    constexpr DWORD kEscapes = ENABLE_VIRTUAL_TERMINAL_PROCESSING;
    DWORD mode = 0;
    return isConsole_ && GetConsoleMode(console_, &mode) != 0 &&
           SetConsoleMode(console_, mode | kEscapes) != 0;
  }

 private:
  std::ostream& stream_;
  HANDLE console_;
  ConsoleBuffer buffer_;
  std::streambuf* before_ = nullptr;
  bool isConsole_ = false;
};

}  // namespace

int RunProgram(int argc, ProgramChar** argv, ProgramBody body) {
  std::ios::sync_with_stdio(false);
  _setmode(_fileno(stdin), _O_BINARY);
  const ConsoleStream out(std::cout, STD_OUTPUT_HANDLE, stdout);
  const ConsoleStream err(std::cerr, STD_ERROR_HANDLE, stderr);
  std::vector<std::string> arguments;
  for (int at = 1; at < argc; ++at) {
    arguments.push_back(PathToUtf8(std::filesystem::path(argv[at])));
  }
  std::ostream* terminal = err.TakesEscapes() ? &std::cerr : nullptr;
  return body(std::move(arguments),
              {std::cout, std::cerr, terminal, &std::cin, qrn::UserLanguage()});
}

}  // namespace qrndata
