#include "controls/mark/QRNOptBtn.h"

#include <algorithm>

#include "binding/registry/ControlRegistry.h"
#include "binding/tables/QRNOptBtnTable.h"
#include "com/Guard.h"
#include "controls/mark/MarkAccess.h"

namespace qrn {
namespace {

constexpr auto kOptBtnProperties = ole::BindProperties<kQRNOptBtnTable>(
    kMarkAccess, ole::kCaptionAccess<CQRNOptBtn>, kFieldAccess<CQRNOptBtn>, ole::kStockAccess);
constexpr ole::Binding kOptBtnBinding{kOptBtnProperties, {}};

bool IsArrow(WPARAM key) { return key >= VK_LEFT && key <= VK_DOWN; }

}  // namespace

CQRNOptBtn::CQRNOptBtn() : MarkControl(kQRNOptBtnTable, kOptBtnBinding, BS_AUTORADIOBUTTON) {}

// Kept so: the button that has just been chosen holds 0.
void CQRNOptBtn::TakeClick() {
  const bool marked = SendMessageW(contained(), BM_GETCHECK, 0, 0) == BST_CHECKED;
  Value = marked ? 0 : 1;
  ClearGroup();
}

std::vector<CQRNOptBtn*> CQRNOptBtn::Group() const {
  std::vector<CQRNOptBtn*> group;
  TheRegistry().WalkFieldControls([&](const FieldControlEntry& entry) {
    if (entry.Control->GetControlType() != kTypeOptBtn) return;
    auto& other = static_cast<CQRNOptBtn&>(*entry.Control);
    const bool same =
        other.DbField == DbField && other.DbTable == DbTable && other.DbSource == DbSource;
    if (same) group.push_back(&other);
  });
  return group;
}

// Kept so: on every form, and the others keep their `Value`.
void CQRNOptBtn::ClearGroup() {
  for (CQRNOptBtn* other : Group()) {
    if (other != this) other->ShowMark(BST_UNCHECKED);
  }
}

// The focus that comes to an unmarked option button makes the system tell of a click. Nobody
// clicked: somebody who passes with the Tab key chooses nothing.
bool CQRNOptBtn::OnWindowMessage(com::Message& message) {
  const bool told = message.id == WM_COMMAND && HIWORD(message.wParam) == BN_CLICKED;
  return (told && focusComes_) || MarkControl::OnWindowMessage(message);
}

bool CQRNOptBtn::OnContainedMessage(com::Message& message) {
  if (MarkControl::OnContainedMessage(message)) return true;
  if (message.id != WM_SETFOCUS || contained() != message.window) return false;
  focusComes_ = true;
  message.result = CallOriginal(message);
  focusComes_ = false;
  return true;
}

CQRNOptBtn* CQRNOptBtn::Neighbour(bool back) {
  std::vector<CQRNOptBtn*> group = Group();
  const WindowHandle form = GetContainerWindow();
  std::erase_if(group, [&](CQRNOptBtn* other) {
    const bool usable = other->Enabled != 0 && IsWindowVisible(other->contained());
    return other != this && (!usable || other->GetContainerWindow() != form);
  });
  if (back) std::ranges::reverse(group);
  const auto own = std::ranges::find(group, this);
  if (own == group.end() || group.size() == 1) return nullptr;
  return own + 1 == group.end() ? group.front() : *(own + 1);
}

// As among the option buttons of one window: an arrow goes to the next one and chooses it.
CQRNOptBtn::KeyEnd CQRNOptBtn::OnKeyDown(MSG& message) {
  if (!IsArrow(message.wParam)) return MarkControl::OnKeyDown(message);
  CQRNOptBtn* next = Neighbour(message.wParam == VK_LEFT || message.wParam == VK_UP);
  if (next == nullptr) return MarkControl::OnKeyDown(message);
  const com::Com<IUnknown> alive(&next->Outer());
  if (next->inPlace().active()) com::Guard([&] { return next->inPlace().Activate(true); });
  if (next->contained() && GetFocus() == next->contained()) next->Choose();
  return KeyEnd::Here;
}

void CQRNOptBtn::Choose() {
  ShowMark(BST_CHECKED);
  Click();
}

}  // namespace qrn
