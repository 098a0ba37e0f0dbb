#include "host/container/Fonts.h"

#include <cmath>
#include <stdexcept>
#include <utility>

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

form::Property Row(const char* name, form::PropertyValue value) {
  return {name, 0, std::move(value), false, {}, {}};
}

// A whole number as one.
form::PropertyValue Points(double points) {
  if (points == std::floor(points)) return static_cast<int32_t>(points);
  return points;
}

// As the currency that font objects count their points in: ten thousandths.
double PointsOf(const CY& size) noexcept { return static_cast<double>(size.int64) / 10000; }

}  // namespace

form::Property FontGroup(const std::string& name, const com::FontDescription& font) {
  const auto truth = [](bool flag) { return int32_t{flag ? -1 : 0}; };
  return {name,
          0,
          {},
          true,
          kFontClass,
          {Row("Name", Utf8(font.name)), Row("Size", Points(font.points)),
           Row("Charset", int32_t{font.charset}), Row("Weight", int32_t{font.weight}),
           Row("Underline", truth(font.underline)), Row("Italic", truth(font.italic)),
           Row("Strikethrough", truth(font.strikethrough))}};
}

com::FontDescription DescriptionOf(IFont* font) {
  com::FontDescription look;
  Bstr name;
  CY size{};
  BOOL italic = FALSE;
  BOOL underline = FALSE;
  BOOL strikethrough = FALSE;
  if (SUCCEEDED(font->get_Name(name.put()))) look.name = name.view();
  if (SUCCEEDED(font->get_Size(&size))) look.points = PointsOf(size);
  font->get_Weight(&look.weight);
  font->get_Charset(&look.charset);
  if (SUCCEEDED(font->get_Italic(&italic))) look.italic = italic != FALSE;
  if (SUCCEEDED(font->get_Underline(&underline))) look.underline = underline != FALSE;
  if (SUCCEEDED(font->get_Strikethrough(&strikethrough)))
    look.strikethrough = strikethrough != FALSE;
  return look;
}

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
