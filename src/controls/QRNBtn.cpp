#include "controls/QRNBtn.h"

#include "binding/tables/QRNBtnTable.h"
#include "controls/ButtonClick.h"
#include "core/DictionaryLookup.h"
#include "ole/Names.h"
#include "ole/PictureImage.h"

namespace qrn {
namespace {

// clang-format off
constexpr ole::PropertyEntry kBtnAccess[] = {
    {ole::stock::kPicture, ole::Field<&CQRNBtn::Picture>},
    { 3, ole::Field<&CQRNBtn::DbIndex>},
    { 4, ole::Field<&CQRNBtn::DbOperation>},
    { 5, ole::Field<&CQRNBtn::Abort>},
    { 6, ole::Field<&CQRNBtn::ConfirmMsg>},
    { 7, ole::Field<&CQRNBtn::Cancel>},
    { 8, ole::Field<&CQRNBtn::Default>},
    { 9, ole::Field<&CQRNBtn::DbLocks>},
    {10, ole::Field<&CQRNBtn::ClearControlData>},
    {11, ole::Field<&CQRNBtn::IndexID>},
    {12, ole::FieldAndPut<&CQRNBtn::Style, &CQRNBtn::PutStyle>},
};
// clang-format on
constexpr auto kBtnProperties = ole::BindProperties<kQRNBtnTable>(
    kBtnAccess, kTableAccess<CQRNBtn>, ole::kCaptionAccess<CQRNBtn>, ole::kStockAccess);
constexpr ole::Binding kBtnBinding{kBtnProperties, {}};

constexpr uint16_t kNoLookupAtStart = 2;  // of the setting `form_mode`

}  // namespace

const com::MessageRow<CQRNBtn> CQRNBtn::kOwnMessages[] = {{WM_COMMAND, &CQRNBtn::OnCommand}};

CQRNBtn::CQRNBtn() : Captioned(kQRNBtnTable, kBtnBinding, ole::kButtonLook) {}

std::optional<ole::ContainedDescription> CQRNBtn::DescribeContained() {
  DWORD style = WS_CHILD | WS_VISIBLE;
  if (Default) style |= BS_DEFPUSHBUTTON;
  if (Style != 0) style |= ole::ImageOf(Picture).buttonStyle;
  return ole::ContainedDescription{L"Button", style, 0, std::wstring(Caption.view())};
}

void CQRNBtn::OnContainedMade() {
  const ole::PictureImage image = Style != 0 ? ole::ImageOf(Picture) : ole::PictureImage{};
  if (image.buttonStyle != 0) SendMessageW(contained(), BM_SETIMAGE, image.kind, image.handle);
  if (UserMode() && TheRegistry().form_mode != kNoLookupAtStart) FindIndexAtStart();
}

// The database control may not be there yet; every click looks again.
void CQRNBtn::FindIndexAtStart() {
  if (const DbTableInfo* table = ResolveTable()) FindIndex(*table);
}

void CQRNBtn::FindIndex(const DbTableInfo& table) {
  const std::string name = NarrowText(DbIndex);
  IndexID =
      name.empty() ? int16_t{0} : static_cast<int16_t>(DbFindIndexOrFirst(table, name.c_str()));
}

void CQRNBtn::PutStyle(int32_t style) {
  if (std::exchange(Style, style) != style && contained()) RemakeContained();
}

void CQRNBtn::OnChanged(int32_t id) {
  Captioned::OnChanged(id);
  if (id == ole::stock::kPicture && Style != 0 && contained()) RemakeContained();
}

bool CQRNBtn::OnWindowMessage(com::Message& message) {
  return Route(*this, kOwnMessages, message) || Captioned::OnWindowMessage(message);
}

bool CQRNBtn::OnCommand(com::Message& message) {
  if (HIWORD(message.wParam) != BN_CLICKED) return false;
  Click();
  return true;
}

CQRNBtn::KeyEnd CQRNBtn::OnKeyDown(MSG& message) {
  if (message.wParam != VK_RETURN) return Captioned::OnKeyDown(message);
  Click();
  return KeyEnd::Here;
}

void CQRNBtn::Click() {
  const com::Com<IUnknown> alive(&Outer());
  ButtonClick(*this).Run();
  ole::Fire<kQRNBtnTable, "Click">(*this);
}

void CQRNBtn::OnFillControlInfo(CONTROLINFO& info) {
  Captioned::OnFillControlInfo(info);
  info.dwFlags = CTRLINFO_EATS_RETURN;
}

}  // namespace qrn
