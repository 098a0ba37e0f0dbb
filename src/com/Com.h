// Owners of interface pointers and of memory that COM hands out.
#pragma once

#include <objbase.h>
#include <unknwn.h>

#include <cwchar>
#include <utility>

#include "com/Handles.h"

namespace qrn::com {

// One counted reference to an interface. Copies add a reference.
template <class I>
class Com {
 public:
  Com() noexcept = default;
  Com(std::nullptr_t) noexcept {}
  explicit Com(I* pointer) noexcept : pointer_(pointer) {
    if (pointer_) pointer_->AddRef();
  }
  Com(const Com& other) noexcept : Com(other.pointer_) {}
  Com(Com&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  Com& operator=(Com other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~Com() {
    if (pointer_) pointer_->Release();
  }

  // Takes over a reference that the caller already owns.
  static Com Take(I* pointer) noexcept {
    Com taken;
    taken.pointer_ = pointer;
    return taken;
  }

  I* get() const noexcept { return pointer_; }
  I* operator->() const noexcept { return pointer_; }
  I& operator*() const noexcept { return *pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }
  bool operator==(const Com& other) const noexcept { return pointer_ == other.pointer_; }

  // For out parameters: what was held is let go first.
  I** put() noexcept {
    reset();
    return &pointer_;
  }
  void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }
  void reset() noexcept { *this = Com(); }
  // Gives the reference away.
  [[nodiscard]] I* detach() noexcept { return std::exchange(pointer_, nullptr); }
  // Gives the reference to an out parameter of this interface or of one of its bases; not null.
  template <class Base>
  HRESULT detachTo(Base** out) noexcept {
    *out = detach();
    return S_OK;
  }
  // Answers an out parameter with a reference of its own; null counts as E_POINTER.
  HRESULT copyTo(I** out) const noexcept {
    if (!out) return E_POINTER;
    if (pointer_) pointer_->AddRef();
    *out = pointer_;
    return S_OK;
  }

 private:
  I* pointer_ = nullptr;
};

// The interface I of an object; empty where there is no object or no such interface.
template <class I, class From>
Com<I> Query(From* from) noexcept {
  Com<I> found;
  if (from) from->QueryInterface(__uuidof(I), found.putVoid());
  return found;
}
template <class I, class From>
Com<I> Query(const Com<From>& from) noexcept {
  return Query<I>(from.get());
}

// Memory of the task allocator, as interface methods hand it out.
template <class T>
using TaskMemory = Held<T*, &CoTaskMemFree>;

// A copy of a text in task memory, for out parameters; null without memory.
inline LPOLESTR CopyToTaskMemory(const wchar_t* text) noexcept {
  const size_t bytes = (wcslen(text) + 1) * sizeof(wchar_t);
  auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
  if (copy) memcpy(copy, text, bytes);
  return copy;
}

}  // namespace qrn::com
