#include "fields/Messages.h"

#include <cstdio>

#include "platform/CodePage.h"
#include "platform/MessageBox.h"
#include "platform/StringTable.h"

namespace qrn {
namespace {

constexpr size_t kFormatSize = 128;
constexpr size_t kMessageSize = 1024;

// A text of the string table with its arguments.
class MessageText {
 public:
  MessageText(int id, va_list arguments) noexcept {
    char format[kFormatSize];
    LoadText(id, format);
    char whole[kMessageSize + 1];
    // The caller started the list; the analyzer looks no further than this function.
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    std::vsnprintf(whole, sizeof whole, format, arguments);
    CopyText(text_, whole);
  }
  const char* Get() const { return text_; }

 private:
  char text_[kMessageSize];
};

}  // namespace

int ShowMessage(int id, ...) noexcept {
  va_list arguments;
  va_start(arguments, id);
  const MessageText text(id, arguments);
  va_end(arguments);
  return ShowBox(text.Get(), kTaskModal);
}

void ExitWithMessage(int id, va_list arguments) noexcept {
  FatalExit(MessageText(id, arguments).Get());
}

}  // namespace qrn
