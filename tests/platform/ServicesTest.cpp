// The small services: string table, paths, automation strings, libraries, memory.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/Bstr.h"
#include "platform/BtrCall.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/LexbaseCalls.h"
#include "platform/LocalDate.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"
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

TEST(Paths, WholePathsNeedNoDirectory) {
  EXPECT_TRUE(IsWholePath("C:\\x.btr"));
  EXPECT_TRUE(IsWholePath("\\\\server\\share\\x"));
  EXPECT_FALSE(IsWholePath("\\x"));
  EXPECT_FALSE(IsWholePath("x.btr"));
  EXPECT_FALSE(IsWholePath(""));
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

TEST(SystemLibrary, AMissingLibraryHasNoFunctions) {
  const SystemLibrary missing("qrn-no-such-library");
  EXPECT_FALSE(missing.IsLoaded());
  EXPECT_EQ(missing.Find<void (*)()>("BTRCALL", 1), nullptr);
}

#ifdef _WIN32
TEST(SystemLibrary, InstalledOnesAreFoundWithoutTheirDirectory) {
  const SystemLibrary installed("version");
  EXPECT_TRUE(installed.IsLoaded());
  EXPECT_NE(installed.Find<void (*)()>("GetFileVersionInfoA"), nullptr);
  EXPECT_EQ(installed.Find<void (*)()>("NoSuchFunction"), nullptr);
}
#endif

int16_t BTR_CALL Answer(uint16_t operation, void*, void*, uint32_t*, void*, uint8_t,
                        int8_t keyNumber) {
  return static_cast<int16_t>(operation + keyNumber);
}

TEST(BtrCall, AReplacementStandsUntilItIsTakenBack) {
  EXPECT_EQ(ReplaceBtrCall(&Answer), nullptr);
  EXPECT_EQ(BtrCall(40, nullptr, nullptr, nullptr, nullptr, 0, 2), 42);
  EXPECT_EQ(ReplaceBtrCall(nullptr), &Answer);
}

TEST(LexbaseCalls, AReplacementStandsUntilItIsTakenBack) {
  static constexpr LexbaseFunctions kFake = {[](const char*, int32_t) { return 11; },
                                             [] { return 12; }, [](void*) { return 13; },
                                             [](void*) { return 14; }, [](void*) { return 15; }};
  EXPECT_EQ(ReplaceLexbase(&kFake), nullptr);
  EXPECT_EQ(DDFOpen("", 0) + DDFClose() + DDFReadFile(nullptr) + DDFReadField(nullptr) +
                DDFReadIndex(nullptr),
            65);
  EXPECT_EQ(ReplaceLexbase(nullptr), &kFake);
}

TEST(MessageBox, AReplacementAnswers) {
  ReplaceShowBox(
      [](const char* text, unsigned flags) { return static_cast<int>(std::strlen(text) + flags); });
  EXPECT_EQ(ShowBox("four", kTaskModal), 0x2004);
  ReplaceShowBox(nullptr);
}

TEST(LocalDate, TodayIsADate) {
  const CalendarDate today = LocalDate();
  EXPECT_GE(today.year, 2024);
  EXPECT_TRUE(today.month >= 1 && today.month <= 12);
  EXPECT_TRUE(today.day >= 1 && today.day <= 31);
}

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
