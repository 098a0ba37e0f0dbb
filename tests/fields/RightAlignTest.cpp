#include "fields/RightAlign.h"
#include "tests/support/Test.h"

namespace qrn {
namespace {

std::string Aligned(std::string text, size_t width, size_t room = 16) {
  text.resize(room, '\0');
  RightAlignToWidth(text, width);
  return text.substr(0, text.find('\0'));
}

TEST(RightAlign, NoWidthDoesNothing) { EXPECT_EQ(Aligned("abc", 0), "abc"); }

TEST(RightAlign, TheMemoryLimitsTheWidth) {
  EXPECT_EQ(Aligned("abc", 100, 6), "  abc");
  EXPECT_EQ(Aligned("a", 5, 1), "");
  RightAlignToWidth({}, 5);
  std::string full(4, 'x');
  RightAlignToWidth(full, 9);
  EXPECT_EQ(full, std::string("xxx\0", 4));
}

}  // namespace
}  // namespace qrn
