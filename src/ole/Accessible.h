// What a screen reader finds in a contained window. The system's own object tells most of it, but
// not the name: it looks for a label among the neighbours of the very window, and a contained one
// has none. Here the label is looked for beside the control.
#pragma once

#include <string>

#include "ole/AccessibleObject.h"

namespace qrn::ole {

// The text of the label before a window, by the system's rule: the nearest static window before it,
// shown or not, with none between them that takes the Tab key or begins a group. Without the mark
// of its key; empty where there is no label.
std::wstring LabelBefore(HWND window);

class Accessible : public AccessibleObject<IOleWindow> {
 public:
  // Of `window`, called as the label before `labelled`, or by its own text where that is null; the
  // `role` 0 leaves that to the system. Throws where the system has no object for it. Once the
  // window is gone the calls fail or give nothing.
  Accessible(HWND window, HWND labelled, LONG role = 0);

  // IAccessible
  STDMETHODIMP get_accParent(IDispatch** parent) override { return system_->get_accParent(parent); }
  STDMETHODIMP get_accChildCount(long* count) override { return system_->get_accChildCount(count); }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
    return system_->get_accChild(ChildNumber(child), object);
  }
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
    return system_->get_accValue(ChildNumber(child), value);
  }
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) override {
    return system_->get_accDescription(ChildNumber(child), text);
  }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
    return system_->get_accState(ChildNumber(child), state);
  }
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) override {
    return system_->get_accHelp(ChildNumber(child), text);
  }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
    return system_->get_accHelpTopic(file, ChildNumber(child), topic);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* keys) override {
    return system_->get_accKeyboardShortcut(ChildNumber(child), keys);
  }
  STDMETHODIMP get_accFocus(VARIANT* child) override { return system_->get_accFocus(child); }
  STDMETHODIMP get_accSelection(VARIANT* children) override {
    return system_->get_accSelection(children);
  }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
    return system_->get_accDefaultAction(ChildNumber(child), action);
  }
  STDMETHODIMP accSelect(long flags, VARIANT child) override {
    return system_->accSelect(flags, ChildNumber(child));
  }
  STDMETHODIMP accLocation(long* left, long* top, long* width, long* height,
                           VARIANT child) override {
    return system_->accLocation(left, top, width, height, ChildNumber(child));
  }
  STDMETHODIMP accNavigate(long direction, VARIANT start, VARIANT* end) override {
    return system_->accNavigate(direction, ChildNumber(start), end);
  }
  STDMETHODIMP accHitTest(long x, long y, VARIANT* child) override {
    return system_->accHitTest(x, y, child);
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) override {
    return system_->accDoDefaultAction(ChildNumber(child));
  }
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override {
    return system_->put_accName(ChildNumber(child), name);
  }
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override {
    return system_->put_accValue(ChildNumber(child), value);
  }

  // IOleWindow
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

 protected:
  HWND window() const noexcept { return window_; }
  // What the window is called; empty leaves that to the system.
  virtual std::wstring Label() const;

 private:
  HWND window_;
  HWND labelled_;
  LONG role_;
  Com<IAccessible> system_;
};

// A window whose value is its text: an edit box, a combo box. A password is not told.
class TextAccessible : public Accessible {
 public:
  using Accessible::Accessible;

  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
};

}  // namespace qrn::ole
