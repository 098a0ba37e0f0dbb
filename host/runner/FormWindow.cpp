// A form's window.
#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <stdexcept>

#include "host/runner/Form.h"
#include "host/runner/Furniture.h"
#include "host/runner/Modifiers.h"
#include "host/runner/Painting.h"
#include "host/runner/Program.h"
#include "host/runner/RaisedArguments.h"

namespace qrn::host {
namespace {

constexpr wchar_t kFormClass[] = L"QrnForm";
constexpr UINT kShowPages = WM_APP + 1;  // wParam: the control's place in the list

struct BorderRow {
  DWORD style;
  DWORD extended;
};

// By FormBorder.
constexpr BorderRow kBorders[] = {
    {WS_POPUP, 0},
    {WS_OVERLAPPED | WS_CAPTION, 0},
    {WS_OVERLAPPED | WS_CAPTION | WS_THICKFRAME, 0},
    {WS_POPUP | WS_CAPTION, WS_EX_DLGMODALFRAME},
    {WS_POPUP | WS_CAPTION, WS_EX_TOOLWINDOW},
    {WS_POPUP | WS_CAPTION | WS_THICKFRAME, WS_EX_TOOLWINDOW},
};

BorderRow StylesOf(const FormLook& look) noexcept {
  BorderRow styles = kBorders[static_cast<int>(look.border)];
  const bool sizable = look.border == FormBorder::Sizable;
  if (look.border != FormBorder::None && look.controlBox) styles.style |= WS_SYSMENU;
  if (sizable && look.controlBox && look.maxButton) styles.style |= WS_MAXIMIZEBOX;
  if (sizable && look.controlBox && look.minButton) styles.style |= WS_MINIMIZEBOX;
  if (look.showInTaskbar) styles.extended |= WS_EX_APPWINDOW;
  styles.style |= WS_CLIPCHILDREN;
  styles.extended |= WS_EX_CONTROLPARENT;
  return styles;
}

void RegisterOnce(WNDPROC procedure) {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.style = CS_DBLCLKS;
  kind.lpfnWndProc = procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  kind.hIcon = LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION));
  kind.lpszClassName = kFormClass;
  RegisterClassExW(&kind);  // a second time it is there already
}

// The window's rectangle for a client area at the form's place.
RECT OuterPlace(const FormLook& look, const BorderRow& styles) noexcept {
  RECT place = look.client.Pixels();
  AdjustWindowRectEx(&place, styles.style, FALSE, styles.extended);
  if (look.start == StartPosition::Manual) return place;
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const bool centred = look.start != StartPosition::SystemDefault;
  const int divisor = centred ? 2 : 6;
  const LONG left = work.left + std::max<LONG>(0, (work.right - work.left - width) / divisor);
  const LONG top = work.top + std::max<LONG>(0, (work.bottom - work.top - height) / divisor);
  return {left, top, left + width, top + height};
}

struct MouseEvent {
  UINT message;
  const wchar_t* event;
  int16_t button;  // 0: those held
};

constexpr MouseEvent kMouseEvents[] = {
    {WM_LBUTTONDOWN, L"MouseDown", 1}, {WM_LBUTTONUP, L"MouseUp", 1},
    {WM_RBUTTONDOWN, L"MouseDown", 2}, {WM_RBUTTONUP, L"MouseUp", 2},
    {WM_MBUTTONDOWN, L"MouseDown", 4}, {WM_MBUTTONUP, L"MouseUp", 4},
    {WM_MOUSEMOVE, L"MouseMove", 0}};

bool IsColourMessage(UINT message) noexcept {
  return message == WM_CTLCOLOREDIT || message == WM_CTLCOLORBTN || message == WM_CTLCOLORSTATIC;
}

}  // namespace

void Form::MakeWindow() {
  RegisterOnce(&Form::WindowProcedure);
  CompanionFiles files(source_->Folder());
  form::Mistakes mistakes;
  look_ = ReadFormLook(source_->file.form, files, mistakes);
  const BorderRow styles = StylesOf(look_);
  const RECT place = OuterPlace(look_, styles);
  window_ =
      CreateWindowExW(styles.extended, kFormClass, look_.caption.c_str(), styles.style, place.left,
                      place.top, place.right - place.left, place.bottom - place.top, nullptr,
                      nullptr, GetModuleHandleW(nullptr), this);
  if (!window_) throw std::runtime_error("the form's window cannot be made");
  if (!look_.enabled) EnableWindow(window_, FALSE);
  if (const Com<IPicture> icon = Query<IPicture>(look_.icon)) {
    OLE_HANDLE handle = 0;
    icon->get_Handle(&handle);
    SendMessageW(window_, WM_SETICON, ICON_SMALL, static_cast<LPARAM>(handle));
  }
  frame_ = MakeCom<InPlaceFrame>(window_);
}

LRESULT CALLBACK Form::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* created = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    auto* form = static_cast<Form*>(created->lpCreateParams);
    form->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(form));
  }
  auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!form) return DefWindowProcW(window, message, wParam, lParam);
  const Com<Form> alive(form);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    form->window_ = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
  }
  LRESULT result = 0;
  const HRESULT code = Guard([&]() -> HRESULT {
    result = form->OnMessage(message, wParam, lParam);
    return S_OK;
  });
  return SUCCEEDED(code) ? result : 0;
}

LRESULT Form::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const std::optional<LRESULT> done = OnHolderMessage(nullptr, message, wParam, lParam)) {
    return *done;
  }
  switch (message) {
    case WM_CLOSE:
      Unload(UnloadCause::ControlMenu);
      return 0;
    case WM_QUERYENDSESSION:
      return Unload(UnloadCause::System);
    case kShowPages:
      if (wParam < controls_.size()) ShowPages(*controls_[wParam]);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      OnPaint();
      return 0;
    case WM_SIZE:
      OnSize();
      return 0;
    case WM_ACTIVATE:
      OnActivate(LOWORD(wParam) != WA_INACTIVE);
      return 0;
    case WM_SETFOCUS:
      HandKeyboardOn();
      return 0;
    case WM_ENABLE:
      if (wParam) OnUsableAgain();
      return 0;
    default:
      return DefWindowProcW(window_, message, wParam, lParam);
  }
}

void Form::PostShowPages(const FormControl& control) const noexcept {
  for (size_t i = 0; i < controls_.size(); ++i) {
    if (controls_[i].get() == &control) PostMessageW(window_, kShowPages, i, 0);
  }
}

void Form::OnPaint() {
  BufferedPaint paint(window_);
  FillWith(paint.dc(), paint.area(), look_.backColor);
  DrawPieces(nullptr, paint.dc());
  OutlineSelected(paint.dc());
  if (state_ == State::Loaded) RaiseOwn(L"Paint");
}

void Form::OnSize() {
  if (state_ == State::Loaded || state_ == State::Loading) RaiseOwn(L"Resize");
}

void Form::OnActivate(bool active) {
  if (state_ != State::Loaded) return;
  if (active && program_) program_->OnActivated(*this);
  // The window hands the keyboard on to whatever had it.
  if (active && !IsChild(window_, GetFocus())) ::SetFocus(window_);
  RaiseOwn(active ? L"Activate" : L"Deactivate");
}

// A message box without an owner may end with no window active: who was in front is so again.
void Form::OnUsableAgain() {
  if (!GetActiveWindow() && program_ && program_->IsFront(*this)) SetForegroundWindow(window_);
}

void Form::DrawPieces(FormControl* container, HDC dc) const {
  // What stands first in the file lies on top.
  for (auto control = controls_.rbegin(); control != controls_.rend(); ++control) {
    if ((*control)->container() == container && (*control)->visible()) (*control)->Draw(dc);
  }
}

FormControl* Form::PieceAt(FormControl* container, POINT point) const noexcept {
  for (const Com<FormControl>& control : controls_) {
    if (control->container() != container || control->Window() || !control->visible()) continue;
    const RECT place = control->Place();
    if (PtInRect(&place, point) && control->IsPiece()) return control.get();
  }
  return nullptr;
}

std::optional<LRESULT> Form::OnHolderMessage(FormControl* container, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
  if (message == WM_COMMAND && lParam != 0) {
    WindowPiece* piece = WindowPiece::Of(reinterpret_cast<HWND>(lParam));
    if (!piece) return std::nullopt;
    piece->OnNotice(HIWORD(wParam));
    return 0;
  }
  if (IsColourMessage(message)) {
    WindowPiece* piece = WindowPiece::Of(reinterpret_cast<HWND>(lParam));
    if (!piece) return std::nullopt;
    return reinterpret_cast<LRESULT>(piece->OnColours(reinterpret_cast<HDC>(wParam)));
  }
  if (message < WM_MOUSEFIRST || message > WM_MBUTTONDBLCLK) return std::nullopt;
  const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  FormControl* piece = PieceAt(container, point);
  if (message == WM_LBUTTONDOWN) pressedPiece_ = piece;
  if (message == WM_LBUTTONUP) std::swap(piece, pressedPiece_), pressedPiece_ = nullptr;
  if (piece) {
    const RECT place = piece->Place();
    const Com<FormControl> alive(piece);
    alive->OnMouse(message, wParam, {point.x - place.left, point.y - place.top});
    return 0;
  }
  if (!container) OnMouse(message, wParam, lParam);
  return 0;
}

void Form::OnMouse(UINT message, WPARAM wParam, LPARAM lParam) {
  if (state_ != State::Loaded) return;
  for (const MouseEvent& row : kMouseEvents) {
    if (row.message != message) continue;
    const int16_t button = row.button != 0 ? row.button : ButtonsHeld(wParam);
    const auto x = static_cast<float>(GET_X_LPARAM(lParam) * UnitsPerPixel());
    const auto y = static_cast<float>(GET_Y_LPARAM(lParam) * UnitsPerPixel());
    RaisedArguments arguments{ByValue(button), ByValue(KeyModifiers()), ByValue(x), ByValue(y)};
    RaiseOwn(row.event, arguments.get());
  }
  if (message == WM_LBUTTONUP && state_ == State::Loaded) RaiseOwn(L"Click");
  if (message == WM_LBUTTONDBLCLK) RaiseOwn(L"DblClick");
}

double Form::UnitsPerPixel() const noexcept { return look_.pixelScale ? 1 : kTwipsPerPixel; }

}  // namespace qrn::host
