#include "host/container/Fonts.h"

#include <stdexcept>

#include "com/Fonts.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"

namespace qrn::host {
namespace {

constexpr char kFontClass[] = "{0BE35203-8F91-11CE-9DE3-00AA004BB851}";
constexpr double kMostPoints = 1000;

double Number(const form::Property& property) {
  if (const int32_t* whole = std::get_if<int32_t>(&property.value)) return *whole;
  if (const double* real = std::get_if<double>(&property.value)) return *real;
  throw std::runtime_error("Font: " + property.name + " needs a number");
}

int16_t Short(const form::Property& property) { return static_cast<int16_t>(Number(property)); }

std::wstring Text(const form::Property& property) {
  if (const std::string* text = std::get_if<std::string>(&property.value)) return Wide(*text);
  throw std::runtime_error("Font: " + property.name + " needs a text");
}

struct FontRow {
  const char* name;
  void (*set)(com::FontDescription& font, const form::Property& property);
};

constexpr FontRow kFontRows[] = {
    {"Name", [](com::FontDescription& v, const form::Property& p) { v.name = Text(p); }},
    {"Size", [](com::FontDescription& v, const form::Property& p) { v.points = Number(p); }},
    {"Charset", [](com::FontDescription& v, const form::Property& p) { v.charset = Short(p); }},
    {"Weight", [](com::FontDescription& v, const form::Property& p) { v.weight = Short(p); }},
    {"Underline",
     [](com::FontDescription& v, const form::Property& p) { v.underline = Number(p) != 0; }},
    {"Italic", [](com::FontDescription& v, const form::Property& p) { v.italic = Number(p) != 0; }},
    {"Strikethrough",
     [](com::FontDescription& v, const form::Property& p) { v.strikethrough = Number(p) != 0; }},
};

void Set(com::FontDescription& font, const form::Property& property) {
  for (const FontRow& row : kFontRows) {
    if (form::SameWord(row.name, property.name)) return row.set(font, property);
  }
  throw std::runtime_error("Font: a font has no " + property.name);
}

}  // namespace

bool IsFontGroup(const form::Property& property) noexcept {
  return property.isGroup &&
         (property.groupClass.empty() ? form::SameWord(property.name, "Font")
                                      : form::SameWord(property.groupClass, kFontClass));
}

Com<IFontDisp> MakeFont(const form::Property& group) {
  com::FontDescription font;
  for (const form::Property& property : group.group) Set(font, property);
  if (!(font.points > 0 && font.points < kMostPoints)) {
    throw std::runtime_error("Font: Size must lie between 0 and 1000");
  }
  return com::MakeFont(font);
}

Com<IFontDisp> DefaultFont() { return com::MakeFont(); }

HFONT HandleOf(IFontDisp* font) noexcept {
  HFONT handle = nullptr;
  const Com<IFont> plain = Query<IFont>(font);
  if (plain) plain->get_hFont(&handle);
  return handle;
}

}  // namespace qrn::host
