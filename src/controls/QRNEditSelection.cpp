// The edit control's SelStart, SelLength and SelText.
#include "com/Guard.h"
#include "com/WindowText.h"
#include "controls/EditWindow.h"
#include "controls/QRNEdit.h"
#include "controls/text/TextBytes.h"
#include "platform/CodePage.h"

namespace qrn {

using editwindow::Selection;

int16_t CQRNEdit::GetSelStart() const {
  return static_cast<int16_t>(editwindow::GetSelection(contained()).start);
}

HRESULT CQRNEdit::PutSelStart(int16_t start) {
  if (start < 0) return com::kInvalidPropertyValue;
  const Selection now = editwindow::GetSelection(contained());
  const auto wanted = static_cast<DWORD>(start);
  if (wanted != now.start) editwindow::Select(contained(), {wanted, now.end});
  return S_OK;
}

int16_t CQRNEdit::GetSelLength() const {
  const Selection now = editwindow::GetSelection(contained());
  return static_cast<int16_t>(now.end - now.start);
}

HRESULT CQRNEdit::PutSelLength(int16_t length) {
  if (length < 0) return com::kInvalidPropertyValue;
  const Selection now = editwindow::GetSelection(contained());
  const DWORD end = now.start + static_cast<DWORD>(length);
  if (end <= Text.view().size()) editwindow::Select(contained(), {now.start, end});
  return S_OK;
}

HRESULT CQRNEdit::GetSelText(com::Bstr& text) {
  try {
    const com::Bstr shown(com::TextOfWindow(contained()));
    const Selection now = editwindow::GetSelection(contained());
    const std::wstring_view before = shown.view().substr(0, now.end);
    const size_t end = BytesOf(com::AsUtf16(before)) + 1;
    const std::string bytes = NarrowText(shown);
    text = WidenToBstr(std::string_view(bytes).substr(0, CutAtCharacter(bytes, end)));
    return S_OK;
  } catch (const std::bad_alloc&) {
    return com::kControlOutOfMemory;
  }
}

void CQRNEdit::PutSelText(const com::Bstr& text) {
  SendMessageW(contained(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace qrn
