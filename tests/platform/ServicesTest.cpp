// The small services: string table, paths, automation strings, libraries, memory.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/Bstr.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Memory.h"
#include "platform/StringTable.h"
#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

namespace fs = std::filesystem;

#ifndef _WIN32
// On Windows the table belongs to the module: tests/module reads it there.
TEST(StringTable, TextsAreFoundByIdAndCutAtACharacter) {
  char out[128];
  EXPECT_EQ(LoadText(101, out), 5u);
  EXPECT_STREQ(out, "VE001");
  EXPECT_EQ(LoadText(119, out), 26u);
  EXPECT_EQ(CodePageToUtf8(out), "VE011 データ型が不正です。");
  EXPECT_EQ(LoadText(119, std::span(out).first(10)), 8u);
  EXPECT_EQ(CodePageToUtf8(out), "VE011 デ");
  EXPECT_EQ(LoadText(9999, out), 0u);
  EXPECT_STREQ(out, "");
}
#endif

TEST(Paths, OnlyExistingDirectoriesHaveAShortForm) {
  char out[kPathSize];
  const std::string directory = fs::temp_directory_path().string();
  EXPECT_TRUE(GetShortPath(directory.c_str(), out));
  EXPECT_TRUE(fs::is_directory(out)) << out;
  EXPECT_FALSE(GetShortPath("", out));
  EXPECT_FALSE(GetShortPath((directory + "/no-such-directory").c_str(), out));
  EXPECT_STREQ(out, "");
  EXPECT_FALSE(GetShortPath(directory.c_str(), std::span(out).first(2)));
}

TEST(Paths, JoinedPathsFitOrAreRefused) {
  char out[16];
  EXPECT_TRUE(JoinPath("dir", "file", ".btr", out));
#ifdef _WIN32
  EXPECT_STREQ(out, "dir\\file.btr");
#else
  EXPECT_STREQ(out, "dir/file.btr");
  EXPECT_TRUE(JoinPath("d", "a\\\x95\x5C.x", "", out));
  EXPECT_STREQ(out, "d/a/\x95\x5C.x");
#endif
  EXPECT_TRUE(JoinPath("123456", "12345678", "", out));
  EXPECT_FALSE(JoinPath("123456", "123456789", "", out));
  EXPECT_STREQ(out, "");
}

TEST(Paths, OnlyWhatIsCertainlyNotThereIsMissing) {
  const fs::path file = fs::temp_directory_path() / "qrn-missing-test";
  const std::string below = (file / "x").string();
  std::ofstream(file) << "x";
  EXPECT_FALSE(IsMissingFile(file.string().c_str()));
  fs::remove(file);
  EXPECT_TRUE(IsMissingFile(file.string().c_str()));
  EXPECT_TRUE(IsMissingFile(below.c_str())) << "nor its directory";
  EXPECT_FALSE(IsMissingFile(fs::temp_directory_path().string().c_str())) << "a directory is there";
#ifdef _WIN32
  const std::string refused = "a|b";
#else
  const std::string refused(5000, 'n');
#endif
  const std::string unseen = (fs::temp_directory_path() / refused).string();
  EXPECT_FALSE(IsMissingFile(unseen.c_str())) << "a name that the system does not look for";
}

TEST(Bstr, BytesStandInAWideStringsRoom) {
  const BstrText text = AllocateByteBstr(
      "\x95\x5C"
      "a");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(BstrByteLength(text), 3u);
  const std::string room(reinterpret_cast<const char*>(text), 8);
  EXPECT_EQ(room, std::string("\x95\x5C"
                              "a\0\0\0\0\0",
                              8));
  FreeBstr(text);
}

TEST(Bstr, LengthCountsBytes) {
  const BstrText text = AllocateBstr(u"表計算");
  EXPECT_EQ(BstrByteLength(text), 6u);
  EXPECT_EQ(std::u16string(text), u"表計算");
  FreeBstr(text);
  const BstrText empty = AllocateBstr(u"");
  EXPECT_EQ(BstrByteLength(empty), 0u);
  EXPECT_EQ(empty[0], u'\0');
  FreeBstr(empty);
  EXPECT_EQ(BstrByteLength(nullptr), 0u);
}

TEST(Bstr, NullWithoutMemory) {
  ReplaceBstrAllocator([](size_t) { return BstrText{nullptr}; });
  EXPECT_EQ(AllocateBstr(u"x"), nullptr);
  EXPECT_EQ(AllocateByteBstr("x"), nullptr);
  ReplaceBstrAllocator(nullptr);
}

#ifdef _WIN32
TEST(SystemLibrary, InstalledOnesAreFoundWithoutTheirDirectory) {
  const SystemLibrary installed("version");
  EXPECT_TRUE(installed.IsLoaded());
  EXPECT_NE(installed.Find<void (*)()>("GetFileVersionInfoA"), nullptr);
  EXPECT_EQ(installed.Find<void (*)()>("NoSuchFunction"), nullptr);
}
#endif

TEST(Memory, IsZeroedAndMayRunOut) {
  auto* bytes = static_cast<char*>(AllocateZeroed(100));
  EXPECT_EQ(std::string(bytes, 100), std::string(100, '\0'));
  FreeMemory(bytes);
  FreeMemory(AllocateZeroed(0));
  ReplaceAllocate([](size_t) -> void* { return nullptr; });
  EXPECT_EQ(AllocateZeroed(1), nullptr);
  ReplaceAllocate(nullptr);
}

}  // namespace
}  // namespace qrn
