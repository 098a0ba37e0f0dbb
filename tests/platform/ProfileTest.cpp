#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/CodePage.h"
#include "platform/Profile.h"
#include "platform/Utf.h"

namespace qrn {
namespace {

class Profile : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = (std::filesystem::temp_directory_path() / "qrn-profile-test.ini").string();
  }
  void TearDown() override { std::filesystem::remove(path_); }

  void Write(const std::string& bytes) { std::ofstream(path_, std::ios::binary) << bytes; }

  std::string Text(const char* section, const char* key, const char* fallback = "none",
                   size_t room = 256) {
    std::string out(room, '#');
    out.resize(ReadProfileText(section, key, fallback, out, path_.c_str()));
    return out;
  }

  int Int(const char* key) { return ReadProfileInt("n", key, 77, path_.c_str()); }

  std::string path_;
};

TEST_F(Profile, FindsTextByWindowsRules) {
  Write(
      "stray=0\r\n; comment=1\r\n [ Other ]\r\n[Data]\r\n;a=commented\r\n  Key  =  two words \r\n"
      "empty=\r\nquoted=\" kept \"\r\nsingle='x'\r\nhalf=\"x\r\nnovalue\r\nequals=a=b\r\n"
      "key=second\r\n[data]\r\nlater=1\r\n[next]\r\nkey=other\r\nlast=end");
  struct {
    const char *section, *key, *text;
  } const cases[] = {
      {"data", "key", "two words"}, {"DATA", "KEY", "two words"}, {"data", "empty", ""},
      {"data", "quoted", " kept "}, {"data", "single", "x"},      {"data", "half", "\"x"},
      {"data", "equals", "a=b"},    {"data", "a", "none"},        {"data", "later", "none"},
      {"data", "missing", "none"},  {"data", "stray", "none"},    {"next", "key", "other"},
      {"next", "last", "end"},      {"nowhere", "key", "none"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Text(row.section, row.key), row.text) << row.section << '/' << row.key;
  }
}

TEST_F(Profile, ReadsNumbersAsTheSystemDoes) {
  Write(
      "[n]\nplain=42\nsigned=-7\nplus=+8\ntail=12abc\nword=abc\nempty=\nblank=  5\nhex=0x1Fg\n"
      "wide=4294967297\n");
  struct {
    const char* key;
    int number;
  } const cases[] = {{"plain", 42}, {"signed", -7}, {"plus", 8}, {"tail", 12}, {"word", 0},
                     {"empty", 77}, {"blank", 5},   {"hex", 31}, {"wide", 1},  {"missing", 77}};
  for (const auto& row : cases) EXPECT_EQ(Int(row.key), row.number) << row.key;
}

TEST_F(Profile, TextIsCutToTheRoom) {
  Write("[s]\nk=abcdef\n");
  EXPECT_EQ(Text("s", "k", "", 4), "abc");
  EXPECT_EQ(Text("s", "k", "", 1), "");
  EXPECT_EQ(ReadProfileText("s", "k", "", {}, path_.c_str()), 0u);
}

TEST_F(Profile, MissingFileGivesTheDefault) {
  EXPECT_EQ(Text("s", "k", "fallback  "), "fallback");
  EXPECT_EQ(Int("k"), 77);
}

#ifndef _WIN32
TEST_F(Profile, BareNamesComeFromTheNamedDirectory) {
  Write("[s]\nk=found\n");
  const std::string directory = std::filesystem::path(path_).parent_path().string();
  setenv("QUORIN_INI_DIR", directory.c_str(), 1);
  char out[16];
  ReadProfileText("s", "k", "none", out, "qrn-profile-test.ini");
  unsetenv("QUORIN_INI_DIR");
  EXPECT_STREQ(out, "found");
}

TEST_F(Profile, SecondBytesOfKanjiAreNoLetters) {
  // The second byte of either kanji is a letter, and they differ in its case alone.
  Write("[s]\n\x83\x61=lower\n\x83\x41=upper\n");
  EXPECT_EQ(Text("s", "\x83\x41"), "upper");
}

TEST_F(Profile, FilesWithAByteOrderMarkAreRead) {
  const char* utf8 = "[s]\nk=表計算\n";
  const std::string expected = Utf8ToCodePage("表計算");
  Write(std::string("\xEF\xBB\xBF") + utf8);
  EXPECT_EQ(Text("s", "k"), expected);
  const std::u16string wide = u'\xFEFF' + Utf8ToUtf16(utf8);
  Write({reinterpret_cast<const char*>(wide.data()), wide.size() * 2});
  EXPECT_EQ(Text("s", "k"), expected);
}
#endif

}  // namespace
}  // namespace qrn
