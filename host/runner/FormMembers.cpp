#include "host/runner/FormMembers.h"

#include "host/container/Text.h"
#include "host/runner/ControlList.h"
#include "host/runner/Form.h"
#include "host/script/VbErrors.h"

namespace qrn::host {

Form& FormMembers::form() noexcept { return static_cast<Form&>(*this); }

HWND FormMembers::Window() noexcept { return form().Window(); }

void FormMembers::TellControls(DISPID ambient) {
  for (const Com<FormControl>& control : form().controls()) control->AmbientChanged(ambient);
}

void FormMembers::Name(Call& call) { call.Give(form().name()); }

void FormMembers::Caption(Call& call) {
  if (!call.IsPut()) return call.Give(look_.caption);
  form().EnsureLoaded();
  look_.caption = call.NewText();
  SetWindowTextW(Window(), look_.caption.c_str());
}

void FormMembers::Handle(Call& call) {
  form().EnsureLoaded();
  call.Give(static_cast<int32_t>(reinterpret_cast<intptr_t>(Window())));
}

void FormMembers::MoveTo(const RECT& place) {
  if (place.right < place.left || place.bottom < place.top) {
    throw ScriptError{kInvalidCall, L"a size below 0"};
  }
  form().MoveTo(place);
}

RECT FormMembers::Place() {
  form().EnsureLoaded();
  return form().Place();
}

// The window's own place counts in twips of the screen, whatever the scale inside.
void FormMembers::Left(Call& call) {
  RECT place = Place();
  if (!call.IsPut()) return call.Give(ToTwips(place.left));
  OffsetRect(&place, ToPixels(call.NewReal()) - place.left, 0);
  MoveTo(place);
}

void FormMembers::Top(Call& call) {
  RECT place = Place();
  if (!call.IsPut()) return call.Give(ToTwips(place.top));
  OffsetRect(&place, 0, ToPixels(call.NewReal()) - place.top);
  MoveTo(place);
}

void FormMembers::Width(Call& call) {
  RECT place = Place();
  if (!call.IsPut()) return call.Give(ToTwips(place.right - place.left));
  place.right = place.left + ToPixels(call.NewReal());
  MoveTo(place);
}

void FormMembers::Height(Call& call) {
  RECT place = Place();
  if (!call.IsPut()) return call.Give(ToTwips(place.bottom - place.top));
  place.bottom = place.top + ToPixels(call.NewReal());
  MoveTo(place);
}

void FormMembers::Move(Call& call) {
  const RECT now = Place();
  RECT place{};
  place.left = ToPixels(call.Real(0, ToTwips(now.left)));
  place.top = ToPixels(call.Real(1, ToTwips(now.top)));
  place.right = place.left + ToPixels(call.Real(2, ToTwips(now.right - now.left)));
  place.bottom = place.top + ToPixels(call.Real(3, ToTwips(now.bottom - now.top)));
  MoveTo(place);
}

RECT FormMembers::Client() {
  form().EnsureLoaded();
  RECT client{};
  GetClientRect(Window(), &client);
  return client;
}

void FormMembers::ScaleWidth(Call& call) { call.Give(Client().right * look_.UnitsPerPixel()); }
void FormMembers::ScaleHeight(Call& call) { call.Give(Client().bottom * look_.UnitsPerPixel()); }

void FormMembers::Visible(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(Window() && IsWindowVisible(Window()));
  call.NewTruth() ? form().Display(false) : form().Conceal();
}

void FormMembers::Enabled(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look_.enabled);
  form().EnsureLoaded();
  look_.enabled = call.NewTruth();
  EnableWindow(Window(), look_.enabled);
}

void FormMembers::BackColor(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.backColor));
  form().EnsureLoaded();
  look_.backColor = static_cast<OLE_COLOR>(call.NewNumber());
  TellControls(DISPID_AMBIENT_BACKCOLOR);
  InvalidateRect(Window(), nullptr, TRUE);
}

void FormMembers::ForeColor(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.foreColor));
  form().EnsureLoaded();
  look_.foreColor = static_cast<OLE_COLOR>(call.NewNumber());
  TellControls(DISPID_AMBIENT_FORECOLOR);
}

void FormMembers::Font(Call& call) {
  if (!call.IsPut()) return call.Give(Variant(Com<IDispatch>(look_.font.get())));
  form().EnsureLoaded();
  const Com<IFontDisp> font = Query<IFontDisp>(call.NewValue(VT_DISPATCH)->pdispVal);
  if (!font) throw ScriptError{com::kInvalidPropertyValue, L"Font needs a font"};
  look_.font = font;
  TellControls(DISPID_AMBIENT_FONT);
}

void FormMembers::Tag(Call& call) {
  if (!call.IsPut()) return call.Give(look_.tag);
  look_.tag = call.NewText();
}

void FormMembers::WindowState(Call& call) {
  if (!call.IsPut()) {
    return call.Give(int32_t{IsIconic(Window()) ? 1 : IsZoomed(Window()) ? 2 : 0});
  }
  const int32_t state = call.NewNumber();
  if (state < 0 || state > 2) throw ScriptError{com::kInvalidPropertyValue, L"WindowState"};
  form().EnsureLoaded();
  look_.windowState = state;
  constexpr int kShows[] = {SW_RESTORE, SW_MINIMIZE, SW_MAXIMIZE};
  if (IsWindowVisible(Window())) ShowWindow(Window(), kShows[state]);
}

void FormMembers::KeyPreview(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look_.keyPreview);
  look_.keyPreview = call.NewTruth();
}

void FormMembers::MousePointer(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.mousePointer));
  look_.mousePointer = call.NewNumber();
}

void FormMembers::ActiveControl(Call& call) {
  FormControl* active = form().Focused();
  call.Give(Variant(active ? Com<IDispatch>(active) : Com<IDispatch>()));
}

void FormMembers::Controls(Call& call) {
  form().EnsureLoaded();
  const auto list = MakeCom<ControlList>(form());
  if (call.Count() == 0) return call.Give(Variant(Com<IDispatch>(list.get())));
  list->Item(call);
}

void FormMembers::ControlCount(Call& call) {
  call.Give(static_cast<int32_t>(form().controls().size()));
}

void FormMembers::Show(Call& call) { form().Display(call.Number(0) != 0); }
void FormMembers::Hide(Call&) { form().Conceal(); }

void FormMembers::Refresh(Call&) {
  form().EnsureLoaded();
  RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void FormMembers::SetFocus(Call&) {
  form().EnsureLoaded();
  if (!IsWindowVisible(Window())) throw ScriptError{kInvalidCall, form().name() + L" is not shown"};
  SetForegroundWindow(Window());
}

void FormMembers::ZOrder(Call& call) {
  form().EnsureLoaded();
  SetWindowPos(Window(), call.Number(0) == 0 ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

std::vector<MemberTable> FormMembers::Tables() const {
  // clang-format off
  static constexpr MemberEntry kMembers[] = {
      Member<&FormMembers::Name>(L"Name", kGet),
      Member<&FormMembers::Caption>(L"Caption", kProperty),
      Member<&FormMembers::Handle>(L"hWnd", kGet),
      Member<&FormMembers::Left>(L"Left", kProperty),
      Member<&FormMembers::Top>(L"Top", kProperty),
      Member<&FormMembers::Width>(L"Width", kProperty),
      Member<&FormMembers::Height>(L"Height", kProperty),
      Member<&FormMembers::ScaleWidth>(L"ScaleWidth", kGet),
      Member<&FormMembers::ScaleHeight>(L"ScaleHeight", kGet),
      Member<&FormMembers::Visible>(L"Visible", kProperty),
      Member<&FormMembers::Enabled>(L"Enabled", kProperty),
      Member<&FormMembers::BackColor>(L"BackColor", kProperty),
      Member<&FormMembers::ForeColor>(L"ForeColor", kProperty),
      Member<&FormMembers::Font>(L"Font", kProperty),
      Member<&FormMembers::Tag>(L"Tag", kProperty),
      Member<&FormMembers::WindowState>(L"WindowState", kProperty),
      Member<&FormMembers::KeyPreview>(L"KeyPreview", kProperty),
      Member<&FormMembers::MousePointer>(L"MousePointer", kProperty),
      Member<&FormMembers::ActiveControl>(L"ActiveControl", kGet),
      Member<&FormMembers::Controls>(L"Controls", kGet),
      Member<&FormMembers::ControlCount>(L"Count", kGet),
      Member<&FormMembers::Show>(L"Show", kMethod),
      Member<&FormMembers::Hide>(L"Hide", kMethod),
      Member<&FormMembers::Move>(L"Move", kMethod),
      Member<&FormMembers::Refresh>(L"Refresh", kMethod),
      Member<&FormMembers::SetFocus>(L"SetFocus", kMethod),
      Member<&FormMembers::ZOrder>(L"ZOrder", kMethod),
  };
  // clang-format on
  return {kMembers};
}

}  // namespace qrn::host
