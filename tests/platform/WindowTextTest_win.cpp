#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>

#include "platform/CodePage.h"
#include "platform/WindowText.h"

namespace qrn {
namespace {

// A wide window of the system with a text.
class WindowText : public ::testing::Test {
 protected:
  void SetUp() override {
    window = CreateWindowExW(0, L"EDIT", L"", WS_POPUP | ES_MULTILINE, 0, 0, 100, 100, nullptr,
                             nullptr, nullptr, nullptr);
    ASSERT_TRUE(window);
  }
  void TearDown() override { DestroyWindow(window); }

  // What a buffer of `room` bytes takes of the window's text, as UTF-8.
  std::string Read(size_t room) {
    std::string bytes(room, '!');
    const size_t length = ReadWindowText(window, bytes);
    EXPECT_LT(length, room);
    EXPECT_EQ(bytes[length], '\0');
    return CodePageToUtf8(std::string_view(bytes).substr(0, length));
  }

  HWND window = nullptr;
};

TEST_F(WindowText, IsCutAtACharacter) {
  ASSERT_TRUE(WriteWindowText(window, Utf8ToCodePage("a表示b").c_str()));
  const struct {
    size_t room;
    const char* text;
  } cases[] = {{20, "a表示b"}, {7, "a表示b"}, {6, "a表示"}, {5, "a表"},
               {4, "a表"},     {3, "a"},      {2, "a"},     {1, ""}};
  for (const auto& row : cases) EXPECT_EQ(Read(row.room), row.text) << row.room;
  EXPECT_EQ(ReadWindowText(window, {}), 0u);
  std::array<char, 4> room{"old"};
  EXPECT_EQ(ReadWindowText(nullptr, room), 0u);
  EXPECT_EQ(room[0], '\0');
}

TEST_F(WindowText, OfALongJapaneseTextKeepsWholeCharacters) {
  std::wstring text(3000, L'表');
  SetWindowTextW(window, text.c_str());
  const std::string even = Read(4097);
  EXPECT_EQ(even.size(), 2048u * 3);
  text[0] = L'a';
  SetWindowTextW(window, text.c_str());
  const std::string odd = Read(4097);
  EXPECT_EQ(odd.size(), 1 + 2047u * 3);
  EXPECT_EQ(odd.substr(odd.size() - 3), "表");
}

}  // namespace
}  // namespace qrn
