// What code sees of a form.
#include <algorithm>

#include "host/container/Text.h"
#include "host/runner/Form.h"
#include "host/runner/Program.h"

namespace qrn::host {
namespace {

constexpr HRESULT kInvalidCall = static_cast<HRESULT>(0x800A0005);

// Walks a form's controls for For Each. Controls that go meanwhile end the walk.
class ControlWalk final : public ComObject<IEnumVARIANT> {
 public:
  ControlWalk(Com<Form> form, size_t at) : form_(std::move(form)), at_(at) {}

  STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    if (!items) return E_POINTER;
    ULONG given = 0;
    for (; given < count && at_ < form_->controls().size(); ++given, ++at_) {
      items[given] = Variant(Com<IDispatch>(form_->controls()[at_].get())).release();
    }
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const size_t left = form_->controls().size() - std::min(at_, form_->controls().size());
    at_ += std::min<size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override { return at_ = 0, S_OK; }
  STDMETHODIMP Clone(IEnumVARIANT** copy) override {
    return Guard(
        [&] { return Com<IEnumVARIANT>(MakeCom<ControlWalk>(form_, at_).get()).copyTo(copy); });
  }

 private:
  Com<Form> form_;
  size_t at_;
};

// The controls of a form: Controls("edtName"), Controls(0), Controls.Count.
class ControlList final : public Scriptable {
 public:
  explicit ControlList(Form& form) noexcept : form_(&form) {}

  void Count(Call& call) { call.Give(static_cast<int32_t>(form_->controls().size())); }

  void Item(Call& call) {
    const Variant key = call.Value(0);
    FormControl* control = nullptr;
    if (key.type() == VT_BSTR) {
      control = form_->Find(call.Text(0));
    } else {
      const int32_t place = call.Number(0, -1);
      const auto& controls = form_->controls();
      if (place >= 0 && static_cast<size_t>(place) < controls.size()) {
        control = controls[static_cast<size_t>(place)].get();
      }
    }
    if (!control) throw ScriptError{kInvalidCall, L"the form has no such control"};
    call.Give(Variant(Com<IDispatch>(control)));
  }

  void NewEnum(Call& call) {
    Variant walk;
    walk->vt = VT_UNKNOWN;
    walk->punkVal = Com<IUnknown>(MakeCom<ControlWalk>(form_, 0).get()).detach();
    call.Give(std::move(walk));
  }

 protected:
  std::vector<MemberTable> Tables() const override {
    static constexpr MemberEntry kMembers[] = {
        Member<&ControlList::Item>(L"Item", kGet, kValueMember),
        Member<&ControlList::Count>(L"Count", kGet),
        Member<&ControlList::NewEnum>(L"_NewEnum", kGet, DISPID_NEWENUM)};
    return {kMembers};
  }

 private:
  Com<Form> form_;
};

}  // namespace

void Form::Name(Call& call) { call.Give(name_); }

void Form::Caption(Call& call) {
  if (!call.IsPut()) return call.Give(look_.caption);
  EnsureLoaded();
  look_.caption = call.NewText();
  SetWindowTextW(window_, look_.caption.c_str());
}

void Form::Handle(Call& call) {
  EnsureLoaded();
  call.Give(static_cast<int32_t>(reinterpret_cast<intptr_t>(window_)));
}

RECT Form::WindowPlace() const {
  RECT place{};
  GetWindowRect(window_, &place);
  return place;
}

void Form::MoveTo(const RECT& place) {
  if (place.right < place.left || place.bottom < place.top) {
    throw ScriptError{kInvalidCall, L"a size below 0"};
  }
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

// The window's own place counts in twips of the screen, whatever the scale inside.
void Form::Left(Call& call) {
  EnsureLoaded();
  RECT place = WindowPlace();
  if (!call.IsPut()) return call.Give(ToTwips(place.left));
  OffsetRect(&place, ToPixels(call.NewReal()) - place.left, 0);
  MoveTo(place);
}

void Form::Top(Call& call) {
  EnsureLoaded();
  RECT place = WindowPlace();
  if (!call.IsPut()) return call.Give(ToTwips(place.top));
  OffsetRect(&place, 0, ToPixels(call.NewReal()) - place.top);
  MoveTo(place);
}

void Form::Width(Call& call) {
  EnsureLoaded();
  RECT place = WindowPlace();
  if (!call.IsPut()) return call.Give(ToTwips(place.right - place.left));
  place.right = place.left + ToPixels(call.NewReal());
  MoveTo(place);
}

void Form::Height(Call& call) {
  EnsureLoaded();
  RECT place = WindowPlace();
  if (!call.IsPut()) return call.Give(ToTwips(place.bottom - place.top));
  place.bottom = place.top + ToPixels(call.NewReal());
  MoveTo(place);
}

void Form::Move(Call& call) {
  EnsureLoaded();
  const RECT now = WindowPlace();
  RECT place{};
  place.left = ToPixels(call.Real(0, ToTwips(now.left)));
  place.top = ToPixels(call.Real(1, ToTwips(now.top)));
  place.right = place.left + ToPixels(call.Real(2, ToTwips(now.right - now.left)));
  place.bottom = place.top + ToPixels(call.Real(3, ToTwips(now.bottom - now.top)));
  MoveTo(place);
}

void Form::ScaleWidth(Call& call) {
  EnsureLoaded();
  RECT client{};
  GetClientRect(window_, &client);
  call.Give(client.right * UnitsPerPixel());
}

void Form::ScaleHeight(Call& call) {
  EnsureLoaded();
  RECT client{};
  GetClientRect(window_, &client);
  call.Give(client.bottom * UnitsPerPixel());
}

void Form::Visible(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(window_ && IsWindowVisible(window_));
  call.NewTruth() ? Display(false) : Conceal();
}

void Form::Enabled(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look_.enabled);
  EnsureLoaded();
  look_.enabled = call.NewTruth();
  EnableWindow(window_, look_.enabled);
}

void Form::BackColor(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.backColor));
  EnsureLoaded();
  look_.backColor = static_cast<OLE_COLOR>(call.NewNumber());
  for (const Com<FormControl>& control : controls_) {
    control->AmbientChanged(DISPID_AMBIENT_BACKCOLOR);
  }
  InvalidateRect(window_, nullptr, TRUE);
}

void Form::ForeColor(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.foreColor));
  EnsureLoaded();
  look_.foreColor = static_cast<OLE_COLOR>(call.NewNumber());
  for (const Com<FormControl>& control : controls_) {
    control->AmbientChanged(DISPID_AMBIENT_FORECOLOR);
  }
}

void Form::Font(Call& call) {
  if (!call.IsPut()) return call.Give(Variant(Com<IDispatch>(look_.font.get())));
  EnsureLoaded();
  const Com<IFontDisp> font = Query<IFontDisp>(call.NewValue(VT_DISPATCH)->pdispVal);
  if (!font) throw ScriptError{ole::kInvalidPropertyValue, L"Font needs a font"};
  look_.font = font;
  for (const Com<FormControl>& control : controls_) control->AmbientChanged(DISPID_AMBIENT_FONT);
}

void Form::Tag(Call& call) {
  if (!call.IsPut()) return call.Give(look_.tag);
  look_.tag = call.NewText();
}

void Form::WindowState(Call& call) {
  if (!call.IsPut()) {
    return call.Give(int32_t{IsIconic(window_) ? 1 : IsZoomed(window_) ? 2 : 0});
  }
  const int32_t state = call.NewNumber();
  if (state < 0 || state > 2) throw ScriptError{ole::kInvalidPropertyValue, L"WindowState"};
  EnsureLoaded();
  look_.windowState = state;
  constexpr int kShows[] = {SW_RESTORE, SW_MINIMIZE, SW_MAXIMIZE};
  if (IsWindowVisible(window_)) ShowWindow(window_, kShows[state]);
}

void Form::KeyPreview(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look_.keyPreview);
  look_.keyPreview = call.NewTruth();
}

void Form::MousePointer(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.mousePointer));
  look_.mousePointer = call.NewNumber();
}

void Form::ActiveControl(Call& call) {
  call.Give(Variant(active_ ? Com<IDispatch>(active_) : Com<IDispatch>()));
}

void Form::Controls(Call& call) {
  EnsureLoaded();
  const auto list = MakeCom<ControlList>(*this);
  if (call.Count() == 0) return call.Give(Variant(Com<IDispatch>(list.get())));
  list->Item(call);
}

void Form::ControlCount(Call& call) { call.Give(static_cast<int32_t>(controls_.size())); }

void Form::Show(Call& call) { Display(call.Number(0) != 0); }
void Form::Hide(Call&) { Conceal(); }

void Form::Refresh(Call&) {
  EnsureLoaded();
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void Form::SetFocus(Call&) {
  EnsureLoaded();
  if (!IsWindowVisible(window_)) throw ScriptError{kInvalidCall, name_ + L" is not shown"};
  SetForegroundWindow(window_);
}

void Form::ZOrder(Call& call) {
  EnsureLoaded();
  SetWindowPos(window_, call.Number(0) == 0 ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

std::vector<MemberTable> Form::Tables() const {
  // clang-format off
  static constexpr MemberEntry kMembers[] = {
      Member<&Form::Name>(L"Name", kGet),
      Member<&Form::Caption>(L"Caption", kProperty),
      Member<&Form::Handle>(L"hWnd", kGet),
      Member<&Form::Left>(L"Left", kProperty),
      Member<&Form::Top>(L"Top", kProperty),
      Member<&Form::Width>(L"Width", kProperty),
      Member<&Form::Height>(L"Height", kProperty),
      Member<&Form::ScaleWidth>(L"ScaleWidth", kGet),
      Member<&Form::ScaleHeight>(L"ScaleHeight", kGet),
      Member<&Form::Visible>(L"Visible", kProperty),
      Member<&Form::Enabled>(L"Enabled", kProperty),
      Member<&Form::BackColor>(L"BackColor", kProperty),
      Member<&Form::ForeColor>(L"ForeColor", kProperty),
      Member<&Form::Font>(L"Font", kProperty),
      Member<&Form::Tag>(L"Tag", kProperty),
      Member<&Form::WindowState>(L"WindowState", kProperty),
      Member<&Form::KeyPreview>(L"KeyPreview", kProperty),
      Member<&Form::MousePointer>(L"MousePointer", kProperty),
      Member<&Form::ActiveControl>(L"ActiveControl", kGet),
      Member<&Form::Controls>(L"Controls", kGet),
      Member<&Form::ControlCount>(L"Count", kGet),
      Member<&Form::Show>(L"Show", kMethod),
      Member<&Form::Hide>(L"Hide", kMethod),
      Member<&Form::Move>(L"Move", kMethod),
      Member<&Form::Refresh>(L"Refresh", kMethod),
      Member<&Form::SetFocus>(L"SetFocus", kMethod),
      Member<&Form::ZOrder>(L"ZOrder", kMethod),
  };
  // clang-format on
  return {kMembers};
}

}  // namespace qrn::host
