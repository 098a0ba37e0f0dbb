// A control in the small container, with its events written down.
#pragma once

#include <memory>

#include "ole/Control.h"
#include "tests/ole/Caller.h"
#include "tests/ole/TestSite.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

// A container's format service, played: puts brackets round the text and keeps what it was asked.
struct PlayedFormat {
  enum Offer { kNothing, kOtherObjects, kService };

  Offer offered = kNothing;
  bool fails = false;
  std::string asked;  // "#,##0:1234 1041 512;"
};

// The control and its site. Until `Show` it has no window.
class HostedControl : Pinned {
 public:
  HostedControl(ole::Control& control, const wchar_t* name, bool runs);
  ~HostedControl();

  HRESULT Show(LONG verb = OLEIVERB_INPLACEACTIVATE);
  // As the form goes: window and site are taken away.
  void Unhost();
  // Lets go of the control as well; nothing but `site` and `events` is of use then.
  void Drop();

  IDispatch* object() { return dispatch_.get(); }
  HRESULT Set(const wchar_t* name, VARIANT value) { return Put(object(), name, {value}).result; }
  std::string Value(const wchar_t* name) { return Get(object(), name).Text(); }
  // Offers a key to the control as the container's message loop does.
  HRESULT Offer(MSG& message);
  HRESULT Offer(UINT message, WPARAM key);

  TestSite site;
  EventSink events;
  PlayedFormat format;

 private:
  class Site;

  com::Com<IUnknown> control_;
  com::Com<IDispatch> dispatch_;
  com::Com<IOleObject> object_;
  std::unique_ptr<Site> outer_;
  std::unique_ptr<Connection> connection_;
};

// One control class, made and hosted.
template <class C>
class Hosted : public HostedControl {
 public:
  explicit Hosted(const wchar_t* name, bool runs = true) : Hosted(new C, name, runs) {}

  C& operator*() { return *made_; }
  C* operator->() { return made_; }
  HWND window() { return made_->contained(); }

 private:
  Hosted(C* made, const wchar_t* name, bool runs) : HostedControl(*made, name, runs), made_(made) {}

  C* made_;
};

// The text of a window as UTF-8.
std::string TextOf(HWND window);
// Sends the characters one by one, as typed.
void Type(HWND window, std::u16string_view characters);
// Runs what waits in the message queue.
void RunMessages();

}  // namespace qrn::test
