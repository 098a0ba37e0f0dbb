#include "host/runner/FormControl.h"

#include <stdexcept>

#include "host/container/Text.h"
#include "host/container/WindowUse.h"
#include "host/form/SourceText.h"
#include "host/runner/Form.h"
#include "host/runner/PropertyValues.h"
#include "host/script/VbErrors.h"

namespace qrn::host {
namespace {

constexpr Bounds kFirstBounds{0, 0, 1215, 495};

using form::Property;

bool Is(const Property& property, const char* name) { return form::SameWord(property.name, name); }

}  // namespace

FormControl::FormControl(Form& form, FormControl* container, const form::ControlNode& node)
    : form_(&form),
      container_(container),
      node_(node),
      name_(Wide(node.name)),
      index_(node.index),
      line_(node.line) {}

Form& FormControl::form() const {
  if (!form_) throw ScriptError{kObjectGone, L"the form of " + name_ + L" is gone"};
  return *form_;
}

std::wstring FormControl::DisplayName() const {
  if (index() < 0) return name_;
  return name_ + L"(" + std::to_wstring(index()) + L")";
}

bool FormControl::LiesIn(const FormControl& outer) const noexcept {
  for (const FormControl* holder = container_; holder; holder = holder->container_) {
    if (holder == &outer) return true;
  }
  return false;
}

HWND FormControl::ParentWindow() const {
  return container_ ? container_->Window() : form().Window();
}

OLE_COLOR FormControl::BackColour() const {
  return container_ ? container_->BackColour() : form().look().backColor;
}

// Places on the form itself are in its scale; those in a frame are always twips.
double FormControl::UnitsPerTwip() const {
  return !container_ && form().look().pixelScale ? 1.0 / kTwipsPerPixel : 1;
}

void FormControl::Read(CompanionFiles&, form::Mistakes& mistakes) {
  bounds_ = kFirstBounds;
  visible_ = true;
  tabStop_ = true;
  tabIndex_ = 0;
  tag_.clear();
  toolTip_.clear();
  for (const Property& property : node_.properties) {
    try {
      TakeContainerProperty(property);
    } catch (const std::runtime_error& error) {
      mistakes.Add(property.line, error.what());
    }
  }
}

bool FormControl::TakeContainerProperty(const Property& property) {
  const double twips = 1 / UnitsPerTwip();
  if (Is(property, "Left")) return bounds_.left = NumberOf(property) * twips, true;
  if (Is(property, "Top")) return bounds_.top = NumberOf(property) * twips, true;
  if (Is(property, "Width")) return bounds_.width = NumberOf(property) * twips, true;
  if (Is(property, "Height")) return bounds_.height = NumberOf(property) * twips, true;
  if (Is(property, "Visible")) return visible_ = TruthOf(property), true;
  if (Is(property, "TabIndex")) return tabIndex_ = WholeOf(property, 0, 32767), true;
  if (Is(property, "TabStop")) return tabStop_ = TruthOf(property), true;
  if (Is(property, "Tag")) return tag_ = TextOf(property), true;
  if (Is(property, "ToolTipText")) return toolTip_ = TextOf(property), true;
  return false;
}

bool FormControl::CanTakeFocus() const {
  const HWND window = Window();
  return window && IsWindowVisible(window) && AllEnabled(window);
}

bool FormControl::HasFocus() const noexcept {
  const HWND window = Window();
  const HWND focus = GetFocus();
  return window && focus && (focus == window || IsChild(window, focus));
}

void FormControl::PutAt(const Bounds& bounds) {
  bounds_ = bounds;
  OnMoved();
}

void FormControl::Name(Call& call) { call.Give(name_); }

void FormControl::Index(Call& call) {
  if (index() < 0) throw ScriptError{kNotAnArray, name_ + L" is no array"};
  call.Give(static_cast<int32_t>(index()));
}

void FormControl::Parent(Call& call) { call.Give(Variant(Com<IDispatch>(&form()))); }

void FormControl::Container(Call& call) {
  if (container_) return call.Give(Variant(Com<IDispatch>(container_)));
  Parent(call);
}

void FormControl::Object(Call& call) {
  form().EnsureLoaded();
  const Com<IDispatch> own = Own();
  call.Give(Variant(own ? own : Com<IDispatch>(this)));
}

void FormControl::Edge(Call& call, double Bounds::*edge) {
  if (!call.IsPut()) return call.Give(bounds_.*edge * UnitsPerTwip());
  form().EnsureLoaded();
  Bounds moved = bounds_;
  moved.*edge = call.NewReal() / UnitsPerTwip();
  if (moved.width < 0 || moved.height < 0) {
    throw ScriptError{com::kInvalidPropertyValue, L"a size below 0"};
  }
  PutAt(moved);
}

void FormControl::Left(Call& call) { Edge(call, &Bounds::left); }
void FormControl::Top(Call& call) { Edge(call, &Bounds::top); }
void FormControl::Width(Call& call) { Edge(call, &Bounds::width); }
void FormControl::Height(Call& call) { Edge(call, &Bounds::height); }

void FormControl::Visible(Call& call) {
  if (!call.IsPut()) return call.GiveTruth(visible_);
  form().EnsureLoaded();
  visible_ = call.NewTruth();
  OnShown();
  form().keyboard().Keep();
}

void FormControl::Tag(Call& call) {
  if (!call.IsPut()) return call.Give(tag_);
  tag_ = call.NewText();
}

void FormControl::ToolTipText(Call& call) {
  if (!call.IsPut()) return call.Give(toolTip_);
  toolTip_ = call.NewText();
}

void FormControl::TabIndex(Call& call) {
  if (!call.IsPut()) return call.Give(static_cast<int32_t>(tabIndex_));
  const int32_t place = call.NewNumber();
  if (place < 0 || place > 32767) throw ScriptError{com::kInvalidPropertyValue, L"TabIndex"};
  tabIndex_ = place;
}

void FormControl::Handle(Call& call) {
  form().EnsureLoaded();
  call.Give(static_cast<int32_t>(reinterpret_cast<intptr_t>(Window())));
}

void FormControl::Move(Call& call) {
  form().EnsureLoaded();
  const double units = UnitsPerTwip();
  Bounds moved = bounds_;
  moved.left = call.Real(0, moved.left * units) / units;
  moved.top = call.Real(1, moved.top * units) / units;
  moved.width = call.Real(2, moved.width * units) / units;
  moved.height = call.Real(3, moved.height * units) / units;
  if (moved.width < 0 || moved.height < 0) throw ScriptError{kInvalidCall, L"a size below 0"};
  PutAt(moved);
}

void FormControl::SetFocus(Call&) {
  form().EnsureLoaded();
  if (!CanTakeFocus() || !TakeFocus()) {
    throw ScriptError{kInvalidCall, name_ + L" cannot take the keyboard now"};
  }
}

void FormControl::ZOrder(Call& call) {
  form().EnsureLoaded();
  const HWND behind = call.Number(0) == 0 ? HWND_TOP : HWND_BOTTOM;
  if (Window())
    SetWindowPos(Window(), behind, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

MemberTable FormControl::ContainerMembers() {
  // clang-format off
  static constexpr MemberEntry kMembers[] = {
      Member<&FormControl::Name>(L"Name", kGet),
      Member<&FormControl::Index>(L"Index", kGet),
      Member<&FormControl::Parent>(L"Parent", kGet),
      Member<&FormControl::Container>(L"Container", kGet),
      Member<&FormControl::Object>(L"Object", kGet),
      Member<&FormControl::Left>(L"Left", kProperty),
      Member<&FormControl::Top>(L"Top", kProperty),
      Member<&FormControl::Width>(L"Width", kProperty),
      Member<&FormControl::Height>(L"Height", kProperty),
      Member<&FormControl::Visible>(L"Visible", kProperty),
      Member<&FormControl::Tag>(L"Tag", kProperty),
      Member<&FormControl::ToolTipText>(L"ToolTipText", kProperty),
      Member<&FormControl::TabIndex>(L"TabIndex", kProperty),
      Member<&FormControl::Handle>(L"hWnd", kGet),
      Member<&FormControl::Move>(L"Move", kMethod),
      Member<&FormControl::SetFocus>(L"SetFocus", kMethod),
      Member<&FormControl::ZOrder>(L"ZOrder", kMethod),
  };
  // clang-format on
  return kMembers;
}

}  // namespace qrn::host
