// Keystroke filter, byte counts and dressing of an edit control's text.
#include <gtest/gtest.h>

#include "controls/text/CharacterMask.h"
#include "controls/text/TextBytes.h"
#include "controls/text/TextDress.h"
#include "core/DbTypes.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

std::string AllowedOf(int32_t fieldType) {
  std::string allowed;
  for (char16_t character = 0; character < 0x100; ++character) {
    if (MaskAllows(character, fieldType)) allowed += static_cast<char>(character);
  }
  return allowed;
}

TEST(CharacterMask, FollowsTheFieldsType) {
  EXPECT_EQ(AllowedOf(kDate), "\b+,-./0123456789");
  EXPECT_EQ(AllowedOf(kTime), "\b+,-.0123456789:");
  for (const int32_t type : {-1, int32_t{kString}, int32_t{kInteger}, int32_t{kMoney}}) {
    EXPECT_EQ(AllowedOf(type), "\b+,-.0123456789") << type;
  }
}

TEST(CharacterMask, RefusesFullWidthDigits) {
  for (const char16_t character : {u'０', u'９', u'－', u'ｱ', u'あ', u'\xFFFF'}) {
    EXPECT_FALSE(MaskAllows(character, kDate)) << static_cast<int>(character);
  }
}

TEST(TextBytes, CountsCharactersOfTwoBytes) {
  const struct {
    std::u16string_view text;
    size_t bytes, within3;
  } cases[] = {{u"", 0, 0},     {u"a", 1, 1},     {u"abcd", 4, 3}, {u"あ", 2, 1},
               {u"ああ", 4, 1}, {u"aああ", 5, 2}, {u"ｱｲｳｴ", 4, 3}, {u"表a能", 5, 2}};
  for (const auto& row : cases) {
    EXPECT_EQ(BytesOf(row.text), row.bytes);
    EXPECT_EQ(UnitsWithin(row.text, 3), row.within3);
    EXPECT_EQ(UnitsWithin(row.text, 0), 0u);
    EXPECT_EQ(UnitsWithin(row.text, 100), row.text.size());
  }
}

TEST(TextBytes, AHalfOfAPairIsNeverTaken) {
  const std::u16string pair = u"\U00020B9F";  // not in the code page
  for (size_t bytes = 0; bytes < 6; ++bytes) EXPECT_NE(UnitsWithin(pair + pair, bytes) % 2, 1u);
}

// The host's service, played: brackets; nothing for a text with an "x".
std::optional<std::string> Bracket(const std::string& text) {
  if (text.find('x') != text.npos) return std::nullopt;
  return text == "empty" ? "" : "[" + text + "]";
}

TextDress Dress(int32_t option, size_t width, bool formats) {
  TextDress dress{option, width, nullptr};
  if (formats) dress.format = Bracket;
  return dress;
}

TEST(TextDress, OfFieldAndPropertyByOption) {
  const struct {
    size_t width;
    int32_t option;
    bool formats;
    const char *text, *shown;
  } cases[] = {
      {8, FormatNone, false, "12", "12"},
      {8, FormatNone, true, "12", "[12]"},
      {8, FormatNone, true, "1x", "1x"},
      {8, FormatNone, true, "empty", ""},
      {8, FormatEveryChar, true, "12", "[12]"},
      {8, FormatRightAlign, false, "12", "      12"},
      {8, FormatRightAlign, true, "12", "    [12]"},
      {8, FormatRightAlign, true, "1x", "      1x"},
      {0, FormatRightAlign, true, "12", "[12]"},
      {3, FormatRightAlign, true, "12", "12]"},
      {8, FormatEveryRight, false, "123456789012", "56789012"},
      {2, FormatEveryRight, false, "12", "12"},
      {8, 4, true, "12", "[12]"},
      {8, -1, false, "12", "12"},
  };
  for (const auto& row : cases) {
    const TextDress dress = Dress(row.option, row.width, row.formats);
    EXPECT_EQ(dress.OfField(row.text), row.shown) << row.option << " " << row.text;
    EXPECT_EQ(dress.OfProperty(row.text), row.shown) << row.option << " " << row.text;
  }
}

TEST(TextDress, AnEmptyTextIsAlignedOnlyWhenTheApplicationPutsIt) {
  const TextDress dress = Dress(FormatRightAlign, 3, false);
  EXPECT_EQ(dress.OfField(""), "");
  EXPECT_EQ(dress.OfProperty(""), "   ");
}

TEST(TextDress, AlignmentMayHalveACharacter) {
  const std::string text = Utf8ToCodePage("表a");
  EXPECT_EQ(Dress(FormatRightAlign, 2, false).OfField(text), text.substr(1));
  EXPECT_EQ(AlignRight(text, 5), "  " + text);
}

TEST(TextDress, ADressedTextIsCutAtACharacter) {
  TextDress dress = Dress(FormatNone, 0, true);
  dress.format = [](const std::string&) {
    std::string kanji;
    for (int i = 0; i < 600; ++i) kanji += Utf8ToCodePage("漢");
    return kanji;
  };
  EXPECT_EQ(dress.OfField("1").size(), kDressedTextSize - 1);
}

TEST(TextDress, OfTypingAppendsOrTakesAByte) {
  const struct {
    size_t width;
    int32_t option;
    bool formats;
    char16_t typed;
    const char* before;
    const char* after;  // null: the character goes on
  } cases[] = {
      {0, FormatEveryChar, true, u'3', "12", "[123]"},
      {8, FormatEveryRight, true, u'3', "12", "   [123]"},
      {8, FormatEveryChar, true, u'3', "12", "   [123]"},
      {0, FormatEveryChar, true, u'\b', "12", "[1]"},
      {0, FormatEveryChar, true, u'\b', "", "[]"},
      {0, FormatEveryChar, true, u'\b', "1表", "[1]"},
      {0, FormatEveryChar, true, u'\b', "表ソ", "[表]"},
      {0, FormatEveryChar, true, u'\b', "能ｱ", "[能]"},
      {0, FormatEveryChar, true, u'あ', "1", "[1あ]"},
      {0, FormatEveryChar, true, u'x', "1", nullptr},
      {0, FormatEveryChar, true, u'y', "empt", nullptr},
      {8, FormatEveryChar, false, u'3', "12", nullptr},
      {8, FormatNone, true, u'3', "12", nullptr},
      {8, FormatRightAlign, true, u'3', "12", nullptr},
  };
  for (const auto& row : cases) {
    const auto after =
        Dress(row.option, row.width, row.formats).OfTyping(Utf8ToCodePage(row.before), row.typed);
    const std::string shown = after ? CodePageToUtf8(*after) : "(on)";
    EXPECT_EQ(shown, row.after ? row.after : "(on)") << row.before << " " << row.option;
  }
}

}  // namespace
}  // namespace qrn
