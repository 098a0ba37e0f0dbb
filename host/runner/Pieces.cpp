#include "host/runner/Pieces.h"

#include <utility>

#include "host/runner/furniture/Furniture.h"

namespace qrn::host {
namespace {

bool IsColourMessage(UINT message) noexcept {
  return message == WM_CTLCOLOREDIT || message == WM_CTLCOLORBTN || message == WM_CTLCOLORSTATIC;
}

}  // namespace

void Pieces::Draw(const FormControl* container, HDC dc) const {
  // What stands first in the file lies on top.
  const auto& all = controls_.list();
  for (auto control = all.rbegin(); control != all.rend(); ++control) {
    if ((*control)->container() == container && (*control)->visible()) (*control)->Draw(dc);
  }
}

std::optional<LRESULT> Pieces::OnChildMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const bool isNotice = message == WM_COMMAND && lParam != 0;
  if (!isNotice && !IsColourMessage(message)) return std::nullopt;
  WindowPiece* piece = WindowPiece::Of(reinterpret_cast<HWND>(lParam));
  if (!piece) return std::nullopt;
  if (!isNotice) {
    return reinterpret_cast<LRESULT>(piece->OnColours(reinterpret_cast<HDC>(wParam)));
  }
  piece->OnNotice(HIWORD(wParam));
  return 0;
}

FormControl* Pieces::At(const FormControl* container, POINT point) const noexcept {
  for (const Com<FormControl>& control : controls_) {
    if (control->container() != container || control->Window() || !control->visible()) continue;
    const RECT place = control->Place();
    if (PtInRect(&place, point) && control->IsPiece()) return control.get();
  }
  return nullptr;
}

bool Pieces::OnMouse(const FormControl* container, UINT message, WPARAM wParam, POINT point) {
  FormControl* piece = At(container, point);
  if (message == WM_LBUTTONDOWN) pressed_ = piece;
  if (message == WM_LBUTTONUP) piece = std::exchange(pressed_, nullptr);
  if (!piece) return false;
  const RECT place = piece->Place();
  const Com<FormControl> alive(piece);
  alive->OnMouse(message, wParam, {point.x - place.left, point.y - place.top});
  return true;
}

}  // namespace qrn::host
