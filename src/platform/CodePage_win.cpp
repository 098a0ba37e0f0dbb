#include <windows.h>

#include "platform/CodePage.h"
#include "platform/CodePageSink.h"

namespace qrn {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// No code page gives more units than it has bytes.
std::u16string Widened(UINT page, std::string_view bytes) {
  const int size = static_cast<int>(bytes.size());
  std::u16string wide(bytes.size(), u'\0');
  const int units = MultiByteToWideChar(page, 0, bytes.data(), size,
                                        reinterpret_cast<wchar_t*>(wide.data()), size);
  wide.resize(static_cast<size_t>(units));
  return wide;
}

std::string Narrowed(UINT page, std::u16string_view wide) {
  constexpr int kMostBytes = 3;  // of a unit, in UTF-8
  const auto* units = reinterpret_cast<const wchar_t*>(wide.data());
  const int size = static_cast<int>(wide.size());
  std::string bytes(wide.size() * kMostBytes, '\0');
  const int written =
      WideCharToMultiByte(page, 0, units, size, bytes.data(), size * kMostBytes, nullptr, nullptr);
  bytes.resize(static_cast<size_t>(written));
  return bytes;
}

}  // namespace

bool IsLeadByte(uint8_t byte) noexcept { return IsDBCSLeadByte(byte) != FALSE; }

std::u16string CodePageToUtf16(std::string_view bytes) { return Widened(CP_THREAD_ACP, bytes); }
std::string Utf16ToCodePage(std::u16string_view wide) { return Narrowed(CP_THREAD_ACP, wide); }
std::string Utf8ToCodePage(std::string_view utf8) {
  return Utf16ToCodePage(Widened(CP_UTF8, utf8));
}
std::string CodePageToUtf8(std::string_view bytes) {
  return Narrowed(CP_UTF8, CodePageToUtf16(bytes));
}

size_t NarrowUnits(std::u16string_view wide, std::span<char> out) noexcept {
  const std::u16string_view taken = wide.substr(0, out.size() / 2);
  if (taken.empty()) return 0;
  return static_cast<size_t>(WideCharToMultiByte(
      CP_THREAD_ACP, 0, reinterpret_cast<const wchar_t*>(taken.data()),
      static_cast<int>(taken.size()), out.data(), static_cast<int>(out.size()), nullptr, nullptr));
}

size_t WidenText(std::string_view bytes, std::span<char16_t> wide) noexcept {
  if (bytes.empty() || wide.size() < bytes.size()) return 0;
  return static_cast<size_t>(
      MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), static_cast<int>(bytes.size()),
                          reinterpret_cast<wchar_t*>(wide.data()), static_cast<int>(wide.size())));
}

}  // namespace qrn
