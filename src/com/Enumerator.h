// Enumerators of COM: a list taken at one moment, handed out piece by piece.
#pragma once

#include <algorithm>
#include <vector>

#include "com/Guard.h"
#include "com/Object.h"

namespace qrn::com {

// `Interface` is an IEnum..., `Item` what it hands out, `Kept` what the enumerator keeps of each
// and frees by itself. `Give` (HRESULT(const Kept&, Item*)) makes an item that the receiver frees.
template <class Interface, class Item, class Kept, auto Give>
class Enumerator final : public Object<Interface> {
 public:
  explicit Enumerator(std::vector<Kept> list, size_t at = 0) : list_(std::move(list)), at_(at) {}

  STDMETHODIMP Next(ULONG wanted, Item* out, ULONG* given) override {
    if (!out || (!given && wanted != 1)) return E_POINTER;
    ULONG count = 0;
    HRESULT result = S_OK;
    while (SUCCEEDED(result) && count < wanted && at_ < list_.size()) {
      result = Give(list_[at_], &out[count]);
      if (SUCCEEDED(result)) ++count, ++at_;
    }
    if (given) *given = count;
    if (FAILED(result)) return result;
    return count == wanted ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = list_.size() - at_;
    at_ += std::min<size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    at_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** out) override {
    if (!out) return E_POINTER;
    return Guard([&] { return Make<Enumerator>(list_, at_).detachTo(out); });
  }

 private:
  std::vector<Kept> list_;
  size_t at_;
};

}  // namespace qrn::com
