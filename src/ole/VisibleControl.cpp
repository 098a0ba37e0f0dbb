#include "ole/VisibleControl.h"

#include <olectl.h>

#include <algorithm>

#include "ole/InputState.h"
#include "ole/MousePointer.h"
#include "ole/Names.h"
#include "ole/tables/StockEvents.h"

namespace qrn::ole {

const MessageRow<VisibleControl> VisibleControl::kOwnMessages[] = {
    {WM_CREATE, &VisibleControl::OnCreate},
    {WM_DESTROY, &VisibleControl::OnDestroy},
    {WM_SIZE, &VisibleControl::OnSize},
    {WM_SETFOCUS, &VisibleControl::OnSetFocus},
    {WM_KILLFOCUS, &VisibleControl::OnKillFocus},
    {WM_CTLCOLOREDIT, &VisibleControl::OnColor},
    {WM_CTLCOLORBTN, &VisibleControl::OnColor},
    {WM_CTLCOLORSTATIC, &VisibleControl::OnColor},
    {WM_CTLCOLORLISTBOX, &VisibleControl::OnColor},
};

const MessageRow<VisibleControl> VisibleControl::kContainedMessages[] = {
    {WM_MOUSEACTIVATE, &VisibleControl::OnMouseActivate},
    {WM_SETFOCUS, &VisibleControl::OnContainedSetFocus},
    {WM_KILLFOCUS, &VisibleControl::OnContainedKillFocus},
    {WM_KEYDOWN, &VisibleControl::OnContainedKeyDown},
};

const MessageRow<VisibleControl> VisibleControl::kShownMessages[] = {
    {WM_SETCURSOR, &VisibleControl::OnSetCursor}, {WM_MOUSEMOVE, &VisibleControl::OnMouse},
    {WM_LBUTTONDOWN, &VisibleControl::OnMouse},   {WM_RBUTTONDOWN, &VisibleControl::OnMouse},
    {WM_LBUTTONUP, &VisibleControl::OnMouse},     {WM_RBUTTONUP, &VisibleControl::OnMouse},
    {WM_GETOBJECT, &VisibleControl::OnGetObject},
};

VisibleControl::VisibleControl(const ControlTable& table, const Binding& binding,
                               const StockDefaults& defaults)
    : Control(table, binding),
      BackColor(defaults.backColor),
      ForeColor(defaults.foreColor),
      Appearance(defaults.appearance),
      font_([this] { FontChanged(); }),
      contained_(*this) {
  MakeBrush();
  if (defaults.hasFont) font_.Set(MakeFont());
}

bool VisibleControl::OnWindowMessage(Message& message) {
  return Route(*this, kOwnMessages, message) ||
         (!contained() && Route(*this, kShownMessages, message));
}

bool VisibleControl::OnContainedMessage(Message& message) {
  return Route(*this, kContainedMessages, message) || Route(*this, kShownMessages, message);
}

bool VisibleControl::OnCreate(Message&) {
  MakeContained();
  if (!UserMode()) return true;
  registered_ = true;  // a handler that runs in OnRegister may end the window
  OnRegister();
  return true;
}

bool VisibleControl::OnDestroy(Message&) {
  if (std::exchange(registered_, false)) OnUnregister();
  return true;
}

void VisibleControl::MakeContained() {
  const auto description = DescribeContained();
  if (description) {
    RECT client{};
    GetClientRect(hwnd(), &client);
    if (!contained_.Create(*description, hwnd(), client)) throw Failure{E_FAIL};
    font_.ApplyTo(contained());
  }
  EnableWindows();
  OnContainedMade();
}

void VisibleControl::AddBorder(ContainedDescription& description) const noexcept {
  if (!BorderStyle) return;
  if (Appearance) {
    description.exStyle |= WS_EX_CLIENTEDGE;
  } else {
    description.style |= WS_BORDER;
  }
}

void VisibleControl::RemakeContained() {
  if (!hwnd()) return;
  contained_.Destroy();
  MakeContained();
}

bool VisibleControl::OnSize(Message&) {
  RECT client{};
  GetClientRect(hwnd(), &client);
  LayOut(client);
  return false;
}

void VisibleControl::LayOut(const RECT& client) {
  if (contained()) MoveWindow(contained(), 0, 0, client.right, client.bottom, TRUE);
}

bool VisibleControl::OnSetFocus(Message&) {
  FocusCame();
  // Who was told may have sent the focus elsewhere.
  if (contained() && GetFocus() == hwnd()) SetFocus(contained());
  return true;
}

bool VisibleControl::OnKillFocus(Message& message) {
  FocusWent(reinterpret_cast<HWND>(message.wParam));
  return true;
}

bool VisibleControl::OnContainedSetFocus(Message&) {
  FocusCame();
  return false;
}

bool VisibleControl::OnContainedKillFocus(Message& message) {
  FocusWent(reinterpret_cast<HWND>(message.wParam));
  return false;
}

HBRUSH VisibleControl::BackgroundBrush() const noexcept {
  return brush_ ? brush_.get() : static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
}

void VisibleControl::MakeBrush() {
  COLORREF color = RGB(255, 255, 255);
  OleTranslateColor(BackColor, nullptr, &color);
  brush_.reset(CreateSolidBrush(color));
}

LRESULT VisibleControl::ColorContext(HDC dc) const noexcept {
  COLORREF text = 0;
  COLORREF back = RGB(255, 255, 255);
  OleTranslateColor(ForeColor, nullptr, &text);
  OleTranslateColor(BackColor, nullptr, &back);
  SetTextColor(dc, text);
  SetBkColor(dc, back);
  return reinterpret_cast<LRESULT>(BackgroundBrush());
}

bool VisibleControl::OnColor(Message& message) {
  message.result = ColorContext(reinterpret_cast<HDC>(message.wParam));
  return true;
}

const VisibleControl::AppliedRow VisibleControl::kApplied[] = {
    {stock::kBackColor, &VisibleControl::MakeBrush},
    {stock::kFont, &VisibleControl::ApplyFont},
    {stock::kEnabled, &VisibleControl::ApplyEnabled},
    {stock::kTabStop, &VisibleControl::ApplyTabStop},
};

void VisibleControl::OnChanged(int32_t id) {
  for (const AppliedRow& row : kApplied) {
    if (row.id == id) (this->*row.apply)();
  }
  const bool remade = std::ranges::find(RemadeInDesigner(), id) != RemadeInDesigner().end();
  if (remade && !UserMode()) RemakeContained();
}

void VisibleControl::ApplyFont() {
  if (contained()) font_.ApplyTo(contained());
}

void VisibleControl::ApplyTabStop() {
  if (!hwnd()) return;
  const LONG others = GetWindowLongW(hwnd(), GWL_STYLE) & ~LONG{WS_TABSTOP};
  SetWindowLongW(hwnd(), GWL_STYLE, others | static_cast<LONG>(ExtraWindowStyle()));
}

// Who cannot be used does not keep the keyboard: the container's window gets it, which knows where
// it goes next.
void VisibleControl::ApplyEnabled() {
  const HWND own = hwnd();
  const bool had = window().HasFocus();
  EnableWindows();
  if (had && own && !IsWindowEnabled(own)) SetFocus(GetParent(own));
}

// At run time the control's own window goes with the contained one: neither a click nor the tab
// order reaches it then. A designer still works with it.
void VisibleControl::EnableWindows() noexcept {
  if (contained()) EnableWindow(contained(), Enabled != 0);
  if (hwnd()) EnableWindow(hwnd(), Enabled != 0 || !UserMode());
}

// Somebody changed the font object itself. Who hears of it may let the control go.
void VisibleControl::FontChanged() {
  const Com<IUnknown> alive(&Outer());
  Changed(stock::kFont, true);
}

bool VisibleControl::OnMouse(Message& message) {
  const auto x = static_cast<float>(static_cast<int16_t>(LOWORD(message.lParam)));
  const auto y = static_cast<float>(static_cast<int16_t>(HIWORD(message.lParam)));
  const int16_t shift = MouseShift(message.wParam);
  switch (message.id) {
    case WM_MOUSEMOVE:
      Fire<kStockEvents, "MouseMove">(*this, MouseButton(message.wParam), shift, x, y);
      break;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
      Fire<kStockEvents, "MouseDown">(*this, MouseButton(message.wParam), shift, x, y);
      break;
    default: {  // the message itself no longer counts its button as held
      const WPARAM released = message.id == WM_LBUTTONUP ? MK_LBUTTON : MK_RBUTTON;
      Fire<kStockEvents, "MouseUp">(*this, MouseButton(message.wParam | released), shift, x, y);
    }
  }
  return false;
}

bool VisibleControl::OnSetCursor(Message& message) {
  if (!UserMode()) return false;
  const Com<IPictureDisp> icon = MouseIcon;
  const bool mapped = MapMousePointer(MousePointer, icon.get());
  message.result = mapped;
  return mapped;
}

bool VisibleControl::OnMouseActivate(Message&) {
  if (UserMode()) inPlace().Activate(true);
  return false;
}

// Arrows were run when the container offered them, before it could take them for tab moves.
bool VisibleControl::OnContainedKeyDown(Message& message) {
  return message.wParam == VK_LEFT || message.wParam == VK_RIGHT;
}

Com<IAccessible> VisibleControl::MakeAccessible(HWND window) {
  return Com<IAccessible>(new Accessible(window, hwnd(), AccessibleRole()));
}

bool VisibleControl::OnGetObject(Message& message) {
  return AsksForContent(message) && AnswerWith(MakeAccessible(message.window), message);
}

HRESULT VisibleControl::OnAccelerator(MSG& message) {
  if (!site().As<IOleControlSite>()) return S_OK;
  switch (message.message) {
    case WM_KEYDOWN: {
      auto code = static_cast<int16_t>(message.wParam);
      Fire<kStockEvents, "KeyDown">(*this, &code, KeyShift());
      const KeyEnd end = OnKeyDown(message);
      if (end == KeyEnd::Site) return OfferToSite(message);
      return end == KeyEnd::Here ? S_OK : S_FALSE;
    }
    case WM_KEYUP:
      return OnKeyUp(message);
    case WM_CHAR:
      return OnChar(message);
    default:
      return OfferToSite(message);
  }
}

VisibleControl::KeyEnd VisibleControl::OnKeyDown(MSG& message) {
  const bool sideways = message.wParam == VK_LEFT || message.wParam == VK_RIGHT;
  if (!contained() || !sideways) return KeyEnd::Site;
  contained_.CallOriginal({contained(), message.message, message.wParam, message.lParam});
  return KeyEnd::Here;
}

HRESULT VisibleControl::OnKeyUp(MSG& message) {
  auto code = static_cast<int16_t>(message.wParam);
  Fire<kStockEvents, "KeyUp">(*this, &code, KeyShift());
  return code == 0 ? S_OK : OfferToSite(message);
}

// A handler may put another character in place of the typed one.
HRESULT VisibleControl::OnChar(MSG& message) {
  const int16_t typed = KeyAsciiOf(message.wParam);
  int16_t code = typed;
  Fire<kStockEvents, "KeyPress">(*this, &code);
  if (code == 0) return S_OK;
  if (code != typed) message.wParam = CharacterOf(code);
  return OfferToSite(message);
}

// A window draws itself wherever it is asked to; without one a stand-in shows where it will be.
void VisibleControl::OnDraw(HDC dc, const RECT& rect) {
  if (!contained()) {
    const auto description = DescribeContained();
    return DrawStandIn(dc, rect, description ? description->text : std::wstring());
  }
  const MovedOrigin origin(dc, rect.left, rect.top);
  SendMessageW(contained(), WM_PRINT, reinterpret_cast<WPARAM>(dc),
               PRF_CLIENT | PRF_NONCLIENT | PRF_ERASEBKGND | PRF_CHILDREN);
}

void VisibleControl::DrawStandIn(HDC dc, RECT rect, std::wstring_view text) {
  FillRect(dc, &rect, BackgroundBrush());
  if (Appearance) DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
  ColorContext(dc);
  const FontInUse font(font_.get());
  const Selected face(
      dc, font.get() ? static_cast<HGDIOBJ>(font.get()) : GetStockObject(DEFAULT_GUI_FONT));
  DrawTextW(dc, text.data(), static_cast<int>(text.size()), &rect,
            DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace qrn::ole
