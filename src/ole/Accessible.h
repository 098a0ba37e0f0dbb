// What a screen reader finds in a contained window. The system's own object tells most of it, but
// not the name: it looks for a label among the neighbours of the very window, and a contained one
// has none. Here the label is looked for beside the control.
#pragma once

#include <oleacc.h>

#include <string>

#include "com/Object.h"
#include "ole/Kit.h"

namespace qrn::ole {

// The text of the label before a window, by the system's rule: the nearest static window before it,
// shown or not, with none between them that takes the Tab key or begins a group. Without the mark
// of its key; empty where there is no label.
std::wstring LabelBefore(HWND window);

class Accessible : public com::Object<IAccessible, IOleWindow> {
 public:
  // Of `window`, under the name of the label before `labelled`. Throws where the system has no
  // object for it. Once the window is gone the calls fail or give nothing.
  Accessible(HWND window, HWND labelled);

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return system_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return system_->GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override {
    return system_->GetIDsOfNames(id, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override;

  // IAccessible
  STDMETHODIMP get_accParent(IDispatch** parent) override { return system_->get_accParent(parent); }
  STDMETHODIMP get_accChildCount(long* count) override { return system_->get_accChildCount(count); }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
    return system_->get_accChild(child, object);
  }
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
    return system_->get_accValue(child, value);
  }
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) override {
    return system_->get_accDescription(child, text);
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
    return system_->get_accRole(child, role);
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
    return system_->get_accState(child, state);
  }
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) override {
    return system_->get_accHelp(child, text);
  }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
    return system_->get_accHelpTopic(file, child, topic);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* keys) override {
    return system_->get_accKeyboardShortcut(child, keys);
  }
  STDMETHODIMP get_accFocus(VARIANT* child) override { return system_->get_accFocus(child); }
  STDMETHODIMP get_accSelection(VARIANT* children) override {
    return system_->get_accSelection(children);
  }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
    return system_->get_accDefaultAction(child, action);
  }
  STDMETHODIMP accSelect(long flags, VARIANT child) override {
    return system_->accSelect(flags, child);
  }
  STDMETHODIMP accLocation(long* left, long* top, long* width, long* height,
                           VARIANT child) override {
    return system_->accLocation(left, top, width, height, child);
  }
  STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* end) override {
    return system_->accNavigate(direction, start, end);
  }
  STDMETHODIMP accHitTest(long x, long y, VARIANT* child) override {
    return system_->accHitTest(x, y, child);
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) override {
    return system_->accDoDefaultAction(child);
  }
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override {
    return system_->put_accName(child, name);
  }
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override {
    return system_->put_accValue(child, value);
  }

  // IOleWindow
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

 protected:
  void* Find(REFIID id) noexcept override;

  HWND window() const noexcept { return window_; }
  // The window itself, and not one of its children.
  static bool IsSelf(const VARIANT& child) noexcept {
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
  }

 private:
  HWND window_;
  HWND labelled_;
  Com<IAccessible> system_;
};

}  // namespace qrn::ole
