// Enumerators of COM: a list taken at one moment, handed out piece by piece.
#pragma once

#include <algorithm>
#include <vector>

#include "com/Com.h"
#include "com/Guard.h"
#include "com/Module.h"

namespace qrn::com {

// `Interface` is an IEnum..., `Item` what it hands out. `Copy` (HRESULT(Item* to, const Item&
// from)) makes a copy that the receiver frees; `Drop` (void(Item&)) frees one.
template <class Interface, class Item, auto Copy, auto Drop>
class Enumerator final : public Interface {
 public:
  // Takes over the items.
  static HRESULT Make(std::vector<Item> items, Interface** out) {
    if (!out) {
      for (Item& item : items) Drop(item);
      return E_POINTER;
    }
    *out = new Enumerator(std::move(items));
    return S_OK;
  }

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    if (!out) return E_POINTER;
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(Interface);
    *out = known ? static_cast<Interface*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP Next(ULONG wanted, Item* out, ULONG* given) override {
    if (!out || (!given && wanted != 1)) return E_POINTER;
    ULONG count = 0;
    HRESULT result = S_OK;
    while (SUCCEEDED(result) && count < wanted && at_ < items_.size()) {
      result = Copy(&out[count], items_[at_]);
      if (SUCCEEDED(result)) ++count, ++at_;
    }
    if (given) *given = count;
    if (FAILED(result)) return result;
    return count == wanted ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = items_.size() - at_;
    at_ += std::min<size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    at_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** out) override {
    return Guard([&] {
      std::vector<Item> copies;
      copies.reserve(items_.size());
      for (const Item& item : items_) {
        copies.emplace_back();
        Check(Copy(&copies.back(), item));
      }
      const HRESULT result = Make(std::move(copies), out);
      if (SUCCEEDED(result)) static_cast<Enumerator*>(*out)->at_ = at_;
      return result;
    });
  }

 private:
  explicit Enumerator(std::vector<Item> items) : items_(std::move(items)) {}
  ~Enumerator() {
    for (Item& item : items_) Drop(item);
  }

  ModuleLock lock_;
  ULONG references_ = 1;
  std::vector<Item> items_;
  size_t at_ = 0;
};

}  // namespace qrn::com
