#include "host/container/Fonts.h"

#include <stdexcept>

#include "host/container/Text.h"
#include "host/form/SourceText.h"

namespace qrn::host {
namespace {

constexpr char kFontClass[] = "{0BE35203-8F91-11CE-9DE3-00AA004BB851}";
constexpr char kFaceName[] = "ＭＳ Ｐゴシック";
constexpr double kPoints = 9;

// What a font group sets, with the default font's values.
struct FontValues {
  std::wstring name = Wide(kFaceName);
  double size = kPoints;
  int weight = FW_NORMAL;
  int charset = SHIFTJIS_CHARSET;
  bool italic = false;
  bool underline = false;
  bool strikethrough = false;
};

double Number(const form::Property& property) {
  if (const int32_t* whole = std::get_if<int32_t>(&property.value)) return *whole;
  if (const double* real = std::get_if<double>(&property.value)) return *real;
  throw std::runtime_error("Font: " + property.name + " needs a number");
}

std::wstring Text(const form::Property& property) {
  if (const std::string* text = std::get_if<std::string>(&property.value)) return Wide(*text);
  throw std::runtime_error("Font: " + property.name + " needs a text");
}

struct FontRow {
  const char* name;
  void (*set)(FontValues& values, const form::Property& property);
};

constexpr FontRow kRows[] = {
    {"Name", [](FontValues& v, const form::Property& p) { v.name = Text(p); }},
    {"Size", [](FontValues& v, const form::Property& p) { v.size = Number(p); }},
    {"Charset", [](FontValues& v, const form::Property& p) { v.charset = int(Number(p)); }},
    {"Weight", [](FontValues& v, const form::Property& p) { v.weight = int(Number(p)); }},
    {"Underline", [](FontValues& v, const form::Property& p) { v.underline = Number(p) != 0; }},
    {"Italic", [](FontValues& v, const form::Property& p) { v.italic = Number(p) != 0; }},
    {"Strikethrough",
     [](FontValues& v, const form::Property& p) { v.strikethrough = Number(p) != 0; }},
};

void Set(FontValues& values, const form::Property& property) {
  for (const FontRow& row : kRows) {
    if (form::SameWord(row.name, property.name)) return row.set(values, property);
  }
  throw std::runtime_error("Font: a font has no " + property.name);
}

Com<IFontDisp> Make(const FontValues& values) {
  if (!(values.size > 0 && values.size < 1000)) {
    throw std::runtime_error("Font: Size must lie between 0 and 1000");
  }
  std::wstring name = values.name;
  FONTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.lpstrName = name.data();
  description.cySize.int64 = static_cast<LONGLONG>(values.size * 10000);
  description.sWeight = static_cast<SHORT>(values.weight);
  description.sCharset = static_cast<SHORT>(values.charset);
  description.fItalic = values.italic;
  description.fUnderline = values.underline;
  description.fStrikethrough = values.strikethrough;
  Com<IFontDisp> font;
  com::Check(OleCreateFontIndirect(&description, IID_IFontDisp, font.putVoid()));
  return font;
}

}  // namespace

bool IsFontGroup(const form::Property& property) noexcept {
  return property.isGroup &&
         (property.groupClass.empty() ? form::SameWord(property.name, "Font")
                                      : form::SameWord(property.groupClass, kFontClass));
}

Com<IFontDisp> MakeFont(const form::Property& group) {
  FontValues values;
  for (const form::Property& property : group.group) Set(values, property);
  return Make(values);
}

Com<IFontDisp> DefaultFont() { return Make(FontValues()); }

HFONT HandleOf(IFontDisp* font) noexcept {
  HFONT handle = nullptr;
  const Com<IFont> plain = Query<IFont>(font);
  if (plain) plain->get_hFont(&handle);
  return handle;
}

}  // namespace qrn::host
