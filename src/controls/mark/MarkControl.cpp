#include "controls/mark/MarkControl.h"

#include "binding/tables/QRNCheckTable.h"
#include "ole/Names.h"

namespace qrn {
namespace {

constexpr ole::StockDefaults kFlatButton{ole::kButtonLook.backColor, ole::kButtonLook.foreColor, 0};

}  // namespace

const com::MessageRow<MarkControl> MarkControl::kOwnMessages[] = {
    {WM_COMMAND, &MarkControl::OnCommand}};

MarkControl::MarkControl(const ole::ControlTable& table, const ole::Binding& binding,
                         DWORD buttonStyle)
    : Captioned(table, binding, kFlatButton), buttonStyle_(buttonStyle) {}

std::optional<ole::ContainedDescription> MarkControl::DescribeContained() {
  DWORD style = WS_CHILD | WS_VISIBLE | buttonStyle_;
  if (Alignment == 1) style |= BS_LEFTTEXT;
  const DWORD exStyle = Appearance ? WS_EX_CLIENTEDGE : 0;
  return ole::ContainedDescription{L"Button", style, exStyle, std::wstring(Caption.view())};
}

std::span<const int32_t> MarkControl::RemadeInDesigner() const {
  static constexpr int32_t kIds[] = {ole::stock::kAppearance,
                                     ole::IdOf<kQRNCheckTable, "Alignment">};
  return kIds;
}

void MarkControl::ShowMark(int32_t mark) {
  if (contained()) SendMessageW(contained(), BM_SETCHECK, static_cast<WPARAM>(mark), 0);
}

bool MarkControl::OnWindowMessage(com::Message& message) {
  return Route(*this, kOwnMessages, message) || Captioned::OnWindowMessage(message);
}

bool MarkControl::OnCommand(com::Message& message) {
  const WORD notice = HIWORD(message.wParam);
  if (notice == BN_CLICKED) Click();
  if (notice == BN_DOUBLECLICKED) ole::Fire<kPointerEvents, "DblClick">(*this);
  return notice == BN_CLICKED || notice == BN_DOUBLECLICKED;
}

void MarkControl::Click() {
  const com::Com<IUnknown> alive(&Outer());
  TakeClick();
  ole::Fire<kPointerEvents, "Click">(*this);
}

}  // namespace qrn
