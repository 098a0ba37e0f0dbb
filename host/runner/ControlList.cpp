#include "host/runner/ControlList.h"

#include <algorithm>

#include "host/runner/Form.h"
#include "host/script/VbErrors.h"

namespace qrn::host {
namespace {

// Walks a form's controls for For Each. Controls that go meanwhile end the walk.
class ControlWalk final : public ComObject<IEnumVARIANT> {
 public:
  ControlWalk(Com<Form> form, size_t at) : form_(std::move(form)), at_(at) {}

  STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    if (!items) return E_POINTER;
    ULONG given = 0;
    for (; given < count && at_ < All().size(); ++given, ++at_) {
      items[given] = Variant(Com<IDispatch>(All()[at_].get())).release();
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = All().size() - std::min(at_, All().size());
    at_ += std::min<size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override { return at_ = 0, S_OK; }
  STDMETHODIMP Clone(IEnumVARIANT** copy) override {
    return Guard(
        [&] { return Com<IEnumVARIANT>(MakeCom<ControlWalk>(form_, at_).get()).copyTo(copy); });
  }

 private:
  const std::vector<Com<FormControl>>& All() const noexcept { return form_->controls().list(); }

  Com<Form> form_;
  size_t at_;
};

}  // namespace

ControlList::ControlList(Form& form) : form_(&form) {}
ControlList::~ControlList() = default;

void ControlList::Count(Call& call) { call.Give(static_cast<int32_t>(form_->controls().size())); }

void ControlList::Item(Call& call) {
  const std::vector<Com<FormControl>>& all = form_->controls().list();
  FormControl* control = nullptr;
  if (call.Value(0).type() == VT_BSTR) {
    control = form_->Find(call.Text(0));
  } else {
    const int32_t place = call.Number(0, -1);
    if (place >= 0 && static_cast<size_t>(place) < all.size()) {
      control = all[static_cast<size_t>(place)].get();
    }
  }
  if (!control) throw ScriptError{kInvalidCall, L"the form has no such control"};
  call.Give(Variant(Com<IDispatch>(control)));
}

void ControlList::NewEnum(Call& call) {
  Variant walk;
  walk->vt = VT_UNKNOWN;
  walk->punkVal = Com<IUnknown>(MakeCom<ControlWalk>(form_, 0).get()).detach();
  call.Give(std::move(walk));
}

std::vector<MemberTable> ControlList::Tables() const {
  static constexpr MemberEntry kMembers[] = {
      Member<&ControlList::Item>(L"Item", kGet, kValueMember),
      Member<&ControlList::Count>(L"Count", kGet),
      Member<&ControlList::NewEnum>(L"_NewEnum", kGet, DISPID_NEWENUM)};
  return {kMembers};
}

}  // namespace qrn::host
