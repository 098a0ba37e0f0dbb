#include "tools/qrndata/ConsoleBuffer_win.h"

#include <algorithm>
#include <string_view>

#include "platform/Utf.h"

namespace qrndata {

namespace {

// A console takes no more at once than some 64 KiB.
constexpr size_t kMostPending = 4096, kMostUnits = 8192;

// Bytes up to the end of the last whole character; broken ones count as whole.
size_t WholeLength(std::string_view text) {
  constexpr size_t kLongest = 4;
  for (size_t back = 1; back <= std::min(kLongest, text.size()); ++back) {
    const auto byte = static_cast<uint8_t>(text[text.size() - back]);
    if ((byte & 0xC0) == 0x80) continue;
    const size_t length = byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return length > back ? text.size() - back : text.size();
  }
  return text.size();
}

bool WriteAll(HANDLE console, std::u16string_view text) {
  while (!text.empty()) {
    DWORD written = 0;
    const auto units = static_cast<DWORD>(std::min(text.size(), kMostUnits));
    if (WriteConsoleW(console, text.data(), units, &written, nullptr) == 0 || written == 0) {
      return false;
    }
    text.remove_prefix(written);
  }
  return true;
}

}  // namespace

ConsoleBuffer::int_type ConsoleBuffer::overflow(int_type byte) {
  if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
  const char c = traits_type::to_char_type(byte);
  return xsputn(&c, 1) == 1 ? byte : traits_type::eof();
}

std::streamsize ConsoleBuffer::xsputn(const char* bytes, std::streamsize count) {
  pending_.append(bytes, static_cast<size_t>(count));
  return pending_.size() < kMostPending || sync() == 0 ? count : 0;
}

int ConsoleBuffer::sync() {
  const size_t length = WholeLength(pending_);
  const std::u16string text = qrn::Utf8ToUtf16(std::string_view(pending_).substr(0, length));
  pending_.erase(0, length);
  return WriteAll(console_, text) ? 0 : -1;
}

}  // namespace qrndata
