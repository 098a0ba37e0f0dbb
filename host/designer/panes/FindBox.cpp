#include "host/designer/panes/FindBox.h"

#include <algorithm>

#include "com/Text.h"

namespace qrn::designer {

FindBox::FindBox() : message_(RegisterWindowMessageW(FINDMSGSTRINGW)) {}

void FindBox::Open(HWND owner, std::u16string_view seed) {
  if (window_) {
    SetForegroundWindow(window_);
    return;
  }
  const std::wstring_view text = com::AsWide(seed.empty() ? sought_.text : seed);
  const size_t size = std::min(text.size(), std::size(text_) - 1);
  std::fill(std::copy_n(text.begin(), size, text_), std::end(text_), L'\0');
  request_ = {};
  request_.lStructSize = sizeof request_;
  request_.hwndOwner = owner;
  request_.lpstrFindWhat = text_;
  request_.wFindWhatLen = static_cast<WORD>(std::size(text_));
  request_.Flags =
      FR_DOWN | (sought_.matchCase ? FR_MATCHCASE : 0) | (sought_.wholeWord ? FR_WHOLEWORD : 0);
  window_ = FindTextW(&request_);
}

void FindBox::Close() noexcept {
  if (window_) DestroyWindow(window_);
  window_ = nullptr;
}

bool FindBox::Takes(MSG& message) noexcept {
  return window_ && IsDialogMessageW(window_, &message) != FALSE;
}

bool FindBox::Hears(UINT message, LPARAM lParam, bool* seek) {
  if (message != message_) return false;
  const auto& request = *reinterpret_cast<const FINDREPLACEW*>(lParam);
  *seek = (request.Flags & FR_FINDNEXT) != 0;
  if (request.Flags & FR_DIALOGTERM) window_ = nullptr;
  if (*seek) {
    sought_ = {std::u16string(com::AsUtf16(request.lpstrFindWhat)), (request.Flags & FR_DOWN) != 0,
               (request.Flags & FR_MATCHCASE) != 0, (request.Flags & FR_WHOLEWORD) != 0};
  }
  return true;
}

}  // namespace qrn::designer
