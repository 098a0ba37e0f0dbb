#include <gtest/gtest.h>

#include <string>

#include "platform/Bstr.h"
#include "platform/PlainText.h"

namespace qrn {
namespace {

TEST(PlainText, WidensEveryLength) {
  const std::string all = "0123456789 Az~\x01\x7F";
  for (size_t length = 0; length <= all.size(); ++length) {
    const std::string text = all.substr(0, length);
    const BstrText wide = AllocatePlainBstr(text);
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(std::u16string(wide), std::u16string(text.begin(), text.end()));
    EXPECT_EQ(BstrByteLength(wide), 2 * length);
    FreeBstr(wide);
  }
}

TEST(PlainText, ScanEndsAtTheFirstNulOrWithTheArea) {
  const struct {
    std::string area;
    size_t length;
    bool plain;
  } cases[] = {
      {"", 0, true},
      {"abc", 3, true},
      {std::string("abc\0\x95", 5), 3, true},
      {std::string("12345678\0\0", 10), 8, true},
      {std::string("ab\x95\x5C\0x", 6), 4, false},
      {"\xB1", 1, false},
  };
  for (const auto& row : cases) {
    const auto [length, plain] = ScanText(row.area);
    EXPECT_EQ(length, row.length) << row.area;
    EXPECT_EQ(plain, row.plain) << row.area;
  }
}

}  // namespace
}  // namespace qrn
