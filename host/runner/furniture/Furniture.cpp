#include "host/runner/furniture/Furniture.h"

#include <algorithm>
#include <stdexcept>

#include "host/container/Fonts.h"
#include "host/container/HostedControl.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/runner/Form.h"
#include "host/runner/InputEvents.h"
#include "host/runner/PropertyValues.h"

namespace qrn::host {
namespace {

// Events of all kinds; a label has no keys.
const std::vector<EventInfo>& EventsOfKind(FurnitureKind kind) {
  static const std::vector<EventInfo> kMouse = {
      {0, L"Click", 0},     {0, L"DblClick", 0}, {0, L"MouseDown", 4},
      {0, L"MouseMove", 4}, {0, L"MouseUp", 4},
  };
  static const std::vector<EventInfo> kKeys = [] {
    std::vector<EventInfo> list = kMouse;
    list.push_back({0, L"KeyDown", 2});
    list.push_back({0, L"KeyPress", 1});
    list.push_back({0, L"KeyUp", 2});
    return list;
  }();
  static const std::vector<EventInfo> kTexts = [] {
    std::vector<EventInfo> list = kKeys;
    list.push_back({0, L"Change", 0});
    return list;
  }();
  if (kind == kText) return kTexts;
  return kind == kButton ? kKeys : kMouse;
}

}  // namespace

Furniture::Furniture(Form& form, FormControl* container, const form::ControlNode& node,
                     FurnitureKind kind)
    : FormControl(form, container, node), kind_(kind), look_(FirstLook(kind)) {}

void Furniture::Read(CompanionFiles& files, form::Mistakes& mistakes) {
  FormControl::Read(files, mistakes);
  look_ = FirstLook(kind_);
  for (const form::Property& property : node().properties) {
    try {
      if (TakeProperty(kind_, look_, property, files) || IsContainerProperty(property.name)) {
        continue;
      }
      mistakes.Add(property.line, "a " + node().className + " has no property " + property.name);
    } catch (const std::runtime_error& error) {
      mistakes.Add(property.line, error.what());
    }
  }
  if (!watch_) watch_ = std::make_unique<FontWatch>([this] { Changed(); });
  watch_->Watch(look_.font ? look_.font.get() : form().look().font.get());
}

std::span<const EventInfo> Furniture::Events() const { return EventsOfKind(kind_); }

void Furniture::AmbientChanged(DISPID id) noexcept {
  if (id == DISPID_AMBIENT_FONT && !look_.font) Changed();
}

void Furniture::Changed() {
  if (!HasForm()) return;
  OnLook();
}

HFONT Furniture::FontHandle() const noexcept {
  return HandleOf(look_.font ? look_.font.get() : form().look().font.get());
}

wchar_t Furniture::MnemonicOf() const noexcept {
  if (!look_.useMnemonic) return 0;
  const std::wstring& text = look_.text;
  for (size_t at = text.find(L'&'); at < text.size(); at = text.find(L'&', at + 2)) {
    if (at + 1 == text.size()) return 0;
    if (text[at + 1] != L'&') return static_cast<wchar_t>(towupper(text[at + 1]));
  }
  return 0;
}

bool Furniture::IsMnemonic(const MSG& message, wchar_t key) const noexcept {
  const wchar_t own = MnemonicOf();
  if (message.message != WM_SYSCHAR || own == 0) return false;
  return look_.enabled && visible() && static_cast<wchar_t>(towupper(key)) == own;
}

void Furniture::Raise(const wchar_t* event, DISPPARAMS& arguments) {
  const Com<FormControl> alive(this);
  form().code().Fire(*this, event, arguments);
}

void Furniture::Raise(const wchar_t* event) {
  DISPPARAMS none{};
  Raise(event, none);
}

void Furniture::RaiseMouse(UINT message, WPARAM wParam, POINT point) {
  RaiseMouseEvent(message, wParam, ToTwips(point.x), ToTwips(point.y),
                  [this](const wchar_t* event, DISPPARAMS& arguments) { Raise(event, arguments); });
}

void Furniture::Caption(Call& call) {
  if (!call.IsPut()) return call.Give(look_.text);
  form().EnsureLoaded();
  look_.text = call.NewText();
  OnText();
}

void Furniture::Enabled(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look_.enabled);
  form().EnsureLoaded();
  look_.enabled = call.NewTruth();
  OnLook();
}

void Furniture::BackColor(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.backColor));
  form().EnsureLoaded();
  look_.backColor = static_cast<OLE_COLOR>(call.NewNumber());
  OnLook();
}

void Furniture::ForeColor(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.foreColor));
  form().EnsureLoaded();
  look_.foreColor = static_cast<OLE_COLOR>(call.NewNumber());
  OnLook();
}

// A piece that has the form's font gets one of its own when code asks for it.
void Furniture::Font(Call& call) {
  form().EnsureLoaded();
  if (call.IsPut()) {
    const Com<IFontDisp> font = Query<IFontDisp>(call.NewValue(VT_DISPATCH)->pdispVal);
    if (!font) throw ScriptError{com::kInvalidPropertyValue, L"Font needs a font"};
    look_.font = font;
    watch_->Watch(font.get());
    return OnLook();
  }
  if (!look_.font) {
    Com<IFont> own;
    if (const Com<IFont> shared = Query<IFont>(form().look().font)) shared->Clone(own.put());
    look_.font = Query<IFontDisp>(own);
    watch_->Watch(look_.font.get());
  }
  call.Give(Variant(Com<IDispatch>(look_.font.get())));
}

namespace {

// Font.Name and its like behind FontName and its like.
void FontMember(Furniture& piece, Call& call, const wchar_t* member) {
  VARIANT font{};
  DISPPARAMS none{};
  Call ask(&none, &font, kGet);
  piece.Font(ask);
  const Com<IDispatch> object = Com<IDispatch>::Take(font.pdispVal);
  if (!call.IsPut()) return call.Give(GetMember(object.get(), member, {}));
  const Variant value = call.NewValue();
  PutMember(object.get(), member, *value.get());
}

}  // namespace

void Furniture::FontName(Call& call) { FontMember(*this, call, L"Name"); }
void Furniture::FontSize(Call& call) { FontMember(*this, call, L"Size"); }
void Furniture::FontBold(Call& call) { FontMember(*this, call, L"Bold"); }

void Furniture::Alignment(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(look_.alignment));
  form().EnsureLoaded();
  const int32_t alignment = call.NewNumber();
  if (alignment < 0 || alignment > 2) throw ScriptError{com::kInvalidPropertyValue, L"Alignment"};
  look_.alignment = static_cast<TextAlignment>(alignment);
  OnLook();
}

void Furniture::TabStop(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(look_.tabStop);
  look_.tabStop = call.NewTruth();
}

void Furniture::Refresh(Call&) {
  form().EnsureLoaded();
  OnLook();
}

std::vector<MemberTable> Furniture::Tables() const {
  // clang-format off
  static constexpr MemberEntry kMembers[] = {
      Member<&Furniture::Enabled>(L"Enabled", kProperty),
      Member<&Furniture::BackColor>(L"BackColor", kProperty),
      Member<&Furniture::ForeColor>(L"ForeColor", kProperty),
      Member<&Furniture::Font>(L"Font", kProperty),
      Member<&Furniture::FontName>(L"FontName", kProperty),
      Member<&Furniture::FontSize>(L"FontSize", kProperty),
      Member<&Furniture::FontBold>(L"FontBold", kProperty),
      Member<&Furniture::Refresh>(L"Refresh", kMethod),
  };
  // clang-format on
  return {OwnMembers(), kMembers, ContainerMembers()};
}

}  // namespace qrn::host
