#include "host/designer/window/ClipboardText.h"

#include <cstring>

#include "com/Handles.h"
#include "host/container/Text.h"

namespace qrn::designer {
namespace {

class OpenClipboard {
 public:
  explicit OpenClipboard(HWND owner) noexcept : isOpen_(::OpenClipboard(owner) != FALSE) {}
  OpenClipboard(const OpenClipboard&) = delete;
  OpenClipboard& operator=(const OpenClipboard&) = delete;
  ~OpenClipboard() {
    if (isOpen_) CloseClipboard();
  }
  explicit operator bool() const noexcept { return isOpen_; }

 private:
  bool isOpen_;
};

}  // namespace

void PutClipboardText(HWND owner, const std::string& utf8) {
  const std::wstring text = host::Wide(utf8);
  const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  com::GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE, bytes));
  void* memory = block ? GlobalLock(block.get()) : nullptr;
  if (!memory) return;
  std::memcpy(memory, text.c_str(), bytes);
  GlobalUnlock(block.get());
  const OpenClipboard open(owner);
  if (!open) return;
  EmptyClipboard();
  // The clipboard has the block from here on.
  if (SetClipboardData(CF_UNICODETEXT, block.get())) static_cast<void>(block.release());
}

std::string ClipboardText(HWND owner) {
  const OpenClipboard open(owner);
  HANDLE block = open ? GetClipboardData(CF_UNICODETEXT) : nullptr;
  const auto* text = block ? static_cast<const wchar_t*>(GlobalLock(block)) : nullptr;
  if (!text) return {};
  std::string utf8 = host::Utf8(std::wstring_view(text, wcsnlen(text, GlobalSize(block) / 2)));
  GlobalUnlock(block);
  return utf8;
}

}  // namespace qrn::designer
