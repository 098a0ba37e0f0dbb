#include "host/runner/HostedFormControl.h"

#include "host/container/Text.h"
#include "host/runner/Form.h"

namespace qrn::host {
namespace {

// Members that a control may have itself and that are its own then.
constexpr const wchar_t* kOwnFirst[] = {L"hWnd", L"ToolTipText"};

}  // namespace

void HostedFormControl::Detach() noexcept {
  Destroy();
  FormControl::Detach();
}

void HostedFormControl::Make() {
  const ControlClass found = form().classes().Find(node().library, node().className);
  hosted_ = std::make_unique<HostedControl>(*this, form().classes(), found);
}

void HostedFormControl::Read(CompanionFiles& files, form::Mistakes& mistakes) {
  FormControl::Read(files, mistakes);
  if (hosted_) hosted_->Load(node().properties, node().line, files, mistakes);
}

bool HostedFormControl::Create() {
  if (!hosted_->Activate()) return false;
  if (!visible()) hosted_->Show(false);
  return true;
}

void HostedFormControl::Destroy() noexcept {
  if (const std::unique_ptr<HostedControl> closing = std::move(hosted_)) closing->Close();
}

bool HostedFormControl::IsTabStop() const {
  if (!CanTakeFocus()) return false;
  try {
    const Variant stops = GetMember(hosted_->Dispatch(), L"TabStop", {});
    Variant truth;
    return FAILED(stops.as(VT_BOOL, truth)) || truth->boolVal != VARIANT_FALSE;
  } catch (const ScriptError&) {
    return tabStop();
  }
}

bool HostedFormControl::TakeFocus() {
  return CameBy([this] { return hosted_ && hosted_->TakeFocus(); });
}

void HostedFormControl::GiveUpFocus() noexcept {
  if (hosted_) hosted_->GiveUpFocus();
}

// It says so itself, or what has the keyboard in it takes every key, as a text of several lines
// does. That is asked without the message: an edit window that sees one behaves as in a dialog
// afterwards.
bool HostedFormControl::WantsEnter() const {
  CONTROLINFO info{};
  info.cb = sizeof info;
  const Com<IOleControl> control = Query<IOleControl>(HostedObject());
  const bool told = control && control->GetControlInfo(&info) == S_OK;
  if (told && (info.dwFlags & CTRLINFO_EATS_RETURN) != 0) return true;
  return HasFocus() &&
         (SendMessageW(GetFocus(), WM_GETDLGCODE, VK_RETURN, 0) & DLGC_WANTALLKEYS) != 0;
}

MnemonicUse HostedFormControl::TryMnemonic(const MSG& message, wchar_t) {
  const bool used = hosted_ && CanTakeFocus() && hosted_->TryMnemonic(message);
  return used ? MnemonicUse::Done : MnemonicUse::None;
}

void HostedFormControl::AmbientChanged(DISPID id) noexcept {
  if (hosted_) hosted_->AmbientChanged(id);
}

std::span<const EventInfo> HostedFormControl::Events() const {
  if (!hosted_) return {};
  return hosted_->Events();
}

Com<IDispatch> HostedFormControl::Own() {
  return hosted_ ? Com<IDispatch>(hosted_->Dispatch()) : Com<IDispatch>();
}

bool HostedFormControl::OthersFirst(std::wstring_view name) const noexcept {
  for (const wchar_t* own : kOwnFirst) {
    if (SameName(own, name)) return true;
  }
  return false;
}

HRESULT HostedFormControl::FindOther(LPOLESTR name, LCID locale, DISPID* id) {
  form().EnsureLoaded();
  const Com<IDispatch> own = Own();
  return own ? own->GetIDsOfNames(IID_NULL, &name, 1, locale, id) : DISP_E_UNKNOWNNAME;
}

HRESULT HostedFormControl::InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                       VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
  form().EnsureLoaded();
  const Com<IDispatch> own = Own();
  if (!own) return DISP_E_MEMBERNOTFOUND;
  return own->Invoke(id, IID_NULL, locale, flags, parameters, result, exception, badArgument);
}

void HostedFormControl::OnMoved() {
  if (hosted_) hosted_->MoveTo(FormControl::Place());
}

void HostedFormControl::OnShown() {
  if (hosted_) hosted_->Show(visible());
}

Com<InPlaceFrame> HostedFormControl::Frame() const { return form().frame(); }

AmbientValues HostedFormControl::Ambients() const {
  AmbientValues ambients = form().Ambients();
  ambients.displayName = DisplayName();
  ambients.backColor = BackColour();
  return ambients;
}

void HostedFormControl::OnEvent(const EventInfo& event, DISPPARAMS& parameters) {
  form().code().Fire(*this, event.name, parameters);
}

void HostedFormControl::OnUIActive(bool active) {
  if (active) form().OnUIActive(*this);
}

void HostedFormControl::OnFocus(bool focus) {
  if (focus) form().OnFocus(*this);
}

void HostedFormControl::OnMoved(const RECT& place) {
  PutAt({ToTwips(place.left), ToTwips(place.top), ToTwips(place.right - place.left),
         ToTwips(place.bottom - place.top)});
}

bool HostedFormControl::OnKey(MSG& message) { return form().keyboard().Translate(message); }

void HostedFormControl::ShowPages() { form().ShowPages(*this); }

}  // namespace qrn::host
