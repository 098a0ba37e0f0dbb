#include "binding/ListItems.h"

namespace qrn {

void ListItems::Select(int32_t index) const noexcept {
  Ask(messages_.select, Index(Has(index) ? index : kNone));
}

std::wstring ListItems::Text(int32_t index) const {
  const int32_t length = Has(index) ? Ask(messages_.textLength, Index(index)) : 0;
  if (length <= 0) return {};
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  const int32_t taken = Ask(messages_.text, Index(index), reinterpret_cast<LPARAM>(text.data()));
  text.resize(taken > 0 ? static_cast<size_t>(taken) : 0);
  return text;
}

}  // namespace qrn
