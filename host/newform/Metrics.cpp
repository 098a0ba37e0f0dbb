#include "host/newform/Metrics.h"

namespace qrn::newform {
namespace {

// Half-width characters that a text takes; each of two or three bytes of UTF-8 counts for two.
int Characters(std::string_view utf8) {
  int count = 0;
  for (size_t i = 0; i < utf8.size();) {
    const auto first = static_cast<unsigned char>(utf8[i]);
    const size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    const bool halfKana =
        utf8.substr(i).starts_with("\xEF\xBD") || utf8.substr(i).starts_with("\xEF\xBE");
    count += length == 1 || halfKana ? 1 : 2;
    i += length;
  }
  return count;
}

}  // namespace

int TextWidth(std::string_view utf8) { return Characters(utf8) * kCharacter + 2; }

}  // namespace qrn::newform
