#include <gtest/gtest.h>

#include <string>

#include "platform/CodePage.h"
#include "platform/Utf.h"

namespace qrn {
namespace {

TEST(CodePage, CharactersHaveTheirPlaces) {
  struct {
    const char *utf8, *bytes;
  } const cases[] = {
      {"A~\\", "A~\\"},   {"表", "\x95\x5C"}, {"ソ", "\x83\x5C"}, {"ｱ", "\xB1"},
      {"①", "\x87\x40"},  {"㈱", "\x87\x8A"}, {"～", "\x81\x60"}, {"－", "\x81\x7C"},
      {"髙", "\xFB\xFC"}, {"￥", "\x81\x8F"}, {"∥", "\x81\x61"},  {"\xEE\x80\x80", "\xF0\x40"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Utf8ToCodePage(row.utf8), row.bytes) << row.utf8;
    EXPECT_EQ(CodePageToUtf8(row.bytes), row.utf8);
  }
}

TEST(CodePage, WhatHasNoPlaceIsReplaced) {
  EXPECT_EQ(Utf8ToCodePage("a한b"), "a?b");
  EXPECT_EQ(Utf8ToCodePage("x\xC3"), "x?");
  EXPECT_EQ(Utf8ToCodePage("\xC0\x80"), "??");
  EXPECT_EQ(CodePageToUtf16("\x81"), u"\u30FB");
}

TEST(CodePage, NulsPassThrough) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(CodePageToUtf16(bytes), std::u16string(u"a\0b", 3));
  EXPECT_EQ(Utf16ToCodePage({u"a\0b", 3}), bytes);
}

TEST(CodePage, EveryTwoByteCharacterComesBack) {
  int characters = 0;
  for (int lead = 0x81; lead <= 0xFC; ++lead) {
    for (int trail = 0x40; trail <= 0xFC; ++trail) {
      const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
      const std::u16string wide = CodePageToUtf16({bytes, 2});
      if (!IsLeadByte(static_cast<uint8_t>(lead)) || wide.size() != 1 || wide[0] == 0x30FB)
        continue;
      ++characters;
      // Some characters stand twice in the code page: they come back as their first place.
      EXPECT_EQ(CodePageToUtf16(Utf16ToCodePage(wide)), wide) << std::hex << lead << trail;
    }
  }
  EXPECT_GT(characters, 9000);
}

TEST(CodePage, WidenedTextNeedsTheRoomOfItsBytes) {
  char16_t wide[4];
  EXPECT_EQ(WidenText("\x95\x5C"
                      "ab",
                      wide),
            3u);
  EXPECT_EQ(wide[0], u'表');
  EXPECT_EQ(wide[2], u'b');
  EXPECT_EQ(WidenText("abcde", wide), 0u);
  EXPECT_EQ(WidenText("", wide), 0u);
}

TEST(CodePage, CutsLeaveCharactersWhole) {
  const std::string text =
      "a\x95\x5C"
      "b\x83\x5C";
  const size_t cuts[] = {0, 1, 1, 3, 4, 4, 6, 6};
  for (size_t limit = 0; limit < std::size(cuts); ++limit) {
    EXPECT_EQ(CutAtCharacter(text, limit), cuts[limit]) << limit;
  }
  char out[3];
  EXPECT_EQ(CopyText(out, text), 1u);
  EXPECT_STREQ(out, "a");
  EXPECT_EQ(CopyText({}, text), 0u);
}

TEST(CodePage, OnlyLettersLoseTheirCase) {
  EXPECT_TRUE(EqualIgnoringCase("C:\\Data", "c:\\dATA"));
  EXPECT_FALSE(EqualIgnoringCase("abc", "abd"));
  EXPECT_FALSE(EqualIgnoringCase("abc", "ab"));
  EXPECT_FALSE(EqualIgnoringCase("\x83\x61", "\x83\x41"));
  EXPECT_FALSE(EqualIgnoringCase("@", "`"));
}

TEST(Utf, EveryRangeComesBack) {
  const char32_t points[] = {0,      0x7F,   0x80,   0x7FF,   0x800,
                             0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF};
  for (const char32_t point : points) {
    std::u16string wide;
    if (point > 0xFFFF) {
      wide = {static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)),
              static_cast<char16_t>(0xDC00 + (point & 0x3FF))};
    } else {
      wide = {static_cast<char16_t>(point)};
    }
    EXPECT_EQ(Utf8ToUtf16(Utf16ToUtf8(wide)), wide) << std::hex << uint32_t{point};
  }
}

TEST(Utf, MalformedBytesBecomeReplacements) {
  struct {
    const char *name, *bytes;
    size_t replacements;
  } const cases[] = {
      {"stray continuation", "\x80", 1},
      {"overlong two", "\xC1\xBF", 2},
      {"overlong three", "\xE0\x80\x80", 3},
      {"surrogate", "\xED\xA0\x80", 3},
      {"beyond the last", "\xF4\x90\x80\x80", 4},
      {"cut off", "\xE8\xA1", 2},
      {"no such lead", "\xF8", 1},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Utf8ToUtf16(row.bytes), std::u16string(row.replacements, u'\xFFFD')) << row.name;
  }
  EXPECT_EQ(Utf16ToUtf8(std::u16string{char16_t{0xD800}, u'a'}),
            "\xEF\xBF\xBD"
            "a");
}

}  // namespace
}  // namespace qrn
