// A wide text as automation passes it. Null and empty are told apart: both read as empty, but a
// null text is stored as null, and some controls act on the difference.
#pragma once

#include <oaidl.h>
#include <oleauto.h>

#include <string_view>
#include <utility>

namespace qrn::com {

class Bstr {
 public:
  Bstr() noexcept = default;  // null
  // Copies `text`; throws std::bad_alloc without memory.
  explicit Bstr(std::wstring_view text);
  Bstr(const Bstr& other);
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr& operator=(Bstr other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  // Takes over a text that the caller owns, null included.
  static Bstr Take(BSTR text) noexcept {
    Bstr taken;
    taken.text_ = text;
    return taken;
  }
  // Copies a text that somebody else owns; a null text gives a null copy.
  static Bstr Copy(BSTR text);
  // An empty text, not null.
  static Bstr Empty() { return Bstr(std::wstring_view()); }

  BSTR get() const noexcept { return text_; }
  bool null() const noexcept { return !text_; }
  bool empty() const noexcept { return SysStringLen(text_) == 0; }
  std::wstring_view view() const noexcept {
    return text_ ? std::wstring_view(text_, SysStringLen(text_)) : std::wstring_view(L"", 0);
  }
  // NUL-terminated, never null.
  const wchar_t* c_str() const noexcept { return text_ ? text_ : L""; }
  bool operator==(const Bstr& other) const noexcept { return view() == other.view(); }

  BSTR* put() noexcept {
    *this = Bstr();
    return &text_;
  }
  // Where the text stands, for in and out parameters: it may be freed and replaced there.
  BSTR* place() noexcept { return &text_; }
  // Gives the text away to `place`; what stood there is freed.
  void moveTo(BSTR& place) noexcept { SysFreeString(std::exchange(place, detach())); }
  [[nodiscard]] BSTR detach() noexcept { return std::exchange(text_, nullptr); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace qrn::com
