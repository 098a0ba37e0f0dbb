#include "controls/scroll/RecordBar.h"

#include "binding/tables/QRNScrollTables.h"
#include "controls/scroll/BarMove.h"
#include "ole/Names.h"

namespace qrn {
namespace {

// No property tells of colours and font.
constexpr ole::StockDefaults kBarLook{ole::kButtonLook.backColor, ole::kButtonLook.foreColor, 0,
                                      false};

}  // namespace

RecordBar::RecordBar(const ole::ControlTable& table, const ole::Binding& binding,
                     const BarOrientation& orientation)
    : Registered(table, binding, kBarLook), orientation_(orientation) {}

std::optional<ole::ContainedDescription> RecordBar::DescribeContained() {
  const DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | orientation_.style;
  return ole::ContainedDescription{L"ScrollBar", style, 0, {}};
}

void RecordBar::OnRegister() {
  Registered::OnRegister();
  OnDataControlReady();
}

void RecordBar::OnChanged(int32_t id) {
  VisibleControl::OnChanged(id);
  if (id == ole::IdOf<kQRNHScrollTable, "DbSource">) TheRegistry().RefreshNavEntry(*this);
}

void RecordBar::OnDataControlReady() { BarMove(*this).Attach(); }
void RecordBar::Refresh() { BarMove(*this).Refresh(); }

// Another control has moved: the record stays the one that it chose.
void RecordBar::OnPositionChanged(const std::string& tableName, int32_t indexId) {
  if (tableName != NarrowText(DbTable) || indexId != indexId_) return;
  const com::Com<IUnknown> alive(&Outer());
  const int16_t autoFirst = std::exchange(AutoFirst, int16_t{0});
  Refresh();
  AutoFirst = autoFirst;
}

void RecordBar::ShowRange(int32_t least, int32_t most) {
  if (contained()) SetScrollRange(contained(), SB_CTL, least, most, TRUE);
}

void RecordBar::ShowPlace(int32_t place) {
  if (contained()) SetScrollPos(contained(), SB_CTL, place, TRUE);
}

bool RecordBar::OnWindowMessage(com::Message& message) {
  if (message.id != orientation_.message) return VisibleControl::OnWindowMessage(message);
  const auto thumb = static_cast<int16_t>(HIWORD(message.wParam));
  BarMove(*this).Run(LOWORD(message.wParam), thumb);
  return true;
}

// The bar's own keys, before a container takes them for moves between controls.
RecordBar::KeyEnd RecordBar::OnKeyDown(MSG& message) {
  const bool sideways = message.wParam == VK_LEFT || message.wParam == VK_RIGHT;
  const bool own = message.wParam >= VK_PRIOR && message.wParam <= VK_DOWN;
  return own && !sideways ? KeyEnd::Window : VisibleControl::OnKeyDown(message);
}

}  // namespace qrn
