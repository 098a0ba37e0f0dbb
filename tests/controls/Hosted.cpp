#include "Hosted.h"

#include "com/VbFormat.h"
#include "ole/SystemGuid.h"
#include "platform/Utf.h"

namespace qrn::test {
namespace {

std::string Utf8(std::wstring_view text) {
  return Utf16ToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

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

}  // namespace

// The small container's site with the format service beside its interfaces.
class HostedControl::Site final : public IOleClientSite {
 public:
  explicit Site(HostedControl& hosted) : hosted_(hosted), source_(hosted.format) {}
  virtual ~Site() = default;

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    if (id == __uuidof(IGetVBAObject) && hosted_.format.offered != PlayedFormat::kNothing) {
      return source_.QueryInterface(id, out);
    }
    if (id != __uuidof(IOleClientSite) && id != __uuidof(IUnknown)) {
      return hosted_.site.QueryInterface(id, out);
    }
    *out = static_cast<IOleClientSite*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return hosted_.site.AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return hosted_.site.Release(); }
  STDMETHODIMP SaveObject() override { return S_OK; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

 private:
  HostedControl& hosted_;
  FormatSource source_;
};

HostedControl::HostedControl(ole::Control& control, const wchar_t* name, bool runs)
    : control_(com::Com<IUnknown>::Take(&control.Inner())),
      dispatch_(com::Query<IDispatch>(control_)),
      object_(com::Query<IOleObject>(control_)),
      outer_(std::make_unique<Site>(*this)) {
  if (runs) site.RunTime(name);
  object_->SetClientSite(outer_.get());
  connection_ =
      std::make_unique<Connection>(control_.get(), ole::AsGuid(control.table().eventsId), &events);
}

HostedControl::~HostedControl() { Unhost(); }

HRESULT HostedControl::Show(LONG verb) {
  return object_->DoVerb(verb, nullptr, outer_.get(), 0, site.window(), &site.place);
}

void HostedControl::Unhost() {
  connection_.reset();
  if (!object_) return;
  const auto object = std::exchange(object_, {});
  object->Close(OLECLOSE_NOSAVE);
  object->SetClientSite(nullptr);
}

void HostedControl::Drop() {
  Unhost();
  dispatch_.reset();
  control_.reset();
}

HRESULT HostedControl::Offer(UINT message, WPARAM key) {
  MSG offered{};
  offered.message = message;
  offered.wParam = key;
  return Offer(offered);
}

HRESULT HostedControl::Offer(MSG& message) {
  // No reference of the call's own: a handler may drop the last one.
  auto* const active = com::Query<IOleInPlaceActiveObject>(control_).get();
  return active->TranslateAccelerator(&message);
}

std::string TextOf(HWND window) {
  wchar_t text[2048] = {};
  return Utf8({text, static_cast<size_t>(GetWindowTextW(window, text, 2048))});
}

void Type(HWND window, std::u16string_view characters) {
  for (const char16_t character : characters) SendMessageW(window, WM_CHAR, character, 1);
}

void RunMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace qrn::test
