#include "host/container/HostedControl.h"

#include <algorithm>

#include "host/container/Scriptable.h"
#include "host/container/Text.h"
#include "host/container/Units.h"
#include "host/form/SourceText.h"

namespace qrn::host {
namespace {

constexpr const char* kContainerProperties[] = {
    "Left",      "Top",         "Width",        "Height",           "TabIndex",        "Index",
    "Tag",       "Visible",     "ToolTipText",  "HelpContextID",    "DragIcon",        "DragMode",
    "_ExtentX",  "_ExtentY",    "_Version",     "CausesValidation", "WhatsThisHelpID", "Align",
    "Negotiate", "_StockProps", "OleObjectBlob"};

// Ambient values packed for quick activation.
DWORD AmbientFlags(const AmbientValues& ambients) noexcept {
  DWORD flags = QACONTAINER_SUPPORTSMNEMONICS | QACONTAINER_AUTOCLIP;
  if (ambients.userMode) flags |= QACONTAINER_USERMODE;
  if (ambients.displayAsDefault) flags |= QACONTAINER_DISPLAYASDEFAULT;
  return flags;
}

Com<ITypeInfo> ClassOf(IUnknown* object, const ControlClass& known) noexcept {
  if (known.type) return known.type;
  Com<ITypeInfo> type;
  if (const Com<IProvideClassInfo> provider = Query<IProvideClassInfo>(object)) {
    provider->GetClassInfo(type.put());
  }
  return type;
}

// Stands in the file for every control, also for one that keeps no such property or has none: the
// container has it then.
bool IsTabStop(const form::Property& property) { return form::SameWord(property.name, "TabStop"); }

// Events stay unheard while properties are read.
class FrozenEvents {
 public:
  explicit FrozenEvents(IUnknown* object) noexcept : control_(Query<IOleControl>(object)) {
    if (control_) control_->FreezeEvents(TRUE);
  }
  FrozenEvents(const FrozenEvents&) = delete;
  FrozenEvents& operator=(const FrozenEvents&) = delete;
  ~FrozenEvents() {
    if (control_) control_->FreezeEvents(FALSE);
  }

 private:
  Com<IOleControl> control_;
};

}  // namespace

bool IsContainerProperty(const std::string& name) noexcept {
  return std::any_of(std::begin(kContainerProperties), std::end(kContainerProperties),
                     [&](const char* known) { return form::SameWord(known, name); });
}

HostedControl::HostedControl(ControlOwner& owner, ControlClasses& classes,
                             const ControlClass& controlClass)
    : owner_(owner), object_(classes.Make(controlClass.id)) {
  if (!object_) throw ClassNotFound{"the control cannot be made"};
  ole_ = Query<IOleObject>(object_);
  if (!ole_) throw ClassNotFound{"the object is no control"};
  FindEvents(controlClass);
  site_ = MakeCom<ControlSite>(owner);
  sink_ = MakeCom<EventSink>(owner, eventType_ ? IdOf(eventType_.get()) : GUID{}, events_);
  if (!QuickActivate()) AttachPlainly();
  dispatch_ = Query<IDispatch>(object_);
}

HostedControl::~HostedControl() { Close(); }

void HostedControl::FindEvents(const ControlClass& controlClass) {
  const Com<ITypeInfo> type = ClassOf(object_.get(), controlClass);
  if (type) eventType_ = EventsOf(type.get());
  if (eventType_) events_ = ListEvents(eventType_.get());
}

bool HostedControl::QuickActivate() {
  const Com<IQuickActivate> quick = Query<IQuickActivate>(object_);
  if (!quick) return false;
  const AmbientValues ambients = owner_.Ambients();
  const Com<IFont> font = Query<IFont>(ambients.font);
  QACONTAINER container{};
  container.cbSize = sizeof container;
  container.pClientSite = site_.get();
  container.pPropertyNotifySink = site_.get();
  container.pUnkEventSink = eventType_ ? static_cast<IUnknown*>(sink_.get()) : nullptr;
  container.dwAmbientFlags = AmbientFlags(ambients);
  container.colorFore = ambients.foreColor;
  container.colorBack = ambients.backColor;
  container.pFont = font.get();
  container.dwAppearance = 1;
  container.lcid = static_cast<LONG>(ambients.locale);
  container.pOleControlSite = site_.get();
  container.pServiceProvider = site_.get();
  QACONTROL control{};
  control.cbSize = sizeof control;
  if (FAILED(quick->QuickActivate(&container, &control))) return false;
  status_ = control.dwMiscStatus;
  eventCookie_ = control.dwEventCookie;
  return true;
}

void HostedControl::AttachPlainly() {
  ole_->GetMiscStatus(DVASPECT_CONTENT, &status_);
  ole_->SetClientSite(site_.get());
  Advise();
}

Com<IConnectionPoint> HostedControl::EventPoint() const noexcept {
  Com<IConnectionPoint> point;
  const Com<IConnectionPointContainer> points = Query<IConnectionPointContainer>(object_);
  if (points && eventType_) points->FindConnectionPoint(IdOf(eventType_.get()), point.put());
  return point;
}

void HostedControl::Advise() {
  if (const Com<IConnectionPoint> point = EventPoint()) point->Advise(sink_.get(), &eventCookie_);
}

void HostedControl::Load(std::span<const form::Property> properties, int line,
                         CompanionFiles& files, form::Mistakes& mistakes) {
  const FrozenEvents frozen(object_.get());
  ShowExtent(owner_.Place());
  if (Query<IPersistPropertyBag>(object_)) {
    LoadFromBag(properties, line, files, mistakes);
  } else {
    InitNew();
    LoadOneByOne(properties, files, mistakes);
  }
  // What the bag holds of the extent is the designer's; the form's place rules.
  ShowExtent(owner_.Place());
}

void HostedControl::LoadFromBag(std::span<const form::Property> properties, int line,
                                CompanionFiles& files, form::Mistakes& mistakes) {
  const Com<IPersistPropertyBag> persist = Query<IPersistPropertyBag>(object_);
  if (properties.empty()) {
    persist->InitNew();
    return;
  }
  const auto bag = MakeCom<PropertyBag>(properties, files, mistakes);
  const bool before = mistakes.Any();
  const HRESULT result = persist->Load(bag.get(), nullptr);
  if (FAILED(result)) {
    const form::Property* last = bag->Last();
    if (!mistakes.Any() || before) {
      mistakes.Add(last ? last->line : line,
                   last ? last->name + ": the control does not take this value"
                        : "the control does not take its properties");
    }
    return;
  }
  for (const form::Property& property : properties) {
    if (bag->WasRead(property) || IsContainerProperty(property.name)) continue;
    if (IsTabStop(property)) {
      LoadOneByOne({&property, 1}, files, mistakes);
      continue;
    }
    mistakes.Add(property.line, "the control has no property " + property.name);
  }
}

void HostedControl::InitNew() noexcept {
  if (const Com<IPersistStreamInit> stream = Query<IPersistStreamInit>(object_)) stream->InitNew();
}

void HostedControl::LoadOneByOne(std::span<const form::Property> properties, CompanionFiles& files,
                                 form::Mistakes& mistakes) {
  const Com<IDispatch> dispatch = Query<IDispatch>(object_);
  for (const form::Property& property : properties) {
    if (IsContainerProperty(property.name)) continue;
    try {
      const Variant value = ValueOf(property, files);
      const bool known = PutMember(dispatch.get(), Wide(property.name), *value.get());
      if (!known && !IsTabStop(property)) {
        mistakes.Add(property.line, "the control has no property " + property.name);
      }
    } catch (const ScriptError& error) {
      mistakes.Add(property.line, Utf8(error.description));
    } catch (const std::runtime_error& error) {
      mistakes.Add(property.line, error.what());
    }
  }
}

void HostedControl::ShowExtent(const RECT& place) noexcept {
  SIZEL extent{ToHimetric(place.right - place.left), ToHimetric(place.bottom - place.top)};
  ole_->SetExtent(DVASPECT_CONTENT, &extent);
}

bool HostedControl::Activate() {
  if (IsInvisibleAtRunTime() && owner_.Ambients().userMode) return true;
  const RECT place = owner_.Place();
  return SUCCEEDED(ole_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0,
                                owner_.ParentWindow(), &place));
}

bool HostedControl::TakeFocus() {
  const RECT place = owner_.Place();
  const Com<IOleObject> alive = ole_;
  return SUCCEEDED(
      alive->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.get(), 0, owner_.ParentWindow(), &place));
}

void HostedControl::GiveUpFocus() noexcept {
  if (const Com<IOleInPlaceObject> inPlace = Query<IOleInPlaceObject>(object_)) {
    inPlace->UIDeactivate();
  }
}

void HostedControl::MoveTo(const RECT& place) {
  ShowExtent(place);
  if (const Com<IOleInPlaceObject> inPlace = Query<IOleInPlaceObject>(object_)) {
    inPlace->SetObjectRects(&place, &place);
  }
}

void HostedControl::Show(bool visible) {
  if (HWND window = Window()) {
    ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
  } else if (visible) {
    Activate();
  }
}

void HostedControl::AmbientChanged(DISPID id) noexcept {
  if (const Com<IOleControl> control = Query<IOleControl>(object_)) {
    control->OnAmbientPropertyChange(id);
  }
}

bool HostedControl::TryMnemonic(const MSG& message) noexcept {
  const Com<IOleControl> control = Query<IOleControl>(object_);
  CONTROLINFO info{};
  info.cb = sizeof info;
  if (!control || control->GetControlInfo(&info) != S_OK || !info.hAccel) return false;
  MSG tried = message;
  WORD command = 0;
  const bool wanted = IsAccelerator(info.hAccel, info.cAccel, &tried, &command);
  return wanted && SUCCEEDED(control->OnMnemonic(&tried));
}

HWND HostedControl::Window() const noexcept {
  HWND window = nullptr;
  const Com<IOleInPlaceObject> inPlace = Query<IOleInPlaceObject>(object_);
  if (!inPlace || FAILED(inPlace->GetWindow(&window))) return nullptr;
  return window;
}

void HostedControl::Close() noexcept {
  if (!ole_) return;
  const Com<IOleObject> ole = std::exchange(ole_, {});
  sink_->Detach();
  if (eventCookie_ != 0) {
    if (const Com<IConnectionPoint> point = EventPoint()) point->Unadvise(eventCookie_);
  }
  if (const Com<IOleInPlaceObject> inPlace = Query<IOleInPlaceObject>(object_)) {
    inPlace->UIDeactivate();
    inPlace->InPlaceDeactivate();
  }
  ole->Close(OLECLOSE_NOSAVE);
  ole->SetClientSite(nullptr);
  site_->Detach();
  dispatch_.reset();
  object_.reset();
  site_.reset();
  sink_.reset();
}

}  // namespace qrn::host
