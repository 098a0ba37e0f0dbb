// The base of plain COM objects: counting and queries.
//
//   class Sink final : public com::Object<IPropertyNotifySink> { ... };
//   const Com<Sink> sink = com::Make<Sink>(arguments...);
//
// An object deletes itself with its last reference and keeps the module loaded as long as it lives.
// It belongs to one thread.
#pragma once

#include <unknwn.h>

#include <utility>

#include "com/Com.h"
#include "com/Module.h"

namespace qrn::com {

// Offers `First`, which answers for IUnknown too, and `Rest`. Interfaces that are bases of these
// are answered by overriding Find.
template <class First, class... Rest>
class Object : public First, public Rest... {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

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
  virtual ~Object() = default;

  // The interface of that id, not counted; null if the object has none.
  virtual void* Find(REFIID id) noexcept {
    if (id == __uuidof(IUnknown) || id == __uuidof(First)) return static_cast<First*>(this);
    void* found = nullptr;
    static_cast<void>(((id == __uuidof(Rest) && (found = static_cast<Rest*>(this), true)) || ...));
    return found;
  }

 private:
  ModuleLock lock_;
  ULONG references_ = 0;
};

// A new object with one reference. Throws what its constructor throws.
template <class T, class... Arguments>
Com<T> Make(Arguments&&... arguments) {
  return Com<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace qrn::com
