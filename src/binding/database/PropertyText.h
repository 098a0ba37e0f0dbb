// A text property: what the host put, and the bytes that the engine takes.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/CodePage.h"

namespace qrn {

class PropertyText {
 public:
  void Set(std::u16string_view wide) {
    std::string narrow = Utf16ToCodePage(wide);
    wide_ = wide;
    narrow_ = std::move(narrow);
    null_ = false;
  }
  // No text at all, which a stored form tells from an empty one.
  void SetNull() noexcept {
    wide_.clear();
    narrow_.clear();
    null_ = true;
  }
  void SetNarrow(std::string_view narrow) { Set(CodePageToUtf16(narrow)); }

  const std::u16string& wide() const noexcept { return wide_; }
  const char* c_str() const noexcept { return narrow_.c_str(); }
  bool empty() const noexcept { return wide_.empty(); }
  bool null() const noexcept { return null_; }

 private:
  std::u16string wide_;
  std::string narrow_;
  bool null_ = false;
};

}  // namespace qrn
