// The screen as programs read it for those who do not see it: labels beside controls, and the
// object behind a window.
#pragma once

#include <oleacc.h>

#include "Hosted.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

// A label on the form, as long as it lives in front of a control's window.
class Label : Pinned {
 public:
  Label(const wchar_t* text, HWND before, HWND form, DWORD style = 0)
      : window_(CreateWindowExW(0, L"STATIC", text, WS_CHILD | style, 0, 0, 10, 10, form, nullptr,
                                nullptr, nullptr)) {
    SetWindowPos(window_, GetWindow(before, GW_HWNDPREV), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (!GetWindow(before, GW_HWNDPREV)) BringWindowToTop(window_);
  }
  ~Label() { DestroyWindow(window_); }
  HWND get() const { return window_; }

 private:
  HWND window_;
};

// What a screen reader finds in a window, or in an object of one.
class Reader {
 public:
  explicit Reader(HWND window) {
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               object_.putVoid());
    EXPECT_TRUE(object_);
  }
  explicit Reader(com::Com<IAccessible> object) : object_(std::move(object)) {}
  IAccessible* operator->() const { return object_.get(); }
  explicit operator bool() const { return static_cast<bool>(object_); }

  // "none" where it has none.
  std::string Name(int32_t child = 0) const { return Ask(&IAccessible::get_accName, child); }
  std::string Value(int32_t child = 0) const { return Ask(&IAccessible::get_accValue, child); }
  long Count() const {
    long count = -1;
    object_->get_accChildCount(&count);
    return count;
  }
  // -1 for none.
  long Role(int32_t child = 0) const { return Number(&IAccessible::get_accRole, child); }
  long State(int32_t child = 0) const { return Number(&IAccessible::get_accState, child); }
  // 0 for none.
  long Selection() const {
    com::Variant child;
    return object_->get_accSelection(child.put()) == S_OK ? child->lVal : 0;
  }
  long Focus() const {
    com::Variant child;
    return object_->get_accFocus(child.put()) == S_OK ? child->lVal : 0;
  }
  Reader Child(int32_t number) const {
    com::Com<IDispatch> child;
    object_->get_accChild(Long(number), child.put());
    return Reader(com::Query<IAccessible>(child));
  }

 private:
  std::string Ask(HRESULT (IAccessible::*get)(VARIANT, BSTR*), int32_t child) const {
    com::Bstr text;
    return (object_.get()->*get)(Long(child), text.put()) == S_OK ? Utf8(text.view()) : "none";
  }
  long Number(HRESULT (IAccessible::*get)(VARIANT, VARIANT*), int32_t child) const {
    com::Variant number;
    return (object_.get()->*get)(Long(child), number.put()) == S_OK ? number->lVal : -1;
  }

  com::Com<IAccessible> object_;
};

// What a script finds in a window, by names alone.
class ScriptReader {
 public:
  explicit ScriptReader(HWND window) {
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IDispatch),
                               object_.putVoid());
    EXPECT_TRUE(object_);
  }
  explicit ScriptReader(com::Com<IDispatch> object) : object_(std::move(object)) {}

  // "ok BSTR:text", or the failure.
  std::string Ask(const wchar_t* name, std::initializer_list<VARIANT> arguments = {}) const {
    return Get(object_.get(), name, arguments).Text();
  }
  std::string Do(const wchar_t* name, std::initializer_list<VARIANT> arguments = {}) const {
    return CallMethod(object_.get(), name, arguments).Text();
  }
  ScriptReader Child(VARIANT number) const {
    const CallResult found = Get(object_.get(), L"accChild", {number});
    com::Com<IDispatch> child;
    if (found.value.type() == VT_DISPATCH) child = com::Com<IDispatch>(found.value->pdispVal);
    return ScriptReader(std::move(child));
  }
  explicit operator bool() const { return static_cast<bool>(object_); }

 private:
  com::Com<IDispatch> object_;
};

}  // namespace qrn::test
