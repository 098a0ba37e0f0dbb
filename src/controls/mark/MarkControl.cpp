#include "controls/mark/MarkControl.h"

#include "binding/registry/ControlRegistry.h"

namespace qrn {
namespace {

constexpr ole::StockDefaults kFlatButton{ole::kButtonLook.backColor, ole::kButtonLook.foreColor, 0};
constexpr int32_t kAlignment = 7;

}  // namespace

const ole::MessageRow<MarkControl> MarkControl::kOwnMessages[] = {
    {WM_COMMAND, &MarkControl::OnCommand}};

MarkControl::MarkControl(const ole::ControlTable& table, const ole::Binding& binding,
                         DWORD buttonStyle)
    : BoundControl(table, binding, kFlatButton), buttonStyle_(buttonStyle) {}

std::optional<ole::ContainedDescription> MarkControl::DescribeContained() {
  DWORD style = WS_CHILD | WS_VISIBLE | buttonStyle_;
  if (Alignment == 1) style |= BS_LEFTTEXT;
  const DWORD exStyle = Appearance ? WS_EX_CLIENTEDGE : 0;
  return ole::ContainedDescription{L"Button", style, exStyle, std::wstring(Caption.view())};
}

void MarkControl::OnRegister() { TheRegistry().RegisterFieldControl(*this); }
void MarkControl::OnUnregister() { TheRegistry().UnregisterFieldControl(*this); }

void MarkControl::ShowMark(int32_t mark) {
  if (contained()) SendMessageW(contained(), BM_SETCHECK, static_cast<WPARAM>(mark), 0);
}

void MarkControl::OnChanged(int32_t id) {
  VisibleControl::OnChanged(id);
  if (id == ole::stock::kCaption && contained()) SetWindowTextW(contained(), Caption.c_str());
  const bool needsWindow = id == ole::stock::kAppearance || id == kAlignment;
  if (needsWindow && !UserMode()) RemakeContained();
}

void MarkControl::OnDraw(HDC dc, const RECT& rect) {
  contained() ? VisibleControl::OnDraw(dc, rect) : DrawStandIn(dc, rect, Caption.view());
}

bool MarkControl::OnWindowMessage(ole::Message& message) {
  return Route(*this, kOwnMessages, message) || VisibleControl::OnWindowMessage(message);
}

bool MarkControl::OnCommand(ole::Message& message) {
  const WORD notice = HIWORD(message.wParam);
  if (notice == BN_CLICKED) Click();
  if (notice == BN_DOUBLECLICKED) Fire(ole::stock::kDblClick);
  return notice == BN_CLICKED || notice == BN_DOUBLECLICKED;
}

void MarkControl::Click() {
  const ole::Com<IUnknown> alive(&Outer());
  TakeClick();
  Fire(ole::stock::kClick);
}

}  // namespace qrn
