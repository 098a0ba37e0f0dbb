// The system's dialog for finding, and what was sought last.
#pragma once

// clang-format off
#include <windows.h>
#include <commdlg.h>
// clang-format on

#include <string>

#include "host/designer/model/CodeTyping.h"

namespace qrn::designer {

class FindBox {
 public:
  FindBox();
  FindBox(const FindBox&) = delete;
  FindBox& operator=(const FindBox&) = delete;
  ~FindBox() { Close(); }

  // Opens the dialog, or brings it to the front. `owner` gets its messages.
  void Open(HWND owner, std::u16string_view seed);
  void Close() noexcept;
  // True for a message that is the dialog's own.
  bool Takes(MSG& message) noexcept;
  // True for the dialog's message to its owner; `*seek` if the next place is asked for.
  bool Hears(UINT message, LPARAM lParam, bool* seek);

  const Sought& sought() const noexcept { return sought_; }
  HWND window() const noexcept { return window_; }

 private:
  UINT message_;
  FINDREPLACEW request_{};
  wchar_t text_[200] = L"";
  HWND window_ = nullptr;
  Sought sought_;
};

}  // namespace qrn::designer
