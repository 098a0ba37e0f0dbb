#include "controls/QRNBtn.h"

#include <olectl.h>

#include "binding/registry/ControlRegistry.h"
#include "binding/tables/QRNBtnTable.h"
#include "com/Guard.h"
#include "controls/ButtonClick.h"
#include "core/DictionaryLookup.h"

namespace qrn {
namespace {

using C = CQRNBtn;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    {ole::stock::kCaption, ole::Field<&C::Caption>},
    {ole::stock::kPicture, ole::Field<&C::Picture>},
    { 1, ole::Field<&C::DbSource>},
    { 2, ole::Field<&C::DbTable>},
    { 3, ole::Field<&C::DbIndex>},
    { 4, ole::Field<&C::DbOperation>},
    { 5, ole::Field<&C::Abort>},
    { 6, ole::Field<&C::ConfirmMsg>},
    { 7, ole::Field<&C::Cancel>},
    { 8, ole::Field<&C::Default>},
    { 9, ole::Field<&C::DbLocks>},
    {10, ole::Field<&C::ClearControlData>},
    {11, ole::Field<&C::IndexID>},
    {12, ole::FieldAndPut<&C::Style, &C::PutStyle>},
};
// clang-format on
constexpr auto kProperties = ole::BindProperties<kQRNBtnTable>(kAccess, ole::kStockAccess);
constexpr ole::Binding kBinding{kProperties, {}};

constexpr uint16_t kNoLookupAtStart = 2;  // of the setting `form_mode`

// What a "Button" window needs to know of a picture.
struct ButtonImage {
  DWORD style = 0;  // BS_BITMAP, BS_ICON, or 0 for a picture that it cannot show
  WPARAM kind = 0;
  LPARAM handle = 0;
};

ButtonImage ImageOf(const com::Com<IPictureDisp>& picture) {
  const auto image = com::Query<IPicture>(picture);
  SHORT type = PICTYPE_UNINITIALIZED;
  OLE_HANDLE handle = 0;
  if (!image || FAILED(image->get_Type(&type)) || FAILED(image->get_Handle(&handle))) return {};
  const auto wide = static_cast<LPARAM>(static_cast<LONG>(handle));
  if (type == PICTYPE_BITMAP) return {BS_BITMAP, IMAGE_BITMAP, wide};
  if (type == PICTYPE_ICON) return {BS_ICON, IMAGE_ICON, wide};
  return {};
}

// The virtual key that types a character; 0 for one that no key types.
WORD KeyTyping(wchar_t character) {
  const SHORT key = VkKeyScanW(character);
  return key != -1 ? WORD{LOBYTE(key)} : WORD{0};
}

// The letter behind a single "&" of a caption, as a virtual key; 0 for none.
WORD MnemonicOf(std::wstring_view caption) {
  for (size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != L'&') continue;
    const wchar_t next = caption[++i];
    if (next != L'&') return KeyTyping(next);
  }
  return 0;
}

}  // namespace

const com::MessageRow<CQRNBtn> CQRNBtn::kOwnMessages[] = {{WM_COMMAND, &CQRNBtn::OnCommand}};

CQRNBtn::CQRNBtn() : BoundControl(kQRNBtnTable, kBinding, ole::kButtonLook) {}

std::optional<ole::ContainedDescription> CQRNBtn::DescribeContained() {
  DWORD style = WS_CHILD | WS_VISIBLE;
  if (Default) style |= BS_DEFPUSHBUTTON;
  if (Style != 0) style |= ImageOf(Picture).style;
  return ole::ContainedDescription{L"Button", style, 0, std::wstring(Caption.view())};
}

void CQRNBtn::OnContainedMade() {
  const ButtonImage image = Style != 0 ? ImageOf(Picture) : ButtonImage{};
  if (image.style != 0) SendMessageW(contained(), BM_SETIMAGE, image.kind, image.handle);
  if (UserMode() && TheRegistry().form_mode != kNoLookupAtStart) FindIndexAtStart();
}

// The database control may not be there yet; every click looks again.
void CQRNBtn::FindIndexAtStart() {
  const DbTableInfo* table =
      TheRegistry().ResolveTable(GetContainerWindow(), NarrowText(DbSource), NarrowText(DbTable));
  if (table != nullptr) FindIndex(*table);
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
  VisibleControl::OnChanged(id);
  if (id == ole::stock::kCaption) CaptionChanged();
  if (id == ole::stock::kPicture && Style != 0 && contained()) RemakeContained();
}

void CQRNBtn::CaptionChanged() {
  if (contained()) SetWindowTextW(contained(), Caption.c_str());
  if (const auto container = site().As<IOleControlSite>()) container->OnControlInfoChanged();
}

void CQRNBtn::OnDraw(HDC dc, const RECT& rect) {
  contained() ? VisibleControl::OnDraw(dc, rect) : DrawStandIn(dc, rect, Caption.view());
}

bool CQRNBtn::OnWindowMessage(com::Message& message) {
  return Route(*this, kOwnMessages, message) || VisibleControl::OnWindowMessage(message);
}

bool CQRNBtn::OnCommand(com::Message& message) {
  if (HIWORD(message.wParam) != BN_CLICKED) return false;
  Click();
  return true;
}

CQRNBtn::KeyEnd CQRNBtn::OnKeyDown(MSG& message) {
  if (message.wParam != VK_RETURN) return VisibleControl::OnKeyDown(message);
  Click();
  return KeyEnd::Here;
}

void CQRNBtn::Click() {
  const com::Com<IUnknown> alive(&Outer());
  ButtonClick(*this).Run();
  Fire(ole::stock::kClick);
}

void CQRNBtn::OnFillControlInfo(CONTROLINFO& info) {
  info.dwFlags = CTRLINFO_EATS_RETURN;
  ACCEL key{FALT | FVIRTKEY, MnemonicOf(Caption.view()), 0};
  mnemonic_.reset(key.key != 0 ? CreateAcceleratorTableW(&key, 1) : nullptr);
  info.hAccel = mnemonic_.get();
  info.cAccel = mnemonic_ ? 1 : 0;
}

// As with the mouse, the focus comes first: the control that loses it repairs its text before that
// goes into the record.
void CQRNBtn::OnMnemonic(MSG&) {
  if (Enabled == 0) return;
  const com::Com<IUnknown> alive(&Outer());
  if (inPlace().active()) com::Guard([&] { return inPlace().Activate(true); });
  Click();
}

}  // namespace qrn
