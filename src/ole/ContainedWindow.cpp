#include "ole/ContainedWindow.h"

#include "ole/VisibleControl.h"

namespace qrn::ole {
namespace {

constexpr wchar_t kPrefix[] = L"ATL:";

bool SystemClass(const wchar_t* name, WNDCLASSEXW& description) noexcept {
  description = WNDCLASSEXW{};
  description.cbSize = sizeof description;
  return GetClassInfoExW(nullptr, name, &description) != FALSE;
}

// The copied class keeps a pointer to its ContainedWindow behind what the system class keeps.
int PointerPlace(HWND window) noexcept {
  return static_cast<int>(GetClassLongPtrW(window, GCL_CBWNDEXTRA) - sizeof(void*));
}

// The system class's procedure, for the few messages that come before the window has its object.
WNDPROC OriginalOf(HWND window) noexcept {
  wchar_t name[64] = {};
  WNDCLASSEXW description{};
  GetClassNameW(window, name, 64);
  const size_t prefix = std::size(kPrefix) - 1;
  return SystemClass(name + prefix, description) ? description.lpfnWndProc : &DefWindowProcW;
}

bool EnsureClass(const wchar_t* base, const std::wstring& name, WNDPROC procedure,
                 WNDPROC& original) noexcept {
  WNDCLASSEXW description{};
  if (!SystemClass(base, description)) return false;
  original = description.lpfnWndProc;
  WNDCLASSEXW present{};
  present.cbSize = sizeof present;
  if (GetClassInfoExW(ModuleInstance(), name.c_str(), &present)) return true;
  description.lpszClassName = name.c_str();
  description.lpfnWndProc = procedure;
  description.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
  description.cbWndExtra += sizeof(void*);
  return RegisterModuleClass(description) != 0;
}

}  // namespace

bool ContainedWindow::Create(const ContainedDescription& description, HWND parent,
                             const RECT& place) {
  Destroy();
  const std::wstring name = std::wstring(kPrefix) + description.baseClass;
  if (!EnsureClass(description.baseClass, name, &Procedure, original_)) return false;
  CreateWindowExW(description.exStyle, name.c_str(), description.text.c_str(), description.style,
                  place.left, place.top, place.right - place.left, place.bottom - place.top, parent,
                  nullptr, ModuleInstance(), this);
  return window_ != nullptr;
}

void ContainedWindow::Destroy() noexcept {
  if (window_) DestroyWindow(window_);
}

LRESULT ContainedWindow::CallOriginal(const Message& message) noexcept {
  return CallWindowProcW(original_, message.window, message.id, message.wParam, message.lParam);
}

LRESULT CALLBACK ContainedWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
  const int place = PointerPlace(window);
  if (id == WM_NCCREATE) {
    auto* self = static_cast<ContainedWindow*>(
        reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, place, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<ContainedWindow*>(GetWindowLongPtrW(window, place));
  if (!self) return CallWindowProcW(OriginalOf(window), window, id, wParam, lParam);
  Message message{window, id, wParam, lParam};
  return self->Dispatch(message);
}

LRESULT ContainedWindow::Dispatch(Message& message) noexcept {
  const Com<IUnknown> alive(&control_.Outer());
  bool handled = false;
  Guard([&] {
    handled = control_.OnContainedMessage(message);
    return S_OK;
  });
  if (!handled && IsWindow(message.window)) message.result = CallOriginal(message);
  if (message.id == WM_NCDESTROY) {
    SetWindowLongPtrW(message.window, PointerPlace(message.window), 0);
    if (window_ == message.window) window_ = nullptr;
  }
  return message.result;
}

}  // namespace qrn::ole
