// The common part of the container's own COM objects: counting and queries.
#pragma once

#include <atomic>

#include "com/Com.h"
#include "com/Guard.h"
#include "com/Variant.h"

namespace qrn::host {

using com::Bstr;
using com::Com;
using com::Guard;
using com::Query;
using com::Variant;

// Objects of the container that are alive: tests end with none.
inline std::atomic<long> liveObjects{0};

// An object that offers `First` and `Rest`. Made by MakeCom, it deletes itself with its last
// reference. Interfaces that are bases of these are answered by overriding Find.
template <class First, class... Rest>
class ComObject : public First, public Rest... {
 public:
  ComObject() noexcept { ++liveObjects; }
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    if (!out) return E_POINTER;
    *out = Find(id);
    if (!*out) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~ComObject() { --liveObjects; }

  // The interface of that id, null if the object has none.
  virtual void* Find(REFIID id) noexcept {
    if (id == __uuidof(IUnknown) || id == __uuidof(First)) return static_cast<First*>(this);
    void* found = nullptr;
    static_cast<void>(((id == __uuidof(Rest) && (found = static_cast<Rest*>(this), true)) || ...));
    return found;
  }

 private:
  ULONG references_ = 0;
};

template <class T, class... Arguments>
Com<T> MakeCom(Arguments&&... arguments) {
  return Com<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace qrn::host
