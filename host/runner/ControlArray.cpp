#include "host/runner/ControlArray.h"

#include "host/script/VbErrors.h"

namespace qrn::host {

FormControl* ControlArray::Find(int index) const noexcept {
  const auto found = elements_.find(index);
  return found == elements_.end() ? nullptr : found->second.get();
}

void ControlArray::Item(Call& call) {
  FormControl* element = call.Has(0) ? Find(call.Number(0)) : nullptr;
  if (!element) throw ScriptError{kNoElement, name_ + L" has no such element"};
  call.Give(Variant(Com<IDispatch>(element)));
}

void ControlArray::Count(Call& call) { call.Give(static_cast<int32_t>(elements_.size())); }

void ControlArray::LBound(Call& call) {
  call.Give(static_cast<int32_t>(elements_.empty() ? 0 : elements_.begin()->first));
}

void ControlArray::UBound(Call& call) {
  call.Give(static_cast<int32_t>(elements_.empty() ? -1 : elements_.rbegin()->first));
}

std::vector<MemberTable> ControlArray::Tables() const {
  static constexpr MemberEntry kMembers[] = {
      Member<&ControlArray::Item>(L"Item", kGet, kValueMember),
      Member<&ControlArray::Count>(L"Count", kGet), Member<&ControlArray::LBound>(L"LBound", kGet),
      Member<&ControlArray::UBound>(L"UBound", kGet)};
  return {kMembers};
}

}  // namespace qrn::host
