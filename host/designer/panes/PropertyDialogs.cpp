#include "host/designer/panes/PropertyDialogs.h"

// clang-format off
#include <windows.h>
#include <commdlg.h>
#include <olectl.h>
// clang-format on

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

#include "com/Com.h"
#include "com/Handles.h"
#include "com/Text.h"
#include "host/container/Fonts.h"
#include "host/designer/panes/PaneTexts.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using form::Property;

constexpr int kTenthsAPoint = 10;
constexpr double kUsualPoints = 9;

double NumberIn(const std::optional<Property>& font, const char* name, double otherwise) {
  if (!font) return otherwise;
  for (const Property& row : font->group) {
    if (!form::SameWord(row.name, name)) continue;
    if (const auto* whole = std::get_if<int32_t>(&row.value)) return *whole;
    if (const auto* fraction = std::get_if<double>(&row.value)) return *fraction;
  }
  return otherwise;
}

std::wstring FaceIn(const std::optional<Property>& font) {
  for (const Property& row : font ? font->group : std::vector<Property>()) {
    const auto* text = std::get_if<std::string>(&row.value);
    if (form::SameWord(row.name, "Name") && text) return com::Wide(*text);
  }
  return L"ＭＳ Ｐゴシック";
}

LOGFONTW LookOf(const std::optional<Property>& font) {
  LOGFONTW look{};
  const double points = NumberIn(font, "Size", kUsualPoints);
  const int inch = GetDeviceCaps(com::WindowDc(nullptr).get(), LOGPIXELSY);
  look.lfHeight = -static_cast<LONG>(std::lround(points * inch / 72));
  look.lfWeight = static_cast<LONG>(NumberIn(font, "Weight", FW_NORMAL));
  look.lfCharSet = static_cast<BYTE>(NumberIn(font, "Charset", SHIFTJIS_CHARSET));
  look.lfItalic = NumberIn(font, "Italic", 0) != 0;
  look.lfUnderline = NumberIn(font, "Underline", 0) != 0;
  look.lfStrikeOut = NumberIn(font, "Strikethrough", 0) != 0;
  const std::wstring face = FaceIn(font);
  std::copy_n(face.c_str(), std::min<size_t>(face.size(), LF_FACESIZE - 1), look.lfFaceName);
  return look;
}

Property FontOf(const std::string& name, const LOGFONTW& look, int tenths) {
  com::FontDescription font;
  font.name = look.lfFaceName;
  font.points = static_cast<double>(tenths) / kTenthsAPoint;
  font.weight = static_cast<int16_t>(look.lfWeight);
  font.charset = look.lfCharSet;
  font.italic = look.lfItalic != 0;
  font.underline = look.lfUnderline != 0;
  font.strikethrough = look.lfStrikeOut != 0;
  return host::FontGroup(name, font);
}

// Pairs of a name and patterns, each with a NUL behind it, as the dialog takes them.
std::wstring Filter(Language language) {
  std::wstring filter = com::Wide(Said(PaneText::PictureFiles, language));
  filter.append(1, 0)
      .append(L"*.bmp;*.dib;*.gif;*.jpg;*.jpeg;*.ico;*.cur;*.wmf;*.emf")
      .append(1, 0);
  filter += com::Wide(Said(PaneText::AllFiles, language));
  return filter.append(1, 0).append(L"*.*").append(1, 0);
}

}  // namespace

std::optional<uint32_t> AskColour(HWND owner, uint32_t now) {
  // Mixed by the user, kept while the program runs.
  static COLORREF mixed[16] = {};
  COLORREF shown = now & 0xFFFFFF;
  OleTranslateColor(now, nullptr, &shown);
  CHOOSECOLORW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.rgbResult = shown;
  dialog.lpCustColors = mixed;
  dialog.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
  if (!ChooseColorW(&dialog)) return std::nullopt;
  return dialog.rgbResult;
}

std::optional<Property> AskFont(HWND owner, const std::string& name,
                                const std::optional<Property>& now) {
  LOGFONTW look = LookOf(now);
  CHOOSEFONTW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpLogFont = &look;
  dialog.Flags = CF_SCREENFONTS | CF_EFFECTS | CF_INITTOLOGFONTSTRUCT | CF_NOVERTFONTS;
  if (!ChooseFontW(&dialog)) return std::nullopt;
  return FontOf(name, look, dialog.iPointSize);
}

std::optional<std::string> AskPictureFile(HWND owner, Language language) {
  wchar_t path[MAX_PATH] = L"";
  const std::wstring filter = Filter(language);
  const std::wstring title = com::Wide(Said(PaneText::AskPicture, language));
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = filter.c_str();
  dialog.lpstrFile = path;
  dialog.nMaxFile = MAX_PATH;
  dialog.lpstrTitle = title.c_str();
  dialog.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
  if (!GetOpenFileNameW(&dialog)) return std::nullopt;
  return com::Utf8(path);
}

bool IsPicture(const std::string& bytes) {
  com::GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE, std::max<size_t>(bytes.size(), 1)));
  if (!block) return false;
  std::memcpy(GlobalLock(block.get()), bytes.data(), bytes.size());
  GlobalUnlock(block.get());
  com::Com<IStream> stream;
  if (FAILED(CreateStreamOnHGlobal(block.get(), FALSE, stream.put()))) return false;
  com::Com<IPicture> picture;
  return SUCCEEDED(OleLoadPicture(stream.get(), static_cast<LONG>(bytes.size()), TRUE, IID_IPicture,
                                  reinterpret_cast<void**>(picture.put())));
}

}  // namespace qrn::designer
