// Values and lines as Visual Basic writes them.
#include <gtest/gtest.h>

#include "host/designer/document/PropertyText.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;
using form::PropertyValue;

TEST(PropertyText, SpellsValues) {
  struct Case {
    PropertyValue value;
    ValueLook look;
    const char* text;
  } const cases[] = {
      {std::string("a \"b\""), {}, "\"a \"\"b\"\"\""},
      {std::string(), {}, "\"\""},
      {int32_t{0}, {}, "0"},
      {int32_t{-2147483647 - 1}, {}, "-2147483648"},
      {int32_t{-1}, {NumberLook::Boolean, {}}, "-1  'True"},
      {int32_t{0}, {NumberLook::Boolean, {}}, "0   'False"},
      {static_cast<int32_t>(0x80000005), {NumberLook::Colour, {}}, "&H80000005&"},
      {int32_t{0xC0}, {NumberLook::Colour, {}}, "&H000000C0&"},
      {int32_t{1}, {NumberLook::Plain, "Fixed Single"}, "1  'Fixed Single"},
      {9.75, {}, "9.75"},
      {-0.5, {}, "-0.5"},
      {form::FileReference{"a.frx", 0xA1F, false}, {}, "\"a.frx\":0A1F"},
      {form::FileReference{"a.frx", 0x12345, true}, {}, "$\"a.frx\":12345"},
      {form::BareWord{"^O"}, {}, "^O"},
  };
  for (const Case& row : cases) EXPECT_EQ(ValueText(row.value, row.look), row.text);
}

TEST(PropertyText, RefusesWhatALineCannotHold) {
  const FileText text;
  for (const char* value :
       {"two\nlines", "two\rlines", "end\x1A", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
    EXPECT_FALSE(PropertyItem("Caption", std::string(value), 1, text)) << value;
  }
  EXPECT_FALSE(PropertyItem("Caption", std::string("a\0b", 3), 1, text));
  const FileText utf8{true, "\n"};
  EXPECT_EQ(PropertyItem("Tag", std::string("\xE2\x82\xAC"), 0, utf8)->bytes,
            "Tag             =   \"\xE2\x82\xAC\"\n");
}

TEST(PropertyText, WritesAGroupWithItsEnd) {
  form::Property font{"Font", 0, {}, true, "{0BE35203-8F91-11CE-9DE3-00AA004BB851}", {}};
  font.group = {{"Name", 0, std::string("Tahoma"), false, {}, {}},
                {"Italic", 0, int32_t{-1}, false, {}, {}}};
  const auto item = PropertyItem(font, 1, FileText{});
  std::string bytes;
  item->block->Write(&bytes);
  EXPECT_EQ(bytes,
            "   BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851} \r\n"
            "      Name            =   \"Tahoma\"\r\n"
            "      Italic          =   -1  'True\r\n"
            "   EndProperty\r\n");
  const auto read = PropertyOf(*item, FileText{});
  EXPECT_EQ(read->groupClass, font.groupClass);
  EXPECT_EQ(read->group.size(), 2u);
}

constexpr char kBox[] =
    "   Begin LIB.Box box \n      BackColor       =   255\n      _ExtentX        =   100\n"
    "      Left            =   120  ' mine\n   Odd line\n      Width           =   600\n   End\n";

TEST(DesignPut, ChangesOneLineAndNoOther) {
  struct Case {
    const char* property;
    PropertyValue value;
    const char* lines;
  } const cases[] = {
      {"Left", int32_t{120},
       "Begin LIB.Box box|BackColor = 255|_ExtentX = 100|Left = 120 ' mine|Odd line|Width = "
       "600|End"},
      {"LEFT", int32_t{135},
       "Begin LIB.Box box|BackColor = 255|_ExtentX = 100|Left = 135|Odd line|Width = 600|End"},
      {"Top", int32_t{15},
       "Begin LIB.Box box|BackColor = 255|_ExtentX = 100|Left = 120 ' mine|Odd line|Top = 15|Width "
       "= 600|End"},
      {"BackColor", int32_t{254},
       "Begin LIB.Box box|BackColor = &H000000FE&|_ExtentX = 100|Left = 120 ' mine|Odd line|Width "
       "= 600|End"},
      {"mode", int32_t{1},
       "Begin LIB.Box box|BackColor = 255|_ExtentX = 100|Left = 120 ' mine|Odd line|Mode = 1|Width "
       "= 600|End"},
      {"Visible", int32_t{-1},
       "Begin LIB.Box box|BackColor = 255|_ExtentX = 100|Left = 120 ' mine|Odd line|Width = "
       "600|End"},
      {"Zoom", 0.25,
       "Begin LIB.Box box|BackColor = 255|_ExtentX = 100|Left = 120 ' mine|Odd line|Width = "
       "600|Zoom = 0.25|End"},
  };
  for (const Case& row : cases) {
    const auto design = Designed(FormWith(kBox));
    Step step(*design, TextId::ChangeProperty);
    EXPECT_FALSE(design->Put(IdOf(*design, "box"), row.property, row.value)) << row.property;
    EXPECT_EQ(Lines(*design, "box"), row.lines) << row.property;
  }
}

}  // namespace
}  // namespace qrn::test
