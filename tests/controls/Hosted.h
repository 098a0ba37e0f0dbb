// A control in the small container, with its events written down.
#pragma once

#include <optional>
#include <sstream>

#include "com/VbFormat.h"
#include "ole/Control.h"
#include "ole/SystemGuid.h"
#include "platform/Utf.h"
#include "tests/ole/Caller.h"
#include "tests/ole/TestSite.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

inline std::string Utf8(std::wstring_view text) {
  return Utf16ToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

// A container's format service, played: puts brackets round the text and keeps what it was asked.
struct PlayedFormat {
  enum Offer { kNothing, kOtherObjects, kService };

  Offer offered = kNothing;
  bool fails = false;
  std::string asked;  // "#,##0:1234 1041 512;"
};

// Wide like the real one: tells of every argument that the service is given.
class FormatService final : public Counted<IVBFormat> {
 public:
  explicit FormatService(PlayedFormat& played) : played_(played) {}

  STDMETHODIMP Format(VARIANT* value, BSTR format, void* buffer, USHORT size, LONG locale,
                      SHORT firstDay, USHORT firstWeek, USHORT*) override {
    const std::wstring text = value->bstrVal;
    played_.asked += Utf8(format) + ":" + Utf8(text) + " " + std::to_string(locale) + " " +
                     std::to_string(size) + " " + std::to_string(firstDay + firstWeek) + ";";
    if (played_.fails) return E_FAIL;
    wcscpy(static_cast<wchar_t*>(buffer), (L"[" + text + L"]").c_str());
    return S_OK;
  }

 private:
  PlayedFormat& played_;
};

class FormatSource final : public Counted<IGetVBAObject> {
 public:
  explicit FormatSource(PlayedFormat& played) : played_(played), service_(played) {}
  STDMETHODIMP GetObject(REFIID id, void** out, DWORD) override {
    *out = nullptr;
    const bool has = played_.offered == PlayedFormat::kService;
    return has ? service_.QueryInterface(id, out) : E_NOINTERFACE;
  }

 private:
  PlayedFormat& played_;
  FormatService service_;
};

// The control and its site. Until `Show` it has no window.
class HostedControl : Pinned {
 public:
  HostedControl(ole::Control& control, const wchar_t* name, bool runs)
      : control_(com::Com<IUnknown>::Take(&control.Inner())),
        dispatch_(com::Query<IDispatch>(control_)),
        object_(com::Query<IOleObject>(control_)) {
    if (runs) site.RunTime(name);
    site.more = [this](REFIID id, void** out) {
      const bool has = id == __uuidof(IGetVBAObject) && format.offered != PlayedFormat::kNothing;
      return has ? source_.QueryInterface(id, out) : E_NOINTERFACE;
    };
    object_->SetClientSite(&site);
    connection_.emplace(control_.get(), ole::AsGuid(control.table().eventsId), &events);
  }
  ~HostedControl() { Unhost(); }

  HRESULT Show(LONG verb = OLEIVERB_INPLACEACTIVATE) {
    return object_->DoVerb(verb, nullptr, &site, 0, site.window(), &site.place);
  }
  // As the form goes: window and site are taken away.
  void Unhost() {
    connection_.reset();
    if (!object_) return;
    const auto object = std::exchange(object_, {});
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
  }
  // Lets go of the control as well; nothing but `site` and `events` is of use then.
  void Drop() {
    Unhost();
    dispatch_.reset();
    control_.reset();
  }

  IDispatch* object() { return dispatch_.get(); }
  HRESULT Set(const wchar_t* name, VARIANT value) { return Put(object(), name, {value}).result; }
  std::string Value(const wchar_t* name) { return Get(object(), name).Text(); }
  // The properties that are listed as "Name=TYPE:value Name=...", with the values that they have.
  std::string Values(const std::string& listed) {
    std::istringstream words(listed);
    std::string all;
    for (std::string word; words >> word;) {
      const std::string name = word.substr(0, word.find('='));
      const std::string value = Value(std::wstring(name.begin(), name.end()).c_str());
      all += (all.empty() ? "" : " ") + name + "=" +
             (value.starts_with("ok ") ? value.substr(3) : value);
    }
    return all;
  }
  // What was raised since the last look, without those of the events -600 to -609 that end in one
  // of these digits.
  std::string TakeEvents(std::string_view leftOut) {
    std::string& log = events.log;
    std::string kept;
    for (size_t at = 0; at < log.size();) {
      const size_t end = std::min(log.find(") ", at), log.size() - 2) + 2;
      const std::string event = log.substr(at, end - at);
      const bool stock = event.starts_with("-60") && leftOut.find(event[3]) != leftOut.npos;
      if (!stock) kept += event;
      at = end;
    }
    log.clear();
    return kept;
  }
  // Offers a key to the control as the container's message loop does.
  HRESULT Offer(MSG& message) {
    // No reference of the call's own: a handler may drop the last one.
    auto* const active = com::Query<IOleInPlaceActiveObject>(control_).get();
    return active->TranslateAccelerator(&message);
  }
  HRESULT Offer(UINT message, WPARAM key) {
    MSG offered{};
    offered.message = message;
    offered.wParam = key;
    return Offer(offered);
  }

  TestSite site;
  EventSink events;
  PlayedFormat format;

 private:
  com::Com<IUnknown> control_;
  com::Com<IDispatch> dispatch_;
  com::Com<IOleObject> object_;
  FormatSource source_{format};
  std::optional<Connection> connection_;
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
inline std::string TextOf(HWND window) {
  wchar_t text[2048] = {};
  return Utf8({text, static_cast<size_t>(GetWindowTextW(window, text, 2048))});
}
// Sends the characters one by one, as typed.
inline void Type(HWND window, std::u16string_view characters) {
  for (const char16_t character : characters) SendMessageW(window, WM_CHAR, character, 1);
}
// Runs what waits in the message queue.
inline void RunMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace qrn::test
