#include "host/script/VbConstants.h"

#include "host/container/Text.h"
#include "host/form/KeyNames.h"
#include "host/form/SystemColours.h"

namespace qrn::host {
namespace {

struct ConstantRow {
  const wchar_t* name;
  int32_t value;
};

// clang-format off
constexpr ConstantRow kConstants[] = {
    {L"vbModeless", 0}, {L"vbModal", 1},
    {L"vbNormal", 0}, {L"vbMinimized", 1}, {L"vbMaximized", 2},
    {L"vbFormControlMenu", 0}, {L"vbFormCode", 1}, {L"vbAppWindows", 2}, {L"vbAppTaskManager", 3},
    {L"vbDefault", 0}, {L"vbArrow", 1}, {L"vbCrosshair", 2}, {L"vbIbeam", 3}, {L"vbHourglass", 11},
    {L"vbArrowHourglass", 13},
    {L"vbLeftButton", 1}, {L"vbRightButton", 2}, {L"vbMiddleButton", 4},
    {L"vbShiftMask", 1}, {L"vbCtrlMask", 2}, {L"vbAltMask", 4},
    {L"vbLeftJustify", 0}, {L"vbRightJustify", 1}, {L"vbCenter", 2},
    {L"vbUpperCase", 1}, {L"vbLowerCase", 2}, {L"vbProperCase", 3}, {L"vbWide", 4}, {L"vbNarrow", 8},
    {L"vbKatakana", 16}, {L"vbHiragana", 32}, {L"vbUnicode", 64}, {L"vbFromUnicode", 128},
    {L"vbTwips", 1}, {L"vbPixels", 3},
    {L"vbKeyBack", 8}, {L"vbKeyTab", 9}, {L"vbKeyClear", 12}, {L"vbKeyReturn", 13}, {L"vbKeyShift", 16},
    {L"vbKeyControl", 17}, {L"vbKeyMenu", 18}, {L"vbKeyPause", 19}, {L"vbKeyCapital", 20},
    {L"vbKeyPrior", 33}, {L"vbKeyNext", 34}, {L"vbKeyMultiply", 106}, {L"vbKeyAdd", 107},
    {L"vbKeySeparator", 108}, {L"vbKeySubtract", 109}, {L"vbKeyDecimal", 110}, {L"vbKeyDivide", 111},
    {L"vbKeyNumpad0", 96}, {L"vbKeyNumpad1", 97}, {L"vbKeyNumpad2", 98}, {L"vbKeyNumpad3", 99},
    {L"vbKeyNumpad4", 100}, {L"vbKeyNumpad5", 101}, {L"vbKeyNumpad6", 102}, {L"vbKeyNumpad7", 103},
    {L"vbKeyNumpad8", 104}, {L"vbKeyNumpad9", 105},
    {L"vb3DFace", int32_t(0x8000000F)},
};
// clang-format on

constexpr std::wstring_view kKeyPrefix = L"vbKey";

std::optional<int32_t> KeyConstant(std::wstring_view name) {
  if (name.size() <= kKeyPrefix.size() || !SameName(name.substr(0, 5), kKeyPrefix)) {
    return std::nullopt;
  }
  const auto chord = form::KeyChordOf(Utf8(name.substr(kKeyPrefix.size())));
  if (!chord) return std::nullopt;
  return chord->virtualKey;
}

std::optional<int32_t> ColourConstant(std::wstring_view name) {
  uint32_t colour = form::kSystemColour;
  for (const char* row : form::kSystemColours) {
    if (SameName(Wide(row), name)) return static_cast<int32_t>(colour);
    ++colour;
  }
  return std::nullopt;
}

}  // namespace

std::optional<int32_t> VbConstant(std::wstring_view name) {
  for (const ConstantRow& row : kConstants) {
    if (SameName(row.name, name)) return row.value;
  }
  if (const auto colour = ColourConstant(name)) return colour;
  return KeyConstant(name);
}

}  // namespace qrn::host
