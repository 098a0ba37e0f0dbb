// What a console shows of UTF-8, in whatever pieces it comes.
#include <gtest/gtest.h>

#include <ostream>

#include "platform/Utf.h"
#include "tools/qrndata/ConsoleBuffer_win.h"

namespace qrndata::test {
namespace {

class Console : public ::testing::Test {
 protected:
  void SetUp() override {
    FreeConsole();
    ASSERT_TRUE(AllocConsole());
    screen_ = CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        CONSOLE_TEXTMODE_BUFFER, nullptr);
    ASSERT_NE(screen_, INVALID_HANDLE_VALUE);
  }
  void TearDown() override {
    CloseHandle(screen_);
    FreeConsole();
  }

  // The first `count` cells of the first line.
  std::string Shown(DWORD count) const {
    std::u16string cells(count, u'\0');
    DWORD read = 0;
    ReadConsoleOutputCharacterW(screen_, reinterpret_cast<wchar_t*>(cells.data()), count, {0, 0},
                                &read);
    cells.resize(read);
    return qrn::Utf16ToUtf8(cells);
  }

  HANDLE screen_ = nullptr;
};

TEST_F(Console, ShowsCharactersThatComeInPieces) {
  ConsoleBuffer buffer(screen_);
  std::ostream out(&buffer);
  for (const char c : std::string("a\xC3\xA9z ")) out << c << std::flush;
  out << "\xE2\x82" << std::flush;
  out << "\xAC!" << std::flush;
  EXPECT_TRUE(out.good());
  EXPECT_EQ(Shown(6), "a\xC3\xA9z \xE2\x82\xAC!");
}

TEST(ConsoleBuffer, SaysWhenTheConsoleIsGone) {
  ConsoleBuffer buffer(nullptr);
  std::ostream out(&buffer);
  out << "text" << std::flush;
  EXPECT_FALSE(out.good());
}

}  // namespace
}  // namespace qrndata::test
